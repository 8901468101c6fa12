#pragma once

#include "flow/graph/graph.h"

namespace xfc::flow {

/// Takes the reciprocal components where the program divides 1; they are faster and smaller than a division and round
/// less well.
/// Before: any operation.
/// After:  no floating 1 / x and no 1 / sqrt(x) is left; whatever else there was stays.
///     %2 = square_root single %0; %3 = divide single %1 (1) %2   becomes   %3 = inverse_square_root single %0
[[nodiscard]] graph use_reciprocals(const graph& source);

}  // namespace xfc::flow
