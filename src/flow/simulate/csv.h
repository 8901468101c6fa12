#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

/// Vectors from a table: a header with the names of all input ports in any order, then a line a cycle. Numbers as C
/// writes them, hexadecimal floating constants too, and nan, inf, -inf; integers that the port's C type holds. The
/// result has an input port's bits in the ports' order; empty when `messages` says what is wrong, at line and column,
/// counted from `offset`, where the table stands in the source map.
[[nodiscard]] std::vector<std::vector<std::uint64_t>> vectors_from_csv(std::string_view text, std::uint32_t offset,
                                                                       const graph& source, diagnostics& messages);

/// The outputs by vector as such a table: hexadecimal floating constants, nan, inf, whole numbers.
[[nodiscard]] std::string csv_of_outputs(const graph& source, const std::vector<std::vector<std::uint64_t>>& results);

}  // namespace xfc::flow
