#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace xfc {

/// The labels and token texts of the parse tree in pre-order, each at most 31 characters; the last one is empty.
/// For shift, additive and multiplicative operators the right operand stands before the left one.
extern std::vector<std::string_view> label_list;

/// Index of the entry that a pass over the list has reached; shared by the declaration pass and the translator.
extern std::size_t label_cursor;

/// Builds `label_list` from the parse tree and puts the cursor on its first entry.
void flatten_tree();

/// The text `distance` entries behind the cursor; empty behind the list's end, like its last entry.
[[nodiscard]] inline std::string_view label_ahead(std::size_t distance = 0) {
    const std::size_t index = label_cursor + distance;
    return index < label_list.size() ? label_list[index] : std::string_view{};
}

/// Whether the cursor stands on the closing empty entry or behind it.
[[nodiscard]] inline bool at_label_list_end() { return label_cursor + 1 >= label_list.size(); }

}  // namespace xfc
