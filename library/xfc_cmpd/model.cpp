#include "model/ieee_order.h"

namespace xfc::model {

bus_bits xfc_cmpd(const component_generics& generics, const component_operands& operands) {
    return compare_ieee(bus_form::double_float, generics.relation, operands);
}

}  // namespace xfc::model
