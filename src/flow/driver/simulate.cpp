#include "flow/driver/simulate.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "flow/driver/build.h"
#include "flow/driver/progress.h"
#include "flow/driver/report.h"
#include "flow/frontend/headers.h"
#include "flow/simulate/accuracy.h"
#include "flow/simulate/bench.h"
#include "flow/simulate/csv.h"
#include "flow/simulate/design_model.h"
#include "flow/simulate/host_program.h"
#include "flow/simulate/process.h"
#include "flow/simulate/simulator.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

using vectors_by_number = std::vector<std::vector<std::uint64_t>>;
using json = nlohmann::ordered_json;

/// What GHDL puts into the waveforms: the bench and the design's own signals, not those inside its components, as the
/// Verilog bench says it with $dumpvars.
constexpr std::string_view wave_selection = "$ version 1.1\n/xfc_bench/*\n/xfc_bench/under_test/*\n";

/// The simulators to run: the one that is named, or the first one installed for each language that is asked for. Where
/// nobody asks for a language, one that none speaks is left out as long as there is another.
std::vector<const simulator_row*> chosen_simulators(const command_line& line, diagnostics& messages) {
    const std::vector<language> wanted = languages_of(line);
    std::vector<const simulator_row*> chosen;
    std::vector<const simulator_row*> left_out;  // the first of each language that none installed speaks
    if (line.simulator == "none") {
        if (!line.wave.empty()) {
            messages.report(message_id::no_waveforms, {});
        }
        return chosen;
    }
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
            left_out.push_back(missing);
        }
    }
    const bool is_enough = !chosen.empty() && line.languages.empty();
    for (const simulator_row* row : left_out) {
        if (is_enough) {
            messages.report(message_id::language_left_out, {},
                            {row->program, row->lang == language::vhdl ? "VHDL" : "Verilog", row->package});
        } else {
            messages.report(message_id::no_simulator, {}, {row->program, row->package});
        }
    }
    if (chosen.empty() && !messages.has_errors()) {
        messages.report(message_id::simulator_language, {}, {line.simulator, line.languages});
    }
    return chosen;
}

/// One simulation with everything that it finds out.
class simulation {
public:
    simulation(const command_line& line, std::ostream& error)
        : line_(line),
          bar_(error, line.terminal && !line.json),
          report_({{"source", line.source}, {"agrees", false}}) {}

    void run() {
        if (!run_stages(state_, true) || !files_are_distinct()) {
            return;
        }
        what_ = built(state_);
        if (!what_) {
            return;
        }
        simulators_ = chosen_simulators(line_, messages_);
        if (messages_.has_errors() || !make_vectors()) {
            return;
        }
        run_model();
        seen_ = expected_;
        for (const simulator_row* row : simulators_) {
            run_in(*row);
        }
        bar_.clear();
        compare();
        write_outputs();
    }

    [[nodiscard]] bool agrees() const { return what_ && !messages_.has_errors(); }

    void print(std::ostream& out, std::ostream& error, bool colour) {
        bar_.clear();
        if (!line_.json) {
            error << rendered(messages_, places_, colour);
            out << text_;
            return;
        }
        report_["agrees"] = agrees();
        report_["messages"] = messages_json(messages_, places_);
        out << report_.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
    }

private:
    /// Whether the hardware's outputs are known; without a simulator the model's are.
    [[nodiscard]] bool all_finished() const { return finished_ == simulators_.size(); }

    [[nodiscard]] const graph& values() const { return state_.current->values; }

    /// No file that is read may be written over, nor two results go into one file.
    bool files_are_distinct() {
        std::error_code none;
        if (!line_.wave.empty() && (line_.wave == line_.outputs || fs::equivalent(line_.wave, line_.outputs, none))) {
            messages_.report(message_id::same_file, {}, {line_.wave});
            return false;
        }
        return keeps_what_is_read(state_, {line_.outputs, line_.wave}, {line_.inputs});
    }

    bool make_vectors() {
        const auto seed = static_cast<std::uint64_t>(line_.seed);
        const std::int32_t latency = what_->text->latency;
        if (line_.inputs.empty()) {
            applied_ = make_stimulus(values(), static_cast<std::size_t>(line_.vectors), seed, latency);
            return true;
        }
        std::ifstream file(line_.inputs, std::ios::binary);
        std::ostringstream text;
        if (!file || fs::is_directory(line_.inputs) || !(text << file.rdbuf(), file.good() || file.eof())) {
            messages_.report(message_id::cannot_read, {}, {line_.inputs, std::strerror(errno != 0 ? errno : EISDIR)});
            return false;
        }
        constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";  // as spreadsheets write it
        std::string table = text.str();
        table.erase(0, table.starts_with(byte_order_mark) ? byte_order_mark.size() : 0);
        const std::uint32_t offset = places_.end();
        places_.add_file(offset, line_.inputs, table);
        vectors_by_number given = vectors_from_csv(table, offset, values(), messages_);
        if (given.empty()) {
            return false;
        }
        applied_ = make_stimulus(std::move(given), seed, latency);
        return true;
    }

    void run_model() {
        design_model model(*state_.made);
        expected_.reserve(applied_.vectors.size());
        for (const std::vector<std::uint64_t>& inputs : applied_.vectors) {
            expected_.push_back(model.outputs_for(inputs));
            bar_.show("model", expected_.size(), applied_.vectors.size());
        }
        equal_.assign(values().outputs().size(), applied_.vectors.size());
        const std::string cycles = counted_cycles(what_->text->latency);
        text_ = what_->text->name + ": latency " + cycles + ", " + std::to_string(applied_.vectors.size()) +
                (simulators_.empty() ? " vectors through the model\n"
                                     : " vectors in every cycle, then with pauses and gaps\n");
        report_["latency"] = what_->text->latency;
        report_["vectors"] = applied_.vectors.size();
        report_["simulators"] = json::array();
    }

    void run_in(const simulator_row& row) {
        const std::string failure = run_and_compare(row);
        if (!failure.empty()) {
            messages_.report(message_id::simulation_failed, {}, {row.name, failure});
        } else {
            text_ +=
                "  " + std::string(row.name) + ": every output bit as the model has it, in the cycle of startout\n";
        }
        report_["simulators"].push_back({{"name", row.name}, {"agrees", failure.empty()}});
    }

    /// One simulator's run. Empty when every bit agrees.
    std::string run_and_compare(const simulator_row& row) {
        const temporary_folder folder;
        const bool wave = !line_.wave.empty() && &row == simulators_.front();
        std::vector<output_file> files = what_->files;
        const std::string bench = "xfc_bench" + std::string(extension_of(row.lang));
        files.push_back({bench, bench_text(*what_->text, row.lang, wave)});
        files.push_back({"vectors.txt", stimulus_text(applied_, values())});
        files.push_back({"wave.opt", std::string(wave_selection)});
        if (folder.path().empty() || !write_files(folder.path(), files, messages_)) {
            return "there is no room for the test bench";
        }
        std::vector<std::string> order;
        const std::string list = what_->text->name + (row.lang == language::vhdl ? "_vhdl.f" : "_verilog.f");
        std::istringstream lines(read_file(folder.path() / list));
        for (std::string file; std::getline(lines, file);) {
            order.push_back(file);
        }
        order.push_back(bench);
        std::size_t line_length = 2;
        for (const port& output : values().outputs()) {
            line_length += static_cast<std::size_t>(format_bits(output.format));
        }
        const std::size_t whole = line_length * applied_.cycles.size();
        std::string failure = run_simulator(row, folder.path(), order, wave, [&] {
            std::error_code none;
            const auto written = fs::file_size(folder.path() / "results.txt", none);
            bar_.show(row.name, none ? 0 : static_cast<std::size_t>(written), whole);
        });
        const std::string results = read_file(folder.path() / "results.txt");
        if (wave) {
            copy_wave(folder.path() / "wave.vcd");
        }
        if (failure.empty()) {
            ++finished_;
            count_equal(results);
            failure = difference_of(applied_, expected_, values(), what_->text->latency, results);
        }
        return failure;
    }

    void count_equal(const std::string& results) {
        const auto seen = outputs_seen(applied_, values(), what_->text->latency, results);
        for (std::size_t place = 0; place < equal_.size(); ++place) {
            std::size_t count = 0;
            for (std::size_t number = 0; number < seen.size(); ++number) {
                count += seen[number][place] == expected_[number][place] ? 1U : 0U;
                seen_[number][place] = seen[number][place].value_or(0);
            }
            equal_[place] = std::min(equal_[place], count);
        }
    }

    void copy_wave(const fs::path& from) {
        std::error_code failed;
        fs::copy_file(from, line_.wave, fs::copy_options::overwrite_existing, failed);
        if (failed) {
            messages_.report(message_id::cannot_write, {}, {line_.wave, failed.message()});
        } else {
            text_ += "  waveforms in " + line_.wave + "\n";
        }
    }

    host_results run_host() {
        const temporary_folder folder;
        host_options options{
            .source = line_.source, .include_folders = line_.include_folders, .definitions = line_.definitions};
        for (const built_in_header& header : built_in_headers()) {
            options.headers.emplace_back(header.name, header.text);
        }
        program as_followed = *state_.current;
        as_followed.values = *state_.followed;
        return run_on_host(as_followed, places_, options, applied_, folder.path());
    }

    void compare() {
        bar_.show("the C program", 0, 0);
        host_results host = run_host();
        const bool same_constants =
            !host.undeclared_calls &&
            std::none_of(messages_.messages().begin(), messages_.messages().end(),
                         [](const diagnostic& one) { return one.name == row_of(message_id::constant_format).name; });
        accuracy_question question{
            .source = *state_.followed,
            .applied = applied_,
            .results = expected_,
            .of_host = host.why_not.empty() ? &host.outputs : nullptr,
            .same_constants = same_constants,
            .mantissa = line_.mantissa,
            .progress = [&](std::size_t done) { bar_.show("exact results", done, applied_.vectors.size()); }};
        std::vector<output_accuracy> rows = accuracy_of(question);
        const bool differs = std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.c_differs != 0; });
        if (differs && state_.current->measures_pointers) {
            host.why_not = "the program asks for sizes of pointers, which this machine has otherwise";
            question.of_host = nullptr;
            rows = accuracy_of(question);
        }
        bar_.clear();
        for (std::size_t place = 0; place < rows.size() && !simulators_.empty(); ++place) {
            rows[place].bits_equal = all_finished() ? equal_[place] : 0;
        }
        report_faults(rows, messages_);
        report_["host"] = {{"compiler", host.compiler}, {"ran", host.why_not.empty()}};
        if (host.failed) {
            messages_.report(message_id::host_refuses, {}, {host.why_not});
        }
        if (!host.why_not.empty()) {
            report_["host"]["why_not"] = host.why_not;
            text_ += "  no figures of C: " + host.why_not + "\n";
        }
        text_ += accuracy_table(rows);
        add_rows(rows);
    }

    void add_rows(const std::vector<output_accuracy>& rows) {
        report_["accuracy"] = json::array();
        for (const output_accuracy& row : rows) {
            json one = {{"name", row.name}, {"format", row.format}, {"vectors", row.vectors}};
            if (row.bits_equal) {
                one["bits_equal"] = *row.bits_equal;
            }
            one.update({{"measured", row.measured},
                        {"largest_ulp", row.largest_ulp},
                        {"median_ulp", row.median_ulp},
                        {"apart_range", row.apart_range},
                        {"apart_undecided", row.apart_undecided},
                        {"apart_cancelled", row.apart_cancelled},
                        {"outside", row.outside},
                        {"c_differs", row.c_differs},
                        {"worst_vector", row.worst_vector},
                        {"worst", row.worst}});
            if (row.largest_ulp_of_c) {
                one["largest_ulp_of_c"] = *row.largest_ulp_of_c;
            }
            report_["accuracy"].push_back(one);
        }
    }

    void write_outputs() {
        if (line_.outputs.empty() || !all_finished()) {
            return;
        }
        errno = 0;
        std::ofstream file(line_.outputs, std::ios::binary);
        file << csv_of_outputs(values(), seen_) << std::flush;
        if (!file) {
            messages_.report(message_id::cannot_write, {}, {line_.outputs, std::strerror(errno != 0 ? errno : EIO)});
        } else {
            text_ += "  outputs in " + line_.outputs + "\n";
        }
    }

    const command_line& line_;
    progress_bar bar_;
    diagnostics messages_;
    source_map places_;
    compilation_state state_{line_, messages_, places_};
    std::optional<built_design> what_;
    std::vector<const simulator_row*> simulators_;
    stimulus applied_;
    vectors_by_number expected_;      ///< by vector, the model's
    vectors_by_number seen_;          ///< by vector, the hardware's; the model's where none is simulated
    std::vector<std::size_t> equal_;  ///< by output: vectors in which every simulator had the model's bits
    std::size_t finished_ = 0;        ///< simulators that came to their end
    std::string text_;
    json report_;
};

}  // namespace

int simulate(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    simulation one(line, error);
    one.run();
    one.print(out, error, colour);
    return one.agrees() ? 0 : 1;
}

}  // namespace xfc::flow
