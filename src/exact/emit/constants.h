#pragma once

#include "exact/dfg/dfg.h"
#include "exact/emit/hdl_language.h"
#include "exact/emit/instance_texts.h"

namespace xfc {

/// Whether one of the node's operands is a literal, so that it has a constant signal.
[[nodiscard]] inline bool has_constant_operand(const dfg_node& node) {
    return has_constant(node, 0) || (node.input_count == 2 && has_constant(node, 1));
}

/// Bits of the node's constant signal: what the component's row says, else the output without its three flags.
[[nodiscard]] inline std::int32_t constant_signal_width(const dfg_node& node) {
    const std::int32_t width = text_of(node.attributes.component).constant_signal_width;
    return width != 0 ? width : node.outputs[0].width - flag_count;
}

/// Fills the constant signals, split into the fields that the consuming component expects.
void write_constants(const emission& to);

}  // namespace xfc
