#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace xfc::flow {

/// The sources of these components' bit-exact models put together: each header in front of whoever includes it.
struct model_sources {
    std::set<std::string> standard_headers = {};  ///< what they include of C++'s own: "array"
    std::string text = {};                        ///< without include directives; everything is in namespace xfc
};

/// Reads them from the component library, as it is installed (its folder `model`) or as it stands in the source tree.
/// Empty when a component has no model there, or a model lacks a header.
[[nodiscard]] std::optional<model_sources> model_sources_for(const std::set<std::string_view>& components,
                                                             const std::filesystem::path& library);

}  // namespace xfc::flow
