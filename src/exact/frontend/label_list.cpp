#include "exact/frontend/label_list.h"

#include <vector>

#include "exact/frontend/parse_tree.h"

namespace xfc {

namespace {

void append_label(std::string_view text) {
    if (!text.empty()) {
        current.labels.push_back(text.substr(0, longest_label));
    }
}

}  // namespace

void flatten_tree() {
    current.labels.clear();
    current.labels.reserve(current.tree.label_count + 1);
    // The second subtrees still to be visited; a tree of any depth must not use the machine's stack.
    std::vector<const parse_node*> postponed;
    const parse_node* node = current.tree.root;
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
    current.labels.emplace_back();
    current.label_cursor = 0;
}

}  // namespace xfc
