#include "model/ydouble.h"
#include "xfc_divfp2x_table.h"

namespace xfc::model {

namespace {

/// The bits of the output forms, by the selector.
enum : std::int32_t { ieee_output, x_output, div_output };

constexpr std::int32_t scale_bits = 9;                             // behind the point of b's inverse
constexpr std::int32_t point = double_fraction_bits + scale_bits;  // of dividend and divisor when scaled
constexpr std::int32_t first_shift = 5;                            // bits that the first digit gives
constexpr std::int32_t digit_shift = 7;                            // bits that every other gives
constexpr std::int32_t digits = 8;
constexpr std::int32_t quotient_fraction = first_shift + (digits - 1) * digit_shift;
constexpr std::int32_t table_index_bits = 8;

/// b's inverse from the table, in units of 2 ** -scale_bits.
signed_bus_bits inverse_of(bus_bits divisor) {
    const xfc_divfp2x_table_row& row =
        xfc_divfp2x_table[slice(divisor, double_fraction_bits - 1, double_fraction_bits - table_index_bits)];
    signed_bus_bits inverse = 384 - (row.minus_two != 0 ? 256 : 0);
    for (std::int32_t digit = 0; digit < 4; ++digit) {
        const auto code = static_cast<signed_bus_bits>((row.codes >> static_cast<unsigned>(2 * digit)) & 3U);
        inverse += (code - 1) * (signed_bus_bits{1} << static_cast<unsigned>(2 * digit));
    }
    return inverse;
}

/// What comes into the step decide: quotient + remainder / divisor, in units of 2 ** -quotient_fraction, from 1 to 2.
struct found_quotient {
    bus_bits quotient;
    signed_bus_bits remainder;
    std::int32_t exponent;
    bool sign;
    bus_flags flags;
};

bus_bits ieee_or_divider_form(const found_quotient& found, const component_generics& generics) {
    // decide: nothing is halfway between two numbers
    const bool ieee = generics.output_select == ieee_output;
    const bool rounds = !ieee || generics.roundconvert == 1;
    const bool below = found.remainder < 0;
    const bus_bits kept = slice(found.quotient, quotient_fraction - 1, quotient_fraction - double_fraction_bits);
    const bool up = rounds && bit(found.quotient, 1) && (bit(found.quotient, 0) || !below);
    const bool down = !rounds && below && (found.quotient & 3U) == 0;

    // round
    const bus_bits fraction =
        (kept + static_cast<bus_bits>(up) - static_cast<bus_bits>(down)) & low_ones(double_fraction_bits);

    // settle
    if (ieee) {
        return pack(found.sign, found.exponent, fraction, found.flags, double_shape);
    }
    const bool marked = found.flags.nan || found.flags.zip || found.flags.sat;
    const bus_bits sign_and_hidden_one = (bus_bits{found.sign} << 1U) | 1;
    return internal_bus(layout_of(bus_form::ydouble_multiplier, 0),
                        (sign_and_hidden_one << static_cast<unsigned>(double_fraction_bits)) | fraction,
                        bits_of(found.exponent, ydouble_exponent_bits),
                        {.sat = found.flags.sat || (!marked && found.exponent >= ydouble_overflow),
                         .zip = found.flags.zip || (!marked && found.exponent <= 0),
                         .nan = found.flags.nan});
}

bus_bits adder_form(const found_quotient& found) {
    // decide: the sticky bit stands behind the quotient; with it, a quotient that is not exact is truncated
    constexpr std::int32_t kept_bits = quotient_fraction + 1;
    constexpr std::int32_t low_bits = double_fraction_bits + ydouble_low_bits - kept_bits;
    const bool below = found.remainder < 0;
    const bool lost = found.remainder != 0;
    const bus_bits kept = (found.sign ? ~found.quotient : found.quotient) & low_ones(kept_bits);
    const bool up = found.sign && (below || !lost);
    const bool down = !found.sign && below;

    // round
    const bus_bits rounded = (kept + static_cast<bus_bits>(up) - static_cast<bus_bits>(down)) & low_ones(kept_bits);

    // settle
    const bus_bits value = ((rounded << 1U) | static_cast<bus_bits>(lost)) << static_cast<unsigned>(low_bits);
    const bus_bits signs =
        found.sign ? low_ones(ydouble_mantissa_bits) & ~low_ones(kept_bits + 1 + low_bits) : bus_bits{0};
    const bool marked = found.flags.nan || found.flags.zip || found.flags.sat;
    return internal_bus(layout_of(bus_form::ydouble, 0), signs | value, bits_of(found.exponent, ydouble_exponent_bits),
                        {.sat = found.flags.sat || (!marked && found.exponent >= ydouble_overflow),
                         .zip = found.flags.zip || (!marked && found.exponent <= 0),
                         .nan = found.flags.nan});
}

}  // namespace

bus_bits xfc_divfp2x(const component_generics& generics, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::ydouble_multiplier, 0);

    // compare
    const bus_flags a_flags = flags_of(operands.aa, layout);
    const bus_flags b_flags = flags_of(operands.bb, layout);
    const bus_bits a_mantissa = field(operands.aa, layout.mantissa);
    const bus_bits b_mantissa = field(operands.bb, layout.mantissa);
    const auto a_exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const auto b_exponent = static_cast<std::int32_t>(field(operands.bb, layout.exponent));
    const bus_bits hidden_one = bus_bits{1} << static_cast<unsigned>(double_fraction_bits);
    const bus_bits dividend = (a_mantissa & low_ones(double_fraction_bits)) | hidden_one;
    const bus_bits divisor = (b_mantissa & low_ones(double_fraction_bits)) | hidden_one;
    const bool less = dividend < divisor;
    const bool a_zero = a_flags.zip || a_exponent == 0;
    const bool b_zero = b_flags.zip || b_exponent == 0;
    const bool nan = a_flags.nan || b_flags.nan || (a_flags.sat && b_flags.sat) ||
                     (!a_flags.sat && !b_flags.sat && a_zero && b_zero);
    const bool sat = !nan && (a_flags.sat || (b_zero && !b_flags.sat));
    const bool zip = !nan && !sat && (a_zero || b_flags.sat);
    const bool sign = bit(a_mantissa, double_fraction_bits + 1) != bit(b_mantissa, double_fraction_bits + 1);

    // order
    const std::int32_t exponent = a_exponent - b_exponent + double_bias - (less ? 1 : 0);
    const auto ordered = static_cast<signed_bus_bits>(less ? 2 * dividend : dividend);

    // scale, near
    const signed_bus_bits inverse = inverse_of(divisor);
    const signed_bus_bits near_one = static_cast<signed_bus_bits>(divisor) * inverse;
    signed_bus_bits remainder = ordered * inverse;

    // rows, rest: a digit is what is left, to the nearest integer
    signed_bus_bits quotient = 0;
    for (std::int32_t digit = 0; digit < digits; ++digit) {
        const std::int32_t shift = digit == 0 ? first_shift : digit_shift;
        const signed_bus_bits rounding = signed_bus_bits{1} << static_cast<unsigned>(point - shift - 1);
        const signed_bus_bits next = (remainder + rounding) >> static_cast<unsigned>(point - shift);
        quotient = quotient * (signed_bus_bits{1} << static_cast<unsigned>(shift)) + next;
        remainder = remainder * (signed_bus_bits{1} << static_cast<unsigned>(shift)) - next * near_one;
    }

    const found_quotient found{.quotient = static_cast<bus_bits>(quotient),
                               .remainder = remainder,
                               .exponent = exponent,
                               .sign = sign,
                               .flags = {.sat = sat, .zip = zip, .nan = nan}};
    return generics.output_select == x_output ? adder_form(found) : ieee_or_divider_form(found, generics);
}

}  // namespace xfc::model
