#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_normfp2x(const component_generics& generics, const component_operands& operands) {
    constexpr std::int32_t width = ydouble_mantissa_bits;
    constexpr std::int32_t magnitude_bits = width - 1;
    const bool adder = generics.output_select == 1;
    const bus_layout layout = layout_of(bus_form::ydouble, 0);

    // complement: ones' complement of a negative mantissa; minus a power of two has no 1 behind a 0
    const bus_bits mantissa = field(operands.aa, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bool sign = bit(mantissa, width - 1);
    const bus_bits ones = sign ? low_ones(magnitude_bits) : 0;
    const bool power = sign && (mantissa & ~(mantissa >> 1U) & low_ones(magnitude_bits)) == 0;

    // bytes, coarse, bits, fine
    const normalized found = normalize((mantissa ^ ones) & low_ones(magnitude_bits), magnitude_bits, sign);
    const bus_bits normal = found.normal >> static_cast<unsigned>(found.width - magnitude_bits);

    // decide: an adder's mantissa is complemented again, others keep the missing unit for the rounding
    const std::int32_t leading = exponent + adder_guard_bits + (power && adder ? 1 : 0) - found.zeros;
    const bus_bits hidden = bus_bits{power} << static_cast<unsigned>(magnitude_bits - 1);
    const bus_bits exact = (bus_bits{sign} << static_cast<unsigned>(magnitude_bits)) | (normal ^ ones) | hidden;
    constexpr std::int32_t dropped_bits = magnitude_bits - double_fraction_bits - 1;
    const std::int32_t drop = adder ? adder_guard_bits : dropped_bits;
    const bus_bits source = adder ? exact : normal;
    const bus_bits dropped = source & low_ones(drop);
    bus_bits kept = bits_of(sign_extended(source, width) >> static_cast<unsigned>(drop), width);
    bool up = rounds_up(bit(source, drop), dropped, drop, !adder && sign);
    if (adder && generics.roundnormalize == 0) {
        kept |= static_cast<bus_bits>(dropped != 0);
        up = false;
    }
    const bus_flags flags = flags_of(operands.aa, layout);
    const bool zip = flags.zip || exponent == 0 || !bit(normal, magnitude_bits - 1);

    // round and carry
    const bus_bits sum = (kept + static_cast<bus_bits>(up)) & low_ones(width);

    // settle: what carries out of a multiplier's fraction is the next exponent
    const bool next = !adder && bit(sum, double_fraction_bits + 1);
    const std::int32_t final_exponent = leading + (next ? 1 : 0);
    const bool too_large = final_exponent >= ydouble_overflow;
    const bus_flags result_flags{.sat = !flags.nan && (flags.sat || (too_large && !zip)),
                                 .zip = !flags.nan && !flags.sat && (zip || final_exponent <= 0),
                                 .nan = flags.nan};
    const bus_bits exponent_bits = bits_of(final_exponent, ydouble_exponent_bits);
    if (adder) {
        return internal_bus(layout, sum, exponent_bits, result_flags);
    }
    const bus_bits hidden_one = bus_bits{next} << static_cast<unsigned>(double_fraction_bits);
    const bus_bits magnitude = (sum & low_ones(double_fraction_bits + 1)) | hidden_one;
    return internal_bus(layout_of(bus_form::ydouble_multiplier, 0),
                        (bus_bits{sign} << static_cast<unsigned>(double_fraction_bits + 1)) | magnitude, exponent_bits,
                        result_flags);
}

}  // namespace xfc::model
