#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "components/component_table.h"

// How instances of the components are written: line breaks, indents, and every irregularity of the output. What a
// component is stands in its own row; a row here says only what differs from the plain text, and most need none.

namespace xfc {

/// How the component writes a constant operand's field.
enum class constant_form : std::uint8_t { adder, multiplier, divider };

/// A result that is connected to other bits than the component's.
enum class result_bits : std::uint8_t {
    of_port,
    ieee_with_flags,       ///< Kept: 32 bits, and flags that the bus does not have, where an XFloat has them
    xfloat_without_flags,  ///< Kept: the value field of an XFloat, although the result is an IEEE one
};

struct instance_text {
    component_id id = component_id::wire;

    /// Generics behind which a new line starts.
    std::array<std::string_view, 2> line_ends{};
    bool line_end_without_comma = false;  ///< Kept: the comma in front of the new line is missing.
    /// Kept: changes what an instance's generics are set to.
    void (*adjust_generics)(component_generics&) = nullptr;

    constant_form constant = constant_form::adder;
    bool integer_constant = false;           ///< the constant operand is a Long, its signal 32 bits wide
    std::int32_t constant_signal_width = 0;  ///< bits; 0: three less than the output
    bool multiplier_bus_constant = false;    ///< the constant operand has the multiplier form of a YDouble

    std::int32_t indent = 15;                   ///< blanks in front of a continued generic line
    std::int32_t verilog_indent = 15;           ///< the same in Verilog
    std::string_view verilog_opening = " # (";  ///< Verilog, between name and generics

    result_bits result = result_bits::of_port;
    bool empty_line_behind_operands = false;     ///< Kept: an empty line stands behind the last operand.
    bool blank_behind_result_sat = false;        ///< Kept: a blank ends the line piece of the result's sat bit.
    bool semicolon_behind_result = false;        ///< Kept: a semicolon stands where a comma belongs.
    bool verilog_double_dot = false;             ///< Kept: the Verilog result port has two dots.
    bool verilog_double_blank = false;           ///< Kept: two blanks behind the Verilog instance label.
    bool verilog_addsub_blank = false;           ///< Kept: the Verilog adder select is written with a blank inside.
    bool verilog_joined_line = false;            ///< Kept: the Verilog instance follows on the module's line.
    bool verilog_constants_close_ranks = false;  ///< Kept: no empty line behind the Verilog constant signal's wire.
};

namespace instance_texts {

inline constexpr std::string_view open_line = " # (\n";
inline constexpr std::string_view open_indented_line = " # (\n  ";

/// Kept: normalizers that do not feed a multiplier are said to normalize fully.
constexpr void normalize_fully_but_for_multipliers(component_generics& g) {
    g.inputnormalize = g.output_select == 0 ? g.inputnormalize : 1;
}
/// Kept: the target is always the adder form.
constexpr void target_adder_form(component_generics& g) { g.output_select = 1; }
/// Kept: the logarithm's device generic gets the multiplier accuracy.
constexpr void pass_accuracy_as_device(component_generics& g) { g.device = g.doubleaccuracy; }

// clang-format off
inline constexpr instance_text table[] = {
    {.id = component_id::alufp1_dot, .verilog_double_blank = true, .verilog_addsub_blank = true},
    {.id = component_id::alufp1x, .verilog_addsub_blank = true},
    {.id = component_id::mulfp1x, .constant = constant_form::multiplier, .indent = 12, .verilog_indent = 12},
    {.id = component_id::divfp1x, .constant = constant_form::divider},
    {.id = component_id::normfp1x, .line_ends = {"roundnormalize"},
     .adjust_generics = normalize_fully_but_for_multipliers,
     .empty_line_behind_operands = true, .blank_behind_result_sat = true},

    {.id = component_id::mulfp2x, .line_ends = {"doublespeed", "doubleaccuracy"},
     .constant_signal_width = 67, .multiplier_bus_constant = true,
     .verilog_opening = open_line, .verilog_constants_close_ranks = true},
    // Kept: the divider reads 67 constant bits, but its constant signal follows the output's width.
    {.id = component_id::divfp2x, .line_ends = {"doublespeed"}, .multiplier_bus_constant = true,
     .verilog_opening = open_line},
    {.id = component_id::normfp2x, .line_ends = {"normspeed"},
     .verilog_opening = open_line, .empty_line_behind_operands = true, .blank_behind_result_sat = true},

    {.id = component_id::castftox, .verilog_opening = open_line},
    {.id = component_id::castdtoy, .line_ends = {"outputpipe"}, .verilog_opening = open_line},
    {.id = component_id::castdtox, .verilog_opening = open_line},
    {.id = component_id::castxtod, .line_ends = {"mantissa"}, .line_end_without_comma = true},
    {.id = component_id::castxtoy, .adjust_generics = target_adder_form, .semicolon_behind_result = true},
    // Kept: in Verilog the continued generic line is not indented.
    {.id = component_id::castytod, .line_ends = {"normspeed"}, .verilog_indent = 0, .verilog_opening = open_line},
    {.id = component_id::castytof, .result = result_bits::ieee_with_flags, .empty_line_behind_operands = true},
    {.id = component_id::castytox, .empty_line_behind_operands = true, .verilog_double_dot = true},
    {.id = component_id::castdtof, .result = result_bits::xfloat_without_flags},

    {.id = component_id::fp_sqr, .verilog_joined_line = true},
    {.id = component_id::fp_invsqr, .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::fp_inv, .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::fp_exp, .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::fp_ldexp, .integer_constant = true, .constant_signal_width = 32},

    {.id = component_id::dp_invsqr, .line_ends = {"doublespeed"},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::dp_inv, .line_ends = {"doubleaccuracy", "device"},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::dp_exp, .line_ends = {"doubleaccuracy", "device"},
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::dp_log, .line_ends = {"doublespeed"}, .adjust_generics = pass_accuracy_as_device,
     .verilog_indent = 2, .verilog_opening = open_indented_line},
    {.id = component_id::dp_ldexp, .integer_constant = true, .constant_signal_width = 32},
};
// clang-format on

/// The rows by component; those without a row of their own have the plain text.
inline constexpr auto by_component = [] {
    std::array<instance_text, static_cast<std::size_t>(component_id::count_of_components)> texts{};
    for (const instance_text& row : table) {
        texts[static_cast<std::size_t>(row.id)] = row;
    }
    return texts;
}();

}  // namespace instance_texts

constexpr const instance_text& text_of(component_id id) {
    return instance_texts::by_component[static_cast<std::size_t>(id)];
}

}  // namespace xfc
