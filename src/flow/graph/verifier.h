#pragma once

#include <string>
#include <vector>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// What is wrong with the graph, a sentence each; nothing when it keeps its promises: operands earlier and in the
/// formats of the operation's row, no two values equal, ports and values agreeing.
[[nodiscard]] std::vector<std::string> faults_of(const graph& source);

/// The same for values that belong to no graph yet; `values` may be anything.
[[nodiscard]] std::vector<std::string> faults_of(std::span<const value> values, std::span<const port> inputs,
                                                 std::span<const port> outputs);

}  // namespace xfc::flow
