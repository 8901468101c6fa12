#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castdtof(const component_generics&, const component_operands& operands) {
    // decide
    constexpr std::int32_t dropped_bits = double_fraction_bits - single_fraction_bits;
    const unpacked_ieee wide = unpack(operands.aa, double_shape);
    const bool up =
        rounds_up(bit(wide.fraction, dropped_bits), wide.fraction & low_ones(dropped_bits), dropped_bits, false);
    const std::int32_t exponent = wide.exponent - bias_difference;

    // pack: the fraction carries into the exponent
    const bus_bits fraction = (wide.fraction >> static_cast<unsigned>(dropped_bits)) + static_cast<bus_bits>(up);
    const auto carry = static_cast<std::int32_t>(fraction >> static_cast<unsigned>(single_fraction_bits));
    return pack(wide.sign, exponent + carry, fraction, wide.flags, single_shape);
}

}  // namespace xfc::model
