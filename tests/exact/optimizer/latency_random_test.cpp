#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// Balancing follows changes through the graph. Here it is held against the plain version, which looks at every node
// in every sweep.

namespace xfc::test {

namespace {

/// Nodes in an order of their own, each driven by earlier ones of that order; some edges are stale, some drivers
/// missing, so that slots and data run in different directions.
void build_random_graph(std::mt19937& random, std::int32_t count) {
    start_graph();
    const auto below = [&random](std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
    };
    for (std::int32_t slot = 0; slot < count; ++slot) {
        add_node("n", 1 + below(3), number_format::none);
        attributes_at(slot).latency = below(9);
        attributes_at(slot).ready_time = attributes_at(slot).latency + (below(10) == 0 ? below(20) : 0);
    }
    std::vector<std::int32_t> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    for (std::int32_t place = 1; place < count; ++place) {
        const std::int32_t slot = order[static_cast<std::size_t>(place)];
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            for (int times = below(8) == 0 ? 0 : 1 + below(2); times > 0; --times) {
                const std::int32_t reach = std::min(place, 1 + below(place));
                dfg_connect(order[static_cast<std::size_t>(place - reach)], slot, port);
            }
        }
    }
}

TEST(latency_random, ready_times_depth_and_lines_are_those_of_the_plain_version) {
    std::mt19937 random(20260);  // NOLINT: the same graphs in every run
    for (int round = 0; round < 100; ++round) {
        const std::int32_t count = 1 + std::uniform_int_distribution<std::int32_t>(0, 199)(random);
        build_random_graph(random, count);
        std::vector<std::int32_t> start;
        for (std::int32_t slot = 0; slot < count; ++slot) {
            start.push_back(attributes_at(slot).ready_time);
        }
        const std::string lines = catch_output(balance_latencies).standard_output;
        const std::int32_t depth = current.max_latency;
        std::vector<std::int32_t> balanced;
        for (std::int32_t slot = 0; slot < count; ++slot) {
            balanced.push_back(attributes_at(slot).ready_time);
            attributes_at(slot).ready_time = start[static_cast<std::size_t>(slot)];
        }
        ASSERT_EQ(lines, catch_output(reference::balance_latencies).standard_output) << "round " << round;
        ASSERT_EQ(depth, current.max_latency) << "round " << round;
        for (std::int32_t slot = 0; slot < count; ++slot) {
            ASSERT_EQ(balanced[static_cast<std::size_t>(slot)], attributes_at(slot).ready_time)
                << "round " << round << " slot " << slot;
        }
    }
}

}  // namespace

}  // namespace xfc::test
