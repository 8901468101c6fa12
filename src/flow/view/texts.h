#pragma once

#include <string>
#include <string_view>

#include "flow/view/picture.h"

namespace xfc::flow {

/// Text between and within the marks of HTML and SVG.
[[nodiscard]] std::string escaped(std::string_view text);

/// "cycles 3 to 8", or "input".
[[nodiscard]] std::string cycles_text(const bar& one);

}  // namespace xfc::flow
