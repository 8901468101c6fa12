#include "model/ydouble.h"

namespace xfc::model {

bus_bits castftoy(const component_generics& generics, const component_operands& operands) {
    // unpack, with the other bias: ones' complement of a negative number for an adder
    const unpacked_ieee single_in = unpack(operands.aa, single_shape);
    const bool complements = generics.output_select == 1 && single_in.sign;
    const std::int32_t width = single_fraction_bits + 1;
    const bus_bits magnitude = (bus_bits{1} << static_cast<unsigned>(single_fraction_bits)) | single_in.fraction;
    const bus_bits significand = complements ? ~magnitude & low_ones(width) : magnitude;
    const auto exponent = static_cast<bus_bits>(single_in.exponent + bias_difference);

    // convert: the significand is never zero, so nothing is carried into the sign
    const bus_bits sum = (significand + static_cast<bus_bits>(complements)) & low_ones(width);
    const bus_bits fraction = (sum << static_cast<unsigned>(double_fraction_bits - single_fraction_bits));
    if (generics.output_select == 0) {
        const bus_bits sign = bus_bits{single_in.sign} << static_cast<unsigned>(double_fraction_bits + 1);
        return internal_bus(layout_of(bus_form::ydouble_multiplier, 0), sign | fraction, exponent, single_in.flags);
    }
    const bus_bits front = single_in.sign ? low_ones(adder_guard_bits + 1) : 0;
    const bus_bits mantissa = ((front << static_cast<unsigned>(double_fraction_bits + 1)) | fraction)
                              << static_cast<unsigned>(ydouble_low_bits);
    return internal_bus(layout_of(bus_form::ydouble, 0), mantissa, exponent, single_in.flags);
}

}  // namespace xfc::model
