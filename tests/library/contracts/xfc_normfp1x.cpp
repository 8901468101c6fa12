#include <cmath>

#include "exact_value.h"
#include "model/xfloat.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const std::int32_t width = generics.mantissa;
    const operand_coding codings[] = {operand_coding::multiplier, operand_coding::sign_magnitude,
                                      operand_coding::adder};
    const operand_coding coding = codings[generics.output_select];
    const exact_value before = value_of(operands.aa, bus_form::xfloat, operand_coding::adder, width);
    const exact_value after = value_of(result, bus_form::xfloat, coding, width);
    if (before.is != kind::number) {
        return {.met = after.is == before.is && (before.is == kind::nan || after.negative == before.negative)};
    }
    mpfr_number exact(128);
    set_exactly(exact, before);
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(exact)) - 1 + single_bias;
    if (after.is != kind::number) {
        const bool right = after.is == kind::zero ? exponent <= 0 : after.is == kind::infinity && exponent >= 960;
        return {.met = right && after.negative == before.negative};
    }
    mpfr_number difference(256);
    set_exactly(difference, after);
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, -after.exponent, MPFR_RNDN);
    const double error = std::fabs(mpfr_get_d(difference, MPFR_RNDN));
    const bool adder = generics.output_select == 2;
    const bool rounds = adder && generics.roundnormalize == 1;
    const bool odd_when_lost = error == 0 || rounds || (after.mantissa & 1) != 0;
    const bool near_enough = !adder ? error == 0 : rounds ? error <= 0.5 : error < 1;
    const signed_bus_bits magnitude = after.negative ? -after.mantissa : after.mantissa;
    const signed_bus_bits one = signed_bus_bits{1} << (width - (adder ? 6 : 2));
    const bool in_form = magnitude >= one && (rounds ? magnitude <= 2 * one : magnitude < 2 * one);
    const bool in_range = field(result, layout_of(bus_form::xfloat, width).exponent) < xfloat_overflow;
    return {.met = after.negative == before.negative && near_enough && odd_when_lost && in_form && in_range,
            .error = error};
}

}  // namespace

extern const contract xfc_normfp1x;
const contract xfc_normfp1x{
    .aa = operand_coding::adder,
    .promise = "the same value, 1 or more and below 2; target 2 below one low unit, half with roundnormalize",
    .check = check};

}  // namespace xfc::proof::promises
