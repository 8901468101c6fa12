#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castytol(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t window_bits = 63;
    const bus_layout layout = layout_of(bus_form::ydouble, 0);

    // place: the window holds the integer's bits and 31 more, after a shift by none, one or two of its words
    const bus_bits mantissa = field(operands.aa, layout.mantissa);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bool sign = bit(mantissa, ydouble_mantissa_bits - 1);
    const bus_flags flags = flags_of(operands.aa, layout);
    constexpr std::int32_t exponent_without_shift = double_bias + double_fraction_bits + ydouble_low_bits + 31;
    const std::int32_t distance = exponent_without_shift - exponent;
    const bool negative_distance = distance < 0;
    const std::int32_t words = distance >> 5U;
    bus_bits window = 0;
    bool lost = false;
    bool beyond = false;
    if (negative_distance) {
        beyond = mantissa != 0;
    } else if (words == 0) {
        window = (mantissa & low_ones(32)) << 31U;
        const bus_bits front = mantissa >> 31U;
        beyond = front != 0 && front != low_ones(33);
    } else if (words == 1) {
        window = mantissa >> 1U;
        lost = bit(mantissa, 0);
    } else if (words == 2) {
        window = bits_of(sign_extended(mantissa, ydouble_mantissa_bits) >> 33U, window_bits);
        lost = (mantissa & low_ones(33)) != 0;
    }

    // coarse, fine
    const std::int32_t rest = distance & 31;
    const bool lost_before = lost;
    const shifted_right shifted = shift_right(window, window_bits, rest);

    // truncate: toward zero is one more for a negative number that lost bits
    const bool up = sign && (shifted.lost || lost_before);
    const bus_bits whole = (shifted.value + static_cast<bus_bits>(up)) & low_ones(32);
    const bus_bits front = shifted.value >> 31U;
    beyond = beyond || (front != 0 && front != low_ones(32));

    // settle
    const bool zero = flags.nan || (!flags.sat && (flags.zip || exponent == 0));
    if (zero) {
        return 0;
    }
    return flags.sat || beyond ? (sign ? bus_bits{0x80000000} : bus_bits{0x7FFFFFFF}) : whole;
}

}  // namespace xfc::model
