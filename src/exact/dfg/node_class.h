#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "components/component_table.h"
#include "exact/run/graph_records.h"

// What a node is, told by its name. A variable named like an operation or a function is taken for one; operators and
// inserted nodes have names that no variable can have, but for "cast", "norm" and "delay".

namespace xfc {

namespace node_names {

inline constexpr std::string_view add = "+";
inline constexpr std::string_view subtract = "-";
inline constexpr std::string_view multiply = "*";
inline constexpr std::string_view divide = "/";
inline constexpr std::string_view conversion = "cast";
inline constexpr std::string_view normalizer = "norm";
inline constexpr std::string_view delay = "delay";
inline constexpr std::string_view negation = "negate";

}  // namespace node_names

/// A library function.
struct function_row {
    std::string_view name;
    std::int32_t arguments;                       ///< 0: no source program can call it
    component_id single_precision;                ///< for a result in Float
    component_id double_precision;                ///< for a result in Double; `wire` when there is none
    bool single_second_input_is_32_bits = false;  ///< Kept: the double-precision scale input gets no width.
};

/// Every library function, once.
[[nodiscard]] std::span<const function_row> function_table();

/// The function of that name, or null.
[[nodiscard]] const function_row* find_function(std::string_view name);

/// What a node of that name is.
[[nodiscard]] node_class classify_name(std::string_view name);

[[nodiscard]] constexpr bool is_additive(node_class node) {
    return node == node_class::add || node == node_class::subtract;
}
[[nodiscard]] constexpr bool is_multiplicative(node_class node) {
    return node == node_class::multiply || node == node_class::divide;
}

}  // namespace xfc
