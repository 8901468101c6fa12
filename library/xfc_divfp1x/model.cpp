#include "model/digit_recurrence.h"
#include "model/xfloat.h"

namespace xfc::model {

namespace {

constexpr std::int32_t digits = 12;
constexpr std::int32_t value_bits = 2 * digits + 2;  // hidden one, digits, sticky bit

/// What comes into the step settle.
struct settled_quotient {
    bus_bits quotient;  ///< hidden one and digits
    bool exact;
    std::int32_t exponent;
    bool sign;
    bus_flags flags;
};

bus_bits ieee_result(const settled_quotient& found, bool rounds) {
    const bus_bits signed_zero = bus_bits{found.sign} << 31U;
    if (found.flags.nan) {
        return quiet_single_nan;
    }
    const bus_bits kept = (found.quotient >> 1U) & low_ones(single_fraction_bits);
    const bus_bits dropped = ((found.quotient & 1U) << 1U) | static_cast<bus_bits>(!found.exact);
    const bool up = rounds && rounds_up(bit(found.quotient, 1), dropped, 2, false);
    const bus_bits fraction = kept + static_cast<bus_bits>(up);
    const std::int32_t exponent = found.exponent + static_cast<std::int32_t>(fraction >> single_fraction_bits);
    if (!found.flags.sat && (found.flags.zip || exponent <= 0)) {
        return signed_zero;
    }
    if (found.flags.sat || exponent >= single_exponent_of_infinity) {
        return signed_zero | (bus_bits{single_exponent_of_infinity} << single_fraction_bits);
    }
    return signed_zero | (static_cast<bus_bits>(exponent) << single_fraction_bits) |
           (fraction & low_ones(single_fraction_bits));
}

/// `output_select` is 1 for the adder form, 2 for multipliers, 3 for dividers.
bus_bits internal_result(const settled_quotient& found, const component_generics& generics, const bus_layout& layout) {
    const std::int32_t width = generics.mantissa;
    const std::int32_t low_bits = width - value_bits - (generics.output_select == 1 ? 1 + adder_guard_bits : 1);
    const bus_bits magnitude = ((found.quotient << 1U) | static_cast<bus_bits>(!found.exact))
                               << static_cast<unsigned>(low_bits);
    const bus_bits sign_and_magnitude = (bus_bits{found.sign} << static_cast<unsigned>(width - 1)) | magnitude;
    const bus_bits complemented = found.sign ? (~magnitude + 1) & low_ones(width) : magnitude;
    const bus_flags flags = found.flags;
    const bool too_small = found.exponent <= 0 && !flags.nan && !flags.sat;
    const bool too_large = found.exponent >= xfloat_overflow && !flags.nan && !flags.zip;
    return internal_bus(layout, generics.output_select == 3 ? sign_and_magnitude : complemented,
                        static_cast<bus_bits>(found.exponent) & low_ones(xfloat_exponent_bits),
                        {.sat = flags.sat || too_large, .zip = flags.zip || too_small, .nan = flags.nan});
}

}  // namespace

bus_bits xfc_divfp1x(const component_generics& generics, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::xfloat, generics.mantissa);
    const std::int32_t magnitude_bits = generics.mantissa - 1;

    // order
    const bus_flags a_flags = flags_of(operands.aa, layout);
    const bus_flags b_flags = flags_of(operands.bb, layout);
    const bus_bits a_mantissa = field(operands.aa, layout.mantissa);
    const bus_bits b_mantissa = field(operands.bb, layout.mantissa);
    const auto a_exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const auto b_exponent = static_cast<std::int32_t>(field(operands.bb, layout.exponent));
    const bus_bits hidden_one = bus_bits{1} << static_cast<unsigned>(magnitude_bits - 1);
    const bus_bits dividend = (a_mantissa & low_ones(magnitude_bits)) | hidden_one;
    const bus_bits divisor = (b_mantissa & low_ones(magnitude_bits)) | hidden_one;
    const bool less = dividend < divisor;
    quotient_state<bus_bits> state{(less ? 2 * dividend : dividend) - divisor, 1};
    const bool a_zero = a_flags.zip || a_exponent == 0;
    const bool b_zero = b_flags.zip || b_exponent == 0;
    const bool nan = a_flags.nan || b_flags.nan || (a_flags.sat && b_flags.sat) ||
                     (!a_flags.sat && !b_flags.sat && a_zero && b_zero);
    const bool sat = !nan && (a_flags.sat || (b_zero && !b_flags.sat));
    const bool zip = !nan && !sat && (a_zero || b_flags.sat);
    const bool sign = bit(a_mantissa, magnitude_bits) != bit(b_mantissa, magnitude_bits);

    // range
    const std::int32_t exponent = a_exponent - b_exponent + single_bias - (less ? 1 : 0);

    // digit, last
    for (std::int32_t known = 1; known <= digits; ++known) {
        state = divide_digit(state, divisor);
    }

    // settle
    const settled_quotient found{.quotient = state.quotient,
                                 .exact = state.remainder == 0,
                                 .exponent = exponent,
                                 .sign = sign,
                                 .flags = {.sat = sat, .zip = zip, .nan = nan}};
    return generics.output_select == 0 ? ieee_result(found, generics.roundconvert == 1)
                                       : internal_result(found, generics, layout);
}

}  // namespace xfc::model
