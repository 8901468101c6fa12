#include "model/ieee_order.h"

namespace xfc::model {

bus_bits xfc_extremef(const component_generics& generics, const component_operands& operands) {
    return extreme_ieee(bus_form::single_float, generics.greatest, operands);
}

}  // namespace xfc::model
