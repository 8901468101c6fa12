#include <cmath>

#include "exact_value.h"
#include "model/xfloat.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

/// Magnitudes from 1 to 2, as all components deliver them to a multiplier.
bool normalized(bus_bits bus, std::int32_t width) {
    const signed_bus_bits mantissa = sign_extended(field(bus, layout_of(bus_form::xfloat, width).mantissa), width);
    const signed_bus_bits one = signed_bus_bits{1} << (width - 2);
    return mantissa >= one || mantissa <= -one;
}

/// What the product is when an operand is no number.
kind special_product(const exact_value& a, const exact_value& b) {
    const bool infinite = a.is == kind::infinity || b.is == kind::infinity;
    const bool zero = a.is == kind::zero || b.is == kind::zero;
    return a.is == kind::nan || b.is == kind::nan || (infinite && zero) ? kind::nan
           : infinite                                                   ? kind::infinity
           : zero                                                       ? kind::zero
                                                                        : kind::number;
}

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const std::int32_t width = generics.mantissa;
    const auto read = [&](bus_bits bus) { return value_of(bus, bus_form::xfloat, operand_coding::multiplier, width); };
    const exact_value a = read(operands.aa);
    const exact_value b = read(operands.bb);
    const bool negative = a.negative != b.negative;
    const kind expected = special_product(a, b);
    const bool ieee = generics.output_select == 0;
    const operand_coding codings[] = {operand_coding::plain, operand_coding::adder, operand_coding::multiplier,
                                      operand_coding::sign_magnitude};
    const operand_coding coding = codings[generics.output_select];
    const exact_value product = value_of(result, ieee ? bus_form::single_float : bus_form::xfloat, coding, width);
    if (expected != kind::number) {
        const bool same = product.is == expected && (expected == kind::nan || product.negative == negative);
        return {.met = ieee ? result == ieee_special(expected, negative, bus_form::single_float) : same};
    }
    if (!normalized(operands.aa, width) || !normalized(operands.bb, width)) {
        return {};
    }
    mpfr_number exact(128);
    mpfr_number factor(128);
    set_exactly(exact, a);
    set_exactly(factor, b);
    mpfr_mul(exact, exact, factor, MPFR_RNDN);
    if (ieee) {
        const bool in_range = product.is == kind::number;
        return {.met = result == nearest_ieee(exact, negative, bus_form::single_float),
                .error = in_range ? ulps_between(product, exact, bus_form::single_float) : 0};
    }

    // The field that a product from 1 to 2 has.
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(exact)) - 1 + single_bias;
    if (product.is != kind::number) {
        const bool right = product.is == kind::zero       ? exponent <= 0
                           : product.is == kind::infinity ? exponent >= xfloat_overflow
                                                          : false;
        return {.met = right && product.negative == negative};
    }
    mpfr_number difference(256);
    set_exactly(difference, product);
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, -product.exponent, MPFR_RNDN);
    const double error = std::fabs(mpfr_get_d(difference, MPFR_RNDN));
    const bool odd_when_lost = error == 0 || (product.mantissa & 1) != 0;
    const signed_bus_bits magnitude = negative ? -product.mantissa : product.mantissa;
    const std::int32_t hidden = width - (coding == operand_coding::adder ? 6 : 2);
    const signed_bus_bits one = signed_bus_bits{1} << hidden;
    const bool unscaled = generics.output_select == 1 && generics.outputscale == 0;
    const bool in_form = unscaled ? magnitude <= 4 * one : magnitude >= one && magnitude <= 2 * one;
    const bool in_range = field(result, layout_of(bus_form::xfloat, width).exponent) < xfloat_overflow;
    return {.met = product.negative == negative && in_range && error < 1 && odd_when_lost && in_form, .error = error};
}

}  // namespace

extern const contract xfc_mulfp1x;
const contract xfc_mulfp1x{
    .aa = operand_coding::multiplier,
    .bb = operand_coding::multiplier,
    .promise =
        "ieeeoutput the nearest single, to even between two, in ulp; else below one low unit, odd when not exact",
    .check = check};

}  // namespace xfc::proof::promises
