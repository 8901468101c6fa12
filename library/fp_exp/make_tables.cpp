// Makes the table of fp_exp. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

int main(int count, char** arguments) {
    constexpr std::int32_t bits = 27;  // behind the point of all coefficients
    table made(
        "fp_exp_table",
        "2 ** f in 128 segments as c0 + c1 u + c2 u ** 2, units of 2 ** -27; half a unit of the result and what\n"
        "truncations lose on average are in c0, and its 1 in front is not.",
        7, {{"level", bits}, {"slope", 21}, {"curve", 12}});
    // To round by truncation.
    constexpr std::int64_t half = std::int64_t{1} << (sample_bits - 24);
    constexpr std::int64_t lost = std::int64_t{1} << (sample_bits - bits);
    const function power = [](mpfr_ptr number) { mpfr_exp2(number, number, MPFR_RNDN); };
    for (std::int64_t segment = 0; segment < 128; ++segment) {
        const quadratic c = fit(samples_of(segment, 7, power), bits, half + lost);
        made.add({c.c0 - (std::int64_t{1} << bits), c.c1, c.c2});
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
