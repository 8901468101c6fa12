#include "checks.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "exact/run/messages.h"

namespace xfc::fuzz {

namespace {

constexpr std::string_view compiling_banner = "\nCompiler Version MVTK - May 6 2009\n\n";
constexpr std::string_view usage_banner = "\nCompiler Version MVTK - October 12 2010\n\n";
constexpr std::string_view emission_banner = "***   EMIT CODE  ***";
constexpr std::string_view report_banner = "* REPORT                 *";
constexpr std::string_view good_verdict = "\n\n\nNo syntax error was found by the parser\n\n\n";

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// The longest piece of a message between its placeholders.
std::string_view longest_piece(std::string_view text) {
    std::string_view longest;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find('%'));
        if (piece.size() > longest.size()) {
            longest = piece;
        }
        text.remove_prefix(piece.size());
        text.remove_prefix(std::min<std::size_t>(text.size(), text.substr(0, 3) == "%ld" ? 3 : 2));
    }
    return longest;
}

/// Whether one of the messages that end the run was printed on its stream.
bool is_explained(const compilation& result) {
    return std::any_of(message_catalogue.begin(), message_catalogue.end(), [&](const message& entry) {
        const std::string& stream =
            entry.stream == message_stream::standard_output ? result.standard_output : result.standard_error;
        return entry.effect == message_effect::run_ends_with_status_1 && contains(stream, longest_piece(entry.text));
    });
}

/// The name of the output: the source's name, cut to 31 characters and at its first dot, with the extension written
/// over what follows.
std::string expected_output_name(const compilation_request& request, bool verilog) {
    std::string buffer = request.source_name.substr(0, 31);
    const std::size_t base = std::min(buffer.find('.'), buffer.size());
    buffer.replace(base, verilog ? 2 : 4, verilog ? ".v" : ".vhd");
    const std::size_t folder = buffer.rfind('/');
    return folder == std::string::npos ? buffer : buffer.substr(folder + 1);
}

/// Whether the arguments ask for Verilog; a switch that takes a value takes any argument.
bool asks_for_verilog(const compilation_request& request) {
    constexpr std::array<std::string_view, 5> with_value{"-mm", "-fd", "-ns", "-xc", "-mv"};
    std::vector<std::string> arguments{request.source_name};
    arguments.insert(arguments.end(), request.switches.begin(), request.switches.end());
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (std::find(with_value.begin(), with_value.end(), arguments[index]) != with_value.end()) {
            ++index;
        } else if (arguments[index] == "-vlg") {
            return true;
        }
    }
    return false;
}

void check_fatal(const compilation& result) {
    require(result.status == 1, "a fatal message ends the run with status 1");
    require(is_explained(result), "a run that ends early says why");
    require(result.files.empty(), "a run that ends early leaves no output");
}

void check_usage(const compilation& result) {
    require(result.status == 1, "the usage text comes with status 1");
    require(contains(result.standard_error, "\nUsage:xfc <program.c>\n"),
            "the usage banner stands before the usage text");
    require(result.files.empty(), "the usage text comes without an output");
}

void check_finished(const compilation_request& request, const compilation& result) {
    require(contains(result.standard_output, compiling_banner), "a compiling run shows its banner");
    require(contains(result.standard_output, " Maximum Latency "), "a finished run reports the latency");
    require(result.files.size() == 1, "a finished run leaves one output");
    require(result.files.begin()->first == expected_output_name(request, asks_for_verilog(request)),
            "the output is called " + result.files.begin()->first);
    require(!result.files.begin()->second.empty(), "the output is not empty");
    if (result.status == 0) {
        require(result.standard_output.ends_with(good_verdict), "a run without errors ends with its verdict");
        require(result.standard_error.empty(), "a run without errors leaves the standard error alone");
        return;
    }
    require(result.status == 1, "the status is 0 or 1");
    require(contains(result.standard_error, "found by the parser  \n\n\n"), "syntax errors are counted at the end");
    const std::size_t last_line = result.standard_output.rfind("linenumber ");
    require(last_line != std::string::npos && result.standard_output.back() == '\n' &&
                result.standard_output.find('\n', last_line) == result.standard_output.size() - 1,
            "a run with syntax errors ends with the last line's number");
}

/// What of the log that does not name the language: all but the emission.
std::string common_log(const compilation& result) {
    const std::string& log = result.standard_output;
    const std::size_t emission = std::min(log.find(emission_banner), log.size());
    const std::size_t report = std::min(log.find(report_banner, emission), log.size());
    return log.substr(0, emission) + log.substr(report);
}

}  // namespace

void check_outcome(const compilation_request& request, const compilation& result) {
    require(result.source_is_unchanged, "the source is left as it was");
    if (result.ended_early) {
        check_fatal(result);
    } else if (contains(result.standard_output, usage_banner)) {
        check_usage(result);
    } else {
        check_finished(request, result);
    }
}

void check_equal(const compilation& one, const compilation& other, const std::string& what) {
    require(one.status == other.status, what + " gives the same status");
    require(one.standard_output == other.standard_output, what + " gives the same standard output");
    require(one.standard_error == other.standard_error, what + " gives the same standard error");
    require(one.files == other.files, what + " gives the same output");
}

void check_same_design(const compilation& vhdl, const compilation& verilog) {
    require(vhdl.status == verilog.status, "both languages come to the same status");
    require(vhdl.ended_early == verilog.ended_early, "both languages get equally far");
    require(vhdl.standard_error == verilog.standard_error, "both languages give the same standard error");
    require(common_log(vhdl) == common_log(verilog), "both languages log the same passes and report");
}

}  // namespace xfc::fuzz
