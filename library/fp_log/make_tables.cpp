// Makes the table of fp_log. Usage: make_tables FOLDER
#include "../common/table_generator.h"

using namespace xfc::tables;

int main(int count, char** arguments) {
    constexpr std::int32_t bits = 28;  // behind the point of all coefficients
    table made("fp_log_table",
               "ln(m) / (m - 1) as c0 - c1 u + c2 u ** 2, units of 2 ** -28: 128 segments from m = 1 to 1.5, then 64\n"
               "from 0.75 to 1.",
               8, {{"level", bits + 1}, {"slope", 20}, {"curve", 12}});
    const function quotient = [](mpfr_ptr number) {
        mpfr_t below;
        mpfr_init2(below, 200);
        mpfr_sub_ui(below, number, 1, MPFR_RNDN);
        mpfr_log(number, number, MPFR_RNDN);
        mpfr_div(number, number, below, MPFR_RNDN);
        if (mpfr_nan_p(number) != 0) {
            mpfr_set_ui(number, 1, MPFR_RNDN);
        }
        mpfr_clear(below);
    };
    for (std::int64_t row = 0; row < 192; ++row) {
        const std::int64_t segment = row < 128 ? 256 + row : 192 + row - 128;
        const quadratic c = fit(samples_of(segment, 8, quotient), bits, 0);
        made.add({c.c0, -c.c1, c.c2});
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
