#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow {

/// A header that the program can include without any installed.
struct built_in_header {
    std::string_view name;
    std::string text;
};

/// Where the headers seem to stand.
inline constexpr std::string_view header_folder = "/built-in";

/// math.h, stdint.h, stdbool.h, stddef.h, float.h, limits.h and xfc.h, as the target has them.
[[nodiscard]] std::vector<built_in_header> built_in_headers();

}  // namespace xfc::flow
