#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// How far a result is from the exact one.
struct deviation {
    double ulp = 0.0;            ///< units in the last place of the result's format; whole units for integers
    bool class_differs = false;  ///< one is finite and the other one is not, or they are infinities of different sign
};

/// What a graph's outputs are without rounding on the way: every operation with 300 bits and no limit to exponents.
/// Choices, wholes and bits are C's own, so only graphs of floating and whole arithmetic are followed.
class exact_reference {
public:
    explicit exact_reference(const graph& source);
    ~exact_reference();
    exact_reference(const exact_reference&) = delete;
    exact_reference& operator=(const exact_reference&) = delete;

    /// Whether every operation can be followed.
    [[nodiscard]] static bool follows(const graph& source);

    /// Computes all values for one vector, in the order of the input ports.
    void run(std::span<const std::uint64_t> inputs);

    /// How far `bits` are from the output's exact value in the last run. A result too small for the format may be zero,
    /// one too large infinite.
    [[nodiscard]] deviation deviation_of(std::size_t output, std::uint64_t bits) const;

private:
    struct numbers;

    const graph& source_;
    numbers* numbers_;
};

/// What the outputs are in C's arithmetic: every operation rounded to its format.
[[nodiscard]] std::vector<std::uint64_t> c_outputs(const graph& source, std::span<const std::uint64_t> inputs);

}  // namespace xfc::flow
