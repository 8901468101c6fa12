#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow {

enum class language : std::uint8_t { vhdl, verilog };

/// ".vhd" or ".v".
[[nodiscard]] std::string_view extension_of(language lang);

/// The component library's folder: beside the program as it was installed, else where it was built. Empty when there is
/// none.
[[nodiscard]] std::filesystem::path library_folder();

struct library_file {
    std::filesystem::path path;
    std::string text;
};

/// The library's files that these components need, each behind those that it needs itself: compile order. A file needs
/// another one when it names it outside comments. Empty when a component has no file.
[[nodiscard]] std::optional<std::vector<library_file>> files_for(const std::set<std::string_view>& components,
                                                                 const std::filesystem::path& library, language lang);

}  // namespace xfc::flow
