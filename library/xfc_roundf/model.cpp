#include "model/ieee_round.h"

namespace xfc::model {

bus_bits xfc_roundf(const component_generics& generics, const component_operands& operands) {
    return round_ieee(bus_form::single_float, generics.rounding, operands.aa);
}

}  // namespace xfc::model
