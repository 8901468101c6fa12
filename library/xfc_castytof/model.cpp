#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castytof(const component_generics&, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::ydouble, 0);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    bus_flags flags = flags_of(operands.aa, layout);
    flags.zip = flags.zip || exponent == 0;
    return to_ieee(field(operands.aa, layout.mantissa), layout.mantissa.width(), exponent,
                   adder_guard_bits - bias_difference, flags, single_shape);
}

}  // namespace xfc::model
