#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castftod(const component_generics&, const component_operands& operands) {
    // unpack
    const unpacked_ieee single = unpack(operands.aa, single_shape);
    const std::int32_t exponent = single.exponent + bias_difference;

    // pack
    constexpr std::int32_t tail = double_fraction_bits - single_fraction_bits;
    return pack(single.sign, exponent, single.fraction << static_cast<unsigned>(tail), single.flags, double_shape);
}

}  // namespace xfc::model
