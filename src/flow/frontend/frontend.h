#pragma once

#include <optional>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/program.h"

namespace xfc::flow {

/// What of a C program is asked for, and how far it is followed.
struct frontend_options {
    std::string top = {};                           ///< the top function; empty: found from the program
    bool c_constants = false;                       ///< floating constants without suffix are double, as C has them
    int unroll_limit = 100000;                      ///< rounds of one loop
    value_id most_values = 20000000;                ///< values that may be made on the way
    std::vector<std::string> include_folders = {};  ///< searched behind the source's own folder
    std::vector<std::string> definitions = {};      ///< macros, "NAME" or "NAME=TEXT"
};

/// A C source: a file, or a text that is called like one.
struct source_text {
    std::string path = {};
    std::optional<std::string> text = {};  ///< read from the path when there is none
};

/// Parses the program and follows it symbolically: what is known at compile time is computed, the rest becomes values.
/// Without a result `messages` says why; with one it may hold warnings and notes. `places` serves for showing them in
/// either case. Holds no state between calls; calls may run side by side.
[[nodiscard]] std::optional<program> read_program(const source_text& source, const frontend_options& options,
                                                  diagnostics& messages, source_map& places);

}  // namespace xfc::flow
