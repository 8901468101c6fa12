#include "flow/driver/simulate.h"

#include <unistd.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "flow/driver/build.h"
#include "flow/simulate/accuracy.h"
#include "flow/simulate/bench.h"
#include "flow/simulate/design_model.h"
#include "flow/simulate/simulator.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// A folder that goes with its owner.
class temporary_folder {
public:
    temporary_folder() {
        std::string wanted = (fs::temp_directory_path() / "xfcflow.XXXXXX").string();
        path_ = mkdtemp(wanted.data()) != nullptr ? wanted : "";
    }
    ~temporary_folder() {
        std::error_code ignored;
        if (!path_.empty()) {
            fs::remove_all(path_, ignored);
        }
    }
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;
    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

std::string read_file(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// The simulators to run: the one that is named, or the first one installed that speaks a language that is asked for.
std::vector<const simulator_row*> chosen_simulators(const command_line& line, diagnostics& messages) {
    const std::vector<language> wanted = languages_of(line);
    std::vector<const simulator_row*> chosen;
    for (const language lang : wanted) {
        const simulator_row* first = nullptr;
        const simulator_row* missing = nullptr;
        for (const simulator_row& row : simulator_rows()) {
            if (row.lang != lang || (!line.simulator.empty() && row.name != line.simulator)) {
                continue;
            }
            const bool there = is_installed(row);
            first = first == nullptr && there ? &row : first;
            missing = missing == nullptr && !there ? &row : missing;
        }
        if (first != nullptr) {
            chosen.push_back(first);
        } else if (missing != nullptr) {
            messages.report(message_id::no_simulator, {}, {missing->program, missing->package});
        }
    }
    if (chosen.empty() && !messages.has_errors()) {
        messages.report(message_id::simulator_language, {}, {line.simulator, line.languages});
    }
    return chosen;
}

/// One simulator's run. Empty when every bit agrees.
std::string run_and_compare(const simulator_row& row, const built_design& what, const stimulus& applied,
                            const std::vector<std::vector<std::uint64_t>>& expected, const graph& source,
                            diagnostics& messages) {
    const temporary_folder folder;
    std::vector<output_file> files = what.files;
    const std::string bench = "bench" + std::string(extension_of(row.lang));
    files.push_back({bench, bench_text(what.text, row.lang)});
    files.push_back({"vectors.txt", stimulus_text(applied, source)});
    if (folder.path().empty() || !write_files(folder.path(), files, messages)) {
        return "there is no room for the test bench";
    }
    std::vector<std::string> order;
    const std::string list = what.names.design + (row.lang == language::vhdl ? "_vhdl.f" : "_verilog.f");
    std::istringstream lines(read_file(folder.path() / list));
    for (std::string file; std::getline(lines, file);) {
        order.push_back(file);
    }
    order.push_back(bench);
    std::string failure = run_simulator(row, folder.path(), order);
    if (!failure.empty()) {
        return failure;
    }
    return difference_of(applied, expected, source, what.text.latency, read_file(folder.path() / "results.txt"));
}

nlohmann::ordered_json accuracy_json(const std::vector<output_accuracy>& rows) {
    auto list = nlohmann::ordered_json::array();
    for (const output_accuracy& row : rows) {
        list.push_back({{"name", row.name},
                        {"format", row.format},
                        {"vectors", row.vectors},
                        {"largest_ulp", row.largest_ulp},
                        {"median_ulp", row.median_ulp},
                        {"largest_ulp_of_c", row.largest_ulp_of_c},
                        {"other_class", row.other_class},
                        {"other_class_of_c", row.other_class_of_c},
                        {"worst", row.worst}});
    }
    return list;
}

}  // namespace

int simulate(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    std::optional<built_design> what;
    if (run_stages(state, true)) {
        what = built(state);
    }
    std::vector<const simulator_row*> simulators;
    if (what) {
        simulators = chosen_simulators(line, messages);
    }
    nlohmann::ordered_json report = {{"source", line.source}, {"agrees", false}};
    std::string text;
    if (what && !messages.has_errors()) {
        const graph& values = state.current->values;
        const stimulus applied = make_stimulus(values, static_cast<std::size_t>(line.vectors),
                                               static_cast<std::uint64_t>(line.seed), what->text.latency);
        design_model model(*state.made);
        std::vector<std::vector<std::uint64_t>> expected;
        expected.reserve(applied.vectors.size());
        for (const std::vector<std::uint64_t>& inputs : applied.vectors) {
            expected.push_back(model.outputs_for(inputs));
        }
        text = what->names.design + ": latency " + std::to_string(what->text.latency) + " cycles, " +
               std::to_string(applied.vectors.size()) + " vectors in every cycle, then with pauses and gaps\n";
        report["simulators"] = nlohmann::ordered_json::array();
        for (const simulator_row* row : simulators) {
            const std::string failure = run_and_compare(*row, *what, applied, expected, values, messages);
            if (!failure.empty()) {
                messages.report(message_id::simulation_failed, {}, {row->name, failure});
            } else {
                text += "  " + std::string(row->name) +
                        ": every output bit as the model has it, in the cycle of startout\n";
            }
            report["simulators"].push_back({{"name", row->name}, {"agrees", failure.empty()}});
        }
        const std::vector<output_accuracy> accuracy = accuracy_of(*state.followed, applied, expected);
        text += accuracy.empty() ? "  no exact results: some operation is C's own\n" : accuracy_table(accuracy);
        report["accuracy"] = accuracy_json(accuracy);
    }
    const bool agrees = what && !messages.has_errors();
    if (line.json) {
        report["agrees"] = agrees;
        report["messages"] = nlohmann::ordered_json::array();
        for (const diagnostic& message : messages.messages()) {
            report["messages"].push_back({{"id", message.name}, {"text", message.text}});
        }
        out << report.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    } else {
        error << rendered(messages, places, colour);
        out << text;
    }
    return agrees ? 0 : 1;
}

}  // namespace xfc::flow
