#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castytox(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const std::int32_t dropped_bits = ydouble_mantissa_bits - width;
    const bus_layout from = layout_of(bus_form::ydouble, 0);
    const bus_layout layout = layout_of(bus_form::xfloat, width);

    // align: what has used guard bits at the lower end of the range is shifted into it
    const bus_flags flags = flags_of(operands.aa, from);
    const auto exponent_in = static_cast<std::int32_t>(field(operands.aa, from.exponent));
    const bus_bits mantissa = field(operands.aa, from.mantissa);
    const std::int32_t exponent = exponent_in - bias_difference;
    const std::int32_t distance = exponent <= 0 && exponent > -adder_guard_bits ? 1 - exponent : 0;
    const shifted_right aligned = shift_right(mantissa, ydouble_mantissa_bits, distance);
    const bool zero = exponent <= -adder_guard_bits;

    // round: halve when the guard bits are used up
    const bus_bits dropped = ((aligned.value & low_ones(dropped_bits)) << 1U) | static_cast<bus_bits>(aligned.lost);
    const bool up = rounds_up(bit(aligned.value, dropped_bits), dropped, dropped_bits + 1, false);
    const signed_bus_bits sum =
        (sign_extended(aligned.value, ydouble_mantissa_bits) >> static_cast<unsigned>(dropped_bits)) + (up ? 1 : 0);
    const bus_bits sum_bits = bits_of(sum, width + 1);
    const bool halve = bit(sum_bits, width) != bit(sum_bits, width - 1);
    const std::int32_t next = (distance != 0 ? 1 : exponent) + (halve ? 1 : 0);
    const bool zip = flags.zip || zero || mantissa == 0;
    const bus_flags marks{.sat = !flags.nan && (flags.sat || (next >= xfloat_overflow && !zip)),
                          .zip = !flags.nan && !flags.sat && zip,
                          .nan = flags.nan};
    // With a flag the sign is the operand's.
    const bool marked = marks.sat || marks.zip || marks.nan;
    const bool sign = marked ? bit(mantissa, ydouble_mantissa_bits - 1) : bit(sum_bits, width);
    const bus_bits result = (sum_bits >> (halve ? 1U : 0U)) & low_ones(width - 1);
    return internal_bus(layout, (bus_bits{sign} << static_cast<unsigned>(width - 1)) | result,
                        bits_of(next, xfloat_exponent_bits), marks);
}

}  // namespace xfc::model
