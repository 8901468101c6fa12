#include "model/adder_form_to_long.h"
#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castytol(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t exponent_without_shift = double_bias + double_fraction_bits + ydouble_low_bits + 31;
    return adder_form_to_long(operands.aa, ydouble_mantissa_bits, ydouble_exponent_bits, exponent_without_shift);
}

}  // namespace xfc::model
