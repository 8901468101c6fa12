#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "flow/passes/design.h"

namespace xfc::flow {

/// When everything happens. Inputs are there in cycle 0; outputs all in the last one.
struct schedule {
    std::vector<std::int32_t> start = {};    ///< cycle in which a node's operands must be there, by node; constants: 0
    std::int32_t latency = 0;                ///< cycles from the inputs to the outputs, at least 1
    std::int64_t register_bits = 0;          ///< of all delay lines together
    std::int64_t register_bits_soonest = 0;  ///< what they would be with every start as soon as possible
};

/// The count as people read it: "1 cycle", "2 cycles".
[[nodiscard]] inline std::string counted_cycles(std::int32_t cycles) {
    return std::to_string(cycles) + (cycles == 1 ? " cycle" : " cycles");
}

/// The cycle in which a node's bus carries what belongs to a vector of cycle 0.
[[nodiscard]] inline std::int32_t ready_time(const design& made, const schedule& times, node_id id) {
    return times.start[id] + made[id].latency();
}

/// Cycles from the inputs to the outputs when everything starts as soon as it can, at least 1: what a schedule has.
[[nodiscard]] std::int32_t least_latency(const design& made);

/// Start cycles with the fewest register bits in delay lines at the least latency, one shared line for each bus. The
/// starts solve a linear program, whose dual is a minimum-cost flow: a bus of w bits costs w for each cycle between its
/// being ready and its last reader.
[[nodiscard]] schedule balanced_schedule(const design& made);

/// The taps of all delay lines.
struct delay_taps {
    std::vector<std::uint32_t> first = {};  ///< of each node's taps, and one behind the last
    std::vector<std::int32_t> cycles = {};  ///< by which the bus is delayed at a tap

    [[nodiscard]] std::span<const std::int32_t> operator[](node_id id) const {
        return {cycles.data() + first[id], cycles.data() + first[id + 1]};
    }
    [[nodiscard]] std::size_t size() const { return first.size() - 1; }
};

/// Cycles by which a bus must be delayed for some reader or output, each once, rising; 0 is left out.
[[nodiscard]] delay_taps delays_of(const design& made, const schedule& times);

/// What is wrong with a schedule, a sentence each: every operand is ready when its reader starts, inputs start in cycle
/// 0, outputs are ready in the last cycle, and the register bits are what the delays need.
[[nodiscard]] std::vector<std::string> faults_of(const schedule& times, const design& made);

}  // namespace xfc::flow
