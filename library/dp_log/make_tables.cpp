// Makes the table of dp_log. Usage: make_tables FOLDER
#include <array>

#include "../common/table_generator.h"

using namespace xfc::tables;

namespace {

constexpr std::int32_t bits = 61;        // behind the point of all coefficients
constexpr std::int32_t precision = 256;  // of the numbers on the way
constexpr std::size_t terms = 6;

/// Chebyshev points of [0, 1] for polynomials of the fifth degree, in units of 2 ** -20.
constexpr std::array<std::int64_t, terms> points = {17865, 153530, 388593, 659983, 895046, 1030711};

class number {
public:
    number() { mpfr_init2(value_, precision); }
    ~number() { mpfr_clear(value_); }
    number(const number&) = delete;
    number& operator=(const number&) = delete;
    operator mpfr_ptr() { return value_; }

private:
    mpfr_t value_;
};

/// Sets the number to ln(1 + y) / y for y = numerator * 2 ** -28, which is not 0.
void quotient(mpfr_ptr value, std::int64_t numerator) {
    number y;
    mpfr_set_si_2exp(y, numerator, -28, MPFR_RNDN);
    mpfr_log1p(value, y, MPFR_RNDN);
    mpfr_div(value, value, y, MPFR_RNDN);
}

/// The rounded coefficients of the polynomial through the points of the segment from y = start * 2 ** -8 on; those of
/// odd powers are negated, so that none is negative.
std::vector<std::int64_t> coefficients(std::int64_t start) {
    std::array<number, terms> newton;  // divided differences
    for (std::size_t i = 0; i < terms; ++i) {
        quotient(newton[i], start * (1 << 20) + points[i]);
    }
    for (std::size_t order = 1; order < terms; ++order) {
        for (std::size_t i = terms - 1; i >= order; --i) {
            mpfr_sub(newton[i], newton[i], newton[i - 1], MPFR_RNDN);
            mpfr_mul_2si(newton[i], newton[i], 20, MPFR_RNDN);
            mpfr_div_si(newton[i], newton[i], points[i] - points[i - order], MPFR_RNDN);
        }
    }
    // From the highest product (u - point) on: c = c * (u - point) + difference.
    std::array<number, terms> power;
    for (number& each : power) {
        mpfr_set_zero(each, 1);
    }
    number part;
    for (std::size_t i = terms; i-- > 0;) {
        for (std::size_t k = terms; k-- > 0;) {
            mpfr_mul_si(part, power[k], -points[i], MPFR_RNDN);
            mpfr_div_2si(part, part, 20, MPFR_RNDN);
            mpfr_add(power[k], part, k > 0 ? static_cast<mpfr_ptr>(power[k - 1]) : newton[i], MPFR_RNDN);
        }
    }
    std::vector<std::int64_t> row;
    for (std::size_t k = 0; k < terms; ++k) {
        mpfr_mul_2si(power[k], power[k], bits, MPFR_RNDN);
        const std::int64_t value = mpfr_get_si(power[k], MPFR_RNDN);
        row.push_back(k % 2 == 0 ? value : -value);
    }
    return row;
}

}  // namespace

int main(int count, char** arguments) {
    table made("dp_log_table",
               "ln(m) / (m - 1) as c0 - c1 u + c2 u ** 2 - c3 u ** 3 + c4 u ** 4 - c5 u ** 5, units of 2 ** -61: 128\n"
               "segments from m = 1 to 1.5, then 64 from 0.75 to 1.",
               8, {{"c0", 62}, {"c1", 53}, {"c2", 45}, {"c3", 37}, {"c4", 29}, {"c5", 21}});
    for (std::int64_t row = 0; row < 192; ++row) {
        made.add(coefficients(row < 128 ? row : row - 192));
    }
    return count == 2 ? made.write(arguments[1]) : 1;
}
