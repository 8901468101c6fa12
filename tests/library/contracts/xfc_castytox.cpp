#include <algorithm>
#include <cmath>

#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::ydouble, operand_coding::adder, 0);
    const exact_value after = value_of(result, bus_form::xfloat, operand_coding::adder, generics.mantissa);
    if (before.is == kind::nan || before.is == kind::infinity) {
        return {.met = after.is == before.is && (before.is == kind::nan || after.negative == before.negative)};
    }
    if (before.is == kind::zero) {
        return {.met = after.is == kind::zero && after.negative == before.negative};
    }
    // The lowest bit stands where the operand's exponent puts it, but not below the least exponent.
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout_of(bus_form::ydouble, 0).exponent));
    const std::int32_t grid = std::max(exponent - 1023, -126) - (generics.mantissa - 6);
    mpfr_number exact(128);
    mpfr_number units(128);
    mpfr_number difference(256);
    set_exactly(exact, before);
    mpfr_mul_2si(units, exact, -grid, MPFR_RNDN);
    mpfr_roundeven(units, units);
    const bool overflows = mpfr_get_exp(units) > generics.mantissa - 1 && mpfr_sgn(static_cast<mpfr_srcptr>(units)) > 0;
    if (std::max(exponent - 1023, -126) + 127 + (overflows ? 1 : 0) >= 960) {
        return {.met = after.is == kind::infinity && after.negative == before.negative};
    }
    mpfr_mul_2si(units, units, grid, MPFR_RNDN);
    set_exactly(difference, after);
    const bool met = after.is != kind::nan && after.is != kind::infinity &&
                     mpfr_equal_p(static_cast<mpfr_srcptr>(difference), static_cast<mpfr_srcptr>(units)) != 0;
    // Below the range all is zero, in full units.
    if (exponent - 1023 < -130) {
        return {.met = after.is == kind::zero && after.negative == before.negative};
    }
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, -grid, MPFR_RNDN);
    return {.met = met, .error = std::fabs(mpfr_get_d(difference, MPFR_RNDN))};
}

}  // namespace

extern const contract xfc_castytox;
const contract xfc_castytox{.aa = operand_coding::adder,
                            .promise = "the nearest number in the operand's place; units of the lowest bit",
                            .check = check};

}  // namespace xfc::proof::promises
