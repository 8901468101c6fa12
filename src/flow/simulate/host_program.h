#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "flow/graph/program.h"
#include "flow/simulate/stimulus.h"

namespace xfc::flow {

/// What the host's compiler needs beside the program.
struct host_options {
    std::string source = {};  ///< path of the C program
    std::vector<std::string> include_folders = {};
    std::vector<std::string> definitions = {};
    /// Names and texts of the headers that every program can include; the machine's own are not used.
    std::vector<std::pair<std::string, std::string>> headers = {};
};

/// What the C program gives when it is compiled and run on this machine.
struct host_results {
    /// By vector; no outputs where the program was stopped, by a division of integers that traps, say.
    std::vector<std::vector<std::uint64_t>> outputs = {};
    std::string compiler = {};
    std::string why_not = {};  ///< a sentence when there are no results
};

/// Compiles the program with the first C compiler on the search path, in `folder`, without contraction of products and
/// sums, and runs it over the vectors. The source is taken as it stands behind the preprocessor; `long` becomes int,
/// since integers have 32 bits here, and a function that hands over the ports is put behind.
[[nodiscard]] host_results run_on_host(const program& what, const host_options& options, const stimulus& applied,
                                       const std::filesystem::path& folder);

/// A preprocessed C program with `long` written int outside the system's headers, suffixes l of whole constants left
/// out, and `main` renamed.
[[nodiscard]] std::string with_narrow_long(std::string_view preprocessed);

/// The function that is put behind the program: void xfc_host_run(const unsigned long long* in, unsigned long long* out).
[[nodiscard]] std::string host_call_text(const program& what);

}  // namespace xfc::flow
