#pragma once

#include <string>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// The graph as text that people and tests compare, one line a value or output:
///
///     %0 = input single x
///     %1 = constant single 0.5
///     %2 = multiply single %0 %1 ; prog.c:3:9
///     output single y = %2
///
/// Places are left out without a source map. Floats are written with the fewest digits that give their bits again.
[[nodiscard]] std::string dump(const graph& source, const source_map* places = nullptr);

/// A constant's number as the dump writes it.
[[nodiscard]] std::string constant_text(const graph& source, value_id id);

}  // namespace xfc::flow
