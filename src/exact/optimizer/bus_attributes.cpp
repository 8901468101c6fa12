// Gives every bus its width and refuses graphs that no output could be written for.
// Before: components have set the widths of their buses; ports, variables and unmapped nodes have none.
// After:  every node that is driven has widths, and every operand that an instance reads exists.
//     x : Float (0) -> [t] (0) -> [y : Float] (0)   becomes   x (32) -> [t] (32) -> [y] (32)

#include <vector>

#include "exact/dfg/instance_operands.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

void set_both_widths(dfg_node& node, std::int32_t width) {
    node.inputs[0].width = width;
    node.outputs[0].width = width;
}

void set_port_widths() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        if (!is_primary_input(node) && !is_primary_output(node)) {
            continue;
        }
        const std::int32_t width = format_row(node.attributes.format).port_width;
        if (width == 0) {
            fail(message_id::unsupported_io_type);
        }
        set_both_widths(node, width);
    }
}

bool lacks_width(const dfg_node& node) { return node.inputs[0].width == 0 || node.outputs[0].width == 0; }

/// Every node without widths takes its driver's, as soon as that has one. Nodes wait in their driver's list and are
/// served when it gets its width, so a chain of any length costs one step a node.
void propagate_widths() {
    struct waiting_lists {
        std::vector<std::int32_t> first;  // by driver
        std::vector<std::int32_t> next;   // by waiting node
    };
    const auto slots = static_cast<std::size_t>(dfg_used_slots());
    waiting_lists waiting{std::vector<std::int32_t>(slots, no_slot), std::vector<std::int32_t>(slots, no_slot)};
    std::vector<std::int32_t> served;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        const dfg_source* source = source_of(node, 0);
        if (!lacks_width(node) || source == nullptr) {
            continue;
        }
        const std::int32_t driver = source->node;
        if (node_at(driver).outputs[0].width != 0 && waiting.first[static_cast<std::size_t>(driver)] == no_slot) {
            served.push_back(driver);
        }
        waiting.next[static_cast<std::size_t>(slot)] = waiting.first[static_cast<std::size_t>(driver)];
        waiting.first[static_cast<std::size_t>(driver)] = slot;
    }
    while (!served.empty()) {
        const std::int32_t driver = served.back();
        served.pop_back();
        const std::int32_t width = node_at(driver).outputs[0].width;
        for (std::int32_t slot = waiting.first[static_cast<std::size_t>(driver)]; slot != no_slot;
             slot = waiting.next[static_cast<std::size_t>(slot)]) {
            if (lacks_width(node_at(slot))) {
                set_both_widths(node_at(slot), width);
                served.push_back(slot);
            }
        }
    }
}

/// A literal alone cannot drive a wire or a port.
void require_drivers() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        const bool needs_driver = is_primary_output(node) || node.attributes.component == component_id::wire;
        if (needs_driver && !is_primary_input(node) && node.attributes.is_removed == 0 &&
            source_of(node, 0) == nullptr) {
            fail(message_id::constant_drives_variable, node.name);
        }
    }
}

/// Variables may be named like functions and be mapped to components whose operands they do not have.
void require_operands() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (node.attributes.is_removed == 0 && !has_all_instance_operands(node)) {
            fail(message_id::operand_without_driver, node.name);
        }
    }
}

}  // namespace

void assign_remaining_bus_attributes() {
    set_port_widths();
    propagate_widths();
    require_drivers();
    require_operands();
}

}  // namespace xfc
