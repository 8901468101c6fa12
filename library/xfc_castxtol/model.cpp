#include "model/adder_form_to_long.h"

namespace xfc::model {

bus_bits xfc_castxtol(const component_generics& generics, const component_operands& operands) {
    // Behind the hidden one stand the fraction and the mantissa's low bits.
    const std::int32_t bits_behind_one = generics.mantissa - 2 - adder_guard_bits;
    const std::int32_t exponent_without_shift = single_bias + bits_behind_one + 31;
    return adder_form_to_long(operands.aa, generics.mantissa, xfloat_exponent_bits, exponent_without_shift);
}

}  // namespace xfc::model
