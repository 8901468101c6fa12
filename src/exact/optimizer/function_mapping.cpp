// Maps every arithmetic node and library function to its component, with latency, widths and output selection.
// Before: conversions and normalizers have their attributes; formats are final.
// After:  every node that has a component has its latency; widths of ports and variables are still unset.
//     [* : XFloat] -> [y : Float]   becomes   xfc_mulfp1x with its IEEE output, 5 cycles, 32 bits out

#include <span>

#include "exact/optimizer/bus_widths.h"
#include "exact/optimizer/node_classes.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

using options = compile_option_record;

template <std::int32_t cycles>
std::int32_t always(const options&) {
    return cycles;
}

// ---- Integer operators and library functions: name and format decide ----

struct function_row {
    number_format format;
    std::string_view name;
    const component_row* component;
    std::int32_t (*latency)(const options&);
    bus_width result_and_first_input;
    bus_width second_input;
};

std::int32_t inverse_root_double(const options& o) { return 2 * o.doublespeed + 32 - (o.doublespeed + 1) * o.device; }
std::int32_t inverse_double(const options& o) {
    return (o.roundconvert - o.device) * (o.doublespeed + 1) + 2 * o.doublespeed + 20;
}
std::int32_t exponential_double(const options& o) {
    return (o.roundconvert - 2 * o.device) * (o.doublespeed + 1) + 2 * o.doublespeed + 20;
}
std::int32_t logarithm_double(const options& o) {
    return (o.doublespeed + 1) * o.roundconvert + 7 * o.doublespeed + 27;
}

constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;
constexpr auto w32 = bus_width::bits_32;
constexpr auto w64 = bus_width::bits_64;
constexpr auto w70 = bus_width::bits_70;
constexpr auto w80 = bus_width::bits_80;
constexpr auto wx = bus_width::xfloat;
constexpr auto same = bus_width::unchanged;

constexpr function_row functions[] = {
    {in_long, "*", component("xfc_mullong"), always<3>, w32, w32},
    {in_long, "+", component("xfc_alulong"), always<3>, w32, w32},
    {in_long, "-", component("xfc_alulong"), always<3>, w32, w32},
    {in_float, "sqrt", component("fp_sqr"), always<28>, w32, same},
    {in_float, "invsqr", component("fp_invsqr"), always<19>, w32, same},
    {in_float, "inv", component("fp_inv"), always<14>, w32, same},
    // Kept: single precision alone knows this second name of the reciprocal.
    {in_float, "1/", component("fp_inv"), always<14>, w32, same},
    {in_float, "exp", component("fp_exp"), always<16>, w32, same},
    {in_float, "log", component("fp_log"), always<21>, w32, same},
    {in_float, "ldexp", component("fp_ldexp"), always<2>, w32, w32},
    {in_float, "fabs", component("fp_fabs"), always<1>, w32, same},
    {in_float, "negate", component("fp_neg"), always<1>, w32, same},
    {in_double, "sqrt", component("dp_sqr"), always<57>, w64, same},
    {in_double, "invsqr", component("dp_invsqr"), inverse_root_double, w64, same},
    {in_double, "inv", component("dp_inv"), inverse_double, w64, same},
    {in_double, "exp", component("dp_exp"), exponential_double, w64, same},
    {in_double, "log", component("dp_log"), logarithm_double, w64, same},
    // Kept: the double-precision scale input gets no width, unlike the single-precision one.
    {in_double, "ldexp", component("dp_ldexp"), always<2>, w64, same},
    {in_double, "fabs", component("dp_fabs"), always<1>, w64, same},
    {in_double, "negate", component("dp_neg"), always<1>, w64, same},
};

void set_second_input_width(dfg_node& node, bus_width width) {
    if (node.input_count > 1) {
        set_width(node.inputs[1].width, width);
    }
}

void map_function(dfg_node& node) {
    for (const function_row& row : functions) {
        if (row.format == node.attributes.format && row.name == node.name) {
            node.attributes.component = row.component;
            set_latency(node.attributes, row.latency(compile_options));
            set_width(node.inputs[0].width, row.result_and_first_input);
            set_second_input_width(node, row.second_input);
            set_width(node.outputs[0].width, row.result_and_first_input);
            return;
        }
    }
}

// ---- Multipliers and dividers: the only consumer decides which output is used ----

/// What the only consumer, as it stands now, must be.
enum class only_consumer : std::uint8_t { of_format, multiplier, divider, multiplicative, any };

struct multiplicative_row {
    std::string_view name;
    number_format format;
    const component_row* component;
    only_consumer consumer;
    number_format consumer_format;  ///< `none`: not looked at
    std::int32_t (*latency)(const options&);
    bus_width inputs;
    bus_width output;
    std::int32_t output_select;  ///< 0 IEEE, 1 extended, 2 multiplier, 3 divider output
};

std::int32_t multiply_single(const options& o) { return o.outputscale + 3; }
std::int32_t divide_single_to_ieee(const options& o) { return o.roundconvert + 13; }
std::int32_t multiply_double_to_ieee(const options& o) {
    return (o.doublespeed + 1) * o.roundconvert - 2 * o.device + 7;
}
std::int32_t multiply_double_for_multiplier(const options& o) { return 7 - 2 * o.device; }
/// The extended output's own stage: an output register without rounding, the rounding adder's pipeline with it.
std::int32_t multiply_double_output_stage(const options& o) {
    if (o.roundconvert == 0) {
        return o.outputpipe == 1 ? 1 : 0;
    }
    return o.doublespeed == 0 ? 1 : 2;
}
std::int32_t multiply_double(const options& o) { return multiply_double_output_stage(o) + 2 * (3 - o.device); }
std::int32_t divide_double_to_ieee(const options& o) {
    return (o.doublespeed + 1) * o.roundconvert - (2 * o.doublespeed + 1) * o.device + 4 * o.doublespeed + 21;
}
std::int32_t divide_double_for_multiplier(const options& o) {
    return 4 * o.doublespeed + 20 - (2 * o.doublespeed + 1) * o.device;
}
std::int32_t divide_double(const options& o) {
    return (o.roundconvert + 4) * o.doublespeed - (2 * o.doublespeed + 1) * o.device + 20;
}

constexpr auto no_format = number_format::none;

/// Of the rows with a node's name and format the first whose consumer fits applies.
constexpr multiplicative_row multiplicative_rows[] = {
    {"*", in_xfloat, component("xfc_mulfp1x"), only_consumer::of_format, in_float, always<5>, wx, w32, 0},
    {"*", in_xfloat, component("xfc_mulfp1x"), only_consumer::multiplier, in_xfloat, always<4>, wx, wx, 2},
    {"*", in_xfloat, component("xfc_mulfp1x"), only_consumer::divider, in_xfloat, always<4>, wx, wx, 3},
    {"*", in_xfloat, component("xfc_mulfp1x"), only_consumer::any, no_format, multiply_single, wx, wx, 1},
    {"/", in_xfloat, component("xfc_divfp1x"), only_consumer::of_format, in_float, divide_single_to_ieee, wx, w32, 0},
    {"/", in_xfloat, component("xfc_divfp1x"), only_consumer::multiplier, in_xfloat, always<13>, wx, wx, 2},
    {"/", in_xfloat, component("xfc_divfp1x"), only_consumer::divider, in_xfloat, always<13>, wx, wx, 3},
    {"/", in_xfloat, component("xfc_divfp1x"), only_consumer::any, no_format, always<13>, wx, wx, 1},
    {"*", in_ydouble, component("xfc_mulfp2x"), only_consumer::of_format, in_double, multiply_double_to_ieee, w70, w64,
     0},
    {"*", in_ydouble, component("xfc_mulfp2x"), only_consumer::multiplicative, no_format,
     multiply_double_for_multiplier, w70, w70, 2},
    {"*", in_ydouble, component("xfc_mulfp2x"), only_consumer::any, no_format, multiply_double, w70, w80, 1},
    {"/", in_ydouble, component("xfc_divfp2x"), only_consumer::of_format, in_double, divide_double_to_ieee, w70, w64,
     0},
    {"/", in_ydouble, component("xfc_divfp2x"), only_consumer::multiplicative, no_format, divide_double_for_multiplier,
     w70, w70, 2},
    {"/", in_ydouble, component("xfc_divfp2x"), only_consumer::any, no_format, divide_double, w70, w80, 1},
};

/// The node's first consumer if it had exactly one before the passes inserted nodes, else null.
const dfg_node* only_consumer_of(const dfg_node& node) {
    const dfg_link* first = consumers_of(node);
    return node.attributes.fanout == 1 && first != nullptr ? &node_at(first->node) : nullptr;
}

bool consumer_fits(const multiplicative_row& row, const dfg_node* consumer) {
    if (row.consumer == only_consumer::any) {
        return true;
    }
    if (consumer == nullptr ||
        (row.consumer_format != no_format && consumer->attributes.format != row.consumer_format)) {
        return false;
    }
    const bool multiplier = consumer->name == "*";
    const bool divider = consumer->name == "/";
    switch (row.consumer) {
        case only_consumer::multiplier:
            return multiplier;
        case only_consumer::divider:
            return divider;
        case only_consumer::multiplicative:
            return multiplier || divider;
        default:
            return true;
    }
}

void set_operator_widths(dfg_node& node, bus_width inputs, bus_width output) {
    set_width(node.inputs[0].width, inputs);
    set_second_input_width(node, inputs);
    set_width(node.outputs[0].width, output);
}

void map_multiplicative(dfg_node& node) {
    const dfg_node* consumer = only_consumer_of(node);
    for (const multiplicative_row& row : multiplicative_rows) {
        if (row.name == node.name && row.format == node.attributes.format && consumer_fits(row, consumer)) {
            node.attributes.component = row.component;
            set_latency(node.attributes, row.latency(compile_options));
            set_operator_widths(node, row.inputs, row.output);
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
        if (source == nullptr || attributes_at(source->node).component != component("xfc_mulfp1_dot")) {
            return false;
        }
    }
    return true;
}

void map_single_adder(dfg_node& node) {
    const bool dot = compile_options.optimization >= 2 && sums_two_dot_products(node);
    node.attributes.component = dot ? component("xfc_alufp1_dot") : component("xfc_alufp1x");
    set_latency(node.attributes, compile_options.outputpipe + compile_options.shiftspeed + 3);
    set_operator_widths(node, wx, wx);
}

void map_double_adder(dfg_node& node) {
    node.attributes.component = component("xfc_alufp2x");
    set_latency(node.attributes, compile_options.doublespeed + compile_options.shiftspeed + 4);
    set_operator_widths(node, w80, w80);
}

void map_dot_multiplier(dfg_node& node) {
    // Kept: no line end, so that the next line of the log continues this one.
    write_format(standard_output, "dot multiplier");
    node.attributes.component = component("xfc_mulfp1_dot");
    const std::int32_t cycles = compile_options.optimization < 3 ? 4 : 3;
    set_latency(node.attributes, compile_options.device == 2 ? cycles - 1 : cycles);
    set_operator_widths(node, w32, wx);
}

}  // namespace

void map_functions() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        const number_format format = node.attributes.format;
        const bool internal = format == number_format::xfloat || format == number_format::ydouble;
        if (internal && is_multiplicative_node(slot)) {
            map_multiplicative(node);
        } else if (format == number_format::xfloat && is_additive_node(slot)) {
            map_single_adder(node);
        } else if (format == number_format::ydouble && is_additive_node(slot)) {
            map_double_adder(node);
        } else if (format == number_format::single_float && node.name == "*") {
            map_dot_multiplier(node);
        } else {
            map_function(node);
        }
    }
}

}  // namespace xfc
