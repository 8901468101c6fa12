#pragma once

#include "model/xfloat.h"

// The common part xfc_adder_form_to_long, for the models of xfc_castxtol and xfc_castytol.

namespace xfc {

/// The value of an internal bus as an integer of 32 bits. With the exponent `exponent_without_shift` the mantissa's
/// lowest bit is worth 2 ** 31.
constexpr bus_bits adder_form_to_long(bus_bits bus, std::int32_t mantissa_bits, std::int32_t exponent_bits,
                                      std::int32_t exponent_without_shift) {
    const bus_layout layout = internal_layout(mantissa_bits, exponent_bits);
    constexpr std::int32_t wide_bits = 64;
    constexpr std::int32_t window_bits = 63;

    // place: the window holds the integer's bits and 31 more, after a shift by none, one or two of its words
    const auto exponent = static_cast<std::int32_t>(field(bus, layout.exponent));
    const signed_bus_bits number = sign_extended(field(bus, layout.mantissa), mantissa_bits);
    const bus_bits mantissa = bits_of(number, wide_bits);
    const bool sign = bit(mantissa, wide_bits - 1);
    const bus_flags flags = flags_of(bus, layout);
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
        window = bits_of(number >> 33U, window_bits);
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

}  // namespace xfc
