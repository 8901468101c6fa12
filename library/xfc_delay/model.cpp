#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_delay(const component_generics& generics, const component_operands& operands) {
    return operands.aa & low_ones(generics.width);
}

}  // namespace xfc::model
