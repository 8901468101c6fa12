#pragma once

#include <cstddef>
#include <stdexcept>

#include "exact/optimizer/verifier.h"

namespace xfc {

/// A graph that a pass left broken. Nothing catches it: the process ends with its text, which holds the whole graph.
struct graph_violation : std::logic_error {
    using std::logic_error::logic_error;
};

/// What the pass table promises behind the pass of that row, for a graph whose consumer entries agreed at the start.
[[nodiscard]] graph_expectations expectations_behind(std::size_t index);

/// Checks what must hold behind the pass of that row, as far as the graph's consumer entries agreed behind the first
/// one; throws a `graph_violation`. With XFC_DUMP in the environment ("all", or the number of a pass from 1 on) the
/// graph behind that pass is written to the standard error.
void check_behind_pass(std::size_t index);

}  // namespace xfc
