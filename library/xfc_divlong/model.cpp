#include "model/component_model.h"

namespace xfc::model {

bus_bits xfc_divlong(const component_generics& generics, const component_operands& operands) {
    constexpr std::int32_t width = 32;
    constexpr std::int32_t remainder_bits = width + 1;  // two's complement

    // magnitude
    const bool a_negative = bit(operands.aa, width - 1);
    const bool b_negative = bit(operands.bb, width - 1);
    bus_bits quotient = a_negative ? bits_of(-sign_extended(operands.aa, width), width) : operands.aa;
    const bus_bits divisor = b_negative ? bits_of(-sign_extended(operands.bb, width), width) : operands.bb;
    const bool negate = generics.remainder == 1 ? a_negative : a_negative != b_negative;

    // digit, 32 times: the dividend leaves the register that the digits enter
    bus_bits remainder = 0;
    for (std::int32_t digit = 0; digit < width; ++digit) {
        const bool negative = bit(remainder, remainder_bits - 1);
        const bus_bits shifted = (remainder << 1U) | static_cast<bus_bits>(bit(quotient, width - 1));
        remainder = (negative ? shifted + divisor : shifted - divisor) & low_ones(remainder_bits);
        const bool positive = !bit(remainder, remainder_bits - 1);
        quotient = ((quotient << 1U) | static_cast<bus_bits>(positive)) & low_ones(width);
    }

    // restore
    const bool below_zero = bit(remainder, remainder_bits - 1);
    const bus_bits restored = (remainder + (below_zero ? divisor : 0)) & low_ones(width);
    const bus_bits magnitude = generics.remainder == 1 ? restored : quotient;

    // sign
    return negate ? bits_of(-static_cast<signed_bus_bits>(magnitude), width) : magnitude;
}

}  // namespace xfc::model
