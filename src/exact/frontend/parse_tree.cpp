#include "exact/frontend/parse_tree.h"

#include "base/arena.h"

namespace xfc {

parse_node* parse_tree_root = nullptr;

namespace {

arena node_memory;
arena text_memory;
std::size_t label_count = 0;

}  // namespace

parse_node* make_node(parse_node* first, parse_node* second, std::string_view label, std::string_view text) {
    label_count += (label.empty() ? 0U : 1U) + (text.empty() ? 0U : 1U);
    return node_memory.create<parse_node>(first, second, label, text_memory.copy_text(text.substr(0, longest_label)));
}

std::size_t count_tree_labels() { return label_count; }

void release_parse_tree() {
    parse_tree_root = nullptr;
    node_memory.clear();
}

void clear_parse_tree() {
    release_parse_tree();
    text_memory.clear();
    label_count = 0;
}

}  // namespace xfc
