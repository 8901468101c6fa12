#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace xfc {

/// Number format of a bus. `none` is the empty format of a node whose operands tell no type.
enum class number_format : std::uint8_t { none, long_integer, single_float, double_float, xfloat, ydouble };

struct number_format_row {
    number_format format;
    std::string_view text;        ///< the name that messages and the graph dump print
    char code;                    ///< the letter of conversion kinds such as castftox; 0 for none
    std::string_view type_label;  ///< the type label of a declaration of this format, if there is one
    std::int32_t port_width;      ///< bits of a port of the datapath in this format; 0: cannot be a port
};

inline constexpr std::array<number_format_row, 6> number_format_table{{
    {number_format::none, "", 0, "", 0},
    {number_format::long_integer, "Long", 'l', "T:Type_Long", 32},
    {number_format::single_float, "Float", 'f', "T:Type_Float", 32},
    {number_format::double_float, "Double", 'd', "T:Type_Double", 64},
    {number_format::xfloat, "XFloat", 'x', "", 0},
    {number_format::ydouble, "YDouble", 'y', "", 0},
}};

constexpr const number_format_row& format_row(number_format format) {
    return number_format_table[static_cast<std::size_t>(format)];
}

}  // namespace xfc
