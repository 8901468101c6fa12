#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace xfc {

/// All slots, each behind those that drive its two ports. The graph must have no cycle.
[[nodiscard]] std::vector<std::int32_t> slots_behind_drivers();

/// The ready time of every slot after the last sweep, in cycles; `order` is that of the data. Nothing when a time, what
/// a port asks for, or the distance from a node's earliest to its latest one leaves 32 bits.
[[nodiscard]] std::optional<std::vector<std::int32_t>> final_ready_times(std::span<const std::int32_t> order);

/// The port, 0 or 1, whose operand counts for the depth: the second one if it has a driver. -1 when neither has one.
/// Kept: what the first of two operands asks for does not count.
[[nodiscard]] std::int32_t port_counted_for_depth(std::int32_t slot);

}  // namespace xfc
