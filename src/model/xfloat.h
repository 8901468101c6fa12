#pragma once

#include "model/component_model.h"

// What the models of several components share: the single-precision internal form in its codings, and the common parts.
//
//   adder form       sign, 4 guard bits, hidden one, fraction ...     two's complement
//   multiplier form  sign, hidden one, fraction ...                   two's complement
//   divider form     sign, hidden one, fraction ...                   sign and magnitude

namespace xfc {

inline constexpr std::int32_t adder_guard_bits = 4;
inline constexpr std::int32_t single_fraction_bits = 23;
inline constexpr std::int32_t single_bias = 127;
inline constexpr std::int32_t single_exponent_of_infinity = 255;
inline constexpr bus_bits quiet_single_nan = 0x7FC00000;
/// Exponents from here on have their four high bits set: what is delivered with one of them is infinite.
inline constexpr std::int32_t xfloat_overflow = 960;

/// The common part xfc_shift_right: a signed value shifted right, and whether a 1 went over the edge.
struct shifted_right {
    bus_bits value;
    bool lost;
};
constexpr shifted_right shift_right(bus_bits value, std::int32_t width, std::int32_t distance) {
    const std::int32_t effective = std::min(distance, width);
    const signed_bus_bits shifted = sign_extended(value, width) >> static_cast<unsigned>(std::min(effective, 127));
    const bool beyond = distance > width && bit(value, width - 1);  // copies of the sign go over the edge too
    return {bits_of(shifted, width), (value & low_ones(effective)) != 0 || beyond};
}

/// The common part xfc_shift_left: the low bits are copies of `fill`.
constexpr bus_bits shift_left(bus_bits value, std::int32_t width, std::int32_t distance, bool fill) {
    const bus_bits filled = fill ? low_ones(std::min(distance, width)) : 0;
    return distance >= width ? filled : ((value << static_cast<unsigned>(distance)) | filled) & low_ones(width);
}

/// The common part xfc_leading_zeros.
constexpr std::int32_t leading_zeros(bus_bits value, std::int32_t width) {
    std::int32_t count = 0;
    while (count < width && !bit(value, width - 1 - count)) {
        ++count;
    }
    return count;
}

/// The common part xfc_round_even.
constexpr bool rounds_up(bool lowest, bus_bits dropped, std::int32_t width, bool complemented) {
    const bool half = bit(dropped, width - 1);
    const bus_bits rest = dropped & low_ones(width - 1);
    return complemented ? half || (lowest && rest == low_ones(width - 1)) : half && (lowest || rest != 0);
}

}  // namespace xfc
