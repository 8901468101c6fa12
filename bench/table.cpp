// Usage: xfc_bench XFC_BINARY [SHAPE [OPERATORS]]
// Times whole compilations and prints a table; in the same run, side by side, a copy of the output file with cp and a
// syntax check of the same source with clang. Every figure is the median of the runs of one command.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "program_shapes.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace xfc::bench;

constexpr std::size_t runs = 3;
constexpr std::size_t runs_of_short_commands = 51;
constexpr double short_seconds = 0.02;
constexpr std::int64_t smallest_size = 1000;  // operators

struct measurement {
    double seconds = 0;
    long peak_kilobytes = 0;
};

/// Runs a command with its standard output sent to a file; nothing when it cannot be started or fails.
std::optional<measurement> run_once(const std::vector<std::string>& command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "log", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    const auto start = std::chrono::steady_clock::now();
    const int started = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (started != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        return std::nullopt;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return measurement{elapsed.count(), usage.ru_maxrss};
}

std::optional<measurement> median_run(const std::vector<std::string>& command) {
    std::vector<measurement> results;
    std::size_t wanted = runs;
    while (results.size() < wanted) {
        const std::optional<measurement> result = run_once(command);
        if (!result) {
            return std::nullopt;
        }
        wanted = result->seconds < short_seconds ? runs_of_short_commands : runs;
        results.push_back(*result);
    }
    std::sort(results.begin(), results.end(),
              [](const measurement& left, const measurement& right) { return left.seconds < right.seconds; });
    return results[results.size() / 2];
}

void print_cell(const std::optional<measurement>& result) {
    if (result) {
        std::printf(" %9.4f", result->seconds);
    } else {
        std::printf(" %9s", "-");
    }
}

void print_ratio(double value, double base) {
    if (base > 0) {
        std::printf(" %7.1f", value / base);
    } else {
        std::printf(" %7s", "-");
    }
}

/// Nodes of the graph without the merged ones: each has a signal.
std::int64_t count_nodes(const std::string& output) {
    std::ifstream text(output, std::ios::binary);
    std::int64_t count = 0;
    for (std::string line; std::getline(text, line) && line != "BEGIN";) {
        count += line.starts_with("  signal synth") ? 1 : 0;
    }
    return count;
}

/// Writes prog.c. A process of its own does so: the peak memory of a child counts from its parent's on.
void write_source(const program_shape& shape, std::int64_t operators) {
    const pid_t child = fork();
    if (child == 0) {
        std::ofstream source("prog.c", std::ios::binary);
        source << shape.generate(operators);
        source.close();
        std::_Exit(source ? 0 : 1);
    }
    int status = 0;
    if (child == -1 || waitpid(child, &status, 0) != child || status != 0) {
        std::fprintf(stderr, "the source could not be written\n");
        std::exit(1);
    }
}

/// Prints a row. Returns the seconds of the compilation, 0 when it failed; `tenth` are those of a tenth of the size, 0
/// when unknown.
double measure(const std::string& compiler, const program_shape& shape, std::int64_t operators, double tenth) {
    write_source(shape, operators);
    const std::optional<measurement> compiled = median_run({compiler, "prog.c"});
    if (!compiled) {
        std::printf("%-12s %9lld  the compilation failed\n", shape.name.data(), static_cast<long long>(operators));
        return 0;
    }
    const double source_megabytes = static_cast<double>(fs::file_size("prog.c")) / 1e6;
    const double output_megabytes = static_cast<double>(fs::file_size("prog.vhd")) / 1e6;
    const std::optional<measurement> copied = median_run({"cp", "prog.vhd", "copy.vhd"});
    const std::optional<measurement> checked = median_run({"clang", "-fsyntax-only", "-w", "prog.c"});
    const double peak_bytes = static_cast<double>(compiled->peak_kilobytes) * 1024;
    std::printf("%-12s %9lld %9.2f %9.1f %9.4f %8.0f %8.0f %7.0f", shape.name.data(), static_cast<long long>(operators),
                source_megabytes, output_megabytes, compiled->seconds, output_megabytes / compiled->seconds,
                peak_bytes / 1e6, peak_bytes / static_cast<double>(count_nodes("prog.vhd")));
    print_cell(copied);
    print_cell(checked);
    print_ratio(compiled->seconds, copied ? copied->seconds : 0);
    print_ratio(compiled->seconds, tenth);
    std::printf("\n");
    std::fflush(stdout);
    return compiled->seconds;
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count < 2) {
        std::fprintf(stderr, "Usage: xfc_bench XFC_BINARY [SHAPE [OPERATORS]]\n");
        return 2;
    }
    const std::string compiler = fs::absolute(arguments[1]).string();
    const program_shape* only = argument_count > 2 ? find_shape(arguments[2]) : nullptr;
    const std::int64_t size = argument_count > 3 ? std::atoll(arguments[3]) : 0;
    if (argument_count > 2 && only == nullptr) {
        std::fprintf(stderr, "no such shape: %s\n", arguments[2]);
        return 2;
    }
    std::string folder = (fs::temp_directory_path() / "xfc-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        std::perror("temporary folder");
        return 1;
    }
    fs::current_path(folder);
    std::printf("%-12s %9s %9s %9s %9s %8s %8s %7s %9s %9s %7s %7s\n", "shape", "operators", "source MB", "output MB",
                "seconds", "MB/s out", "peak MB", "B/node", "cp s", "clang s", "xfc/cp", "x/tenth");
    for (const program_shape& shape : program_shapes()) {
        if (only != nullptr && only != &shape) {
            continue;
        }
        if (size != 0) {
            measure(compiler, shape, size, 0);
            continue;
        }
        double seconds = 0;
        for (std::int64_t operators = std::min(smallest_size, shape.largest_size); operators <= shape.largest_size;
             operators *= 10) {
            seconds = measure(compiler, shape, operators, seconds);
        }
    }
    fs::current_path("/");
    fs::remove_all(folder);
    return 0;
}
