#pragma once

#include <map>
#include <string>
#include <string_view>

namespace xfc::flow {

using substitutions = std::map<std::string_view, std::string>;

/// The text with every @word@ replaced by what `words` says for it; all of them must be known.
[[nodiscard]] std::string filled_template(std::string_view format, const substitutions& words);

}  // namespace xfc::flow
