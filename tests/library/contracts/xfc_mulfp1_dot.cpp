#include <cmath>

#include "exact_value.h"
#include "model/xfloat.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const std::int32_t width = generics.mantissa;
    const exact_value a = value_of(operands.aa, bus_form::single_float, operand_coding::plain, width);
    const exact_value b = value_of(operands.bb, bus_form::single_float, operand_coding::plain, width);
    const exact_value product = value_of(result, bus_form::xfloat, operand_coding::adder, width);
    const bool negative = a.negative != b.negative;
    const bool infinite = a.is == kind::infinity || b.is == kind::infinity;
    const bool zero = a.is == kind::zero || b.is == kind::zero;
    if (a.is == kind::nan || b.is == kind::nan || (infinite && zero)) {
        return {.met = product.is == kind::nan};
    }
    if (infinite || zero) {
        return {.met = product.is == (infinite ? kind::infinity : kind::zero) && product.negative == negative};
    }
    const signed_bus_bits mantissa = a.mantissa * b.mantissa;
    mpfr_number exact(128);
    set_exactly(exact,
                {.is = kind::number, .negative = negative, .mantissa = mantissa, .exponent = a.exponent + b.exponent});
    if (product.is == kind::zero) {
        return {.met = mpfr_get_exp(exact) - 1 + single_bias <= 0 && product.negative == negative};
    }
    mpfr_number difference(256);
    set_exactly(difference, product);
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, -product.exponent, MPFR_RNDN);
    const double error = std::fabs(mpfr_get_d(difference, MPFR_RNDN));
    const bool odd_when_lost = error == 0 || (product.mantissa & 1) != 0;
    const signed_bus_bits magnitude = negative ? -product.mantissa : product.mantissa;
    const bool in_form = magnitude < signed_bus_bits{4} << (width - 6);
    return {.met = product.is == kind::number && product.negative == negative && error < 1 && odd_when_lost && in_form,
            .error = error};
}

}  // namespace

extern const contract xfc_mulfp1_dot;
const contract xfc_mulfp1_dot{.promise = "below one low unit, odd when not exact; the unit of the result",
                              .check = check};

}  // namespace xfc::proof::promises
