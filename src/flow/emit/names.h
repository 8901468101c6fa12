#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/arena.h"
#include "flow/graph/source_map.h"
#include "flow/passes/design.h"

namespace xfc::flow {

/// Signals that every design has besides those of its values, before their names are made unlike all others.
enum class common_name : std::uint8_t { start_chain };

/// What everything in a design is called in both languages.
struct design_names {
    std::string design = {};
    std::vector<std::string> inputs = {};                      ///< by port of the graph
    std::vector<std::string> outputs = {};                     ///< by port of the graph
    std::vector<std::string_view> nodes = {};                  ///< of every node's bus; an input's is its port
    std::vector<std::string> others = {};                      ///< by common_name
    std::shared_ptr<arena> texts = std::make_shared<arena>();  ///< of the nodes' names
};

/// Legal names in the order ports, then buses: a bus is called after the C variable that its expression is assigned to,
/// else after its operation and source line; a suffix tells the coding where it is not C's own. `places` are those of
/// the graph.
[[nodiscard]] design_names names_of(const graph& values, std::string_view design_name, const design& made,
                                    const source_map& places);

/// The text on one line of ASCII that stands in a comment of any language without ending or continuing it; a letter
/// that cannot becomes a question mark.
[[nodiscard]] std::string comment_text(std::string text);

/// Appends "fir.c:12: a * b", fit for a comment: one line of printable characters, not longer than 100.
void append_source_comment(std::string& text, const graph& values, value_id id, const source_map& places);
[[nodiscard]] std::string source_comment(const graph& values, value_id id, const source_map& places);

}  // namespace xfc::flow
