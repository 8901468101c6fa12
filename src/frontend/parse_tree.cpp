#include "frontend/parse_tree.h"

#include "base/arena.h"
#include "base/run_state.h"

namespace xfc {

parse_node* parse_tree_root = nullptr;

namespace {

arena tree_memory;

}  // namespace

parse_node* make_node(parse_node* first, parse_node* second, std::string_view label, std::string_view text) {
    return tree_memory.create<parse_node>(first, second, label, tree_memory.copy_text(text.substr(0, longest_label)),
                                          line_number);
}

void clear_parse_tree() {
    parse_tree_root = nullptr;
    tree_memory.clear();
}

}  // namespace xfc
