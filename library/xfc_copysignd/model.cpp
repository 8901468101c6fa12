#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_copysignd(const component_generics&, const component_operands& operands) {
    // sign
    constexpr bus_bits sign = bus_bits{1} << static_cast<unsigned>(layout_of(bus_form::double_float, 0).sign - 1);
    return (operands.aa & (sign - 1)) | (operands.bb & sign);
}

}  // namespace xfc::model
