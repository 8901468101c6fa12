#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// What is applied to a design in one cycle.
struct stimulus_cycle {
    bool reset = false;
    bool enable = false;
    bool startin = false;
    std::size_t vector = 0;  ///< number of the vector on the inputs
};

/// Vectors and the cycles in which they are applied.
struct stimulus {
    std::vector<std::vector<std::uint64_t>> vectors = {};  ///< bits by input port
    std::vector<stimulus_cycle> cycles = {};
};

/// A vector in every cycle, then after a reset each of them again with random pauses of enable and gaps in startin; the
/// pipeline runs empty behind both. Vectors are drawn over the whole range of their format, near one, and from the
/// corners: zeros, infinities, what is no number, the largest and the smallest. Equal seeds give equal stimuli.
[[nodiscard]] stimulus make_stimulus(const graph& source, std::size_t vectors, std::uint64_t seed,
                                     std::int32_t latency);

/// The same with vectors that are given.
[[nodiscard]] stimulus make_stimulus(std::vector<std::vector<std::uint64_t>> vectors, std::uint64_t seed,
                                     std::int32_t latency);

/// A line a cycle as the test benches read it: reset, enable, startin and the bits of all inputs, the first port's
/// first, as zeros and ones; one bit that nobody reads where there are none.
[[nodiscard]] std::string stimulus_text(const stimulus& what, const graph& source);

/// What a test bench saw in one cycle in front of the clock's edge: startout and the bits of all outputs, the first
/// port's first, as zeros, ones and whatever else a simulator knows. Empty when all is as the model says, else a
/// sentence about the first difference. `expected` has the model's outputs by vector.
[[nodiscard]] std::string difference_of(const stimulus& what, const std::vector<std::vector<std::uint64_t>>& expected,
                                        const graph& source, std::int32_t latency, const std::string& seen);

/// The outputs that a test bench saw for each vector of the first run, in which one enters in every cycle, by output;
/// nothing where a bit is unknown or the run ended before.
[[nodiscard]] std::vector<std::vector<std::optional<std::uint64_t>>> outputs_seen(const stimulus& what,
                                                                                  const graph& source,
                                                                                  std::int32_t latency,
                                                                                  const std::string& seen);

}  // namespace xfc::flow
