// Gives every conversion and every normalizer its latency, bus widths and selectors.
// Before: conversions hold their kind in `component`; normalizers are told by their name and format.
// After:  both have the latency that their component has for the options and for what they feed.
//     [cast castftox] -> [/]   gets   latency 1, 32 bits in, mantissa + 13 bits out, divider output

#include "exact/optimizer/bus_widths.h"
#include "exact/optimizer/optimizer.h"

namespace xfc {

namespace {

using options = compile_option_record;

/// What the node's first consumer is; the rows of one conversion name disjoint sets.
enum class feeds : std::uint8_t { anything, divider, multiplier, multiplicative, other };

constexpr std::int32_t unchanged = -1;

struct conversion_row {
    const component_row* component;
    feeds consumer;
    std::int32_t (*latency)(const options&);  ///< cycles; null: unchanged
    bus_width input;
    bus_width output;
    std::int32_t output_select = unchanged;
    std::int32_t input_select = unchanged;
};

std::int32_t one_cycle(const options&) { return 1; }
std::int32_t two_cycles(const options&) { return 2; }
std::int32_t three_cycles(const options&) { return 3; }
std::int32_t output_register(const options& o) { return o.outputpipe + 1; }
std::int32_t double_to_internal(const options& o) {
    return o.roundconvert == 0 && o.outputpipe == 0 ? 1 : o.doublespeed * o.roundconvert + 2;
}
std::int32_t double_to_single_internal(const options& o) { return o.doublespeed * o.roundconvert + 4; }
std::int32_t single_internal_to_double(const options& o) {
    return (o.doublespeed + 1) * o.roundconvert + o.doublespeed + 7;
}
std::int32_t normalize_and_convert(const options& o) { return 2 * o.normspeed2 + 3; }
std::int32_t double_internal_to_single(const options& o) { return 2 * o.normspeed2 + 5; }
std::int32_t double_internal_to_double(const options& o) {
    return (2 * o.doublespeed + 1) * o.roundconvert + o.normspeed + 4;
}
std::int32_t double_to_integer(const options& o) { return double_to_internal(o) + o.normspeed + 1; }
std::int32_t single_to_integer(const options& o) { return o.normspeed2 + 3; }
std::int32_t integer_to_double(const options& o) {
    return (o.doublespeed + 1) * o.roundconvert + o.normspeed + o.doublespeed + 4;
}
std::int32_t single_internal_to_integer(const options& o) { return o.normspeed2 + 1; }
std::int32_t second_single_internal_to_integer(const options& o) { return o.normspeed + 1; }

constexpr auto w32 = bus_width::bits_32;
constexpr auto w64 = bus_width::bits_64;
constexpr auto w70 = bus_width::bits_70;
constexpr auto w80 = bus_width::bits_80;
constexpr auto wx = bus_width::xfloat;
constexpr auto same = bus_width::unchanged;

/// Every row that matches is applied, in this order.
constexpr conversion_row conversions[] = {
    {component("castftox"), feeds::divider, one_cycle, w32, wx, 2},
    {component("castftox"), feeds::multiplier, output_register, w32, wx, 1},
    {component("castftox"), feeds::other, output_register, w32, wx, 0},
    {component("castftoy"), feeds::divider, three_cycles, w32, w70, 0},
    {component("castftoy"), feeds::multiplier, two_cycles, w32, w70, 0},
    {component("castftoy"), feeds::other, two_cycles, w32, w80, 1},
    {component("castdtoy"), feeds::multiplicative, output_register, w64, w70, 0},
    // Kept: 32 bits in, although the source is a double.
    {component("castdtoy"), feeds::other, double_to_internal, w32, w80, 1},
    {component("castdtox"), feeds::divider, double_to_single_internal, w64, wx, 2},
    {component("castdtox"), feeds::multiplier, double_to_single_internal, w64, wx, 1},
    {component("castdtox"), feeds::other, double_to_single_internal, w64, wx, 0},
    {component("castxtod"), feeds::anything, single_internal_to_double, wx, w64, unchanged, 1},
    {component("castxtof"), feeds::anything, normalize_and_convert, wx, w32, unchanged, 0},
    // Kept: this conversion gets no latency, and without a multiplier or divider behind it no output width.
    {component("castxtoy"), feeds::multiplicative, nullptr, wx, w70, 0},
    {component("castxtoy"), feeds::other, nullptr, wx, same, 1},
    {component("castytod"), feeds::anything, double_internal_to_double, w80, w64, unchanged, 0},
    {component("castytof"), feeds::anything, double_internal_to_single, w80, w32, unchanged, 0},
    {component("castytox"), feeds::anything, two_cycles, w80, wx},
    {component("castdtol"), feeds::anything, double_to_integer, w64, w32},
    {component("castftol"), feeds::anything, single_to_integer, w32, w32},
    {component("castltod"), feeds::anything, integer_to_double, w32, w64},
    {component("castltof"), feeds::anything, normalize_and_convert, w32, w32},
    {component("castltox"), feeds::anything, one_cycle, w32, wx},
    {component("castltoy"), feeds::anything, one_cycle, w32, w80},
    // Kept: the second of these two rows has the last word, 64 bits in included.
    {component("castxtol"), feeds::anything, single_internal_to_integer, w32, w32},
    {component("castxtol"), feeds::anything, second_single_internal_to_integer, w64, w32},
    {component("castdtof"), feeds::anything, two_cycles, w64, w32},
    {component("castftod"), feeds::anything, two_cycles, w32, w64},
};

struct normalizer_row {
    number_format format;
    const component_row* component;
    feeds consumer;
    std::int32_t (*latency)(const options&);
    bus_width input;
    bus_width output;
    std::int32_t output_select;
};

std::int32_t normalize_for_divider(const options& o) { return o.normspeed2 + 3; }
std::int32_t normalize_for_multiplier(const options& o) { return o.inputnormalize == 1 ? o.normspeed2 + 2 : 1; }
std::int32_t normalize_single(const options& o) { return o.roundnormalize + o.normspeed2 + 2; }
std::int32_t normalize_double(const options& o) {
    return o.doublespeed * o.roundconvert + o.roundnormalize * (o.doublespeed + 1) + o.normspeed + 3;
}

constexpr normalizer_row normalizers[] = {
    {number_format::xfloat, component("xfc_normfp1x"), feeds::divider, normalize_for_divider, wx, wx, 1},
    {number_format::xfloat, component("xfc_normfp1x"), feeds::multiplier, normalize_for_multiplier, wx, wx, 0},
    {number_format::xfloat, component("xfc_normfp1x"), feeds::other, normalize_single, wx, wx, 2},
    {number_format::ydouble, component("xfc_normfp2x"), feeds::multiplicative, normalize_double, w80, w70, 0},
    {number_format::ydouble, component("xfc_normfp2x"), feeds::other, normalize_double, w80, w80, 1},
};

/// Whether a row applies. `other` is what the conversion's other rows leave: a row set with a multiplicative row
/// treats both alike, so `other` always means neither multiplier nor divider.
bool applies(feeds row, std::string_view consumer) {
    const bool divider = consumer == "/";
    const bool multiplier = consumer == "*";
    switch (row) {
        case feeds::anything:
            return true;
        case feeds::divider:
            return divider;
        case feeds::multiplier:
            return multiplier;
        case feeds::multiplicative:
            return divider || multiplier;
        default:
            return !divider && !multiplier;
    }
}

void set_selector(std::int32_t& field, std::int32_t value) {
    if (value != unchanged) {
        field = value;
    }
}

template <class row_type>
void apply_row(dfg_node& node, const row_type& row) {
    if (row.latency != nullptr) {
        set_latency(node.attributes, row.latency(compile_options));
    }
    set_width(node.inputs[0].width, row.input);
    set_width(node.outputs[0].width, row.output);
    set_selector(node.bus_modes.output_select, row.output_select);
}

void attribute_conversion(dfg_node& node, std::string_view consumer) {
    for (const conversion_row& row : conversions) {
        if (row.component == node.attributes.component && applies(row.consumer, consumer)) {
            apply_row(node, row);
            set_selector(node.bus_modes.input_select, row.input_select);
        }
    }
}

void attribute_normalizer(dfg_node& node, std::string_view consumer) {
    for (const normalizer_row& row : normalizers) {
        if (row.format == node.attributes.format && applies(row.consumer, consumer)) {
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
        const std::string_view consumer = node_at(first_consumer).name;
        if (node.attributes.component != &no_component) {
            attribute_conversion(node, consumer);
        }
        if (node.name == "norm") {
            attribute_normalizer(node, consumer);
        }
    }
}

}  // namespace xfc
