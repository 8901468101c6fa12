#include "model/ieee_pack.h"
#include "model/xfloat.h"

namespace xfc::model {

namespace {

/// The bits of the output forms, by the selector.
enum : std::int32_t { ieee_output, x_output, mult_output, div_output };

/// Bits from `low` on, the ones below or'ed into the lowest.
bus_bits jammed(bus_bits value, std::int32_t low) {
    return (value >> static_cast<unsigned>(low)) | static_cast<bus_bits>((value & low_ones(low)) != 0);
}

struct significand_and_exponent {
    bus_bits mantissa;
    std::int32_t exponent;
};

/// Multiplier and divider form: normalized, 4.0 as 1.0 two exponents higher. `value` has the sign on top (two's
/// complement or not), then 4, 2 and 1, then width - 2 bits.
significand_and_exponent normalized(bus_bits value, std::int32_t width, bool halve, bool four, std::int32_t exponent) {
    const bus_bits sign = slice(value, width + 1, width + 1) << static_cast<unsigned>(width - 1);
    const bus_bits low = value & low_ones(width - 1);
    const bus_bits hidden = static_cast<bus_bits>(bit(value, width - 1) || four) << static_cast<unsigned>(width - 2);
    const bus_bits halved = hidden | jammed(low, 1);
    return {sign | (halve ? halved : low), exponent + (halve ? 1 : 0) + (four ? 1 : 0)};
}

}  // namespace

bus_bits xfc_mulfp1x(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa == 36 ? 36 : 32;  // there are no others
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    const std::int32_t top = 2 * width - 1;

    // choose
    const bus_flags a_flags = flags_of(operands.aa, layout);
    const bus_flags b_flags = flags_of(operands.bb, layout);
    const auto a_exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const auto b_exponent = static_cast<std::int32_t>(field(operands.bb, layout.exponent));
    const bus_bits a_mantissa = field(operands.aa, layout.mantissa);
    const bus_bits b_mantissa = field(operands.bb, layout.mantissa);
    const bool a_zero = !a_flags.sat && (a_flags.zip || a_exponent == 0);
    const bool b_zero = !b_flags.sat && (b_flags.zip || b_exponent == 0);
    const bool sign = bit(a_mantissa, width - 1) != bit(b_mantissa, width - 1);
    const bool nan = a_flags.nan || b_flags.nan || (a_flags.sat && b_zero) || (a_zero && b_flags.sat);
    const bool sat = !nan && (a_flags.sat || b_flags.sat);
    const bool zip = !nan && !sat && (a_zero || b_zero);

    // rows, pairs, sum
    const std::int32_t exponent = a_exponent + b_exponent - single_bias;
    const bus_bits product = bits_of(sign_extended(a_mantissa, width) * sign_extended(b_mantissa, width), 2 * width);

    if (generics.output_select == ieee_output) {
        // a negative product as its ones' complement, one unit short
        const bus_bits magnitude = sign ? ~product & low_ones(2 * width) : product;
        const bool halve = bit(magnitude, top - 1) || bit(magnitude, top - 2);
        const std::int32_t lowest = top - 3 - single_fraction_bits + (halve ? 1 : 0);
        const bus_bits kept = slice(magnitude, top - 1, lowest);
        const bool up = rounds_up(bit(magnitude, lowest), magnitude & low_ones(lowest), lowest, sign);

        // round: what is carried up to the next exponent, or is 4, has a fraction of zero
        const bus_bits significand = kept + static_cast<bus_bits>(up);
        const bool carried = (significand >> (single_fraction_bits + 1U)) != 0;
        const std::int32_t rounded = exponent + (halve ? 1 : 0) + (carried ? 1 : 0);
        return pack_ieee(bus_form::single_float, sign, {.sat = sat, .zip = zip, .nan = nan}, rounded,
                         significand & low_ones(single_fraction_bits));
    }

    // settle
    const bool negative = bit(product, top);
    const bool four = !negative && bit(product, top - 1);
    const bool two = negative != bit(product, top - 2) || four;
    significand_and_exponent result{};
    if (generics.output_select == x_output) {
        const bool halve = generics.outputscale == 1 ? two : exponent == 0;
        const bus_bits kept =
            slice(product, top, width + 2) | static_cast<bus_bits>((product & low_ones(width + 2)) != 0);
        const shifted_right settled = shift_right(kept, width - 2, halve ? 1 : 0);
        result = {bits_of(sign_extended(settled.value | static_cast<bus_bits>(settled.lost), width - 2), width),
                  exponent + (halve ? 1 : 0)};
    } else if (generics.output_select == mult_output) {
        result = normalized(jammed(product, width - 2), width, two, four, exponent);
    } else {
        const bool lost = (product & low_ones(width - 2)) != 0;
        const bus_bits kept = slice(product, top - 1, width - 2);
        const bus_bits magnitude =
            ((negative ? ~kept : kept) + static_cast<bus_bits>(negative && !lost)) & low_ones(width + 1);
        const bool is_four = bit(magnitude, width);
        result = normalized(
            (bus_bits{negative} << static_cast<unsigned>(width + 1)) | magnitude | static_cast<bus_bits>(lost), width,
            is_four || bit(magnitude, width - 1), is_four, exponent);
    }
    const bool too_small = result.exponent <= 0;
    const bool too_large = result.exponent >= xfloat_overflow;
    const bool marked = nan || zip || sat;
    const bus_bits top_bit = bus_bits{1} << static_cast<unsigned>(width - 1);
    const bus_bits marked_mantissa = (result.mantissa & ~top_bit) | (sign ? top_bit : 0);
    return internal_bus(layout, marked ? marked_mantissa : result.mantissa,
                        static_cast<bus_bits>(result.exponent) & low_ones(xfloat_exponent_bits),
                        {.sat = sat || (too_large && !marked), .zip = zip || (too_small && !marked), .nan = nan});
}

}  // namespace xfc::model
