#include "dfg/dfg.h"

namespace xfc {

dfg_graph graph;
std::int32_t dfg_current_line = 0;

namespace {

constexpr std::int32_t first_capacity = 10000;

/// Chains the slots from `first` to the last one as free, in index order.
void chain_free_slots(std::int32_t first) {
    for (std::int32_t slot = first; slot < graph.capacity; ++slot) {
        node_at(slot).next_free = slot + 1 < graph.capacity ? slot + 1 : no_slot;
    }
    graph.free_head = first;
}

void double_capacity() {
    const std::int32_t old_capacity = graph.capacity;
    graph.capacity *= 2;
    graph.nodes.resize(static_cast<std::size_t>(graph.capacity));
    chain_free_slots(old_capacity);
}

}  // namespace

void dfg_create_graph() {
    dfg_clear();
    graph.capacity = first_capacity;
    graph.nodes.resize(static_cast<std::size_t>(graph.capacity));
    chain_free_slots(0);
}

std::int32_t dfg_create_node(std::string_view name, std::int32_t input_count, std::int32_t output_count) {
    if (graph.free_head == no_slot) {
        double_capacity();
    }
    const std::int32_t slot = graph.free_head;
    dfg_node& node = node_at(slot);
    graph.free_head = node.next_free;
    node = dfg_node{.name = name,
                    .input_count = input_count,
                    .inputs = graph.memory.create_array<dfg_input>(static_cast<std::size_t>(input_count)),
                    .output_count = output_count,
                    .outputs = graph.memory.create_array<dfg_output>(static_cast<std::size_t>(output_count)),
                    .next_free = no_slot,
                    .attributes = graph.memory.create<node_attributes>(),
                    .bus_modes = graph.memory.create<bus_modes>(),
                    .source_line = dfg_current_line};
    node.attributes->component = &no_component;
    graph.first_slot_by_name.try_emplace(name, slot);
    return slot;
}

std::int32_t dfg_find_node(std::string_view name) {
    const auto found = graph.first_slot_by_name.find(name);
    return found != graph.first_slot_by_name.end() ? found->second : 0;
}

void dfg_add_consumer(std::int32_t producer, std::int32_t consumer, std::int32_t port) {
    auto* link = graph.memory.create<dfg_link>(consumer, port, nullptr);
    dfg_output& output = node_at(producer).outputs[0];
    (output.consumers == nullptr ? output.consumers : output.last_consumer->next) = link;
    output.last_consumer = link;
}

void dfg_set_source(std::int32_t node, std::int32_t port, std::int32_t producer, std::int32_t producer_port) {
    node_at(node).inputs[port].source = graph.memory.create<dfg_link>(producer, producer_port, nullptr);
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
    dfg_current_line = node_at(consumer).source_line;
    const std::int32_t spliced = dfg_create_node(name, 1, 1);
    attributes_at(spliced).format = attributes_at(consumer).format;
    link.node = spliced;
    link.port = 0;
    dfg_set_source(spliced, 0, producer, 0);
    dfg_add_consumer(spliced, consumer, port);
    dfg_link* source = node_at(consumer).inputs[port].source;
    if (source == nullptr) {
        dfg_set_source(consumer, port, spliced, 0);
    } else {
        source->node = spliced;
        source->port = 0;
    }
    return spliced;
}

void dfg_clear() {
    graph.nodes.clear();
    graph.capacity = 0;
    graph.free_head = no_slot;
    graph.first_slot_by_name.clear();
    graph.memory.clear();
    dfg_current_line = 0;
}

}  // namespace xfc
