#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_extremel(const component_generics& generics, const component_operands& operands) {
    // order
    const bool below = sign_extended(operands.aa, 32) < sign_extended(operands.bb, 32);

    // choose
    return below != (generics.greatest == 1) ? operands.aa : operands.bb;
}

}  // namespace xfc::model
