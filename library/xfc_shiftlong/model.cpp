#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_shiftlong(const component_generics& generics, const component_operands& operands) {
    constexpr std::int32_t width = 32;
    const auto distance = static_cast<unsigned>(slice(operands.bb, 4, 0));

    // coarse, fine
    switch (generics.direction) {
        case 0:
            return (operands.aa << distance) & low_ones(width);
        case 1:
            return bits_of(sign_extended(operands.aa, width) >> distance, width);
        default:
            return operands.aa >> distance;
    }
}

}  // namespace xfc::model
