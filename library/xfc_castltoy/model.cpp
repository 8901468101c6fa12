#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castltoy(const component_generics& generics, const component_operands& operands) {
    constexpr std::int32_t width = 32;
    const bool sign = bit(operands.aa, width - 1);
    const bus_flags flags{.zip = operands.aa == 0};
    constexpr std::int32_t exponent = double_bias + width - 1;
    if (generics.output_select == 1) {
        // place
        constexpr std::int32_t hidden = double_fraction_bits + ydouble_low_bits;
        const bus_bits mantissa =
            bits_of(sign_extended(operands.aa, width), ydouble_mantissa_bits - (hidden - width + 1));
        return internal_bus(layout_of(bus_form::ydouble, 0), mantissa << static_cast<unsigned>(hidden - width + 1),
                            bus_bits{exponent}, flags);
    }

    // magnitude
    const bus_bits magnitude = sign ? (~operands.aa + 1) & low_ones(width) : operands.aa;

    // normalize
    const normalized found = normalize(magnitude, width, false);

    // place
    const bus_bits front = bus_bits{sign} << static_cast<unsigned>(double_fraction_bits + 1);
    return internal_bus(layout_of(bus_form::ydouble_multiplier, 0),
                        front | (found.normal << static_cast<unsigned>(double_fraction_bits + 1 - found.width)),
                        static_cast<bus_bits>(exponent - found.zeros), flags);
}

}  // namespace xfc::model
