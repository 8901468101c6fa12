#include "model/ieee_pack.h"

namespace xfc::model {

bus_bits fp_ldexp(const component_generics&, const component_operands& operands) {
    return scale_ieee(bus_form::single_float, operands);
}

}  // namespace xfc::model
