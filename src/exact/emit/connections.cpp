#include "exact/emit/connections.h"

#include "exact/dfg/dfg.h"
#include "exact/emit/node_name.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

void connect(const emission& to, std::string_view target, std::string_view value) {
    to.out.append(to.language.assign_open);
    to.out.append(target);
    to.out.append(to.language.assign_arrow);
    to.out.append(value);
    to.out.append(";\n");
}

/// Whether the node is a wire with a driver that something reads.
bool is_read_wire(const dfg_node& node) {
    return !is_primary_input(node) && !is_primary_output(node) && node.attributes.component == component_id::wire &&
           source_of(node, 0) != nullptr;
}

/// Kept: the numbers of all nodes run together on one line, also of those that get no connection.
void log_node(std::int32_t slot) { standard_output.append_integer(slot); }

}  // namespace

void write_node_connections(const emission& to) {
    write_format(standard_output, "\nInputs\n");
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        log_node(slot);
        const dfg_node& node = node_at(slot);
        if (is_primary_input(node)) {
            connect(to, node_name(slot).text(), node.name);
        }
    }
    to.out.append('\n');

    write_format(standard_output, "\nNodes\n");
    bool connected = false;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        log_node(slot);
        const dfg_node& node = node_at(slot);
        if (is_read_wire(node)) {
            connect(to, node_name(slot).text(), node_name(source_of(node, 0)->node).text());
            connected = true;
        }
    }
    if (connected) {
        to.out.append('\n');
    }

    write_format(standard_output, "\nOutputs\n");
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        log_node(slot);
        const dfg_node& node = node_at(slot);
        // The port takes its value from the driver; the output node's own signal stays undriven. A variable that is
        // neither assigned nor read is a port without a driver.
        if (is_primary_output(node) && source_of(node, 0) != nullptr) {
            connect(to, node.name, node_name(source_of(node, 0)->node).text());
        }
    }
    to.out.append('\n');
}

}  // namespace xfc
