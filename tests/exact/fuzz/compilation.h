#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

// One whole compilation in this process, for the fuzzers: streams in memory, files in a temporary folder that exists
// as long as the process.

namespace xfc::fuzz {

/// What a compilation is started with. `source_name` is the first argument.
struct compilation_request {
    std::string source;
    std::string source_name = "p.c";
    std::vector<std::string> switches = {};
};

/// What it left behind.
struct compilation {
    int status = 0;
    bool ended_early = false;  ///< by a fatal message, instead of returning from the last phase
    std::string standard_output;
    std::string standard_error;
    std::map<std::string, std::string> files;  ///< by name, without the source
    bool source_is_unchanged = false;
};

/// Compiles from a fresh state and empties the folder again.
[[nodiscard]] compilation compile(const compilation_request& request);

/// What is checked behind every pass of the optimizer besides what verifying builds check.
enum class graph_checks {
    general,       ///< what holds for every program
    single_writer  ///< no variable is assigned twice: links agree up to the merging, every operand comes in its cycle
};

/// Chooses the checks of the compilations that follow.
void set_graph_checks(graph_checks checks);

/// Prints the sentence and ends the process with a signal, which a fuzzer counts as a finding.
[[noreturn]] void report_violation(const std::string& sentence);

/// Reports the sentence unless the condition holds.
inline void require(bool condition, const std::string& sentence) {
    if (!condition) {
        report_violation(sentence);
    }
}

}  // namespace xfc::fuzz
