#include "model/ieee_order.h"

namespace xfc::model {

bus_bits xfc_extremed(const component_generics& generics, const component_operands& operands) {
    return extreme_ieee(bus_form::double_float, generics.greatest, operands);
}

}  // namespace xfc::model
