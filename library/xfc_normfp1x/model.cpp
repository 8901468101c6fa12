#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_normfp1x(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    const std::int32_t magnitude_bits = width - 1;
    const bool divider = generics.output_select == 1;
    const bool adder = generics.output_select == 2;
    const bus_bits hidden = bus_bits{1} << static_cast<unsigned>(magnitude_bits - 1);

    // magnitude: a divider takes sign and magnitude; -32 as half of it, one exponent higher
    const bus_flags flags = flags_of(operands.aa, layout);
    const bus_bits mantissa = field(operands.aa, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bool sign = bit(mantissa, width - 1);
    const bus_bits converted = divider && sign ? (~mantissa + 1) & low_ones(width) : mantissa;
    const bool largest = divider && bit(converted, width - 1);
    const bus_bits value = (converted | (largest ? hidden : 0)) & low_ones(magnitude_bits);

    // count
    const bus_bits counted = sign && !divider ? ~value & low_ones(magnitude_bits) : value;
    const std::int32_t zeros = leading_zeros(counted, magnitude_bits);

    // coarse and fine
    const bus_bits shifted = shift_left(value, magnitude_bits, zeros, false);
    const std::int32_t leading = exponent + adder_guard_bits - zeros;

    // round: -2 is -1, one exponent higher
    const bool is_minus_two = !divider && sign && shifted == 0;
    const bus_bits normal = shifted | (is_minus_two ? hidden : 0);
    const bool zero = flags.zip || exponent == 0 || !(bit(shifted, magnitude_bits - 1) || (sign && !divider));
    const bus_bits dropped = normal & low_ones(adder_guard_bits);
    const bus_bits kept = (bus_bits{sign} << static_cast<unsigned>(width - adder_guard_bits - 1)) |
                          (normal >> static_cast<unsigned>(adder_guard_bits));
    const bool up = generics.roundnormalize == 1 && rounds_up(bit(kept, 0), dropped, adder_guard_bits, false);
    const bool jams = generics.roundnormalize == 0 && dropped != 0;
    const signed_bus_bits rounded =
        sign_extended(kept | static_cast<bus_bits>(jams), width - adder_guard_bits) + (up ? 1 : 0);
    const bus_bits result =
        adder ? bits_of(rounded, width) : (bus_bits{sign} << static_cast<unsigned>(width - 1)) | normal;

    // settle
    const std::int32_t next_exponent = leading + (is_minus_two || largest ? 1 : 0);
    const bool sat = flags.sat && !flags.nan;
    const bool zip = zero && !flags.nan && !flags.sat;
    const bool marked = flags.nan || sat || zip;
    const bus_bits top_bit = bus_bits{1} << static_cast<unsigned>(width - 1);
    return internal_bus(layout, marked ? (result & ~top_bit) | (sign ? top_bit : 0) : result,
                        bits_of(next_exponent, xfloat_exponent_bits),
                        {.sat = sat || (next_exponent >= xfloat_overflow && !marked),
                         .zip = zip || (next_exponent <= 0 && !marked),
                         .nan = flags.nan});
}

}  // namespace xfc::model
