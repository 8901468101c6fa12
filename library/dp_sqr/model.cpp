#include "model/digit_recurrence.h"

namespace xfc::model {

bus_bits dp_sqr(const component_generics&, const component_operands& operands) {
    return square_root<bus_bits>(operands.aa, bus_form::double_float);
}

}  // namespace xfc::model
