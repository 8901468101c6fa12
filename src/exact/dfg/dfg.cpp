#include "exact/dfg/dfg.h"

#include <algorithm>

namespace xfc {

namespace {

constexpr std::int32_t first_capacity = 10000;

/// Makes the slot known as the first of its name, unless an earlier one is; returns what the name makes the node.
node_class register_name(std::string_view name, std::int32_t slot) {
    recent_names::entry& recent = current.graph.recently_registered.entry_for(name);
    if (recent.name.data() != name.data() || recent.name.size() != name.size()) {
        current.graph.first_slot_by_name.try_emplace(name, slot);
        recent = {name, classify_name(name)};
    }
    return recent.is;
}

constexpr std::int16_t largest_link_block = 64;

/// A link for the consumer behind the last one.
dfg_link* next_link(dfg_output& output) {
    if (output.spare_links != 0) {
        --output.spare_links;
        return output.last_consumer + 1;
    }
    output.link_block = static_cast<std::int16_t>(std::clamp(output.link_block * 2, 1, int{largest_link_block}));
    output.spare_links = static_cast<std::int16_t>(output.link_block - 1);
    return current.graph.memory.create_array<dfg_link>(static_cast<std::size_t>(output.link_block));
}

}  // namespace

void dfg_create_graph() {
    current.graph = {};
    current.graph.capacity = first_capacity;
    current.graph.free_head = 0;
}

std::int32_t dfg_create_node(std::string_view name, std::int32_t input_count, std::int32_t output_count) {
    if (current.graph.free_head == no_slot) {
        current.graph.free_head = current.graph.capacity;
        current.graph.capacity *= 2;
    }
    const std::int32_t slot = current.graph.free_head;
    current.graph.free_head = slot + 1 < current.graph.capacity ? slot + 1 : no_slot;
    if (slot % dfg_graph::block_slots == 0) {
        current.graph.blocks.push_back(std::make_unique<dfg_node[]>(dfg_graph::block_slots));
    }
    dfg_node& node = node_at(slot);
    node.name = name;
    node.input_count = input_count;
    if (input_count > dfg_node::held_inputs) {
        node.inputs = current.graph.memory.create_array<dfg_input>(static_cast<std::size_t>(input_count));
    } else {
        node.inputs = input_count != 0 ? node.first_inputs : nullptr;
    }
    node.output_count = output_count;
    node.attributes.is = register_name(name, slot);
    return slot;
}

std::int32_t dfg_find_node(std::string_view name) {
    const auto found = current.graph.first_slot_by_name.find(name);
    return found != current.graph.first_slot_by_name.end() ? found->second : 0;
}

void dfg_add_consumer(std::int32_t producer, std::int32_t consumer, std::int32_t port) {
    dfg_output& output = node_at(producer).outputs[0];
    if (output.last_consumer == nullptr) {
        output.first_consumer = {consumer, port, nullptr};
        output.last_consumer = &output.first_consumer;
        return;
    }
    dfg_link* link = next_link(output);
    link->node = consumer;
    link->port = port;
    output.last_consumer->next = link;
    output.last_consumer = link;
}

void dfg_set_source(std::int32_t node, std::int32_t port, std::int32_t producer, std::int32_t producer_port) {
    node_at(node).inputs[port].source = {producer, producer_port};
}

void dfg_connect(std::int32_t producer, std::int32_t consumer, std::int32_t port) {
    dfg_set_source(consumer, port, producer, 0);
    dfg_add_consumer(producer, consumer, port);
}

std::int32_t dfg_count_consumers(std::int32_t node) {
    std::int32_t count = 0;
    for (const dfg_link* link = consumers_of(node_at(node)); link != nullptr; link = link->next) {
        ++count;
    }
    return count;
}

std::int32_t dfg_splice_node(std::int32_t producer, std::string_view name, dfg_link& link, std::int32_t consumer,
                             std::int32_t port) {
    const std::int32_t spliced = dfg_create_node(name, 1, 1);
    attributes_at(spliced).format = attributes_at(consumer).format;
    link.node = spliced;
    link.port = 0;
    dfg_set_source(spliced, 0, producer, 0);
    dfg_add_consumer(spliced, consumer, port);
    dfg_set_source(consumer, port, spliced, 0);
    return spliced;
}

}  // namespace xfc
