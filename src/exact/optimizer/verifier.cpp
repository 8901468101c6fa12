#include "exact/optimizer/verifier.h"

#include <unordered_set>
#include <vector>

#include "base/text_writer.h"
#include "base/wrapping.h"
#include "exact/dfg/dfg.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

template <class... arguments>
std::string sentence(std::type_identity_t<format_text<arguments...>> format, const arguments&... values) {
    text_writer out;
    write_fitting(out, format.text(), values...);
    return out.take_text();
}

bool is_slot_with_port(std::int32_t slot, std::int32_t port) {
    return slot >= 0 && slot < dfg_used_slots() && port >= 0 && port < node_at(slot).input_count;
}

std::string verify_consumers(std::int32_t slot, bool must_agree) {
    for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
        if (!is_slot_with_port(link->node, link->port)) {
            return sentence("node %ld has a consumer %ld.%ld that does not exist", slot, link->node, link->port);
        }
        const dfg_source* source = source_of(node_at(link->node), link->port);
        if (must_agree && (source == nullptr || source->node != slot)) {
            return sentence("node %ld lists consumer %ld.%ld, which another node drives", slot, link->node, link->port);
        }
    }
    return {};
}

/// A consumer entry as one number.
std::uint64_t edge_key(std::int32_t producer, std::int32_t consumer, std::int32_t port) {
    // Nodes have at most two inputs.
    return (static_cast<std::uint64_t>(producer) << 32) + (static_cast<std::uint64_t>(consumer) << 1) +
           static_cast<std::uint64_t>(port);
}

std::string verify_sources() {
    std::unordered_set<std::uint64_t> consumer_entries;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
            consumer_entries.insert(edge_key(slot, link->node, link->port));
        }
    }
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source == nullptr) {
                continue;
            }
            if (source->node < 0 || source->node >= dfg_used_slots()) {
                return sentence("input %ld.%ld has a source that does not exist", slot, port);
            }
            if (!consumer_entries.contains(edge_key(source->node, slot, port))) {
                return sentence("input %ld.%ld is driven by node %ld, which does not list it", slot, port,
                                source->node);
            }
        }
    }
    return {};
}

/// Removes nodes without open sources until none is left (Kahn's algorithm); what remains lies on or behind a cycle.
std::string verify_acyclic() {
    const auto slots = static_cast<std::size_t>(dfg_used_slots());
    std::vector<std::int32_t> open_sources(slots, 0);
    std::vector<std::vector<std::int32_t>> readers(slots);
    std::vector<std::int32_t> ready;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            if (const dfg_source* source = source_of(node_at(slot), port); source != nullptr) {
                ++open_sources[static_cast<std::size_t>(slot)];
                readers[static_cast<std::size_t>(source->node)].push_back(slot);
            }
        }
        if (open_sources[static_cast<std::size_t>(slot)] == 0) {
            ready.push_back(slot);
        }
    }
    std::size_t removed = 0;
    for (; removed < ready.size(); ++removed) {
        const std::int32_t slot = ready[removed];
        for (const std::int32_t reader : readers[static_cast<std::size_t>(slot)]) {
            if (--open_sources[static_cast<std::size_t>(reader)] == 0) {
                ready.push_back(reader);
            }
        }
    }
    return removed == slots ? std::string{} : std::string("the graph has a cycle");
}

/// Whether the node is an output of the datapath with a latency of its own.
bool has_late_port(std::int32_t slot) { return is_primary_output(node_at(slot)) && attributes_at(slot).latency != 0; }

/// Whether the node is the delay in front of such an output.
bool is_delay_of_late_port(const dfg_node& node) {
    const dfg_link* only = consumers_of(node);
    return node.attributes.is == node_class::delay && only != nullptr && only->next == nullptr &&
           has_late_port(only->node);
}

}  // namespace

bool consumers_agree() {
    std::unordered_set<std::uint64_t> entries;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (!verify_consumers(slot, true).empty()) {
            return false;
        }
        for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
            if (!entries.insert(edge_key(slot, link->node, link->port)).second) {
                return false;
            }
        }
    }
    return true;
}

std::string verify_graph(const graph_expectations& expected) {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (std::string violation = verify_consumers(slot, expected.every_consumer_agrees); !violation.empty()) {
            return violation;
        }
    }
    if (std::string violation = verify_sources(); !violation.empty()) {
        return violation;
    }
    if (expected.acyclic) {
        if (std::string violation = verify_acyclic(); !violation.empty()) {
            return violation;
        }
    }
    return expected.balanced ? verify_schedule() : std::string{};
}

std::string verify_schedule() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        // An output variable named like a function has a latency, but its delay is made as if it had none.
        const bool delayed_by_name = has_late_port(slot) || is_delay_of_late_port(node);
        for (std::int32_t port = 0; port < node.input_count && !delayed_by_name; ++port) {
            const dfg_source* source = source_of(node, port);
            if (source == nullptr) {
                continue;
            }
            const std::int32_t needed = wrapping_subtract(node.attributes.ready_time, node.attributes.latency);
            const std::int32_t arrives = attributes_at(source->node).ready_time;
            if (arrives != needed) {
                return sentence("input %ld.%ld gets its operand in cycle %ld and needs it in cycle %ld", slot, port,
                                arrives, needed);
            }
        }
        const bool driven_output = is_primary_output(node) && source_of(node, 0) != nullptr;
        if (driven_output && node.attributes.ready_time != current.max_latency) {
            return sentence("output %ld is ready in cycle %ld of %ld", slot, node.attributes.ready_time,
                            current.max_latency);
        }
    }
    return {};
}

}  // namespace xfc
