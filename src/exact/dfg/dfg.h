#pragma once

#include <tsl/robin_map.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "base/arena.h"
#include "components/component_table.h"
#include "exact/dfg/node_class.h"

// The dataflow graph: one node per variable, operation, conversion, normalization and delay. Each use of a value is an
// edge from the producer's output to an input port of the consumer, held at both ends. Nodes are named by their slot
// index, counted from 0 in the order in which they are made.

namespace xfc {

inline constexpr std::int32_t no_slot = -1;

/// An entry of a consumer list.
struct dfg_link {
    std::int32_t node = no_slot;  ///< slot of the consumer
    std::int32_t port = 0;        ///< the consumer's input port
    dfg_link* next = nullptr;     ///< next consumer in attachment order, or null
};

/// The producer that drives an input port.
struct dfg_source {
    std::int32_t node = no_slot;  ///< slot of the producer; `no_slot` when none drives the port
    std::int32_t port = 0;        ///< the producer's output port, always 0
};

/// Kind of the literal on a constant port.
enum class literal_kind : std::int16_t { none, floating, integer };

/// The kind's name: "FLOAT", "LONG" or empty.
[[nodiscard]] constexpr std::string_view literal_kind_text(literal_kind kind) {
    switch (kind) {
        case literal_kind::floating:
            return "FLOAT";
        case literal_kind::integer:
            return "LONG";
        default:
            return "";
    }
}

/// One input port.
struct dfg_input {
    std::int32_t width = 0;                           ///< bits, 0 until known
    std::int16_t is_constant = 0;                     ///< 1 when a literal feeds the port
    literal_kind constant_type = literal_kind::none;  ///< kind of the literal on a constant port
    double constant_value = 0;                        ///< the literal's value on a constant port
    dfg_source source;
};

/// One output port. The first consumer, mostly the only one, is held in place; the others stand side by side in blocks
/// that grow with the list, so that walking a long list reads memory in order.
struct dfg_output {
    std::int32_t width = 0;             ///< bits, 0 until known
    std::int16_t link_block = 0;        ///< links in the last consumer's block, 0 before the first block
    std::int16_t spare_links = 0;       ///< unused links behind the last consumer
    dfg_link first_consumer;            ///< of slot `no_slot` while there is none
    dfg_link* last_consumer = nullptr;  ///< null while there is none
};

struct node_attributes {
    std::int32_t is_internal = 0;                 ///< 1 for an assigned variable that later statements read
    std::int32_t latency = 0;                     ///< of the node's component, in cycles
    std::int32_t ready_time = 0;                  ///< cycle in which the output is valid, from the inputs on
    std::int32_t is_normalized = 0;               ///< 1 when the output is a normalized number
    std::int32_t cluster_depth = 0;               ///< operands summed since the last normalized value; working value
    std::int32_t fanout = 0;                      ///< consumers when the optimizer started
    std::int32_t is_removed = 0;                  ///< 1 when the node was merged into an equivalent one
    component_id component = component_id::wire;  ///< what implements the node
    node_class is = node_class::value;            ///< what its name makes it
    number_format format = number_format::none;   ///< of the output bus
};

/// Selectors that a node's component gets.
struct bus_modes {
    static constexpr std::string_view tag{};  ///< empty; read by nothing
    std::int32_t output_select = 0;           ///< which of the component's outputs drives the bus
    std::int32_t input_select = 0;            ///< set on conversions out of the internal formats, read by nothing
};

struct dfg_node {
    /// Inputs that the node itself holds; every node of a compilation has one or two.
    static constexpr std::int32_t held_inputs = 2;

    std::string_view name;  ///< variable name, operator or function name
    std::int32_t input_count = 0;
    std::int32_t output_count = 0;  ///< always 1
    dfg_input* inputs = nullptr;    ///< `input_count` ports; null when there are none
    dfg_output outputs[1];          ///< only the first output is ever used
    node_attributes attributes;
    xfc::bus_modes bus_modes;
    dfg_input first_inputs[held_inputs];

    dfg_node() = default;
    /// A copy would share the original's inputs.
    dfg_node(const dfg_node&) = delete;
    dfg_node& operator=(const dfg_node&) = delete;
};

/// The names registered last. Operator names and the names of inserted nodes come from few places in memory; a node
/// whose name comes from the same place as a recent one's need not be looked up again.
class recent_names {
public:
    struct entry {
        std::string_view name;
        node_class is = node_class::value;
    };

    /// The entry that this text has, if any of its place has; else the one to be overwritten.
    [[nodiscard]] entry& entry_for(std::string_view name) {
        return entries_[reinterpret_cast<std::uintptr_t>(name.data()) / 2 % entries_.size()];
    }

private:
    std::array<entry, 64> entries_{};
};

/// Slots by name. The table keeps the hashes, so that growing does not read the names again.
using name_table = tsl::robin_map<std::string_view, std::int32_t, std::hash<std::string_view>, std::equal_to<>,
                                  std::allocator<std::pair<std::string_view, std::int32_t>>, /*StoreHash=*/true>;

struct dfg_graph {
    /// Slots per block. Blocks are made when their first slot is handed out; they never move, so references to nodes
    /// and links stay good while the graph grows.
    static constexpr std::int32_t block_slots = 4096;

    std::vector<std::unique_ptr<dfg_node[]>> blocks;
    std::int32_t capacity = 0;         ///< 10000 when created; doubles when no slot is free
    std::int32_t free_head = no_slot;  ///< first free slot, `no_slot` when none is; all behind it are free

    name_table first_slot_by_name;  ///< lowest slot of each name
    arena memory;                   ///< links behind the first ones
};

/// The one graph of the run.
extern dfg_graph graph;

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

/// Forgets the graph of an earlier run.
void dfg_clear();

/// Number of slots in use. Slots are handed out in ascending order and never given back, so the nodes are the slots
/// from 0 to this number; a loop that asks again at each step also visits the nodes it creates.
[[nodiscard]] inline std::int32_t dfg_used_slots() {
    return graph.free_head == no_slot ? graph.capacity : graph.free_head;
}

/// The node of a slot in use.
[[nodiscard]] inline dfg_node& node_at(std::int32_t slot) {
    const auto index = static_cast<std::size_t>(slot);
    return graph.blocks[index / dfg_graph::block_slots][index % dfg_graph::block_slots];
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
