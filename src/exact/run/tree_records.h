#pragma once

#include <cstddef>
#include <string_view>

#include "base/arena.h"

namespace xfc {

/// Longest label or token text that a leaf or a label keeps, in characters.
inline constexpr std::size_t longest_label = 31;

/// Node of the binary parse tree.
struct parse_node {
    parse_node* first;       ///< first subtree, or null
    parse_node* second;      ///< second subtree, or null
    std::string_view label;  ///< what was recognised; may be empty
    std::string_view text;   ///< the token's text on a leaf, at most 31 characters; else empty
};

struct parse_tree {
    parse_node* root = nullptr;  ///< the value of the last translation unit reduced, or null
    arena nodes;
    std::size_t label_count = 0;  ///< labels and texts of all nodes: an upper bound of what the flattened tree holds
};

}  // namespace xfc
