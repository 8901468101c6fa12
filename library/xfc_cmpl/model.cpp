#include "model/ieee_order.h"

namespace xfc::model {

bus_bits xfc_cmpl(const component_generics& generics, const component_operands& operands) {
    // relate
    const bool equal = operands.aa == operands.bb;
    const bool less = sign_extended(operands.aa, 32) < sign_extended(operands.bb, 32);
    return static_cast<bus_bits>(relation_holds(generics.relation, false, equal, less));
}

}  // namespace xfc::model
