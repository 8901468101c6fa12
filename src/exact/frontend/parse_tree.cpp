#include "exact/frontend/parse_tree.h"

#include "exact/run/compilation.h"

namespace xfc {

parse_node* make_node(parse_node* first, parse_node* second, std::string_view label, std::string_view text) {
    parse_tree& tree = current.tree;
    tree.label_count += (label.empty() ? 0U : 1U) + (text.empty() ? 0U : 1U);
    return tree.nodes.create<parse_node>(first, second, label, current.texts.copy_text(text.substr(0, longest_label)));
}

void release_parse_tree() {
    current.tree.root = nullptr;
    current.tree.nodes.clear();
}

}  // namespace xfc
