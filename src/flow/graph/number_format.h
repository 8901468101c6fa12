#pragma once

#include <cstdint>
#include <string_view>

namespace xfc::flow {

/// The formats that values of a C program have. Integers are 32 bits, two's complement; where signed and unsigned
/// arithmetic give different bits, the operation says which one it is. Booleans are results of comparisons.
enum class number_format : std::uint8_t { boolean, integer, single_float, double_float };

inline constexpr int number_format_count = 4;

/// A format's name in dumps and reports.
[[nodiscard]] constexpr std::string_view format_name(number_format format) {
    constexpr std::string_view names[number_format_count] = {"boolean", "integer", "single", "double"};
    return names[static_cast<int>(format)];
}

/// Width in bits of a value of the format.
[[nodiscard]] constexpr int format_bits(number_format format) {
    constexpr int bits[number_format_count] = {1, 32, 32, 64};
    return bits[static_cast<int>(format)];
}

[[nodiscard]] constexpr bool is_floating(number_format format) { return format >= number_format::single_float; }

}  // namespace xfc::flow
