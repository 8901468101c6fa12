#pragma once

#include <string>

#include "flow/view/picture.h"

namespace xfc::flow {

/// Everything that is drawn and told about a design.
struct view_input {
    const graph& values;
    const design& made;
    const schedule& times;
    const design_names& names;
    const source_map& places;
    std::string_view source;  ///< the program's file, as the command line has it
};

/// A page that stands by itself: schedule, source, ports and figures, with the script that shows them.
[[nodiscard]] std::string page_text(const picture& what, const view_input& input);

/// The schedule alone as SVG 1.1, 24 units a cycle, 18 a lane.
[[nodiscard]] std::string svg_text(const picture& what, const view_input& input);

/// The components and who reads whom, in Graphviz' language; an edge tells its delay in cycles.
[[nodiscard]] std::string dot_text(const picture& what, const view_input& input);

}  // namespace xfc::flow
