#include "exact/frontend/label_list.h"

#include "exact/frontend/parse_tree.h"

namespace xfc {

std::vector<std::string_view> label_list;
std::size_t label_cursor = 0;

namespace {

void append_label(std::string_view text) {
    if (!text.empty()) {
        label_list.push_back(text.substr(0, longest_label));
    }
}

}  // namespace

void flatten_tree() {
    label_list.clear();
    label_list.reserve(count_tree_labels() + 1);
    // The second subtrees still to be visited; a tree of any depth must not use the machine's stack.
    std::vector<const parse_node*> postponed;
    const parse_node* node = parse_tree_root;
    while (node != nullptr || !postponed.empty()) {
        if (node == nullptr) {
            node = postponed.back();
            postponed.pop_back();
            continue;
        }
        append_label(node->label);
        append_label(node->text);
        if (node->first == nullptr) {
            node = node->second;
            continue;
        }
        if (node->second != nullptr) {
            postponed.push_back(node->second);
        }
        node = node->first;
    }
    label_list.emplace_back();
    label_cursor = 0;
}

}  // namespace xfc
