#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

// The folders of the library against the rows of the component table.

namespace xfc::proof {

/// The folders of the library that hold components.
[[nodiscard]] std::set<std::string> component_folders(const std::filesystem::path& library);

/// What is wrong: a folder without a row, a row without a folder whose name is not among those in the file `awaited`,
/// a name there that is no row's or whose folder has come. Lines that begin with # do not count.
[[nodiscard]] std::vector<std::string> folder_failures(const std::filesystem::path& library,
                                                       const std::filesystem::path& awaited);

}  // namespace xfc::proof
