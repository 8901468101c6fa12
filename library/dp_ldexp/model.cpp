#include "model/ieee_pack.h"

namespace xfc::model {

bus_bits dp_ldexp(const component_generics&, const component_operands& operands) {
    return scale_ieee(bus_form::double_float, operands);
}

}  // namespace xfc::model
