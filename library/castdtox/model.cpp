#include "model/ydouble.h"

namespace xfc::model {

bus_bits castdtox(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    const std::int32_t signs = generics.output_select == 0 ? adder_guard_bits + 1 : 1;
    const std::int32_t fraction_bits = width - signs - 1;
    const std::int32_t dropped_bits = double_fraction_bits - fraction_bits;
    const bool complements = generics.output_select != 2;

    // decide
    const unpacked_ieee wide = unpack(operands.aa, double_shape);
    const bool up =
        rounds_up(bit(wide.fraction, dropped_bits), wide.fraction & low_ones(dropped_bits), dropped_bits, false);
    const std::int32_t exponent = wide.exponent - bias_difference;

    // round: the fraction carries into the exponent
    const bus_bits rounded = (wide.fraction >> static_cast<unsigned>(dropped_bits)) + static_cast<bus_bits>(up);
    const std::int32_t leading = exponent + static_cast<std::int32_t>(rounded >> static_cast<unsigned>(fraction_bits));
    const bus_bits significand =
        (bus_bits{1} << static_cast<unsigned>(fraction_bits)) | (rounded & low_ones(fraction_bits));

    // range
    const bool too_large = leading >= xfloat_overflow;
    const bus_flags flags{.sat = !wide.flags.nan && (wide.flags.sat || (too_large && !wide.flags.zip)),
                          .zip = !wide.flags.nan && !wide.flags.sat && (wide.flags.zip || leading <= 0),
                          .nan = wide.flags.nan};

    // complement: the significand is never zero, so nothing is carried into the sign
    const bus_bits magnitude_ones = complements && wide.sign ? low_ones(fraction_bits + 1) : 0;
    const bus_bits sum = ((significand ^ magnitude_ones) + static_cast<bus_bits>(complements && wide.sign)) &
                         low_ones(fraction_bits + 1);
    const bus_bits front = wide.sign ? low_ones(signs) : 0;
    return internal_bus(layout, (front << static_cast<unsigned>(fraction_bits + 1)) | sum,
                        bits_of(leading, xfloat_exponent_bits), flags);
}

}  // namespace xfc::model
