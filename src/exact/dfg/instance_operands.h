#pragma once

#include "exact/dfg/dfg.h"

namespace xfc {

/// How a component is instantiated.
enum class instance_kind : std::uint8_t {
    none,               ///< without an instance: the value is passed on as it stands
    operator_instance,  ///< operands aa and bb, result cc
    single_function,    ///< unpacked single-precision operand and result
    double_function,    ///< unpacked double-precision operand and result
};

[[nodiscard]] instance_kind instance_kind_of(const component_row& row);

/// What an instance's operand is connected to.
struct instance_operand {
    enum class origin : std::uint8_t { missing, constant_signal, driver } from;
    std::int32_t driver;  ///< slot of the driving node, when there is one
};

/// The operand that the node's instance reads from input `port` (0: aa, 1: bb). A constant counts where the component
/// accepts constants, and then comes before a driver.
[[nodiscard]] instance_operand operator_operand(const dfg_node& node, std::int32_t port);

/// The value that the node's library function unpacks.
[[nodiscard]] instance_operand function_value_operand(const dfg_node& node);

/// The integer scale of ldexp. Kept: without a constant it comes from the second input, as the value does.
[[nodiscard]] instance_operand function_scale_operand(const dfg_node& node);

/// Whether every operand that the node's instance reads exists; true for a node without an instance.
[[nodiscard]] bool has_all_instance_operands(const dfg_node& node);

}  // namespace xfc
