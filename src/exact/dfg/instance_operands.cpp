#include "exact/dfg/instance_operands.h"

namespace xfc {

namespace {

using origin = instance_operand::origin;

/// Which input drives a library function's operand.
enum class function_operand : std::uint8_t { first_input, first_or_second_input, second_input };

function_operand operand_of_function(component_id id) {
    switch (id) {
        case component_id::fp_inv:
            return function_operand::first_or_second_input;
        case component_id::fp_ldexp:
        case component_id::dp_ldexp:
            return function_operand::second_input;
        default:
            return function_operand::first_input;
    }
}

/// Whether a constant operand is read from the node's constant signal.
bool accepts_constants(const component_row& row) {
    switch (row.operation) {
        case component_operation::add_or_subtract:
        case component_operation::multiply:
        case component_operation::divide:
            // Dot products are made of variables alone.
            return row.id != component_id::alufp1_dot && row.id != component_id::mulfp1_dot;
        default:
            return false;
    }
}

instance_operand driven_by(const dfg_node& node, std::int32_t port) {
    const dfg_source* source = source_of(node, port);
    return source != nullptr ? instance_operand{origin::driver, source->node}
                             : instance_operand{origin::missing, no_slot};
}

}  // namespace

instance_kind instance_kind_of(const component_row& row) {
    const auto is_integer = [](port_shape shape) { return shape == port_shape::long_integer; };
    if (row.operation == component_operation::pass_on) {
        return instance_kind::none;
    }
    // Kept: conversions from and to integers have no instance.
    if (row.operation == component_operation::convert && (is_integer(row.aa) || is_integer(row.cc))) {
        return instance_kind::none;
    }
    switch (row.aa) {
        case port_shape::unpacked_single:
            return instance_kind::single_function;
        case port_shape::unpacked_double:
            return instance_kind::double_function;
        default:
            return instance_kind::operator_instance;
    }
}

instance_operand operator_operand(const dfg_node& node, std::int32_t port) {
    if (has_constant(node, port) && accepts_constants(row_of(node.attributes.component))) {
        return {origin::constant_signal, no_slot};
    }
    return driven_by(node, port);
}

instance_operand function_value_operand(const dfg_node& node) {
    switch (operand_of_function(node.attributes.component)) {
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
    const component_row& row = row_of(node.attributes.component);
    switch (instance_kind_of(row)) {
        case instance_kind::operator_instance:
            return operator_operand(node, 0).from != origin::missing &&
                   (row.bb == port_shape::none || operator_operand(node, 1).from != origin::missing);
        case instance_kind::single_function:
        case instance_kind::double_function:
            return function_value_operand(node).from != origin::missing &&
                   (row.bb == port_shape::none || function_scale_operand(node).from != origin::missing);
        default:
            return true;
    }
}

}  // namespace xfc
