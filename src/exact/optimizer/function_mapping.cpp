// Maps every arithmetic node and library function to its component, with latency, widths and output selection.
// Before: conversions and normalizers have their attributes; formats are final.
// After:  every node that has a component has its latency; widths of ports and variables are still unset.
//     [* : XFloat] -> [y : Float]   becomes   xfc_mulfp1x with its IEEE output, 5 cycles, 32 bits out

#include "exact/optimizer/bus_widths.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;
constexpr auto no_format = number_format::none;

/// Which widths a mapping sets besides those of the first input and the output.
enum class second_input : std::uint8_t { as_component, untouched };

/// Makes `id` the node's component, with the latency and the widths that it has for its output.
void map_to(dfg_node& node, component_id id, second_input second, std::int32_t output_select = 0) {
    const component_row& row = row_of(id);
    const component_generics generics = generics_of_options(output_select);
    node.attributes.component = id;
    set_latency(node.attributes, row.latency(generics));
    node.inputs[0].width = port_width(row.aa, generics);
    if (second == second_input::as_component && node.input_count > 1) {
        node.inputs[1].width = port_width(row.bb, generics);
    }
    node.outputs[0].width = port_width(row.cc, generics);
}

// ---- Integer operators and library functions ----

void map_integer_operator(dfg_node& node) {
    if (node.attributes.is == node_class::multiply) {
        map_to(node, component_id::mullong, second_input::as_component);
    } else if (is_additive(node.attributes.is)) {
        map_to(node, component_id::alulong, second_input::as_component);
    }
}

void map_function(dfg_node& node) {
    if (node.attributes.is != node_class::function) {
        return;
    }
    const function_row& function = *find_function(node.name);
    if (node.attributes.format == in_float) {
        map_to(node, function.single_precision,
               function.single_second_input_is_32_bits ? second_input::as_component : second_input::untouched);
    } else if (node.attributes.format == in_double && function.double_precision != component_id::wire) {
        map_to(node, function.double_precision, second_input::untouched);
    }
}

// ---- Multipliers and dividers: the only consumer decides which output is used ----

/// What the only consumer, as it stands now, must be.
enum class only_consumer : std::uint8_t { of_format, multiplier, divider, multiplicative, any };

struct multiplicative_row {
    node_class is;
    number_format format;
    component_id component;
    only_consumer consumer;
    number_format consumer_format;  ///< `none`: not looked at
    std::int32_t output_select;     ///< 0 IEEE, 1 extended, 2 multiplier, 3 divider output
};

constexpr auto times = node_class::multiply;
constexpr auto over = node_class::divide;

/// Of the rows with a node's class and format the first whose consumer fits applies.
constexpr multiplicative_row multiplicative_rows[] = {
    {times, in_xfloat, component_id::mulfp1x, only_consumer::of_format, in_float, 0},
    {times, in_xfloat, component_id::mulfp1x, only_consumer::multiplier, in_xfloat, 2},
    {times, in_xfloat, component_id::mulfp1x, only_consumer::divider, in_xfloat, 3},
    {times, in_xfloat, component_id::mulfp1x, only_consumer::any, no_format, 1},
    {over, in_xfloat, component_id::divfp1x, only_consumer::of_format, in_float, 0},
    {over, in_xfloat, component_id::divfp1x, only_consumer::multiplier, in_xfloat, 2},
    {over, in_xfloat, component_id::divfp1x, only_consumer::divider, in_xfloat, 3},
    {over, in_xfloat, component_id::divfp1x, only_consumer::any, no_format, 1},
    {times, in_ydouble, component_id::mulfp2x, only_consumer::of_format, in_double, 0},
    {times, in_ydouble, component_id::mulfp2x, only_consumer::multiplicative, no_format, 2},
    {times, in_ydouble, component_id::mulfp2x, only_consumer::any, no_format, 1},
    {over, in_ydouble, component_id::divfp2x, only_consumer::of_format, in_double, 0},
    {over, in_ydouble, component_id::divfp2x, only_consumer::multiplicative, no_format, 2},
    {over, in_ydouble, component_id::divfp2x, only_consumer::any, no_format, 1},
};

/// The node's first consumer if it had exactly one before the passes inserted nodes, else null.
const node_attributes* only_consumer_of(const dfg_node& node) {
    const dfg_link* first = consumers_of(node);
    return node.attributes.fanout == 1 && first != nullptr ? &attributes_at(first->node) : nullptr;
}

bool consumer_fits(const multiplicative_row& row, const node_attributes* consumer) {
    if (row.consumer == only_consumer::any) {
        return true;
    }
    if (consumer == nullptr || (row.consumer_format != no_format && consumer->format != row.consumer_format)) {
        return false;
    }
    switch (row.consumer) {
        case only_consumer::multiplier:
            return consumer->is == node_class::multiply;
        case only_consumer::divider:
            return consumer->is == node_class::divide;
        case only_consumer::multiplicative:
            return is_multiplicative(consumer->is);
        default:
            return true;
    }
}

void map_multiplicative(dfg_node& node) {
    const node_attributes* consumer = only_consumer_of(node);
    for (const multiplicative_row& row : multiplicative_rows) {
        if (row.is == node.attributes.is && row.format == node.attributes.format && consumer_fits(row, consumer)) {
            map_to(node, row.component, second_input::as_component, row.output_select);
            node.bus_modes.output_select = row.output_select;
            return;
        }
    }
}

// ---- Adders and the dot-product multiplier ----

/// Whether both operands come from dot-product multipliers. Kept: the drivers are taken as they stand, so a multiplier
/// in a higher slot than the adder, which is not mapped yet, does not count.
bool sums_two_dot_products(const dfg_node& node) {
    for (std::int32_t port = 0; port < 2; ++port) {
        const dfg_source* source = source_of(node, port);
        if (source == nullptr || attributes_at(source->node).component != component_id::mulfp1_dot) {
            return false;
        }
    }
    return true;
}

void map_single_adder(dfg_node& node) {
    const bool dot = current.options.optimization >= 2 && sums_two_dot_products(node);
    map_to(node, dot ? component_id::alufp1_dot : component_id::alufp1x, second_input::as_component);
}

void map_dot_multiplier(dfg_node& node) {
    // Kept: no line end, so that the next line of the log continues this one.
    write_format(standard_output, "dot multiplier");
    map_to(node, component_id::mulfp1_dot, second_input::as_component);
}

void map_node(dfg_node& node) {
    const node_class is = node.attributes.is;
    switch (node.attributes.format) {
        case in_xfloat:
        case in_ydouble:
            if (is_multiplicative(is)) {
                map_multiplicative(node);
            } else if (!is_additive(is)) {
                return;
            } else if (node.attributes.format == in_xfloat) {
                map_single_adder(node);
            } else {
                map_to(node, component_id::alufp2x, second_input::as_component);
            }
            return;
        case in_float:
            if (is == node_class::multiply) {
                map_dot_multiplier(node);
                return;
            }
            break;
        case in_long:
            map_integer_operator(node);
            return;
        default:
            break;
    }
    map_function(node);
}

}  // namespace

void map_functions() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        map_node(node_at(slot));
    }
}

}  // namespace xfc
