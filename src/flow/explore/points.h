#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/passes/design.h"

namespace xfc::flow {

/// One choice of everything that is explored.
struct design_point {
    library_options options = {};
    bool fast_reciprocal = false;
    std::string text = {};  ///< as the command line says it; empty: nothing but defaults
};

/// What stays as it is given while the rest is explored.
struct exploration {
    library_options options = {};
    std::vector<std::string_view> fixed = {};  ///< options by name, "--mantissa"
};

/// The program's hardware with these options.
struct point_design {
    graph followed = {};  ///< the values as C has them, for the exact results
    design made = {};
};

/// Nothing when a component is missing; the messages say which.
[[nodiscard]] std::optional<point_design> design_of(const graph& program, const design_point& point,
                                                    diagnostics& messages);

/// All points that differ in their hardware, the defaults first; of those with the same hardware the one that is told
/// shortest. Empty when a component is missing.
[[nodiscard]] std::vector<design_point> points_of(const graph& program, const exploration& asked,
                                                  diagnostics& messages);

}  // namespace xfc::flow
