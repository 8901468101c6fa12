#include "model/ydouble.h"

namespace xfc::model {

bus_bits castxtod(const component_generics& generics, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::xfloat, generics.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    bus_flags flags = flags_of(operands.aa, layout);
    flags.zip = flags.zip || exponent == 0;
    return to_ieee(field(operands.aa, layout.mantissa), layout.mantissa.width(), exponent,
                   adder_guard_bits + bias_difference, flags, double_shape);
}

}  // namespace xfc::model
