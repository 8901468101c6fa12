#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "exact/run/compile_options.h"

// The component library as the compiler sees it: one row a component. Passes store a row in a node's attributes, the
// emitters render it; the two languages differ only where a row marks it. Whoever adds a component adds a row here
// and, in the optimizer, the line of the latency table that maps an operation to it.
//
// How to read a row of generics: each item is a generic's name and where its value comes from; the items are written
// in order with commas between them. `line_end(item)` starts a new line behind the item, indented as the row says.

namespace xfc {

/// Where a generic's value comes from.
enum class generic_source : std::uint8_t {
    option,                ///< a field of `compile_options`
    one,                   ///< the constant 1
    output_select,         ///< the node's output selector
    option_if_selector_0,  ///< the field while the output selector is 0, else 1
    output_width,          ///< bits of the node's output
    latency,               ///< the node's latency in cycles
    select_flags_4,        ///< a line of four generics, one of them 1: ieeeoutput, xoutput, multoutput, divoutput
    select_flags_mult,     ///< a line of three: ieeeoutput, xoutput, multoutput
    select_flags_div,      ///< a line of three: ieeeoutput, xoutput, divoutput
};

/// What stands between an item and the next one.
enum class generic_break : std::uint8_t { none, line, line_without_comma };

struct generic_item {
    std::string_view name;
    generic_source source = generic_source::option;
    std::int32_t compile_option_record::*option = nullptr;
    generic_break behind = generic_break::none;
};

/// The generics of one component, in the order in which they are written.
struct generic_list {
    static constexpr std::size_t most = 9;
    std::array<generic_item, most> items{};
    std::size_t count = 0;

    constexpr generic_list() = default;
    constexpr generic_list(std::initializer_list<generic_item> list) {
        for (const generic_item& item : list) {
            items[count++] = item;
        }
    }
    [[nodiscard]] constexpr const generic_item* begin() const { return items.data(); }
    [[nodiscard]] constexpr const generic_item* end() const { return items.data() + count; }
    [[nodiscard]] constexpr bool empty() const { return count == 0; }
};

/// Bits of a bus on an instance's port. The flags sat, zip and nan lie directly above the value field.
enum class bus_form : std::uint8_t {
    none,                 ///< the port does not exist
    plain_32,             ///< 32 bits: Long, Float
    plain_64,             ///< 64 bits: Double
    plain_output_width,   ///< as wide as the node's output
    plain_mantissa,       ///< value field of an XFloat, no flags
    xfloat,               ///< mantissa + 10 bits and flags
    ydouble,              ///< 77 bits and flags
    multiplier,           ///< 67 bits and flags: a YDouble at the double-precision multiplier and divider
    plain_32_or_xfloat,   ///< plain_32 when the node's output has 32 bits, else xfloat
    by_output_select,     ///< 0: plain_64, 1: ydouble, 2: multiplier, anything else: nothing is written
    by_target,            ///< selector * 10 + 67 bits and flags
    by_output_width,      ///< three bits less than the node's output, and flags
    plain_32_with_flags,  ///< Kept: 32 bits, and flags that the bus does not have, where an XFloat has them
};

/// How the component writes a constant operand's field.
enum class constant_form : std::uint8_t { adder, multiplier, divider };

/// How the component is instantiated.
enum class instance_kind : std::uint8_t {
    none,               ///< without an instance: a wire, or a conversion that has no component
    operator_instance,  ///< labelled "cmp"; operands aa and bb, result cc
    single_function,    ///< labelled "lib"; unpacked single-precision operand and result
    double_function,    ///< labelled "lib"; unpacked double-precision operand and result
};

/// Which input drives a library function's operand.
enum class function_operand : std::uint8_t { first_input, first_or_second_input, second_input };

struct component_row {
    std::string_view name;          ///< as the passes know it
    std::string_view printed_name;  ///< as it is written; Kept: four casts lack the library's prefix
    instance_kind kind = instance_kind::none;
    generic_list generics{};

    bus_form aa = bus_form::none;           ///< operator: operand from the first input
    bus_form bb = bus_form::none;           ///< operator: operand from the second input
    bus_form cc = bus_form::none;           ///< operator: result
    bool addsub = false;                    ///< operator: has the adder select
    bool accepts_constants = false;         ///< operator: a constant operand is read from the node's constant signal
    bool passed_over_when_removed = false;  ///< Kept: a merged arithmetic node would be written all the same.

    function_operand operand = function_operand::first_input;  ///< library function
    bool has_scale_operand = false;                            ///< library function: ldexp's integer bb

    constant_form constant = constant_form::adder;
    bool integer_constant = false;           ///< the constant operand is a Long, its signal 32 bits wide
    std::int32_t constant_signal_width = 0;  ///< bits; 0: three less than the output
    bool multiplier_bus_constant = false;    ///< the constant operand has the 67-bit multiplier form

    std::int32_t indent = 15;                   ///< blanks in front of a continued generic line
    std::int32_t verilog_indent = 15;           ///< the same in Verilog
    std::string_view verilog_opening = " # (";  ///< Verilog, between name and generics

    bool has_clock_ports = true;
    bool empty_line_behind_operands = false;  ///< Kept: an empty line stands behind the last operand.
    bool blank_behind_result_sat = false;     ///< Kept: a blank ends the line piece of the result's sat bit.
    bool semicolon_behind_result = false;     ///< Kept: a semicolon stands where a comma belongs.
    bool verilog_double_dot = false;          ///< Kept: the Verilog result port has two dots.
    bool verilog_double_blank = false;        ///< Kept: two blanks behind the Verilog instance label.
    bool verilog_addsub_blank = false;        ///< Kept: the Verilog adder select is written with a blank inside.
    bool verilog_joined_line = false;         ///< Kept: the Verilog instance follows on the module's line.
};

namespace component_rows {

using option_field = std::int32_t compile_option_record::*;

constexpr generic_item option(std::string_view name, option_field field) {
    return {name, generic_source::option, field, generic_break::none};
}
constexpr generic_item of_node(std::string_view name, generic_source source) {
    return {name, source, nullptr, generic_break::none};
}
constexpr generic_item line_end(generic_item item) {
    item.behind = generic_break::line;
    return item;
}
/// Kept: the comma is missing.
constexpr generic_item line_end_without_comma(generic_item item) {
    item.behind = generic_break::line_without_comma;
    return item;
}

inline constexpr generic_item mantissa = option("mantissa", &compile_option_record::mantissa);
inline constexpr generic_item doublespeed = option("doublespeed", &compile_option_record::doublespeed);
inline constexpr generic_item roundconvert = option("roundconvert", &compile_option_record::roundconvert);
inline constexpr generic_item roundnormalize = option("roundnormalize", &compile_option_record::roundnormalize);
inline constexpr generic_item outputscale = option("outputscale", &compile_option_record::outputscale);
inline constexpr generic_item outputpipe = option("outputpipe", &compile_option_record::outputpipe);
inline constexpr generic_item shiftspeed = option("shiftspeed", &compile_option_record::shiftspeed);
inline constexpr generic_item doubleaccuracy = option("doubleaccuracy", &compile_option_record::doubleaccuracy);
inline constexpr generic_item device = option("device", &compile_option_record::device);
inline constexpr generic_item optimization = option("optimization", &compile_option_record::optimization);
inline constexpr generic_item synthesize = option("synthesize", &compile_option_record::synthesize);
inline constexpr generic_item normspeed = option("normspeed", &compile_option_record::normspeed);
/// For components that offer only levels 1 and 2.
inline constexpr generic_item normspeed_of_two = option("normspeed", &compile_option_record::normspeed2);
inline constexpr generic_item inputnormalize{"inputnormalize", generic_source::option_if_selector_0,
                                             &compile_option_record::inputnormalize, generic_break::none};
inline constexpr generic_item target = of_node("target", generic_source::output_select);
inline constexpr generic_item target_one = of_node("target", generic_source::one);
inline constexpr generic_item width = of_node("width", generic_source::output_width);
inline constexpr generic_item delay = of_node("delay", generic_source::latency);
inline constexpr generic_item select_flags_4 = of_node("", generic_source::select_flags_4);
inline constexpr generic_item select_flags_mult = of_node("", generic_source::select_flags_mult);
inline constexpr generic_item select_flags_div = of_node("", generic_source::select_flags_div);
/// Kept: the logarithm's device generic gets the multiplier accuracy.
inline constexpr generic_item device_of_logarithm = option("device", &compile_option_record::doubleaccuracy);

inline constexpr std::string_view open_line = " # (\n";
inline constexpr std::string_view open_indented_line = " # (\n  ";

// clang-format off
inline constexpr component_row table[] = {
    // A wire: the node only passes its value through.
    {.name = "", .printed_name = ""},

    // Integer arithmetic.
    {.name = "xfc_alulong", .printed_name = "xfc_alulong", .kind = instance_kind::operator_instance,
     .aa = bus_form::plain_32, .bb = bus_form::plain_32, .cc = bus_form::plain_32,
     .addsub = true, .accepts_constants = true},
    {.name = "xfc_mullong", .printed_name = "xfc_mullong", .kind = instance_kind::operator_instance,
     .aa = bus_form::plain_32, .bb = bus_form::plain_32, .cc = bus_form::plain_32,
     .accepts_constants = true},

    // Single-precision arithmetic.
    {.name = "xfc_alufp1_dot", .printed_name = "xfc_alufp1_dot", .kind = instance_kind::operator_instance,
     .generics = {mantissa, shiftspeed, outputpipe},
     .aa = bus_form::xfloat, .bb = bus_form::xfloat, .cc = bus_form::xfloat,
     .addsub = true, .verilog_double_blank = true, .verilog_addsub_blank = true},
    {.name = "xfc_alufp1x", .printed_name = "xfc_alufp1x", .kind = instance_kind::operator_instance,
     .generics = {mantissa, shiftspeed, outputpipe},
     .aa = bus_form::xfloat, .bb = bus_form::xfloat, .cc = bus_form::xfloat,
     .addsub = true, .accepts_constants = true, .verilog_addsub_blank = true},
    {.name = "xfc_mulfp1_dot", .printed_name = "xfc_mulfp1_dot", .kind = instance_kind::operator_instance,
     .generics = {mantissa, device, optimization, synthesize},
     .aa = bus_form::plain_32, .bb = bus_form::plain_32, .cc = bus_form::xfloat},
    {.name = "xfc_mulfp1x", .printed_name = "xfc_mulfp1x", .kind = instance_kind::operator_instance,
     .generics = {mantissa, select_flags_4, outputscale, synthesize},
     .aa = bus_form::xfloat, .bb = bus_form::xfloat, .cc = bus_form::plain_32_or_xfloat,
     .accepts_constants = true, .constant = constant_form::multiplier, .indent = 12, .verilog_indent = 12},
    // Kept: the divider names its outputs as the multiplier does, multoutput included.
    {.name = "xfc_divfp1x", .printed_name = "xfc_divfp1x", .kind = instance_kind::operator_instance,
     .generics = {mantissa, select_flags_4, roundconvert, synthesize},
     .aa = bus_form::xfloat, .bb = bus_form::xfloat, .cc = bus_form::plain_32_or_xfloat,
     .accepts_constants = true, .constant = constant_form::divider},
    {.name = "xfc_normfp1x", .printed_name = "xfc_normfp1x", .kind = instance_kind::operator_instance,
     .generics = {mantissa, inputnormalize, line_end(roundnormalize), normspeed_of_two, target},
     .aa = bus_form::xfloat, .cc = bus_form::xfloat,
     .passed_over_when_removed = true, .empty_line_behind_operands = true, .blank_behind_result_sat = true},

    // Double-precision arithmetic.
    {.name = "xfc_alufp2x", .printed_name = "xfc_alufp2x", .kind = instance_kind::operator_instance,
     .generics = {shiftspeed, doublespeed, synthesize},
     .aa = bus_form::ydouble, .bb = bus_form::ydouble, .cc = bus_form::ydouble,
     .addsub = true, .accepts_constants = true},
    {.name = "xfc_mulfp2x", .printed_name = "xfc_mulfp2x", .kind = instance_kind::operator_instance,
     .generics = {select_flags_mult, roundconvert, roundnormalize, line_end(doublespeed), outputpipe,
                  line_end(doubleaccuracy), device, synthesize},
     .aa = bus_form::multiplier, .bb = bus_form::multiplier, .cc = bus_form::by_output_select,
     .accepts_constants = true, .constant_signal_width = 67, .multiplier_bus_constant = true,
     .verilog_opening = open_line},
    // Kept: the divider reads 67 constant bits, but its constant signal follows the output's width.
    {.name = "xfc_divfp2x", .printed_name = "xfc_divfp2x", .kind = instance_kind::operator_instance,
     .generics = {select_flags_div, roundconvert, line_end(doublespeed), doubleaccuracy, device, synthesize},
     .aa = bus_form::multiplier, .bb = bus_form::multiplier, .cc = bus_form::by_output_select,
     .accepts_constants = true, .multiplier_bus_constant = true, .verilog_opening = open_line},
    {.name = "xfc_normfp2x", .printed_name = "xfc_normfp2x", .kind = instance_kind::operator_instance,
     .generics = {roundconvert, roundnormalize, line_end(normspeed), doublespeed, target, synthesize},
     .aa = bus_form::ydouble, .cc = bus_form::by_target, .passed_over_when_removed = true,
     .verilog_opening = open_line, .empty_line_behind_operands = true, .blank_behind_result_sat = true},

    {.name = "xfc_delay", .printed_name = "xfc_delay", .kind = instance_kind::operator_instance,
     .generics = {width, delay, synthesize},
     .aa = bus_form::plain_output_width, .cc = bus_form::plain_output_width, .passed_over_when_removed = true},

    // Conversions.
    {.name = "castftox", .printed_name = "xfc_castftox", .kind = instance_kind::operator_instance,
     .generics = {target, roundconvert, mantissa, outputpipe},
     .aa = bus_form::plain_32, .cc = bus_form::xfloat, .passed_over_when_removed = true,
     .verilog_opening = open_line},
    {.name = "castxtof", .printed_name = "xfc_castxtof", .kind = instance_kind::operator_instance,
     .generics = {mantissa, normspeed_of_two},
     .aa = bus_form::xfloat, .cc = bus_form::plain_32, .passed_over_when_removed = true},
    {.name = "castftoy", .printed_name = "castftoy", .kind = instance_kind::operator_instance,
     .generics = {target, roundconvert, mantissa},
     .aa = bus_form::plain_32, .cc = bus_form::by_output_width, .passed_over_when_removed = true},
    {.name = "castdtoy", .printed_name = "xfc_castdtoy", .kind = instance_kind::operator_instance,
     .generics = {target, roundconvert, line_end(outputpipe), doublespeed, synthesize},
     .aa = bus_form::plain_64, .cc = bus_form::by_output_width, .passed_over_when_removed = true,
     .verilog_opening = open_line},
    {.name = "castdtox", .printed_name = "castdtox", .kind = instance_kind::operator_instance,
     .generics = {target, roundconvert, doublespeed},
     .aa = bus_form::plain_64, .cc = bus_form::xfloat, .passed_over_when_removed = true,
     .verilog_opening = open_line},
    {.name = "castxtod", .printed_name = "castxtod", .kind = instance_kind::operator_instance,
     .generics = {line_end_without_comma(mantissa), roundconvert, doublespeed},
     .aa = bus_form::xfloat, .cc = bus_form::plain_64, .passed_over_when_removed = true},
    {.name = "castxtoy", .printed_name = "castxtoy", .kind = instance_kind::operator_instance,
     .generics = {target_one, mantissa},
     .aa = bus_form::xfloat, .cc = bus_form::ydouble, .passed_over_when_removed = true,
     .has_clock_ports = false, .semicolon_behind_result = true},
    // Kept: in Verilog the continued generic line is not indented.
    {.name = "castytod", .printed_name = "xfc_castytod", .kind = instance_kind::operator_instance,
     .generics = {roundconvert, line_end(normspeed), doublespeed, synthesize},
     .aa = bus_form::ydouble, .cc = bus_form::plain_64, .passed_over_when_removed = true,
     .verilog_indent = 0, .verilog_opening = open_line},
    {.name = "castytof", .printed_name = "xfc_castytof", .kind = instance_kind::operator_instance,
     .generics = {roundconvert},
     .aa = bus_form::ydouble, .cc = bus_form::plain_32_with_flags, .passed_over_when_removed = true,
     .empty_line_behind_operands = true},
    {.name = "castytox", .printed_name = "xfc_castytox", .kind = instance_kind::operator_instance,
     .generics = {roundconvert, mantissa},
     .aa = bus_form::ydouble, .cc = bus_form::xfloat, .passed_over_when_removed = true,
     .empty_line_behind_operands = true, .verilog_double_dot = true},
    {.name = "castdtof", .printed_name = "xfc_castdtof", .kind = instance_kind::operator_instance,
     .generics = {roundconvert},
     .aa = bus_form::plain_64, .cc = bus_form::plain_mantissa, .passed_over_when_removed = true},
    {.name = "castftod", .printed_name = "xfc_castftod", .kind = instance_kind::operator_instance,
     .aa = bus_form::plain_32, .cc = bus_form::plain_64, .passed_over_when_removed = true},

    // Kept: conversions from and to integers get a latency but no instance.
    {.name = "castltof", .printed_name = ""},
    {.name = "castltod", .printed_name = ""},
    {.name = "castltox", .printed_name = ""},
    {.name = "castltoy", .printed_name = ""},
    {.name = "castftol", .printed_name = ""},
    {.name = "castdtol", .printed_name = ""},
    {.name = "castxtol", .printed_name = ""},
    {.name = "castytol", .printed_name = ""},

    // Single-precision functions.
    {.name = "fp_sqr", .printed_name = "fp_sqr", .kind = instance_kind::single_function,
     .verilog_joined_line = true},
    {.name = "fp_invsqr", .printed_name = "fp_invsqr", .kind = instance_kind::single_function,
     .generics = {synthesize}, .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "fp_inv", .printed_name = "fp_inv", .kind = instance_kind::single_function,
     .generics = {synthesize}, .operand = function_operand::first_or_second_input,
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "fp_exp", .printed_name = "fp_exp", .kind = instance_kind::single_function,
     .generics = {synthesize}, .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "fp_log", .printed_name = "fp_log", .kind = instance_kind::single_function},
    {.name = "fp_ldexp", .printed_name = "fp_ldexp", .kind = instance_kind::single_function,
     .operand = function_operand::second_input, .has_scale_operand = true,
     .integer_constant = true, .constant_signal_width = 32},
    {.name = "fp_fabs", .printed_name = "fp_fabs", .kind = instance_kind::single_function},
    {.name = "fp_neg", .printed_name = "fp_neg", .kind = instance_kind::single_function},

    // Double-precision functions.
    {.name = "dp_sqr", .printed_name = "dp_sqr", .kind = instance_kind::double_function},
    {.name = "dp_invsqr", .printed_name = "dp_invsqr", .kind = instance_kind::double_function,
     .generics = {doubleaccuracy, line_end(doublespeed), device, synthesize},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "dp_inv", .printed_name = "dp_inv", .kind = instance_kind::double_function,
     .generics = {roundconvert, line_end(doubleaccuracy), doublespeed, line_end(device), synthesize},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "dp_exp", .printed_name = "dp_exp", .kind = instance_kind::double_function,
     .generics = {roundconvert, line_end(doubleaccuracy), doublespeed, line_end(device), synthesize},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "dp_log", .printed_name = "dp_log", .kind = instance_kind::double_function,
     .generics = {device_of_logarithm, line_end(doublespeed), synthesize},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.name = "dp_ldexp", .printed_name = "dp_ldexp", .kind = instance_kind::double_function,
     .operand = function_operand::second_input, .has_scale_operand = true,
     .integer_constant = true, .constant_signal_width = 32},
    {.name = "dp_fabs", .printed_name = "dp_fabs", .kind = instance_kind::double_function},
    {.name = "dp_neg", .printed_name = "dp_neg", .kind = instance_kind::double_function},

    // Kept: no pass maps to these two; their constants would be integers.
    {.name = "xfc_ldexp1x", .printed_name = "", .integer_constant = true, .constant_signal_width = 32},
    {.name = "xfc_ldexp2x", .printed_name = "", .integer_constant = true, .constant_signal_width = 32},
};
// clang-format on

}  // namespace component_rows

inline constexpr const component_row& no_component = component_rows::table[0];

/// The row of that name, or null.
constexpr const component_row* find_component(std::string_view name) {
    for (const component_row& row : component_rows::table) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

/// The row of a name that the table is known to hold; an unknown name does not compile.
consteval const component_row* component(std::string_view name) {
    for (const component_row& row : component_rows::table) {
        if (row.name == name) {
            return &row;
        }
    }
    throw "no such component";
}

}  // namespace xfc
