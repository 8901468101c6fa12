#include "flow/simulate/simulator.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// Runs a command in a folder, its words without a shell, all that it says into run.log. Its exit status, or -1.
int run_command(const std::vector<std::string>& words, const fs::path& folder) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));  // NOLINT: exec takes what it does not change
    }
    arguments.push_back(nullptr);
    const std::string place = folder.string();
    const pid_t child = fork();
    if (child == 0) {
        const int log = chdir(place.c_str()) == 0 ? open("run.log", O_CREAT | O_WRONLY | O_TRUNC, 0644) : -1;
        if (log >= 0 && dup2(log, STDOUT_FILENO) >= 0 && dup2(log, STDERR_FILENO) >= 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) < 0 || !WIFEXITED(status)) {
        return -1;
    }
    return WEXITSTATUS(status);
}

/// The last lines of what a command said.
std::string end_of_log(const fs::path& folder) {
    constexpr std::size_t most = 1500;
    std::ostringstream text;
    text << std::ifstream(folder / "run.log").rdbuf();
    const std::string all = text.str();
    return all.size() > most ? "..." + all.substr(all.size() - most) : all;
}

}  // namespace

std::span<const simulator_row> simulator_rows() {
    static const std::vector<simulator_row> rows = {
        {"ghdl",
         language::vhdl,
         "ghdl",
         "ghdl",
         {{"ghdl", "-i", "--std=93", "FILES"},
          {"ghdl", "-m", "--std=93", "bench"},
          {"ghdl", "-r", "--std=93", "bench", "--ieee-asserts=disable-at-0"}}},
        {"iverilog",
         language::verilog,
         "iverilog",
         "iverilog",
         {{"iverilog", "-g2001", "-s", "bench", "-o", "bench.vvp", "FILES"}, {"vvp", "-n", "bench.vvp"}}},
        {"verilator",
         language::verilog,
         "verilator",
         "verilator",
         {{"verilator", "--binary", "-Wno-fatal", "-Wno-lint", "-Wno-style", "-CFLAGS", "-O0", "--top-module", "bench",
           "-o", "bench", "FILES"},
          {"obj_dir/bench"}}},
    };
    return rows;
}

bool is_installed(const simulator_row& row) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((folder + "/" + std::string(row.program)).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

std::string run_simulator(const simulator_row& row, const fs::path& folder, const std::vector<std::string>& files) {
    for (const auto& command : row.commands) {
        std::vector<std::string> words;
        for (const std::string_view word : command) {
            if (word == "FILES") {
                words.insert(words.end(), files.begin(), files.end());
            } else {
                words.emplace_back(word);
            }
        }
        const int status = run_command(words, folder);
        if (status != 0) {
            return words[0] + " ended with status " + std::to_string(status) + "\n" + end_of_log(folder);
        }
    }
    return {};
}

}  // namespace xfc::flow
