// Balances the pipeline: every operand reaches its consumer in the cycle in which it is needed, and all outputs of the
// datapath appear after `max_latency` cycles.
// Before: every component has its latency, and ready times start with it.
// After:  for every edge, the producer's ready time plus the consumer's latency is the consumer's ready time.
//     a(2) -> [*] (5 cycles, ready 7),  b(0) -> [*]   becomes   b(0) -> [delay 2] -> [*]

#include <algorithm>
#include <bit>
#include <optional>
#include <vector>

#include "base/wrapping.h"
#include "exact/dfg/dfg.h"
#include "exact/optimizer/cycle_check.h"
#include "exact/optimizer/optimizer.h"
#include "exact/optimizer/sweeps/sweep_forecast.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

/// Slots whose drivers have changed since they were last looked at. A sweep takes them in ascending order: a slot
/// ahead of the sweep that is added on the way is still taken, one behind it waits for the next sweep.
class changed_slots {
public:
    explicit changed_slots(std::int32_t count)
        : words_((static_cast<std::size_t>(count) + bits - 1) / bits, 0), lowest_word_(0) {
        for (std::int32_t slot = 0; slot < count; ++slot) {
            add(slot);
        }
        lowest_word_ = 0;
    }

    void add(std::int32_t slot) {
        const std::size_t word = static_cast<std::size_t>(slot) / bits;
        words_[word] |= std::uint64_t{1} << (static_cast<std::size_t>(slot) % bits);
        lowest_word_ = std::min(lowest_word_, word);
    }

    /// Calls `visit` with every slot of one sweep.
    template <class visitor>
    void sweep(visitor visit) {
        std::size_t word = lowest_word_;
        lowest_word_ = words_.size();
        // Words behind the sweep that get slots lower `lowest_word_` again, for the next sweep.
        for (; word < words_.size(); ++word) {
            std::uint64_t ahead = ~std::uint64_t{0};
            while ((words_[word] & ahead) != 0) {
                const int bit = std::countr_zero(words_[word] & ahead);
                ahead = ~std::uint64_t{0} << bit << 1;
                words_[word] &= ~(std::uint64_t{1} << bit);
                visit(static_cast<std::int32_t>(word * bits) + bit);
            }
        }
    }

private:
    static constexpr std::int32_t bits = 64;
    std::vector<std::uint64_t> words_;
    std::size_t lowest_word_;
};

/// Raises the node's ready time to what its drivers ask for; returns how often it was raised.
std::int32_t relax(std::int32_t slot, std::int32_t& candidate) {
    dfg_node& node = node_at(slot);
    std::int32_t raises = 0;
    for (std::int32_t port = 0; port < 2; ++port) {
        const dfg_source* source = source_of(node, port);
        if (source == nullptr) {
            continue;
        }
        candidate = wrapping_add(attributes_at(source->node).ready_time, node.attributes.latency);
        if (node.attributes.ready_time < candidate) {
            node.attributes.ready_time = candidate;
            ++raises;
        }
    }
    return raises;
}

/// One sweep over the changed slots; returns how often a ready time was raised.
std::int32_t sweep_ready_times(changed_slots& changed) {
    std::int32_t balances = 0;
    changed.sweep([&](std::int32_t slot) {
        std::int32_t candidate = 0;
        const std::int32_t raises = relax(slot, candidate);
        // Kept: the depth is taken once a node, after its second port.
        current.max_latency = std::max(current.max_latency, candidate);
        if (raises == 0) {
            return;
        }
        balances += raises;
        for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
            changed.add(link->node);
        }
    });
    return balances;
}

/// Sweeps before the others are forecast; most programs need fewer. After each attempt that fails their number doubles.
/// Verifying builds forecast as early as they can, so that small programs come to it.
#ifdef XFC_VERIFY
constexpr std::int32_t sweeps_before_forecast = 1;
#else
constexpr std::int32_t sweeps_before_forecast = 16;
#endif

void print_sweep(std::int32_t iterations, std::int32_t balances) {
    write_format(standard_output, "  Iterations %ld Balances %ld Depth %ld\n", iterations, balances,
                 current.max_latency);
}

/// Prints the sweeps behind the first `iterations` and leaves the ready times as the last of them would.
void take_over(const sweep_forecast& forecast, std::int32_t iterations) {
    for (std::size_t sweep = 0; sweep < forecast.balances.size(); ++sweep) {
        current.max_latency = forecast.depths[sweep];
        print_sweep(++iterations, forecast.balances[sweep]);
    }
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        attributes_at(slot).ready_time = forecast.ready_times[static_cast<std::size_t>(slot)];
    }
}

/// Cycles between the producer's result and the moment the consumer needs it.
std::int32_t slack_of_edge(std::int32_t producer, std::int32_t consumer, bool final_edge) {
    const node_attributes& to = attributes_at(consumer);
    if (final_edge) {
        return wrapping_subtract(current.max_latency, to.ready_time);
    }
    return wrapping_subtract(wrapping_subtract(to.ready_time, attributes_at(producer).ready_time), to.latency);
}

void insert_delay(std::int32_t producer, dfg_link& link) {
    const std::int32_t consumer = link.node;
    const bool final_edge = is_primary_output(node_at(consumer));
    const std::int32_t slack = slack_of_edge(producer, consumer, final_edge);
    if (slack == 0) {
        return;
    }
    const std::int32_t width = node_at(producer).outputs[0].width;
    const std::int32_t slot = dfg_splice_node(producer, node_names::delay, link, consumer, link.port);
    dfg_node& delay = node_at(slot);
    delay.inputs[0].width = width;
    delay.outputs[0].width = width;
    delay.attributes.component = component_id::delay;
    delay.attributes.latency = slack;
    if (final_edge) {
        attributes_at(consumer).ready_time = current.max_latency;
        delay.attributes.ready_time = current.max_latency;
    } else {
        delay.attributes.ready_time = wrapping_add(attributes_at(producer).ready_time, slack);
    }
}

}  // namespace

void balance_latencies() {
    // A conversion spliced into the stale edge of a variable that was assigned twice can have closed a cycle.
    require_acyclic_graph();
    current.max_latency = 0;
    changed_slots changed(dfg_used_slots());
    std::int32_t iterations = 0;
    std::int32_t next_forecast = sweeps_before_forecast;
    std::int32_t balances = 0;
    do {
        if (iterations == next_forecast) {
            if (const std::optional<sweep_forecast> forecast = forecast_sweeps()) {
                take_over(*forecast, iterations);
                return;
            }
            next_forecast = wrapping_multiply(next_forecast, 2);
        }
        ++iterations;
        balances = sweep_ready_times(changed);
        print_sweep(iterations, balances);
    } while (balances != 0);
}

void insert_delays() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        for (dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
            insert_delay(slot, *link);
        }
    }
}

}  // namespace xfc
