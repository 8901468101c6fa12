#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "components/component_table.h"

// The head of a component's hardware texts: the names of its generics and ports, in their order.

namespace xfc::proof {

struct entity_port {
    std::string name;
    bool output = false;
    bool operator==(const entity_port&) const = default;
};

struct entity_head {
    std::vector<std::string> generics;
    std::vector<entity_port> ports;
};

/// Reads the head of entity or module `name` out of a file's text; empty lists when there is none.
[[nodiscard]] entity_head read_vhdl_head(std::string_view text, std::string_view name);
[[nodiscard]] entity_head read_verilog_head(std::string_view text, std::string_view name);

/// What the row asks for.
[[nodiscard]] entity_head head_of(const component_row& row);

/// The first difference between a head and the row's, in a sentence; empty when there is none.
[[nodiscard]] std::string difference_of(const entity_head& found, const entity_head& wanted);

}  // namespace xfc::proof
