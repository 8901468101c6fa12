#include "exact/dfg/instance_operands.h"

namespace xfc {

namespace {

using origin = instance_operand::origin;

instance_operand driven_by(const dfg_node& node, std::int32_t port) {
    const dfg_source* source = source_of(node, port);
    return source != nullptr ? instance_operand{origin::driver, source->node}
                             : instance_operand{origin::missing, no_slot};
}

}  // namespace

instance_operand operator_operand(const dfg_node& node, std::int32_t port) {
    if (node.attributes.component->accepts_constants && has_constant(node, port)) {
        return {origin::constant_signal, no_slot};
    }
    return driven_by(node, port);
}

instance_operand function_value_operand(const dfg_node& node) {
    switch (node.attributes.component->operand) {
        case function_operand::second_input:
            return driven_by(node, 1);
        case function_operand::first_or_second_input:
            return driven_by(node, source_of(node, 0) != nullptr ? 0 : 1);
        default:
            return driven_by(node, 0);
    }
}

instance_operand function_scale_operand(const dfg_node& node) {
    return has_constant(node, 0) ? instance_operand{origin::constant_signal, no_slot} : driven_by(node, 1);
}

bool has_all_instance_operands(const dfg_node& node) {
    const component_row& row = *node.attributes.component;
    switch (row.kind) {
        case instance_kind::operator_instance:
            return operator_operand(node, 0).from != origin::missing &&
                   (row.bb == bus_form::none || operator_operand(node, 1).from != origin::missing);
        case instance_kind::single_function:
        case instance_kind::double_function:
            return function_value_operand(node).from != origin::missing &&
                   (!row.has_scale_operand || function_scale_operand(node).from != origin::missing);
        default:
            return true;
    }
}

}  // namespace xfc
