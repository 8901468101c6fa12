#include "model/adder.h"

namespace xfc::model {

/// The adder of products is the adder.
bus_bits xfc_alufp1_dot(const component_generics& generics, const component_operands& operands) {
    return add_internal(operands, layout_of(bus_form::xfloat, generics.mantissa), xfloat_overflow);
}

}  // namespace xfc::model
