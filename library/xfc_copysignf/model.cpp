#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_copysignf(const component_generics&, const component_operands& operands) {
    // sign
    constexpr bus_bits sign = bus_bits{1} << static_cast<unsigned>(layout_of(bus_form::single_float, 0).sign - 1);
    return (operands.aa & (sign - 1)) | (operands.bb & sign);
}

}  // namespace xfc::model
