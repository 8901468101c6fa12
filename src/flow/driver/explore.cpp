#include "flow/driver/explore.h"

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <fstream>
#include <mutex>
#include <ostream>
#include <thread>

#include "base/fnv_hash.h"
#include "flow/driver/build.h"
#include "flow/driver/progress.h"
#include "flow/driver/report.h"
#include "flow/driver/version.h"
#include "flow/explore/report.h"
#include "flow/graph/dump.h"
#include "flow/passes/options.h"
#include "flow/simulate/process.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// The options that every point has, as `build` takes them.
std::string common_options(const command_line& line) { return design_options(line, "explore"); }

class exploration_run {
public:
    exploration_run(const command_line& line, std::ostream& out, std::ostream& error)
        : line_(line), out_(out), bar_(error, line.terminal && !line.json) {}

    bool run() {
        if (!run_stages(state_, false)) {
            return false;
        }
        points_ = points_of(program(), asked(), messages_);
        if (points_.empty()) {
            return false;
        }
        if (!line_.jobs_file.empty()) {
            return write_jobs();
        }
        if (line_.point != 0) {
            return run_one();
        }
        std::vector<point_result> results;
        if (line_.merge.empty()) {
            results = measured();
        } else if (!merge(results)) {
            return false;
        }
        return report(finished(std::move(results)));
    }

    [[nodiscard]] std::string messages(bool colour) const { return rendered(messages_, places_, colour); }
    [[nodiscard]] std::string refusal() const {
        return report_json(nullptr, std::nullopt, messages_, places_, line_.source);
    }
    /// Whether something stands on the standard output already: lines to run, to which no JSON belongs.
    [[nodiscard]] bool told() const { return told_; }

private:
    [[nodiscard]] const graph& program() const { return state_.current->values; }

    [[nodiscard]] exploration asked() const {
        exploration wanted{.options = default_library_options(false)};
        for (const library_option_row& row : library_option_rows()) {
            const std::string& word = line_.*row.word;
            if (!word.empty()) {
                wanted.options.*row.field = library_option_row::value_of(word);
                wanted.fixed.push_back(row.name);
            }
        }
        return wanted;
    }

    [[nodiscard]] const family_row& family() const { return *family_named(line_.family); }

    /// What is explored and with what: results of anything else are not taken.
    [[nodiscard]] std::string identity() const {
        return "xfcflow " + std::string(version) + ", " + state_.current->name + " (" +
               std::to_string(fnv_hash(dump(program(), nullptr))) + ") " + common_options(line_) + ", " +
               std::to_string(line_.vectors) + " vectors from " + std::to_string(line_.seed) + ", " + line_.family +
               " (" + std::to_string(fnv_hash(component_costs_text(family()))) + "), " +
               std::to_string(points_.size()) + " points";
    }

    [[nodiscard]] stimulus vectors() const {
        return make_stimulus(program(), static_cast<std::size_t>(line_.vectors), static_cast<std::uint64_t>(line_.seed),
                             1);
    }

    [[nodiscard]] std::vector<point_result> measured() {
        const stimulus applied = vectors();
        const measuring with{program(), applied, family(), component_costs(family())};
        std::vector<point_result> results(points_.size());
        std::atomic<std::size_t> next = 0;
        std::mutex guard;
        std::condition_variable changed;
        std::size_t done = 0;
        const auto work = [&] {
            for (std::size_t place = next++; place < points_.size(); place = next++) {
                results[place] = measured_point(with, points_[place], place + 1);
                const std::lock_guard lock(guard);
                ++done;
                changed.notify_one();
            }
        };
        const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
        const std::size_t wanted = line_.threads != 0 ? static_cast<std::size_t>(line_.threads) : cores;
        std::vector<std::jthread> workers;
        for (std::size_t number = 0; number < std::min(wanted, points_.size()); ++number) {
            workers.emplace_back(work);
        }
        std::unique_lock lock(guard);
        while (done < points_.size()) {
            changed.wait_for(lock, std::chrono::milliseconds(100));
            bar_.show("designs", done, points_.size());
        }
        bar_.clear();
        return results;
    }

    bool write(const std::string& file, const std::string& text) {
        const std::vector<std::string> written{file};
        return keeps_what_is_read(state_, written, results_read_) && write_files("", {{file, text}}, messages_);
    }

    // ---- Elsewhere ----

    [[nodiscard]] static std::string file_of(std::size_t number) { return "point_" + std::to_string(number) + ".json"; }

    [[nodiscard]] std::string job(std::size_t number, const std::string& folder) const {
        const std::string common = common_options(line_);
        return "xfcflow explore " + shell_word(line_.source) + (common.empty() ? "" : " " + common) + " --vectors " +
               std::to_string(line_.vectors) + " --seed " + std::to_string(line_.seed) + " --family " + line_.family +
               " --point " + std::to_string(number) + " --result " +
               shell_word((fs::path(folder) / file_of(number)).string()) + "\n";
    }

    bool write_jobs() {
        const std::string folder = line_.jobs_file + ".results";
        std::string text;
        for (std::size_t number = 1; number <= points_.size(); ++number) {
            text += job(number, folder);
        }
        if (!write(line_.jobs_file, text)) {
            return false;
        }
        out_ << line_.jobs_file << ": " << points_.size() << " lines, whose results go into " << folder << '\n';
        return true;
    }

    bool run_one() {
        const auto number = static_cast<std::size_t>(line_.point);
        if (number > points_.size()) {
            messages_.report(message_id::no_such_point, {}, {std::to_string(number), std::to_string(points_.size())});
            return false;
        }
        const stimulus applied = vectors();
        const measuring with{program(), applied, family(), component_costs(family())};
        const std::string text = result_file(measured_point(with, points_[number - 1], number), identity());
        if (line_.result.empty()) {
            out_ << text;
            return true;
        }
        // Whoever ends this process half-way leaves no half of a result.
        const std::string part = line_.result + ".part";
        if (!keeps_what_is_read(state_, std::vector{line_.result}) || !write(part, text)) {
            return false;
        }
        std::error_code failed;
        fs::rename(part, line_.result, failed);
        if (failed) {
            messages_.report(message_id::cannot_write, {}, {line_.result, failed.message()});
        }
        return !failed;
    }

    bool merge(std::vector<point_result>& results) {
        std::error_code none;
        if (!fs::is_directory(line_.merge, none)) {
            messages_.report(message_id::cannot_read, {}, {line_.merge, std::strerror(none ? none.value() : ENOTDIR)});
            return false;
        }
        const std::string of = identity();
        std::string missing;
        std::string jobs;
        std::size_t lacking = 0;
        for (std::size_t number = 1; number <= points_.size(); ++number) {
            const fs::path file = fs::path(line_.merge) / file_of(number);
            results_read_.push_back(file.string());
            auto result = result_of_file(read_file(file), of);
            if (result && result->number == number) {
                results.push_back(std::move(*result));
                continue;
            }
            ++lacking;
            const std::string& options = points_[number - 1].text;
            missing += (missing.empty() ? "" : ", ") + std::to_string(number) + " (" +
                       (options.empty() ? "defaults" : options) + ")";
            jobs += job(number, line_.merge);
        }
        if (lacking != 0) {
            messages_.report(message_id::points_missing, {},
                             {std::to_string(lacking), std::to_string(points_.size()), line_.merge, missing});
            out_ << jobs;
            told_ = true;
        }
        return lacking == 0;
    }

    // ---- What is told ----

    bool report(const std::vector<point_result>& results) {
        const std::string name = state_.current->name;
        const exploration_head head{.design = name,
                                    .source = line_.source,
                                    .family = &family(),
                                    .vectors = static_cast<std::size_t>(line_.vectors),
                                    .seed = line_.seed,
                                    .top = common_options(line_),
                                    .costs = component_costs(family()).comments()};
        const std::string text = line_.html   ? exploration_page(head, results)
                                 : line_.json ? exploration_json(head, results)
                                 : line_.csv  ? exploration_csv(results)
                                              : exploration_text(head, results);
        const std::string file = !line_.file.empty() ? line_.file : line_.html ? name + "_explored.html" : "";
        if (file.empty()) {
            out_ << text;
            return true;
        }
        if (!write(file, text)) {
            return false;
        }
        out_ << file << '\n';
        return true;
    }

    const command_line& line_;
    std::ostream& out_;
    progress_bar bar_;
    diagnostics messages_;
    source_map places_;
    compilation_state state_{line_, messages_, places_};
    std::vector<design_point> points_;
    std::vector<std::string> results_read_;  ///< files, of a merge
    bool told_ = false;
};

}  // namespace

int explore(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    exploration_run one(line, out, error);
    const bool done = one.run();
    if (!done && line.json && !one.told()) {
        out << one.refusal();
    } else {
        error << one.messages(colour);
    }
    return done ? 0 : 1;
}

}  // namespace xfc::flow
