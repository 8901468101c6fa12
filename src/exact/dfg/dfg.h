#pragma once

#include <cstdint>
#include <string_view>

#include "exact/dfg/node_class.h"
#include "exact/run/compilation.h"

// The dataflow graph: its records stand in exact/run/graph_records.h; here are the ways to make and to read it.

namespace xfc {

/// Makes the empty graph with 10000 free slots, handed out as 0, 1, 2, ...
void dfg_create_graph();

/// Takes the next free slot for a node of that name; doubles the capacity first when none is free. The name is kept by
/// reference and must outlive the graph.
std::int32_t dfg_create_node(std::string_view name, std::int32_t input_count, std::int32_t output_count);

/// The lowest slot whose node has that name, or 0. Kept: "not found" and slot 0 look alike.
[[nodiscard]] std::int32_t dfg_find_node(std::string_view name);

/// Appends (consumer, port) to the producer's consumer list.
void dfg_add_consumer(std::int32_t producer, std::int32_t consumer, std::int32_t port);

/// Makes the producer the source of the node's input, in place of whatever stood there.
void dfg_set_source(std::int32_t node, std::int32_t port, std::int32_t producer, std::int32_t producer_port);

/// Both ends of an edge: `dfg_set_source`, then `dfg_add_consumer`.
void dfg_connect(std::int32_t producer, std::int32_t consumer, std::int32_t port);

/// Length of the node's consumer list.
[[nodiscard]] std::int32_t dfg_count_consumers(std::int32_t node);

/// Puts a new one-input node on the edge from the producer to (consumer, port), whose entry in the producer's consumer
/// list is `link`. The new node takes the consumer's place in that list and the consumer's format; the rest of its
/// attributes stay empty. Returns its slot. Kept: when the consumer was assigned again and the edge is stale, the
/// consumer's live source is replaced all the same.
std::int32_t dfg_splice_node(std::int32_t producer, std::string_view name, dfg_link& link, std::int32_t consumer,
                             std::int32_t port);

/// Number of slots in use. Slots are handed out in ascending order and never given back, so the nodes are the slots
/// from 0 to this number; a loop that asks again at each step also visits the nodes it creates.
[[nodiscard]] inline std::int32_t dfg_used_slots() {
    return current.graph.free_head == no_slot ? current.graph.capacity : current.graph.free_head;
}

/// The node of a slot in use.
[[nodiscard]] inline dfg_node& node_at(std::int32_t slot) {
    const auto index = static_cast<std::size_t>(slot);
    return current.graph.blocks[index / dfg_graph::block_slots][index % dfg_graph::block_slots];
}
[[nodiscard]] inline node_attributes& attributes_at(std::int32_t slot) { return node_at(slot).attributes; }

/// The first entry of the node's consumer list, or null.
[[nodiscard]] inline dfg_link* consumers_of(dfg_node& node) {
    dfg_link& first = node.outputs[0].first_consumer;
    return first.node != no_slot ? &first : nullptr;
}
[[nodiscard]] inline const dfg_link* consumers_of(const dfg_node& node) {
    const dfg_link& first = node.outputs[0].first_consumer;
    return first.node != no_slot ? &first : nullptr;
}

/// The source of an input port, null when the node has no such port or the port no source.
[[nodiscard]] inline const dfg_source* source_of(const dfg_node& node, std::int32_t port) {
    return port < node.input_count && node.inputs[port].source.node != no_slot ? &node.inputs[port].source : nullptr;
}

/// Whether a literal feeds the port.
[[nodiscard]] inline bool has_constant(const dfg_node& node, std::int32_t port) {
    return port < node.input_count && node.inputs[port].is_constant == 1;
}

/// An input port of the datapath: a variable that no statement assigns.
[[nodiscard]] inline bool is_primary_input(const dfg_node& node) {
    return node.input_count == 1 && node.inputs[0].source.node == no_slot && node.inputs[0].is_constant == 0;
}

/// An output port of the datapath: a node whose value nothing reads.
[[nodiscard]] inline bool is_primary_output(const dfg_node& node) { return consumers_of(node) == nullptr; }

}  // namespace xfc
