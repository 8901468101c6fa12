#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_alulong(const component_generics&, const component_operands& operands) {
    // complement
    const bus_bits addend = operands.addsub ? ~operands.bb : operands.bb;

    // lower, upper
    return (operands.aa + addend + static_cast<bus_bits>(operands.addsub)) & low_ones(32);
}

}  // namespace xfc::model
