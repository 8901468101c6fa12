#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_bitlong(const component_generics& generics, const component_operands& operands) {
    // combine
    switch (generics.bitoperation) {
        case 0:
            return operands.aa & operands.bb;
        case 1:
            return operands.aa | operands.bb;
        default:
            return operands.aa ^ operands.bb;
    }
}

}  // namespace xfc::model
