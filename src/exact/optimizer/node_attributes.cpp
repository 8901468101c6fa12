// Gives every conversion and every normalizer its latency, bus widths and selectors.
// Before: conversions hold their kind in `component`; normalizers are told by their name and format.
// After:  both have the latency that their component has for the options and for what they feed.
//     [cast castftox] -> [/]   gets   latency 1, 32 bits in, mantissa + 13 bits out, divider output

#include "exact/optimizer/bus_widths.h"
#include "exact/optimizer/optimizer.h"

namespace xfc {

namespace {

/// What the node's first consumer is; the rows of one component name disjoint sets.
enum class feeds : std::uint8_t { anything, divider, multiplier, multiplicative, other };

constexpr std::int32_t unchanged = -1;

/// What a width follows: the component's port, or a number of bits that it does not have; 0 leaves the node's as it is.
constexpr std::int32_t of_port = -1;

struct attribute_row {
    component_id component;
    feeds consumer;
    std::int32_t output_select = unchanged;
    std::int32_t input_select = unchanged;
    std::int32_t input_width = of_port;   ///< bits
    std::int32_t output_width = of_port;  ///< bits
    std::int32_t divider = 0;             ///< the generic of that name, which no instance gets
};

constexpr attribute_row conversions[] = {
    {component_id::castftox, feeds::divider, 2},
    {component_id::castftox, feeds::multiplier, 1},
    {component_id::castftox, feeds::other, 0},
    {.component = component_id::castftoy, .consumer = feeds::divider, .output_select = 0, .divider = 1},
    {component_id::castftoy, feeds::multiplier, 0},
    {component_id::castftoy, feeds::other, 1},
    {component_id::castdtoy, feeds::multiplicative, 0},
    // Kept: 32 bits in, although the source is a double.
    {.component = component_id::castdtoy, .consumer = feeds::other, .output_select = 1, .input_width = 32},
    {component_id::castdtox, feeds::divider, 2},
    {component_id::castdtox, feeds::multiplier, 1},
    {component_id::castdtox, feeds::other, 0},
    {component_id::castxtod, feeds::anything, unchanged, 1},
    {component_id::castxtof, feeds::anything, unchanged, 0},
    // Kept: without a multiplier or divider behind it this conversion gets no output width.
    {component_id::castxtoy, feeds::multiplicative, 0},
    {.component = component_id::castxtoy, .consumer = feeds::other, .output_select = 1, .output_width = 0},
    {component_id::castytod, feeds::anything, unchanged, 0},
    {component_id::castytof, feeds::anything, unchanged, 0},
    {component_id::castytox, feeds::anything},
    {component_id::castdtol, feeds::anything},
    {component_id::castftol, feeds::anything},
    {component_id::castltod, feeds::anything},
    {component_id::castltof, feeds::anything},
    {component_id::castltox, feeds::anything},
    // Kept: the adder form whatever it feeds.
    {.component = component_id::castltoy, .consumer = feeds::anything, .output_width = 80},
    // Kept: 64 bits in.
    {.component = component_id::castxtol, .consumer = feeds::anything, .input_width = 64},
    // Kept: castytol has no row, so no latency and no widths of its own.
    {component_id::castdtof, feeds::anything},
    {component_id::castftod, feeds::anything},
};

constexpr attribute_row single_normalizers[] = {
    {component_id::normfp1x, feeds::divider, 1},
    {component_id::normfp1x, feeds::multiplier, 0},
    {component_id::normfp1x, feeds::other, 2},
};

constexpr attribute_row double_normalizers[] = {
    {component_id::normfp2x, feeds::multiplicative, 0},
    {component_id::normfp2x, feeds::other, 1},
};

/// Whether a row applies. `other` is what the component's other rows leave: a set of rows with a multiplicative one
/// treats both alike, so `other` always means neither multiplier nor divider.
bool applies(feeds row, node_class consumer) {
    switch (row) {
        case feeds::anything:
            return true;
        case feeds::divider:
            return consumer == node_class::divide;
        case feeds::multiplier:
            return consumer == node_class::multiply;
        case feeds::multiplicative:
            return is_multiplicative(consumer);
        default:
            return !is_multiplicative(consumer);
    }
}

void set_width(std::int32_t& field, std::int32_t row_width, port_shape port, const component_generics& generics) {
    if (row_width != 0) {
        field = row_width == of_port ? port_width(port, generics) : row_width;
    }
}

void set_selector(std::int32_t& field, std::int32_t value) {
    if (value != unchanged) {
        field = value;
    }
}

void apply_row(dfg_node& node, const attribute_row& row) {
    set_selector(node.bus_modes.output_select, row.output_select);
    set_selector(node.bus_modes.input_select, row.input_select);
    component_generics generics = generics_of_options(node.bus_modes.output_select);
    generics.divider = row.divider;
    const component_row& component = row_of(row.component);
    set_latency(node.attributes, component.latency(generics));
    set_width(node.inputs[0].width, row.input_width, component.aa, generics);
    set_width(node.outputs[0].width, row.output_width, component.cc, generics);
}

void attribute_conversion(dfg_node& node, node_class consumer) {
    for (const attribute_row& row : conversions) {
        if (row.component == node.attributes.component && applies(row.consumer, consumer)) {
            apply_row(node, row);
        }
    }
}

void attribute_normalizer(dfg_node& node, std::span<const attribute_row> rows, node_class consumer) {
    for (const attribute_row& row : rows) {
        if (applies(row.consumer, consumer)) {
            node.attributes.component = row.component;
            apply_row(node, row);
        }
    }
}

}  // namespace

void assign_node_attributes() {
    // Kept: a node without consumers is treated as if it fed what the node before it fed first.
    std::int32_t first_consumer = 0;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        if (const dfg_link* link = consumers_of(node); link != nullptr) {
            first_consumer = link->node;
        }
        const node_class consumer = attributes_at(first_consumer).is;
        if (node.attributes.component != component_id::wire) {
            attribute_conversion(node, consumer);
        }
        if (node.attributes.is == node_class::normalizer) {
            if (node.attributes.format == number_format::xfloat) {
                attribute_normalizer(node, single_normalizers, consumer);
            } else if (node.attributes.format == number_format::ydouble) {
                attribute_normalizer(node, double_normalizers, consumer);
            }
        }
    }
}

}  // namespace xfc
