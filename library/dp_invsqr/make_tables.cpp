// Makes the table of dp_invsqr. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

namespace {

/// 1 / sqrt(m) or, with `odd`, 1 / sqrt(2 m).
function inverse_root(bool odd) {
    return [odd](mpfr_ptr number) {
        mpfr_mul_2si(number, number, odd ? 1 : 0, MPFR_RNDN);
        mpfr_rec_sqrt(number, number, MPFR_RNDN);
    };
}

}  // namespace

int main(int count, char** arguments) {
    constexpr std::int32_t bits = 34;  // behind the point of all coefficients
    table made(
        "dp_invsqr_table",
        "1 / sqrt(m) and 1 / sqrt(2 m) in 256 segments each as c0 - c1 u + c2 u ** 2, units of 2 ** -34. What all\n"
        "errors can put above the function is taken off c0.",
        9, {{"level", bits}, {"slope", 25}, {"curve", 17}});
    for (const bool odd : {false, true}) {
        const std::int64_t below = std::int64_t{odd ? 13 : 17} << (sample_bits - bits);
        for (std::int64_t segment = 256; segment < 512; ++segment) {
            const quadratic c = fit(samples_of(segment, 8, inverse_root(odd)), bits, -below);
            made.add({c.c0, -c.c1, c.c2});
        }
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
