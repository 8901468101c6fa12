#include "compilation.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "exact/driver/compiler.h"
#include "exact/optimizer/optimizer.h"
#include "exact/optimizer/pass_checks.h"
#include "exact/run/console.h"

namespace xfc::fuzz {

namespace {

namespace fs = std::filesystem;

/// Where folders are made: the place that the environment names, else in memory where the system has such a place.
fs::path place_of_folders() {
    if (const char* named = std::getenv("XFC_FUZZ_FOLDER"); named != nullptr) {
        return named;
    }
    const fs::path shared_memory = "/dev/shm";
    std::error_code error;
    return fs::is_directory(shared_memory, error) ? shared_memory : fs::temp_directory_path();
}

/// A folder of this process.
class run_folder {
public:
    run_folder() {
        const fs::path place = place_of_folders();
        std::string pattern = (place / "xfc-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            report_violation("no temporary folder in " + place.string());
        }
        folder_ = pattern;
    }
    run_folder(const run_folder&) = delete;
    run_folder& operator=(const run_folder&) = delete;
    ~run_folder() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    [[nodiscard]] const fs::path& path() const { return folder_; }

private:
    fs::path folder_;
};

/// Makes the folder the current one for the object's life.
class visit_to {
public:
    explicit visit_to(const fs::path& folder) : before_(fs::current_path()) { fs::current_path(folder); }
    visit_to(const visit_to&) = delete;
    visit_to& operator=(const visit_to&) = delete;
    ~visit_to() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
    }

private:
    fs::path before_;
};

void write_file(const std::string& name, const std::string& text) {
    std::ofstream stream(name, std::ios::binary);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    require(stream.good(), "the source could not be written");
}

std::string read_file(const fs::path& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Reads and removes every file of the current folder.
std::map<std::string, std::string> take_files() {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
        files[entry.path().filename().string()] = read_file(entry.path());
    }
    for (const auto& file : files) {
        fs::remove(file.first);
    }
    return files;
}

graph_checks chosen_checks = graph_checks::general;

void check_after_pass(std::size_t index) {
    check_behind_pass(index);
    if (chosen_checks == graph_checks::general) {
        return;
    }
    const std::string violation = verify_graph(expectations_behind(index));
    require(violation.empty(), "behind pass " + std::to_string(index) + ": " + violation);
}

}  // namespace

compilation compile(const compilation_request& request) {
    static const run_folder folder;
    const visit_to visit(folder.path());
    write_file(request.source_name, request.source);
    std::vector<const char*> arguments{request.source_name.c_str()};
    for (const std::string& text : request.switches) {
        arguments.push_back(text.c_str());
    }

    standard_output.redirect(nullptr);
    standard_error.redirect(nullptr);
    after_optimizer_pass = check_after_pass;
    compilation result;
    result.status = run_compiler(arguments);
    result.standard_output = standard_output.take_text();
    result.standard_error = standard_error.take_text();
    const auto said = [&result](std::string_view text) {
        return result.standard_output.find(text) != std::string::npos;
    };
    result.ended_early = !said("Maximum Latency") && !said("October 12 2010");

    result.files = take_files();
    const auto source = result.files.find(fs::path(request.source_name).filename().string());
    result.source_is_unchanged = source != result.files.end() && source->second == request.source;
    if (source != result.files.end()) {
        result.files.erase(source);
    }
    return result;
}

void set_graph_checks(graph_checks checks) { chosen_checks = checks; }

void report_violation(const std::string& sentence) {
    static_cast<void>(std::fprintf(stderr, "violated: %s\n", sentence.c_str()));
    std::abort();
}

}  // namespace xfc::fuzz
