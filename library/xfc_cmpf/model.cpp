#include "model/ieee_order.h"

namespace xfc::model {

bus_bits xfc_cmpf(const component_generics& generics, const component_operands& operands) {
    return compare_ieee(bus_form::single_float, generics.relation, operands);
}

}  // namespace xfc::model
