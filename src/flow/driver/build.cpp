#include "flow/driver/build.h"

#include <iterator>
#include <ostream>

#include "flow/driver/report.h"
#include "flow/driver/version.h"
#include "flow/emit/host_model.h"

namespace xfc::flow {

namespace {

std::vector<std::string> header_of(const compilation_state& state, const design_names& names) {
    const command_line& line = state.line;
    const std::string options = design_options(line, "build");
    const std::string command = "xfcflow build " + shell_word(line.source) + (options.empty() ? "" : " " + options);
    // A tool may take a comment that begins with its name for an order, and a design may be called like it.
    return {"Pipelined datapath " + names.design + ", written by xfcflow " + std::string(version),
            "  " + comment_text(command),
            "Latency " + counted_cycles(state.times->latency) +
                " in which enable is 1; a new vector may enter in every one of them.",
            "startout is 1 in the cycle in which the outputs belong to a vector that came with startin."};
}

/// Where the files go.
std::vector<std::string> paths_of(const command_line& line, const built_design& result) {
    std::vector<std::string> paths;
    for (const output_file& file : result.files) {
        paths.push_back((std::filesystem::path(line.folder) / file.path).string());
    }
    return paths;
}

std::string summary(const compilation_state& state, const built_design& result) {
    std::size_t instances = 0;
    for (const design_node& node : state.made->nodes) {
        instances += node.kind == node_kind::instance ? 1 : 0;
    }
    const schedule& times = *state.times;
    std::string text = result.text->name + ": latency " + counted_cycles(times.latency) + ", " +
                       std::to_string(instances) + " components, " + std::to_string(times.register_bits) +
                       " register bits in delays (" + std::to_string(times.register_bits_soonest) +
                       " with every start as soon as possible)\n";
    for (const std::string& path : paths_of(state.line, result)) {
        text += "  " + path + "\n";
    }
    return text;
}

}  // namespace

bool keeps_what_is_read(const compilation_state& state, const std::vector<std::string>& written,
                        std::vector<std::string> also_read) {
    // Headers of the program too.
    const std::vector<std::string> sources = state.places.file_names();
    also_read.insert(also_read.end(), sources.begin(), sources.end());
    for (const std::string& path : written) {
        for (const std::string& read : also_read) {
            std::error_code none;
            if (std::filesystem::equivalent(path, read, none)) {
                state.messages.report(message_id::same_file, {}, {path});
                return false;
            }
        }
    }
    return true;
}

std::vector<language> languages_of(const command_line& line) {
    if (line.languages.empty() || line.languages == "both") {
        return {language::vhdl, language::verilog};
    }
    return {line.languages == "vhdl" ? language::vhdl : language::verilog};
}

std::optional<built_design> built(const compilation_state& state) {
    const graph& values = state.current->values;
    built_design result;
    const auto names =
        std::make_shared<const design_names>(names_of(values, state.current->name, *state.made, state.places));
    result.text = std::make_shared<const datapath>(
        make_datapath(values, *state.made, *state.times, names, state.places, header_of(state, *names)));
    auto files = files_of(result.text, languages_of(state.line), [&state, names](const text_taker& take) {
        write_design_json(state.current->values, *state.made, *state.times, *names, state.places, take);
    });
    if (!files) {
        state.messages.report(message_id::library_missing, {}, {library_folder().string()});
        return std::nullopt;
    }
    result.files = std::move(*files);
    if (!state.line.driver.empty()) {
        const host_model_facts facts{.latency = state.times->latency, .header = result.text->header};
        auto model = host_model_files(values, *state.made, *names, state.places, facts,
                                      state.line.driver == "c" ? host_language::c : host_language::python);
        if (!model) {
            state.messages.report(message_id::library_missing, {}, {library_folder().string()});
            return std::nullopt;
        }
        result.files.insert(result.files.end(), std::make_move_iterator(model->begin()),
                            std::make_move_iterator(model->end()));
    }
    return result;
}

int build(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    std::optional<built_design> result;
    if (run_stages(state, true)) {
        result = built(state);
    }
    const bool done = result && keeps_what_is_read(state, paths_of(line, *result)) &&
                      write_files(line.folder, result->files, messages);
    if (line.json) {
        out << report_json(done ? &*state.current : nullptr, done ? std::optional(state.times->latency) : std::nullopt,
                           messages, places, line.source, done ? paths_of(line, *result) : std::vector<std::string>{});
    } else {
        error << rendered(messages, places, colour);
        if (done) {
            out << summary(state, *result);
        }
    }
    return done ? 0 : 1;
}

}  // namespace xfc::flow
