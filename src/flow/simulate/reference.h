#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "flow/graph/graph.h"
#include "flow/simulate/error_bound.h"

namespace xfc::flow {

/// Why a result is not measured against the exact one.
enum class apart_reason : std::uint8_t {
    none,
    range,      ///< something on the way is too large for its format, or smaller than its smallest normal number
    undecided,  ///< a comparison or a rounding to whole numbers on the way could fall out either way
    cancelled,  ///< the operations' errors may take half of the result's digits or more
};

/// How far a result is from the exact one.
struct deviation {
    /// Units in the last place of the result's format, or of the single if the result has been one on the way; whole
    /// units for integers.
    double ulp = 0.0;
    bool class_differs = false;  ///< one is finite and the other one is not, or they are infinities of different sign
    bool outside = false;        ///< farther away than the operations' bounds allow; also when the class differs
    apart_reason apart = apart_reason::none;  ///< then `ulp` tells little; `outside` holds all the same
};

/// What a graph's outputs are without rounding on the way, every operation with 300 bits and no limit to exponents, and
/// how far from that a design may be: each operation's own bound, carried on to the outputs to first order and above.
class exact_reference {
public:
    /// The graph must outlive this.
    explicit exact_reference(const graph& source, std::int32_t mantissa = 32);
    ~exact_reference();
    exact_reference(const exact_reference&) = delete;
    exact_reference& operator=(const exact_reference&) = delete;

    /// Computes all values for one vector, in the order of the input ports.
    void run(std::span<const std::uint64_t> inputs);

    /// How far `bits` are from the output's exact value in the last run. A result too small for the format may be zero,
    /// one too large infinite. Below the smallest normal number the unit stays that number's.
    [[nodiscard]] deviation deviation_of(std::size_t output, std::uint64_t bits) const;

private:
    struct numbers;

    const graph& source_;
    std::unique_ptr<numbers> numbers_;
    std::int32_t mantissa_;
};

/// What is known about a program's results in C.
struct c_freedom {
    /// C says what every operation gives: no conversion out of an integer's range, no shift too far, no quotient that
    /// does not fit, no sign of what is no number or of a sum that is zero, no larger one of zeros of both signs.
    bool defined = true;
    std::vector<bool> either_zero = {};  ///< by output: a sum that is zero, or a zero computed from one
};

/// The results of C's arithmetic. A null pointer where nobody asks.
[[nodiscard]] std::vector<std::uint64_t> c_outputs(const graph& source, std::span<const std::uint64_t> inputs,
                                                   c_freedom* freedom = nullptr);

/// Whether C's result is the same with every library: no function that may round either way.
[[nodiscard]] bool is_exact_in_c(const graph& source);

}  // namespace xfc::flow
