#pragma once

#include "flow/graph/graph.h"

namespace xfc::flow {

/// Writes operations that no component computes as ones that components compute.
/// Before: any operation.
/// After:  whole powers are products (and a quotient for negative exponents), exp2, log2 and log10 stand on exp and
///         log, negated operands of sums are sums of the other kind, integers are negated by subtraction. Bits and
///         conditions are inverted by an exclusive or, but for comparisons that have an opposite, and not in front of
///         selections. Nothing else changes, and equal values are still made once.
///     %3 = whole_power single %1 %2 (5)   becomes   %3 = %1 * %1, %4 = %3 * %3, %5 = %4 * %1
///     %4 = negate %1; %5 = add %2 %4      becomes   %4 = subtract %2 %1
///     %4 = not %1; %5 = select %4 %2 %3   becomes   %4 = select %1 %3 %2
[[nodiscard]] graph expand_operations(const graph& source);

}  // namespace xfc::flow
