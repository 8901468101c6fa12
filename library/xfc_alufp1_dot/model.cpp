#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_alufp1x(const component_generics& generics, const component_operands& operands);

/// The adder of products is the adder.
bus_bits xfc_alufp1_dot(const component_generics& generics, const component_operands& operands) {
    return xfc_alufp1x(generics, operands);
}

}  // namespace xfc::model
