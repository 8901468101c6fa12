#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Every number format and the bits of every bus that carries one. All slices of all outputs come from here.

namespace xfc {

/// Number format of a value. `none` is the empty format of a value whose operands tell no type.
enum class number_format : std::uint8_t { none, long_integer, single_float, double_float, xfloat, ydouble };

struct number_format_row {
    number_format format;
    std::string_view text;    ///< the name that messages and dumps print
    char code;                ///< the letter of conversion names such as castftox; 0 for none
    std::int32_t port_width;  ///< bits of a port of the datapath in this format; 0: cannot be a port
};

inline constexpr std::array<number_format_row, 6> number_format_table{{
    {number_format::none, "", 0, 0},
    {number_format::long_integer, "Long", 'l', 32},
    {number_format::single_float, "Float", 'f', 32},
    {number_format::double_float, "Double", 'd', 64},
    {number_format::xfloat, "XFloat", 'x', 0},
    {number_format::ydouble, "YDouble", 'y', 0},
}};

constexpr const number_format_row& format_row(number_format format) {
    return number_format_table[static_cast<std::size_t>(format)];
}

/// What a bus carries. A format of the inside has several forms: they differ in width or in how the mantissa is coded.
enum class bus_form : std::uint8_t {
    none,                ///< there is no such bus
    long_integer,        ///< two's complement
    single_float,        ///< IEEE single
    double_float,        ///< IEEE double
    xfloat,              ///< single precision inside, as wide as the mantissa generic says
    ydouble,             ///< double precision inside, adder form
    ydouble_multiplier,  ///< double precision inside, as multipliers and dividers read it
};

/// A field of a bus: bits `high` down to `low`, counted from 1; both 0 when the form has no such field.
struct bit_range {
    std::int32_t high = 0;
    std::int32_t low = 0;
    [[nodiscard]] constexpr std::int32_t width() const { return high == 0 ? 0 : high - low + 1; }
};

/// The bits of a form. Flags lie above the value field: a set flag makes the value field meaningless but for its sign.
struct bus_layout {
    std::int32_t width = 0;  ///< bits of the whole bus
    std::int32_t value = 0;  ///< highest bit of the value field, which goes down to bit 1
    std::int32_t sat = 0;    ///< saturated (infinite); 0 when the form has no flags
    std::int32_t zip = 0;    ///< zero
    std::int32_t nan = 0;    ///< not a number
    std::int32_t sign = 0;   ///< IEEE formats: the sign bit, outside the fraction
    bit_range exponent{};    ///< unsigned, with the IEEE format's bias
    bit_range mantissa{};    ///< IEEE: the fraction without its hidden one; inside: the signed mantissa
};

inline constexpr std::int32_t flag_count = 3;
inline constexpr std::int32_t xfloat_exponent_bits = 10;
inline constexpr std::int32_t ydouble_exponent_bits = 13;
inline constexpr std::int32_t ydouble_mantissa_bits = 64;
inline constexpr std::int32_t ydouble_multiplier_mantissa_bits = 54;

/// An internal form from the bits of its two fields: nan, zip, sat, mantissa, exponent from high to low.
constexpr bus_layout internal_layout(std::int32_t mantissa_bits, std::int32_t exponent_bits) {
    const std::int32_t value = mantissa_bits + exponent_bits;
    return {.width = value + flag_count,
            .value = value,
            .sat = value + 1,
            .zip = value + 2,
            .nan = value + 3,
            .exponent = {exponent_bits, 1},
            .mantissa = {value, exponent_bits + 1}};
}

/// The bits of `form`; `mantissa` is the mantissa generic, 32 or 36, and matters to `xfloat` alone.
constexpr bus_layout layout_of(bus_form form, std::int32_t mantissa) {
    switch (form) {
        case bus_form::long_integer:
            return {.width = 32, .value = 32};
        case bus_form::single_float:
            return {.width = 32, .value = 32, .sign = 32, .exponent = {31, 24}, .mantissa = {23, 1}};
        case bus_form::double_float:
            return {.width = 64, .value = 64, .sign = 64, .exponent = {63, 53}, .mantissa = {52, 1}};
        case bus_form::xfloat:
            return internal_layout(mantissa, xfloat_exponent_bits);
        case bus_form::ydouble:
            return internal_layout(ydouble_mantissa_bits, ydouble_exponent_bits);
        case bus_form::ydouble_multiplier:
            return internal_layout(ydouble_multiplier_mantissa_bits, ydouble_exponent_bits);
        case bus_form::none:
            break;
    }
    return {};
}

}  // namespace xfc
