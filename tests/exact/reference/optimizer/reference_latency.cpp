#include "exact/reference/optimizer/reference_graph.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc::reference {

std::int32_t sweep_ready_times() {
    std::int32_t balances = 0;
    for_each_node([&balances](std::int32_t slot) {
        node_attributes& attributes = attributes_at(slot);
        std::int32_t candidate = 0;
        for (std::int32_t port = 0; port < 2 && port < node_at(slot).input_count; ++port) {
            if (source(slot, port) == nullptr) {
                continue;
            }
            candidate = attributes_at(source(slot, port)->node).ready_time + attributes.latency;
            if (attributes.ready_time < candidate) {
                attributes.ready_time = candidate;
                ++balances;
            }
        }
        if (candidate > current.max_latency) {
            current.max_latency = candidate;
        }
    });
    return balances;
}

void balance_latencies() {
    if (const std::string name = value_that_depends_on_itself(); !name.empty()) {
        fail(message_id::cyclic_value, name);
    }
    current.max_latency = 0;
    std::int32_t iterations = 0;
    std::int32_t balances = 0;
    do {
        ++iterations;
        balances = sweep_ready_times();
        write_format(standard_output, "  Iterations %ld Balances %ld Depth %ld\n", iterations, balances,
                     current.max_latency);
    } while (balances != 0);
}

void insert_delays() {
    for_each_node([](std::int32_t slot) {
        for (dfg_link* link = first_consumer(slot); link != nullptr; link = link->next) {
            const std::int32_t consumer = link->node;
            const bool final_edge = first_consumer(consumer) == nullptr;
            const std::int32_t slack = final_edge
                                           ? current.max_latency - attributes_at(consumer).ready_time
                                           : attributes_at(consumer).ready_time - attributes_at(slot).ready_time -
                                                 attributes_at(consumer).latency;
            if (slack == 0) {
                continue;
            }
            const std::int32_t delay = dfg_splice_node(slot, "delay", *link, consumer, link->port);
            node_at(delay).inputs[0].width = node_at(slot).outputs[0].width;
            node_at(delay).outputs[0].width = node_at(slot).outputs[0].width;
            attributes_at(delay).component = component_id::delay;
            attributes_at(delay).latency = slack;
            if (final_edge) {
                attributes_at(consumer).ready_time = current.max_latency;
                attributes_at(delay).ready_time = current.max_latency;
            } else {
                attributes_at(delay).ready_time = attributes_at(slot).ready_time + slack;
            }
        }
    });
}

}  // namespace xfc::reference
