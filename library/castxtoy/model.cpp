#include "model/ydouble.h"

namespace xfc::model {

bus_bits castxtoy(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout layout = layout_of(bus_form::xfloat, width);

    // flags
    const bus_bits mantissa = field(operands.aa, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    bus_flags flags = flags_of(operands.aa, layout);
    flags.zip = flags.zip || exponent == 0;
    if (generics.output_select == 1) {
        // place
        return internal_bus(layout_of(bus_form::ydouble, 0),
                            mantissa << static_cast<unsigned>(ydouble_mantissa_bits - width),
                            static_cast<bus_bits>(exponent + bias_difference), flags);
    }

    // magnitude
    const bool sign = bit(mantissa, width - 1);
    const bus_bits magnitude = sign ? (~mantissa + 1) & low_ones(width) : mantissa;

    // normalize
    const normalized found = normalize(magnitude, width, false);

    // place: the sign counts as a guard bit, for -2 to the power mantissa - 1 has a magnitude
    flags.zip = flags.zip || mantissa == 0;
    const bus_bits front = bus_bits{sign} << static_cast<unsigned>(double_fraction_bits + 1);
    const std::int32_t leading = exponent + bias_difference + adder_guard_bits + 1 - found.zeros;
    return internal_bus(layout_of(bus_form::ydouble_multiplier, 0),
                        front | (found.normal << static_cast<unsigned>(double_fraction_bits + 1 - found.width)),
                        static_cast<bus_bits>(leading), flags);
}

}  // namespace xfc::model
