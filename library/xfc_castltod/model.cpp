#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castltod(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t adjust = double_bias + 30;  // exponent field of the highest bit behind the sign
    return to_ieee(operands.aa, 32, 0, adjust, {}, double_shape);
}

}  // namespace xfc::model
