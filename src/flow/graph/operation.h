#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "flow/graph/number_format.h"

namespace xfc::flow {

/// What a value is the result of. The order is that of the rows in operation.cpp.
enum class operation : std::uint8_t {
    input,     ///< drives a port of the design into the graph; no operands, the port's number instead
    constant,  ///< known bits; no operands, the bits instead
    add,
    subtract,
    multiply,
    divide,     ///< integers: toward zero, as in C
    remainder,  ///< integers: sign of the dividend, as in C
    negate,
    absolute,
    minimum,  ///< the number, where one operand is not a number
    maximum,
    copy_sign,  ///< size of the first operand, sign of the second
    square_root,
    inverse,              ///< 1 / x
    inverse_square_root,  ///< 1 / sqrt(x)
    exponential,
    logarithm,
    exponential_2,
    logarithm_2,
    logarithm_10,
    scale,        ///< first operand * 2^second
    whole_power,  ///< first operand to the power of the second, an integer constant of -64 to 64
    floor,
    ceiling,
    truncate,
    round,  ///< halves away from zero, as in C
    bit_and,
    bit_or,
    bit_xor,
    bit_not,
    shift_left,
    shift_right,           ///< copies of the sign come in
    shift_right_unsigned,  ///< zeros come in
    less,
    less_equal,
    equal,
    select,   ///< condition ? second : third
    convert,  ///< to the value's own format; to integers toward zero, out of range the nearest end, not a number 0
};

inline constexpr int operation_count = static_cast<int>(operation::convert) + 1;
inline constexpr int most_operands = 3;

/// What an operation asks of one operand's format.
enum class operand_rule : std::uint8_t {
    none,       ///< there is no such operand
    as_result,  ///< the format of the result
    alike,      ///< one format for all operands of this rule, whatever the result has
    integer,    ///< always an integer
    known,      ///< an integer constant
    condition,  ///< always a boolean
    any_other,  ///< any number but one of the result's format
};

/// A set of formats, one bit each.
struct format_set {
    std::uint8_t bits = 0;

    [[nodiscard]] constexpr bool contains(number_format format) const {
        return ((bits >> static_cast<unsigned>(format)) & 1U) != 0;
    }
};

/// All facts about one operation.
struct operation_row {
    operation op;
    std::string_view name;  ///< in dumps and reports
    std::array<operand_rule, most_operands> operands;
    bool commutative;
    format_set results;        ///< formats that the result may have
    format_set alike_formats;  ///< formats that operands of the rule `alike` may have

    [[nodiscard]] constexpr int arity() const {
        int count = 0;
        while (count < most_operands && operands[static_cast<unsigned>(count)] != operand_rule::none) {
            ++count;
        }
        return count;
    }
};

[[nodiscard]] const operation_row& row_of(operation op);

/// The operation that bears this name in dumps.
[[nodiscard]] std::optional<operation> operation_named(std::string_view name);

}  // namespace xfc::flow
