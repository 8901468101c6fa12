#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_castltox(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    constexpr std::int32_t integer_bits = 32;
    constexpr std::int32_t magnitude_bits = integer_bits - 1;
    const bool divider = generics.output_select == 2;

    // magnitude: a divider takes sign and magnitude; 2 ** 31 as half of it, one exponent higher
    const bool sign = bit(operands.aa, integer_bits - 1);
    const bus_bits converted = divider && sign ? (~operands.aa + 1) & low_ones(integer_bits) : operands.aa;
    const bool largest = divider && bit(converted, magnitude_bits);
    const bus_bits value =
        (converted & low_ones(magnitude_bits)) | (bus_bits{largest} << static_cast<unsigned>(magnitude_bits - 1));

    // normalize
    const std::int32_t zeros =
        leading_zeros(sign && !divider ? ~value & low_ones(magnitude_bits) : value, magnitude_bits);
    const bus_bits shifted = shift_left(value, magnitude_bits, zeros, false);
    const bool zip = !bit(shifted, magnitude_bits - 1) && (divider || !sign);
    const std::int32_t of_highest = single_bias + magnitude_bits - 1;
    const std::int32_t exponent =
        of_highest - (generics.output_select == 0 ? adder_guard_bits : 0) - zeros + (largest ? 1 : 0);
    const bus_bits mantissa = ((bus_bits{sign} << static_cast<unsigned>(magnitude_bits)) | shifted)
                              << static_cast<unsigned>(width - integer_bits);
    return internal_bus(layout, mantissa, static_cast<bus_bits>(exponent), {.zip = zip});
}

}  // namespace xfc::model
