// Makes the sweeps over ready times, but not one by one over all nodes: node by node, a block of sweeps at a time. What
// a node's drivers do in a block is complete when the node's turn comes, and the node's times are the later ones of two
// arrays, which the machine compares several at a time:
//
//     sweep of the block       0 (before)  1   2   3   4
//     first driver  + 5                9  14  14  19  19
//     second driver + 5, a sweep late  8   8  12  16  20
//     node                             9  14  14  19  20      raised 3 times

#include "exact/optimizer/sweeps/forecast_by_blocks.h"

#include <algorithm>
#include <array>
#include <deque>
#include <utility>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/sweeps/data_order.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

/// Verifying builds take short blocks, so that small programs come to several.
#ifdef XFC_VERIFY
constexpr std::size_t block_sweeps = 32;
#else
constexpr std::size_t block_sweeps = 512;
#endif

/// Times before a block and after each of its sweeps, in cycles.
constexpr std::size_t times_a_block = block_sweeps + 1;
using block_times = std::array<std::int32_t, times_a_block>;

/// Raises `node` by one operand: `asked` less `latency` holds what it asks for after the sweeps 1, 2, ...
void raise_by_one(block_times& node, const std::int32_t* asked, std::int32_t latency, block_times& balances) {
    const std::int32_t before = node[0];
    for (std::size_t sweep = 0; sweep < block_sweeps; ++sweep) {
        node[sweep + 1] = std::max(before, asked[sweep] + latency);
    }
    for (std::size_t sweep = 1; sweep <= block_sweeps; ++sweep) {
        balances[sweep] += node[sweep] > node[sweep - 1] ? 1 : 0;
    }
}

/// Raises `node` by two operands, in each sweep first by the first one.
void raise_by_two(block_times& node, const std::int32_t* first, const std::int32_t* second, std::int32_t latency,
                  block_times& balances) {
    const std::int32_t before = node[0];
    for (std::size_t sweep = 0; sweep < block_sweeps; ++sweep) {
        node[sweep + 1] = std::max(before, std::max(first[sweep], second[sweep]) + latency);
    }
    for (std::size_t sweep = 0; sweep < block_sweeps; ++sweep) {
        const std::int32_t by_first = first[sweep] + latency;
        const std::int32_t by_second = second[sweep] + latency;
        const std::int32_t now = node[sweep];
        balances[sweep + 1] += (by_first > now ? 1 : 0) + (by_second > std::max(by_first, now) ? 1 : 0);
    }
}

class forecaster {
public:
    forecaster()
        : order_(slots_behind_drivers()), now_(order_.size()), readers_(order_.size(), 0), block_of_(order_.size()) {
        for (const std::int32_t slot : order_) {
            now_[index(slot)] = attributes_at(slot).ready_time;
            for (std::int32_t port = 0; port < 2; ++port) {
                if (const dfg_source* source = source_of(node_at(slot), port)) {
                    ++readers_[index(source->node)];
                }
            }
        }
        depths_.fill(current.max_latency);
    }

    std::optional<sweep_forecast> run() {
        std::optional<std::vector<std::int32_t>> final_times = final_ready_times(order_);
        if (!final_times) {
            return std::nullopt;
        }
        sweep_forecast forecast;
        do {
            make_block();
            for (std::size_t sweep = 1; sweep <= block_sweeps; ++sweep) {
                forecast.balances.push_back(balances_[sweep]);
                forecast.depths.push_back(depths_[sweep]);
                if (balances_[sweep] == 0) {
                    break;
                }
            }
        } while (forecast.balances.back() != 0);
        forecast.ready_times = std::move(*final_times);
        return forecast;
    }

private:
    static constexpr std::int32_t not_raised = -1;  // in place of the index of a slot's times

    static std::size_t index(std::int32_t number) { return static_cast<std::size_t>(number); }

    void make_block() {
        balances_.fill(0);
        depths_.fill(depths_.back());
        unread_ = readers_;
        for (const std::int32_t slot : order_) {
            make_sweeps(slot);
            drop_read_times(slot);
        }
        for (std::size_t sweep = 1; sweep <= block_sweeps; ++sweep) {
            depths_[sweep] = std::max(depths_[sweep], depths_[sweep - 1]);
        }
    }

    /// Makes the sweeps of a block over one slot.
    void make_sweeps(std::int32_t slot) {
        block_of_[index(slot)] = not_raised;
        const std::int32_t counted = port_counted_for_depth(slot);
        if (counted < 0) {
            return;
        }
        const std::int32_t latency = attributes_at(slot).latency;
        if (!is_raised(slot)) {
            depths_[1] = std::max(depths_[1], now_[index(source_of(node_at(slot), counted)->node)] + latency);
            return;
        }
        const std::int32_t block = unused_block();
        block_times& times = blocks_[index(block)];
        times[0] = now_[index(slot)];
        const std::array<const std::int32_t*, 2> seen{driver_times(slot, 0), driver_times(slot, 1)};
        if (seen[0] != nullptr && seen[1] != nullptr) {
            raise_by_two(times, seen[0], seen[1], latency, balances_);
        } else {
            raise_by_one(times, seen[index(counted)], latency, balances_);
        }
        for (std::size_t sweep = 0; sweep < block_sweeps; ++sweep) {
            depths_[sweep + 1] = std::max(depths_[sweep + 1], seen[index(counted)][sweep] + latency);
        }
        now_[index(slot)] = times[block_sweeps];
        block_of_[index(slot)] = block;
        if (times[block_sweeps] == times[0]) {
            drop_times(slot);
        }
    }

    /// Whether a driver is raised in the block, or asks for more than the slot has.
    bool is_raised(std::int32_t slot) const {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && (block_of_[index(source->node)] != not_raised ||
                                      now_[index(source->node)] + attributes_at(slot).latency > now_[index(slot)])) {
                return true;
            }
        }
        return false;
    }

    /// The driver's times as the slot sees them in the sweeps 1, 2, ... of the block; null when nothing drives the
    /// port.
    const std::int32_t* driver_times(std::int32_t slot, std::int32_t port) {
        const dfg_source* source = source_of(node_at(slot), port);
        if (source == nullptr) {
            return nullptr;
        }
        const std::int32_t block = block_of_[index(source->node)];
        if (block == not_raised) {
            block_times& steady = steady_[index(port)];
            steady.fill(now_[index(source->node)]);
            return steady.data();
        }
        return blocks_[index(block)].data() + (source->node < slot ? 1 : 0);
    }

    std::int32_t unused_block() {
        if (unused_.empty()) {
            unused_.push_back(static_cast<std::int32_t>(blocks_.size()));
            blocks_.emplace_back();
        }
        const std::int32_t block = unused_.back();
        unused_.pop_back();
        return block;
    }

    /// Drops the times that no other slot reads in this block.
    void drop_read_times(std::int32_t slot) {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && --unread_[index(source->node)] == 0) {
                drop_times(source->node);
            }
        }
        if (unread_[index(slot)] == 0) {
            drop_times(slot);
        }
    }

    void drop_times(std::int32_t slot) {
        if (block_of_[index(slot)] != not_raised) {
            unused_.push_back(std::exchange(block_of_[index(slot)], not_raised));
        }
    }

    const std::vector<std::int32_t> order_;
    std::vector<std::int32_t> now_;      // each slot's ready time, in cycles
    std::vector<std::int32_t> readers_;  // ports that each slot drives
    std::vector<std::int32_t> unread_;   // those that have not made the block
    std::vector<std::int32_t> block_of_;
    std::deque<block_times> blocks_;
    std::vector<std::int32_t> unused_;  // blocks
    std::array<block_times, 2> steady_;
    block_times balances_;
    block_times depths_;
};

}  // namespace

std::optional<sweep_forecast> forecast_by_blocks() { return forecaster().run(); }

}  // namespace xfc
