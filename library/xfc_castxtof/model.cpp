#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_castxtof(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    const std::int32_t magnitude_bits = width - 1;
    const std::int32_t dropped_bits = magnitude_bits - single_fraction_bits - 1;

    // complement
    const bus_bits mantissa = field(operands.aa, layout.mantissa);
    const bool sign = bit(mantissa, width - 1);
    const bus_bits magnitude = (sign ? ~mantissa : mantissa) & low_ones(magnitude_bits);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bus_flags flags = flags_of(operands.aa, layout);

    // count
    const std::int32_t zeros = leading_zeros(magnitude, magnitude_bits);

    // coarse and fine: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
    const bus_bits normal = shift_left(magnitude, magnitude_bits, zeros, sign);
    const std::int32_t leading = exponent + adder_guard_bits - zeros;

    // decide
    const bus_bits dropped = normal & low_ones(dropped_bits);
    const bool up = rounds_up(bit(normal, dropped_bits), dropped, dropped_bits, sign);
    const bool zero = flags.zip || exponent == 0 || !bit(normal, magnitude_bits - 1);

    // round: the fraction carries into the exponent
    const bus_bits kept = slice(normal, magnitude_bits - 2, dropped_bits);
    const bus_bits fraction = kept + static_cast<bus_bits>(up);
    const std::int32_t rounded = leading + static_cast<std::int32_t>(fraction >> single_fraction_bits);

    // pack
    const bus_bits signed_zero = bus_bits{sign} << 31U;
    if (flags.nan) {
        return quiet_single_nan;
    }
    if (!flags.sat && (zero || rounded <= 0)) {
        return signed_zero;
    }
    if (flags.sat || rounded >= single_exponent_of_infinity) {
        return signed_zero | (bus_bits{single_exponent_of_infinity} << single_fraction_bits);
    }
    return signed_zero | (static_cast<bus_bits>(rounded) << single_fraction_bits) |
           (fraction & low_ones(single_fraction_bits));
}

}  // namespace xfc::model
