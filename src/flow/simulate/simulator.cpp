#include "flow/simulate/simulator.h"

#include "flow/simulate/process.h"

namespace xfc::flow {

namespace fs = std::filesystem;

std::span<const simulator_row> simulator_rows() {
    static const std::vector<simulator_row> rows = {
        {"ghdl",
         language::vhdl,
         "ghdl",
         "ghdl",
         {{"ghdl", "-i", "--std=93", "FILES"},
          {"ghdl", "-m", "--std=93", "xfc_bench"},
          {"ghdl", "-r", "--std=93", "xfc_bench", "--ieee-asserts=disable-at-0"}},
         {"--vcd=wave.vcd", "--read-wave-opt=wave.opt"},
         {}},
        {"iverilog",
         language::verilog,
         "iverilog",
         "iverilog",
         {{"iverilog", "-g2001", "-s", "xfc_bench", "-o", "bench.vvp", "FILES"}, {"vvp", "-n", "bench.vvp"}},
         {},
         {}},
        {"verilator",
         language::verilog,
         "verilator",
         "verilator",
         // Most of the time goes into the compilation of Verilator's C++: its headers once, and no optimization.
         {{"verilator", "--binary", "-j", "0", "--output-split", "100000", "-MAKEFLAGS", "OPT_FAST=-O0 OPT_GLOBAL=-O0",
           "-Wno-fatal", "-Wno-lint", "-Wno-style", "--top-module", "xfc_bench", "-o", "bench", "FILES"},
          {"obj_dir/bench"}},
         {},
         {"--trace", "--trace-depth", "2"}},
    };
    return rows;
}

bool is_installed(const simulator_row& row) { return is_on_path(row.program); }

std::string run_simulator(const simulator_row& row, const fs::path& folder, const std::vector<std::string>& files,
                          bool wave, const std::function<void()>& meanwhile) {
    for (const auto& command : row.commands) {
        std::vector<std::string> words;
        for (const std::string_view word : command) {
            if (word == "FILES") {
                words.insert(words.end(), files.begin(), files.end());
            } else {
                words.emplace_back(word);
            }
        }
        if (wave) {
            const auto& more = &command == &row.commands.back() ? row.wave_when_run : row.wave_when_made;
            words.insert(words.end(), more.begin(), more.end());
        }
        const int status = run_command(words, folder, meanwhile);
        if (status != 0) {
            return words[0] + " ended with status " + std::to_string(status) + "\n" + end_of_log(folder);
        }
    }
    return {};
}

}  // namespace xfc::flow
