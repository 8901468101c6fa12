#pragma once

#include "exact/dfg/dfg.h"

namespace xfc {

/// Whether the node adds or subtracts. Names are compared as they stand, also those of variables.
[[nodiscard]] inline bool is_additive_node(std::int32_t slot) {
    const std::string_view name = node_at(slot).name;
    return name == "+" || name == "-";
}

/// Whether the node multiplies or divides.
[[nodiscard]] inline bool is_multiplicative_node(std::int32_t slot) {
    const std::string_view name = node_at(slot).name;
    return name == "*" || name == "/";
}

}  // namespace xfc
