// Makes the table of fp_invsqr. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

namespace {

constexpr std::int32_t bits = 27;  // behind the point of all coefficients

/// 2 / sqrt(m) or, with `odd`, 2 / sqrt(2 m).
function twice_the_inverse_root(bool odd) {
    return [odd](mpfr_ptr number) {
        mpfr_mul_2si(number, number, odd ? 1 : 0, MPFR_RNDN);
        mpfr_rec_sqrt(number, number, MPFR_RNDN);
        mpfr_mul_2si(number, number, 1, MPFR_RNDN);
    };
}

}  // namespace

int main(int count, char** arguments) {
    table made("fp_invsqr_table",
               "2 / sqrt(m) and 2 / sqrt(2 m) in 128 segments each as c0 - c1 u + c2 u ** 2, units of 2 ** -27; half a "
               "unit\nof the result is in c0, and its 1 in front is not.",
               8, {{"level", bits + 1}, {"slope", 21}, {"curve", 13}});
    // To round by truncation. The truncations behind pull up and down by as much on average.
    constexpr std::int64_t half = std::int64_t{1} << (sample_bits - 24);
    for (const bool odd : {false, true}) {
        for (std::int64_t segment = 0; segment < 128; ++segment) {
            const quadratic c = fit(samples_of(128 + segment, 7, twice_the_inverse_root(odd)), bits, half);
            made.add({c.c0 - (std::int64_t{1} << bits), -c.c1, c.c2});
        }
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
