#pragma once

#include <cstddef>
#include <string_view>

#include "exact/run/compilation.h"

namespace xfc {

/// Builds the label list from the parse tree and puts the cursor on its first entry.
void flatten_tree();

/// The text `distance` entries behind the cursor; empty behind the list's end, like its last entry.
[[nodiscard]] inline std::string_view label_ahead(std::size_t distance = 0) {
    const std::size_t index = current.label_cursor + distance;
    return index < current.labels.size() ? current.labels[index] : std::string_view{};
}

/// Whether the cursor stands on the closing empty entry or behind it.
[[nodiscard]] inline bool at_label_list_end() { return current.label_cursor + 1 >= current.labels.size(); }

}  // namespace xfc
