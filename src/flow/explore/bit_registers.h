#pragma once

#include <cstdint>
#include <vector>

#include "flow/passes/schedule.h"
#include "flow/synth/family.h"

namespace xfc::flow {

/// What is counted bit by bit instead of looked up: delay lines, and instances that work on each bit alone or add.
struct bit_counts {
    std::int64_t look_up_tables = 0;
    std::int64_t flip_flops = 0;
    std::vector<std::int32_t> unknown = {};    ///< by node: bits of its bus that are not known
    std::vector<std::int32_t> different = {};  ///< of these those that differ: a sign extended is one
};

/// Whether an instance is counted bit by bit: selections, logic, shifts by known distances, integer sums.
[[nodiscard]] bool is_counted_by_bits(const design& made, node_id id);

/// Follows every bit through those instances and all delay lines as synthesis does: known bits and unread ones have no
/// register, equal registers are one, and in a family with shift registers a chain of three and more registers without
/// logic and without other readers is one look-up table for every 32, with the register that drives it.
[[nodiscard]] bit_counts count_bits(const design& made, const schedule& times, const family_row& family);

}  // namespace xfc::flow
