#include "exact_value.h"
#include "model/ydouble.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

/// What the product is when an operand is no number.
kind special_product(kind a, kind b) {
    const bool infinite = a == kind::infinity || b == kind::infinity;
    const bool zero = a == kind::zero || b == kind::zero;
    return a == kind::nan || b == kind::nan || (infinite && zero) ? kind::nan
           : infinite                                             ? kind::infinity
           : zero                                                 ? kind::zero
                                                                  : kind::number;
}

/// Adder form: from 1 to 4, or half of that with exponent field 1; odd when bits are lost.
verdict check_adder_form(mpfr_srcptr exact, bool negative, const exact_value& product) {
    // The field that a product from 1 to 2 has.
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(exact)) - 1 + double_bias;
    if (product.is != kind::number) {
        const bool right = product.is == kind::zero       ? exponent <= 0
                           : product.is == kind::infinity ? exponent >= ydouble_overflow
                                                          : false;
        return {.met = right && product.negative == negative};
    }
    const double error = units_between(product, exact, product.exponent);
    const signed_bus_bits one = signed_bus_bits{1} << (double_fraction_bits + ydouble_low_bits);
    const signed_bus_bits magnitude = negative ? -product.mantissa : product.mantissa;
    const bool odd_when_lost = error == 0 || (product.mantissa & 1) != 0;
    const bool in_form = magnitude <= 4 * one && (magnitude >= one || (magnitude >= one / 2 && exponent == 0));
    return {
        .met = product.negative == negative && error < 1 && odd_when_lost && in_form && exponent <= ydouble_overflow,
        .error = error};
}

/// Multiplier form: the nearest of 53 bits.
verdict check_multiplier_form(mpfr_srcptr exact, bool negative, const exact_value& product) {
    mpfr_number expected(double_fraction_bits + 1);
    mpfr_set(expected, exact, MPFR_RNDN);
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(expected)) - 1 + double_bias;
    if (exponent <= 0 || exponent >= ydouble_overflow) {
        return {.met = product.is == (exponent <= 0 ? kind::zero : kind::infinity) && product.negative == negative};
    }
    mpfr_number delivered(128);
    set_exactly(delivered, product);
    const signed_bus_bits magnitude = negative ? -product.mantissa : product.mantissa;
    return {.met = product.is == kind::number && product.negative == negative &&
                   (magnitude >> double_fraction_bits) == 1 && mpfr_equal_p(delivered, expected) != 0,
            .error = units_between(product, exact, product.exponent)};
}

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const bus_layout layout = layout_of(bus_form::ydouble_multiplier, 0);
    const auto read = [](bus_bits bus) {
        return value_of(bus, bus_form::ydouble_multiplier, operand_coding::sign_magnitude, 0);
    };
    const exact_value a = read(operands.aa);
    const exact_value b = read(operands.bb);
    const bool negative = a.negative != b.negative;
    const kind expected = special_product(a.is, b.is);
    const bool ieee = generics.output_select == 0;
    const bool adder_form = generics.output_select == 1;
    const exact_value product = ieee ? value_of(result, bus_form::double_float, operand_coding::plain, 0)
                                : adder_form
                                    ? value_of(result, bus_form::ydouble, operand_coding::adder, 0)
                                    : value_of(result, bus_form::ydouble_multiplier, operand_coding::sign_magnitude, 0);
    if (lacks_hidden_one(operands.aa, layout) || lacks_hidden_one(operands.bb, layout)) {
        return {};
    }
    if (expected != kind::number) {
        const bool same = product.is == expected && (expected == kind::nan || product.negative == negative);
        return {.met = ieee ? result == ieee_special(expected, negative, bus_form::double_float) : same};
    }
    mpfr_number exact(128);
    mpfr_number factor(128);
    set_exactly(exact, a);
    set_exactly(factor, b);
    mpfr_mul(exact, exact, factor, MPFR_RNDN);
    if (ieee) {
        const bool in_range = product.is == kind::number;
        return {.met = result == nearest_ieee(exact, negative, bus_form::double_float),
                .error = in_range ? ulps_between(product, exact, bus_form::double_float) : 0};
    }
    return adder_form ? check_adder_form(exact, negative, product) : check_multiplier_form(exact, negative, product);
}

}  // namespace

extern const contract xfc_mulfp2x;
const contract xfc_mulfp2x{
    .aa = operand_coding::sign_magnitude,
    .bb = operand_coding::sign_magnitude,
    .promise = "the nearest double, or of 53 bits; adder form below one low unit, odd when not exact; ulp or low units",
    .check = check};

}  // namespace xfc::proof::promises
