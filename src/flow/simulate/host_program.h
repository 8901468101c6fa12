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
    bool undeclared_calls = false;  ///< functions without a declaration, which C takes for doubles
    std::string why_not = {};       ///< a sentence when there are no results
    bool failed = false;            ///< then there is a compiler that refuses the program, or it did not run to its end
};

/// Compiles the program with the first C compiler on the search path, in `folder`, without contraction of products and
/// sums, and runs it over the vectors. The source is taken as it stands behind the preprocessor; `long` becomes int,
/// since integers have 32 bits here, and a function that hands over the ports is put behind.
/// `places` are those of the program.
[[nodiscard]] host_results run_on_host(const program& what, const source_map& places, const host_options& options,
                                       const stimulus& applied, const std::filesystem::path& folder);

/// A variable inside a function that is a port, as older sources have them, and what is to be done behind its
/// declaration.
struct local_variable {
    std::string name = {};
    int line = 0;  ///< of the declaration
    std::string code = {};
    bool found = false;   ///< set when the declaration was seen inside braces
    bool global = false;  ///< set when it was seen outside
};

/// A preprocessed C program with `long` written int, sizes made unsigned, suffixes l of whole constants left out,
/// `main` renamed, and the code of local variables put behind their declarations in the file of this name.
[[nodiscard]] std::string program_for_host(std::string_view preprocessed, std::string_view file,
                                           std::vector<local_variable>& locals);

}  // namespace xfc::flow
