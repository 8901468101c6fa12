#pragma once

#include <string_view>

namespace xfc {

/// States that the parser's stack may hold, the initial one included.
inline constexpr int parser_stack_states = 200;

/// Parses the whole input into `parse_tree_root`. Syntax errors and a full stack are reported on the standard output
/// as they are met; syntax errors are counted in `error_count`, which starts at 0.
/// Returns 0 on acceptance, 1 when an error could not be recovered from or the stack was full.
int parse();

/// Receives one fixed line for every reduction. It prints nothing.
inline void trace_reduction(std::string_view) {}

/// The same for a leaf, with the token's text and a newline.
inline void trace_leaf(std::string_view line, std::string_view token) {
    trace_reduction(line);
    trace_reduction(token);
    trace_reduction("\n");
}

}  // namespace xfc
