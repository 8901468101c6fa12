#pragma once

#include <cstdint>
#include <limits>

namespace xfc {

// 32-bit arithmetic that wraps, as the hardware's integers do.

constexpr std::int32_t wrapping_add(std::int32_t left, std::int32_t right) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) + static_cast<std::uint32_t>(right));
}

constexpr std::int32_t wrapping_subtract(std::int32_t left, std::int32_t right) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) - static_cast<std::uint32_t>(right));
}

constexpr std::int32_t wrapping_multiply(std::int32_t left, std::int32_t right) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(left) * static_cast<std::uint32_t>(right));
}

/// A number truncated toward zero and clamped to the 32-bit range; what is not a number gives 0.
constexpr std::int32_t truncate_to_int32(double value) {
    constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto highest = std::numeric_limits<std::int32_t>::max();
    if (value <= static_cast<double>(lowest)) {
        return lowest;
    }
    if (value >= static_cast<double>(highest)) {
        return highest;
    }
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

}  // namespace xfc
