#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "flow/emit/library_files.h"

namespace xfc::flow {

/// A program that simulates one language.
struct simulator_row {
    std::string_view name;  ///< as the command line says it
    language lang;
    std::string_view program;  ///< that must be on the search path
    std::string_view package;  ///< that has it in Debian
    /// Commands in the bench's folder, a shell-free list of words each; "FILES" stands for the files in compile order.
    std::vector<std::vector<std::string_view>> commands;
    std::vector<std::string_view> wave_when_run = {};   ///< words behind the last command that make it write wave.vcd
    std::vector<std::string_view> wave_when_made = {};  ///< words behind the others for the same purpose
};

[[nodiscard]] std::span<const simulator_row> simulator_rows();

/// Whether the program is on the search path.
[[nodiscard]] bool is_installed(const simulator_row& row);

/// Runs the row's commands in `folder`; `wave`: so that the bench's waveforms stand in wave.vcd. `meanwhile` is called
/// again and again. Empty when all end well, else what the one that failed said.
[[nodiscard]] std::string run_simulator(const simulator_row& row, const std::filesystem::path& folder,
                                        const std::vector<std::string>& files, bool wave = false,
                                        const std::function<void()>& meanwhile = {});

}  // namespace xfc::flow
