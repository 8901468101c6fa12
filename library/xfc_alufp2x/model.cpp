#include "model/adder.h"
#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_alufp2x(const component_generics&, const component_operands& operands) {
    return add_internal(operands, layout_of(bus_form::ydouble, 0), ydouble_overflow);
}

}  // namespace xfc::model
