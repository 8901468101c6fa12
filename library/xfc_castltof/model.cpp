#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castltof(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t adjust = single_bias + 30;  // exponent field of the highest bit behind the sign
    return to_ieee(operands.aa, 32, 0, adjust, {}, single_shape);
}

}  // namespace xfc::model
