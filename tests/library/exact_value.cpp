#include "exact_value.h"

#include <algorithm>
#include <cmath>

namespace xfc::proof {

namespace {

/// Precision with the hidden one, bias and greatest exponent field of an IEEE form.
struct ieee_shape {
    std::int32_t precision;
    std::int32_t bias;
};
ieee_shape shape_of(bus_form form) {
    return form == bus_form::single_float ? ieee_shape{24, 127} : ieee_shape{53, 1023};
}

exact_value internal_value(bus_bits bus, bus_form form, operand_coding coding, const bus_layout& layout) {
    const bus_flags flags = flags_of(bus, layout);
    const std::int32_t width = layout.mantissa.width();
    const bus_bits mantissa = field(bus, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(bus, layout.exponent));
    exact_value value{.negative = bit(mantissa, width - 1)};
    if (flags.nan || flags.sat) {
        value.is = flags.nan ? exact_value::kind::nan : exact_value::kind::infinity;
        return value;
    }
    value.mantissa = sign_extended(mantissa, width);
    if (coding == operand_coding::sign_magnitude) {
        value.mantissa = static_cast<signed_bus_bits>(mantissa & low_ones(width - 1));
        value.mantissa = value.negative ? -value.mantissa : value.mantissa;
    }
    if (flags.zip || exponent == 0 || value.mantissa == 0) {
        return value;
    }
    value.is = exact_value::kind::number;
    // The hidden one stands behind the sign, in adder form behind four guard bits too.
    const std::int32_t hidden = coding == operand_coding::adder ? width - 6 : width - 2;
    value.exponent = exponent - (form == bus_form::xfloat ? 127 : 1023) - hidden;
    return value;
}

exact_value ieee_value(bus_bits bus, bus_form form, const bus_layout& layout) {
    const ieee_shape shape = shape_of(form);
    const bus_bits fraction = field(bus, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(bus, layout.exponent));
    exact_value value{.negative = bit(bus, layout.sign - 1)};
    if (exponent == 2 * shape.bias + 1) {
        value.is = fraction == 0 ? exact_value::kind::infinity : exact_value::kind::nan;
    } else if (exponent != 0) {
        value.is = exact_value::kind::number;
        value.mantissa =
            static_cast<signed_bus_bits>(fraction) + (signed_bus_bits{1} << static_cast<unsigned>(shape.precision - 1));
        value.mantissa = value.negative ? -value.mantissa : value.mantissa;
        value.exponent = exponent - shape.bias - (shape.precision - 1);
    }
    return value;
}

}  // namespace

exact_value value_of(bus_bits bus, bus_form form, operand_coding coding, std::int32_t mantissa_bits) {
    const bus_layout layout = layout_of(form, mantissa_bits);
    switch (form) {
        case bus_form::single_float:
        case bus_form::double_float:
            return ieee_value(bus, form, layout);
        case bus_form::xfloat:
        case bus_form::ydouble:
        case bus_form::ydouble_multiplier:
            return internal_value(bus, form, coding, layout);
        case bus_form::long_integer: {
            const signed_bus_bits integer = sign_extended(bus, layout.value);
            return {.is = integer == 0 ? exact_value::kind::zero : exact_value::kind::number,
                    .negative = integer < 0,
                    .mantissa = integer};
        }
        default:
            return {};
    }
}

void set_exactly(mpfr_ptr target, const exact_value& value) {
    mpfr_set_zero(target, value.negative ? -1 : 1);
    if (value.is != exact_value::kind::number) {
        return;
    }
    // In two halves: MPFR takes 64 bits at a time.
    const auto magnitude = static_cast<bus_bits>(value.negative ? -value.mantissa : value.mantissa);
    mpfr_set_ui(target, static_cast<unsigned long>(magnitude >> 64U), MPFR_RNDN);
    mpfr_mul_2ui(target, target, 64, MPFR_RNDN);
    mpfr_add_ui(target, target, static_cast<unsigned long>(magnitude & low_ones(64)), MPFR_RNDN);
    mpfr_mul_2si(target, target, value.exponent, MPFR_RNDN);
    if (value.negative) {
        mpfr_neg(target, target, MPFR_RNDN);
    }
}

bus_bits ieee_special(exact_value::kind kind, bool negative, bus_form form) {
    const bus_layout layout = layout_of(form, 32);
    const bus_bits sign = bus_bits{negative} << static_cast<unsigned>(layout.sign - 1);
    const bus_bits infinity = low_ones(layout.exponent.width()) << static_cast<unsigned>(layout.exponent.low - 1);
    switch (kind) {
        case exact_value::kind::nan:
            return infinity | (bus_bits{1} << static_cast<unsigned>(layout.mantissa.high - 1));
        case exact_value::kind::infinity:
            return sign | infinity;
        default:
            return sign;
    }
}

bus_bits nearest_ieee(mpfr_srcptr number, bool negative, bus_form form) {
    const ieee_shape shape = shape_of(form);
    const bus_layout layout = layout_of(form, 32);
    mpfr_number rounded(shape.precision);
    mpfr_set(rounded, number, MPFR_RNDN);
    if (mpfr_zero_p(static_cast<mpfr_srcptr>(rounded)) != 0) {
        return ieee_special(exact_value::kind::zero, negative, form);
    }
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(rounded)) - 1 + shape.bias;
    if (exponent < 1) {
        return ieee_special(exact_value::kind::zero, negative, form);
    }
    if (exponent > 2 * shape.bias) {
        return ieee_special(exact_value::kind::infinity, negative, form);
    }
    mpfr_abs(rounded, rounded, MPFR_RNDN);
    mpfr_mul_2si(rounded, rounded, shape.precision - 1 + shape.bias - exponent, MPFR_RNDN);
    const bus_bits fraction = mpfr_get_ui(rounded, MPFR_RNDN) & low_ones(shape.precision - 1);
    return ieee_special(exact_value::kind::zero, negative, form) |
           (static_cast<bus_bits>(exponent) << static_cast<unsigned>(layout.exponent.low - 1)) | fraction;
}

double ulps_between(const exact_value& result, mpfr_srcptr exact, bus_form form) {
    const ieee_shape shape = shape_of(form);
    mpfr_number difference(mpfr_get_prec(exact) + 256);
    set_exactly(difference, result);
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    if (mpfr_zero_p(static_cast<mpfr_srcptr>(difference)) != 0) {
        return 0;
    }
    const auto least = static_cast<mpfr_exp_t>(2 - shape.bias);
    const mpfr_exp_t binade = mpfr_zero_p(exact) != 0 ? least : std::max(mpfr_get_exp(exact), least);
    mpfr_mul_2si(difference, difference, shape.precision - static_cast<long>(binade), MPFR_RNDN);
    return std::fabs(mpfr_get_d(difference, MPFR_RNDN));
}

double units_between(const exact_value& result, mpfr_srcptr exact, long exponent) {
    mpfr_number difference(mpfr_get_prec(exact) + 256);
    set_exactly(difference, result);
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, -exponent, MPFR_RNDN);
    return std::fabs(mpfr_get_d(difference, MPFR_RNDN));
}

bool lacks_hidden_one(bus_bits bus, const bus_layout& layout) {
    const bus_flags flags = flags_of(bus, layout);
    return !bit(bus, layout.mantissa.high - 2) && field(bus, layout.exponent) != 0 && !flags.nan && !flags.sat &&
           !flags.zip;
}

}  // namespace xfc::proof
