#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_castxtof(const component_generics& generics, const component_operands& operands);

bus_bits xfc_castltof(const component_generics& generics, const component_operands& operands) {
    component_generics of_32_bits = generics;
    of_32_bits.mantissa = 32;
    constexpr bus_bits integer_exponent = single_bias + 26;
    return xfc_castxtof(of_32_bits, {.aa = (operands.aa << 10U) | integer_exponent});
}

}  // namespace xfc::model
