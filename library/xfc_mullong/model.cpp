#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_mullong(const component_generics&, const component_operands& operands) {
    // choose, rows, sum
    return (operands.aa * operands.bb) & low_ones(32);
}

}  // namespace xfc::model
