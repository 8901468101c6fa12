#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_select(const component_generics& generics, const component_operands& operands) {
    // choose
    return (operands.condition ? operands.aa : operands.bb) & low_ones(generics.width);
}

}  // namespace xfc::model
