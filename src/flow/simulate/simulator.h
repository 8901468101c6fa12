#pragma once

#include <filesystem>
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
};

[[nodiscard]] std::span<const simulator_row> simulator_rows();

/// Whether the program is on the search path.
[[nodiscard]] bool is_installed(const simulator_row& row);

/// Runs the row's commands in `folder`. Empty when all end well, else what the one that failed said.
[[nodiscard]] std::string run_simulator(const simulator_row& row, const std::filesystem::path& folder,
                                        const std::vector<std::string>& files);

}  // namespace xfc::flow
