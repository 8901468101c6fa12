#pragma once

#include <cstdint>
#include <span>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// What is known about one value of a run beside its exact number.
struct value_bound {
    /// How far a design's value may be from the exact one; infinite: anything is possible. Booleans: 0 or infinite.
    long double radius = 0.0L;
    /// Sums are not normalised: their low bits lie where the largest operand's are. At least 2^exponent of the bus.
    long double scale = 0.0L;
    bool out_of_range = false;   ///< the value itself is too large or too small for its format
    bool range_before = false;   ///< an operand was, or one of its operands
    bool subnormal = false;      ///< comes from an input that is below the smallest normal number and may be a zero
    bool undecided = false;      ///< a decision on the way could fall out either way
    bool sign_is_known = false;  ///< also where the number is zero
};

/// One operand or result: its exact number as near as a long double comes, and its bound.
struct bounded_number {
    long double number = 0.0L;
    bool exact_zero = false;  ///< the exact number is zero, not only too small for a long double
    number_format format = number_format::single_float;
    value_bound bound = {};
};

/// The bound of an operation's result from those of its operands, `in`. `result` has its number; C's own decisions have
/// been taken for it. `mantissa`: bits inside chains of singles, 32 or 36.
[[nodiscard]] value_bound bound_of(operation op, const bounded_number& result, std::span<const bounded_number> in,
                                   std::int32_t mantissa);

/// The bound of an input port's value: none, but subnormal numbers may be taken for zeros.
[[nodiscard]] value_bound bound_of_input(const bounded_number& input);

/// The smallest normal and the largest finite number of a floating format.
[[nodiscard]] long double smallest_normal(number_format format);
[[nodiscard]] long double largest_finite(number_format format);

}  // namespace xfc::flow
