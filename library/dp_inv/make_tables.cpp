// Makes the table of dp_inv. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

int main(int count, char** arguments) {
    constexpr std::int32_t bits = 34;  // behind the point of all coefficients
    table made(
        "dp_inv_table",
        "1 / m in 512 segments from m = 1 to 2 as c0 - c1 u + c2 u ** 2, units of 2 ** -34. What all errors can\n"
        "put above the function is taken off c0.",
        9, {{"level", bits}, {"slope", 25}, {"curve", 16}});
    constexpr std::int64_t below = std::int64_t{8} << (sample_bits - bits);
    const function reciprocal = [](mpfr_ptr number) { mpfr_ui_div(number, 1, number, MPFR_RNDN); };
    for (std::int64_t segment = 512; segment < 1024; ++segment) {
        const quadratic c = fit(samples_of(segment, 9, reciprocal), bits, -below);
        made.add({c.c0, -c.c1, c.c2});
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
