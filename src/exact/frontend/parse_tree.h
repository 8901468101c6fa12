#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace xfc {

/// Longest label or token text that a leaf or a label entry keeps, in characters.
inline constexpr std::size_t longest_label = 31;

/// Node of the binary parse tree.
struct parse_node {
    parse_node* first;       ///< first subtree, or null
    parse_node* second;      ///< second subtree, or null
    std::string_view label;  ///< what was recognised; may be empty
    std::string_view text;   ///< the token's text on a leaf, at most 31 characters; else empty
};

/// Root of the tree: the value of the last translation unit reduced, or null.
extern parse_node* parse_tree_root;

/// Makes a node. `label` must outlive the tree; of `text` at most 31 characters are copied.
parse_node* make_node(parse_node* first, parse_node* second, std::string_view label, std::string_view text = {});

/// Labels and texts of all nodes made: an upper bound of what the flattened tree holds.
[[nodiscard]] std::size_t count_tree_labels();

/// Frees the nodes; their texts stay, since label lists and graphs refer to them.
void release_parse_tree();

/// Forgets the tree of an earlier run with all its texts.
void clear_parse_tree();

}  // namespace xfc
