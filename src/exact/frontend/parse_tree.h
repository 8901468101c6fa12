#pragma once

#include <string_view>

#include "exact/run/tree_records.h"

namespace xfc {

/// Makes a node. `label` must outlive the compilation; of `text` at most 31 characters are copied.
parse_node* make_node(parse_node* first, parse_node* second, std::string_view label, std::string_view text = {});

/// Frees the nodes; their texts stay, since label lists and graphs refer to them.
void release_parse_tree();

}  // namespace xfc
