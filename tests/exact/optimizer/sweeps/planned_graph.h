#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "exact/optimizer/sweeps/sweep_forecast.h"

// Graphs to forecast sweeps over, and the comparison with sweeps that really are made.

namespace xfc::test {

inline constexpr std::size_t no_node = ~std::size_t{0};

/// A node before it has a slot: its component's cycles and the nodes that drive its ports.
struct planned_node {
    std::int32_t latency = 0;
    std::vector<std::size_t> drivers;
    /// A node that keeps this one among its consumers though the first port reads another one by now.
    std::size_t former_driver = no_node;
};

using planned_graph = std::vector<planned_node>;

/// Makes the planned nodes; `order` tells which one gets slot 0, 1, 2, ...
void build(const planned_graph& plan, const std::vector<std::size_t>& order);

[[nodiscard]] std::vector<std::size_t> slots_as_planned(std::size_t count);

/// The slots fall along the data, so that each value moves on by one node a sweep.
[[nodiscard]] std::vector<std::size_t> slots_against_the_data(std::size_t count);

/// An input and nodes of those latencies, each driven by the one before.
[[nodiscard]] planned_graph chain(const std::vector<std::int32_t>& latencies);

/// Makes all sweeps that are to come.
[[nodiscard]] sweep_forecast make_sweeps();

/// Empty when the sweeps that are told are those that were made; otherwise the first difference.
[[nodiscard]] std::string difference(const sweep_forecast& told, const sweep_forecast& made);

/// A planned graph and its slots.
struct planned_slots {
    planned_graph plan;
    std::vector<std::size_t> order;
};

/// Chains of operations that read the one before, an early or a late value, and now and then each other; slots as a
/// program gives them, in the order of the data, against it, or at random.
[[nodiscard]] planned_slots random_chains(std::mt19937& random);

/// A chain of up to `most_values` values that each read the one before in two ways of different cycles and sweeps; the
/// slots repeat as the values do. In some graphs a few values differ, a latency is below 0, or a former driver is left.
[[nodiscard]] planned_slots random_double_reads(std::mt19937& random, std::int32_t most_values);

/// Latencies that repeat, but for a few; or that do not repeat at all.
[[nodiscard]] std::vector<std::int32_t> mostly_regular_latencies(std::mt19937& random, std::size_t count);

}  // namespace xfc::test
