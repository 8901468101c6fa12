// The bytes are a C program. It is checked, built and run through the models in this process; what every compilation
// promises is checked, and a program that breaks a promise ends the process. A first line "//%LETTERS" chooses options.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "flow/driver/build.h"
#include "flow/driver/report.h"
#include "flow/driver/stages.h"
#include "flow/frontend/frontend.h"
#include "flow/graph/verifier.h"
#include "flow/simulate/design_model.h"
#include "flow/simulate/reference.h"
#include "flow/simulate/stimulus.h"

namespace {

using namespace xfc::flow;

constexpr int most_rounds = 200;           // of one loop
constexpr value_id most_values = 5000;     // of one program
constexpr value_id most_simulated = 1000;  // values of a program that runs through the models
constexpr std::size_t vectors = 3;

void expect(bool holds, const std::string& otherwise) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "xfcflow: %s\n", otherwise.c_str()));
        std::abort();
    }
}

void expect_none(const std::vector<std::string>& faults, std::string_view where) {
    expect(faults.empty(), std::string(where) + ": " + (faults.empty() ? "" : faults.front()));
}

command_line options_of(std::string_view source) {
    command_line line{.command = "build", .source = "fuzz.c", .unroll = most_rounds};
    if (source.starts_with("//%")) {
        const std::string_view letters = source.substr(3, source.find('\n') - 3);
        line.low_latency = letters.find('l') != std::string_view::npos;
        line.fast_reciprocal = letters.find('r') != std::string_view::npos;
        line.c_constants = letters.find('c') != std::string_view::npos;
        line.mantissa = letters.find('m') != std::string_view::npos ? 36 : 32;
    }
    return line;
}

/// What is said can be shown to people and to programs.
void check_messages(const compilation_state& state, bool accepted) {
    const std::string text = rendered(state.messages, state.places, true);
    expect(accepted != state.messages.has_errors(), "accepted with an error, or refused without one:\n" + text);
    const std::string report =
        report_json(accepted ? &*state.current : nullptr, accepted ? std::optional(state.times->latency) : std::nullopt,
                    state.messages, state.places, state.line.source);
    expect(nlohmann::json::accept(report), "the report is no JSON");
    for (const diagnostic& message : state.messages.messages()) {
        expect(message.name != row_of(message_id::parser_failed).name, "the parser failed");
        expect(!message.text.empty() && (message.level != severity::error || !message.name.empty()),
               "an empty message");
    }
}

/// The compilation with everything that it has come to; false when the program was refused.
bool compiled(compilation_state& state, const std::string& source) {
    const frontend_options options{
        .c_constants = state.line.c_constants, .unroll_limit = most_rounds, .most_values = most_values};
    state.current = read_program({.path = state.line.source, .text = source}, options, state.messages, state.places);
    if (!state.current) {
        return false;
    }
    expect_none(faults_of(state.current->values), "program");
    for (const stage_row& stage : stage_rows().subspan(1)) {
        if (!stage.run(state)) {
            return false;
        }
        expect(!dump_behind(stage, state).empty(), "an empty dump");
    }
    expect_none(faults_of(state.current->values), "expand");
    expect_none(faults_of(*state.made, state.current->values), "components");
    expect_none(faults_of(*state.times, *state.made), "schedule");
    expect(state.times->latency == least_latency(*state.made), "the latency is not the least");
    return true;
}

/// The design's results are as near to the exact ones as its operations promise.
void check_results(const compilation_state& state) {
    const graph& values = state.current->values;
    if (values.size() > most_simulated || state.followed->size() > most_simulated) {
        return;
    }
    const stimulus applied = make_stimulus(values, vectors, 1, state.times->latency);
    design_model model(*state.made);
    exact_reference exact(*state.followed, state.line.mantissa);
    for (const std::vector<std::uint64_t>& inputs : applied.vectors) {
        const std::vector<std::uint64_t> results = model.outputs_for(inputs);
        exact.run(inputs);
        for (std::size_t output = 0; output < results.size(); ++output) {
            expect(!exact.deviation_of(output, results[output]).outside,
                   "output " + values.outputs()[output].name + " is too far from the exact result");
        }
    }
}

void check_files(const built_design& made) {
    for (const output_file& file : made.files) {
        const std::string text = whole_text(file);
        expect(!text.empty(), file.path.string() + " is empty");
        expect(file.path.extension() != ".json" || nlohmann::json::accept(text), "the description is no JSON");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string source(reinterpret_cast<const char*>(data), size);
    const command_line line = options_of(source);
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    const bool accepted = compiled(state, source);
    check_messages(state, accepted);
    if (!accepted) {
        return 0;
    }
    const std::optional<built_design> made = built(state);
    expect(made.has_value(), "there are no files");
    check_files(*made);
    check_results(state);
    return 0;
}
