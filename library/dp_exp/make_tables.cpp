// Makes the tables of dp_exp. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

namespace {

constexpr std::int32_t segment_bits = 9;
constexpr std::int32_t value_bits = 60;  // behind the point

/// The function's values at index * 2 ** -shift.
table values_of(std::string_view name, std::string_view comment, std::int32_t width, std::int32_t shift,
                const function& f) {
    table made(name, comment, segment_bits, {{"value", width}});
    for (std::int64_t index = 0; index < std::int64_t{1} << segment_bits; ++index) {
        made.add({sample(index, shift, f)});
    }
    return made;
}

}  // namespace

int main(int count, char** arguments) {
    static_assert(value_bits == sample_bits);
    const table high = values_of("dp_exp_high_table", "exp(index * 2 ** -9), units of 2 ** -60.", value_bits + 2, 9,
                                 [](mpfr_ptr number) { mpfr_exp(number, number, MPFR_RNDN); });
    const table low = values_of("dp_exp_low_table", "exp(index * 2 ** -18) - 1, units of 2 ** -60.", 52, 18,
                                [](mpfr_ptr number) { mpfr_expm1(number, number, MPFR_RNDN); });
    table cubic("dp_exp_cubic_table", "r ** 3 / 6 for r = (index + 1/2) * 2 ** -24, units of 2 ** -62.", 6,
                {{"value", 6}});
    constexpr std::int64_t sixth = std::int64_t{6} << 13U;  // of the cube, which is in units of 2 ** -75
    for (std::int64_t r = 1; r < 128; r += 2) {
        cubic.add({(r * r * r + sixth / 2) / sixth});
    }
    const bool written =
        count == 2 && high.write(arguments[1]) == 0 && low.write(arguments[1]) == 0 && cubic.write(arguments[1]) == 0;
    return written ? 0 : 1;
}
