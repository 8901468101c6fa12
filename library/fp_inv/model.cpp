#include "model/digit_recurrence.h"

namespace xfc::model {

bus_bits fp_inv(const component_generics&, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::single_float, 0);
    const std::int32_t fraction_bits = layout.mantissa.width();
    constexpr std::int32_t digits = 12;
    constexpr bus_bits greatest_exponent = 255;

    // unpack
    const bus_bits sign = bus_bits{bit(operands.aa, layout.sign - 1)} << static_cast<unsigned>(layout.sign - 1);
    const auto packed = [&](bus_bits exponent, bus_bits fraction) {
        return (exponent << static_cast<unsigned>(fraction_bits)) | fraction;
    };
    const bus_bits exponent = field(operands.aa, layout.exponent);
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool power_of_two = fraction == 0;
    if (exponent == greatest_exponent && !power_of_two) {
        return packed(greatest_exponent, bus_bits{1} << static_cast<unsigned>(fraction_bits - 1));
    }
    if (exponent == 0) {
        return sign | packed(greatest_exponent, 0);
    }
    const bus_bits sum_of_exponents = power_of_two ? 254 : 253;
    if (exponent >= sum_of_exponents) {
        return sign;
    }
    const bus_bits result_exponent = sum_of_exponents - exponent;
    if (power_of_two) {
        return sign | packed(result_exponent, 0);
    }
    const std::uint64_t one = std::uint64_t{1} << static_cast<unsigned>(fraction_bits);
    const std::uint64_t divisor = one | static_cast<std::uint64_t>(fraction);
    quotient_state<std::uint64_t> state{2 * one - divisor, 1};

    // digit
    for (std::int32_t known = 1; known <= digits; ++known) {
        state = divide_digit(state, divisor);
    }

    // round
    const bus_bits rounded = (state.quotient >> 1U) + (state.quotient & 1U);
    return sign | packed(result_exponent, rounded & low_ones(fraction_bits));
}

}  // namespace xfc::model
