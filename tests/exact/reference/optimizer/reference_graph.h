#pragma once

#include <string_view>

#include "exact/dfg/dfg.h"

namespace xfc::reference {

/// Calls `action` with every node in ascending order, also with those that it creates on the way. The slots behind the
/// used ones are free.
template <class function>
void for_each_node(function action) {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        action(slot);
    }
}

inline std::string_view name_of(std::int32_t slot) { return node_at(slot).name; }
inline std::string_view format_of(std::int32_t slot) { return format_row(attributes_at(slot).format).text; }
inline std::string_view component_of(std::int32_t slot) { return row_of(attributes_at(slot).component).name; }

inline dfg_link* first_consumer(std::int32_t slot) { return consumers_of(node_at(slot)); }
inline const dfg_source* source(std::int32_t slot, std::int32_t port) { return source_of(node_at(slot), port); }
inline bool is_constant(std::int32_t slot, std::int32_t port) { return node_at(slot).inputs[port].is_constant != 0; }

inline bool is_input(std::int32_t slot) {
    return node_at(slot).input_count == 1 && source(slot, 0) == nullptr && !is_constant(slot, 0);
}
inline bool is_additive(std::int32_t slot) { return name_of(slot) == "+" || name_of(slot) == "-"; }
inline bool is_multiplicative(std::int32_t slot) { return name_of(slot) == "*" || name_of(slot) == "/"; }

}  // namespace xfc::reference
