#pragma once

#include "model/ydouble.h"

// What the models of the double-precision functions share.

namespace xfc {

inline constexpr bus_bits quiet_double_nan = bus_bits{0x7FF8} << 48U;

/// The common part xfc_polynomial_step: `coefficient` less `value` times a position of so many bits behind the point,
/// the product truncated. No difference is negative.
constexpr bus_bits polynomial_step(bus_bits coefficient, bus_bits value, bus_bits position,
                                   std::int32_t position_bits) {
    return coefficient - ((value * position) >> static_cast<unsigned>(position_bits));
}

}  // namespace xfc
