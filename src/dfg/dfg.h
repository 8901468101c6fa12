#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/arena.h"
#include "dfg/component_table.h"
#include "dfg/number_format.h"

// The dataflow graph: one node per variable, operation, conversion, normalization and delay. Each use of a value is an
// edge from the producer's output to an input port of the consumer, held at both ends. Nodes are named by their slot
// index, never by address, since the slot array moves when it grows; links and attribute records do not move.

namespace xfc {

/// One end of an edge. Hanging off an input it names the producer, in a consumer list the consumer.
struct dfg_link {
    std::int32_t node;  ///< slot of the producer or consumer
    std::int32_t port;  ///< the producer's output port (always 0) or the consumer's input port
    dfg_link* next;     ///< next consumer in attachment order; null at a list's end and for a source
};

/// One input port.
struct dfg_input {
    std::int32_t width;              ///< bits, 0 until known
    std::int32_t is_constant;        ///< 1 when a literal feeds the port
    std::string_view constant_type;  ///< "FLOAT" or "LONG" on a constant port
    double constant_value;           ///< the literal's value on a constant port
    dfg_link* source;                ///< the producer; null on a constant port and on a primary input's port
};

/// One output port.
struct dfg_output {
    std::int32_t width;       ///< bits, 0 until known
    dfg_link* consumers;      ///< first consumer in attachment order, or null
    dfg_link* last_consumer;  ///< last consumer, or null
};

struct node_attributes {
    const component_row* component;  ///< what implements the node; `no_component` for a node that is only a wire
    number_format format;            ///< of the output bus
    std::int32_t is_internal;        ///< 1 for an assigned variable that later statements read
    std::int32_t latency;            ///< of the node's component, in cycles
    std::int32_t ready_time;         ///< cycle in which the output is valid, counted from the datapath's inputs
    std::int32_t is_normalized;      ///< 1 when the output is a normalized number
    std::int32_t cluster_depth;      ///< operands summed since the last normalized value; working value
    std::int32_t fanout;             ///< consumers when the optimizer started; later splices do not change it
    std::int32_t is_removed;         ///< 1 when the node was merged into an equivalent one
};

/// Selectors that a node's component gets.
struct bus_modes {
    std::string_view tag;        ///< empty; read by nothing
    std::int32_t output_select;  ///< which of the component's outputs drives the bus
    std::int32_t input_select;   ///< set on the conversions out of the internal formats; only its values are fixed
};

struct dfg_node {
    std::string_view name;  ///< variable name, operator or function name; empty data pointer while the slot is free
    std::int32_t input_count;
    dfg_input* inputs;  ///< `input_count` ports; null when there are none
    std::int32_t output_count;
    dfg_output* outputs;     ///< `output_count` ports; only the first is ever used
    std::int32_t next_free;  ///< next slot of the free chain, `no_slot` at its end and while in use
    node_attributes* attributes;
    xfc::bus_modes* bus_modes;
    std::int32_t source_line;  ///< line of the declaration or statement that the node comes from, 0 when unknown
};

inline constexpr std::int32_t no_slot = -1;

struct dfg_graph {
    std::vector<dfg_node> nodes;       ///< `capacity` slots
    std::int32_t capacity = 0;         ///< 10000 when created; doubles when no slot is free
    std::int32_t free_head = no_slot;  ///< first free slot, `no_slot` when all are in use

    std::unordered_map<std::string_view, std::int32_t> first_slot_by_name;  ///< lowest slot of each name
    arena memory;                                                           ///< ports, links and attribute records
};

/// The one graph of the run.
extern dfg_graph graph;

/// Line that new nodes are said to come from; the translator keeps it up to date.
extern std::int32_t dfg_current_line;

/// Makes the empty graph with 10000 free slots, handed out as 0, 1, 2, ...
void dfg_create_graph();

/// Takes the next free slot for a node of that name; doubles the capacity first when none is free. The name is kept
/// by reference and must outlive the graph. References into `graph.nodes` do not survive the call.
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

/// Puts a new one-input node on the edge from the producer to (consumer, port), whose entry in the producer's
/// consumer list is `link`. The new node takes the consumer's place in that list and the consumer's format; the rest
/// of its attributes stay empty. Returns its slot. Kept: when the consumer was assigned again and the edge is stale,
/// the consumer's live source is replaced all the same.
std::int32_t dfg_splice_node(std::int32_t producer, std::string_view name, dfg_link& link, std::int32_t consumer,
                             std::int32_t port);

/// Forgets the graph of an earlier run.
void dfg_clear();

/// Number of slots in use. Slots are handed out in ascending order and never given back, so the nodes are the slots
/// from 0 to this number; a loop that asks again at each step also visits the nodes it creates.
[[nodiscard]] inline std::int32_t dfg_used_slots() {
    return graph.free_head == no_slot ? graph.capacity : graph.free_head;
}

[[nodiscard]] inline dfg_node& node_at(std::int32_t slot) { return graph.nodes[static_cast<std::size_t>(slot)]; }
[[nodiscard]] inline node_attributes& attributes_at(std::int32_t slot) { return *node_at(slot).attributes; }

/// The first entry of the node's consumer list, or null.
[[nodiscard]] inline dfg_link* consumers_of(const dfg_node& node) {
    return node.outputs != nullptr ? node.outputs[0].consumers : nullptr;
}

/// The source link of an input port, null when the node has no such port or the port no source.
[[nodiscard]] inline const dfg_link* source_of(const dfg_node& node, std::int32_t port) {
    return port < node.input_count ? node.inputs[port].source : nullptr;
}

/// Whether a literal feeds the port.
[[nodiscard]] inline bool has_constant(const dfg_node& node, std::int32_t port) {
    return port < node.input_count && node.inputs[port].is_constant == 1;
}

/// An input port of the datapath: a variable that no statement assigns.
[[nodiscard]] inline bool is_primary_input(const dfg_node& node) {
    return node.input_count == 1 && node.inputs[0].source == nullptr && node.inputs[0].is_constant == 0;
}

/// An output port of the datapath: a node whose value nothing reads.
[[nodiscard]] inline bool is_primary_output(const dfg_node& node) { return consumers_of(node) == nullptr; }

}  // namespace xfc
