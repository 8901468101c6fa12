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

// The records of the dataflow graph: one node per variable, operation, conversion, normalization and delay. Each use of
// a value is an edge from the producer's output to an input port of the consumer, held at both ends. Nodes are named by
// their slot index, counted from 0 in the order in which they are made.

namespace xfc {

inline constexpr std::int32_t no_slot = -1;

/// What a node is, told by its name: an operation, an inserted node, a library function, or none of them.
enum class node_class : std::uint8_t {
    value,
    add,
    subtract,
    multiply,
    divide,
    conversion,
    normalizer,
    delay,
    function
};

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
    recent_names recently_registered;
    arena memory;  ///< links behind the first ones

    /// Whether every consumer entry was its consumer's source before the passes; kept for the checks of verifying
    /// builds.
    bool consumers_agreed = false;
};

}  // namespace xfc
