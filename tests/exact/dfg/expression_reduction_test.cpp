#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "exact/dfg/translation.h"

// Operators, functions, unary minus and literals inside larger expressions.

namespace xfc::test {

namespace {

using slots = std::vector<std::int32_t>;

// ---- Operators ----

TEST(operators, make_a_node_with_the_left_operand_on_input_0) {
    for (const std::string operation : {"+", "-", "*", "/"}) {
        expect_translated("y = a " + operation + " b;");
        ASSERT_EQ(dfg_used_slots(), first_made + 1);
        EXPECT_EQ(name_at(first_made), operation);
        EXPECT_EQ(node_at(first_made).input_count, 2);
        EXPECT_EQ(node_at(first_made).output_count, 1);
        EXPECT_EQ(driver(first_made, 0), slot_a);
        EXPECT_EQ(driver(first_made, 1), slot_b);
        EXPECT_EQ(driver(slot_y), first_made);
        EXPECT_EQ(consumers(first_made), slots{slot_y});
        EXPECT_EQ(attributes_at(slot_y).is_internal, 1);
    }
}

TEST(operators, attach_input_0_before_input_1) {
    expect_translated("y = a - a;");
    const dfg_link* first = consumers_of(node_at(slot_a));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->port, 0);
    ASSERT_NE(first->next, nullptr);
    EXPECT_EQ(first->next->port, 1);
    EXPECT_EQ(dfg_count_consumers(slot_a), 2);
}

TEST(operators, of_a_chain_are_made_innermost_first) {
    expect_translated("y = a - b - c;");
    EXPECT_EQ(driver(first_made, 0), slot_a);
    EXPECT_EQ(driver(first_made, 1), slot_b);
    EXPECT_EQ(driver(first_made + 1, 0), first_made);
    EXPECT_EQ(driver(first_made + 1, 1), slot_c);
    EXPECT_EQ(driver(slot_y), first_made + 1);
}

TEST(operators, of_the_right_operand_are_made_first) {
    expect_translated("y = a * b - c / x;");
    EXPECT_EQ(name_at(first_made), "/");
    EXPECT_EQ(name_at(first_made + 1), "*");
    EXPECT_EQ(name_at(first_made + 2), "-");
    EXPECT_EQ(driver(first_made + 2, 0), first_made + 1);
    EXPECT_EQ(driver(first_made + 2, 1), first_made);
}

TEST(operators, in_parentheses_bind_first) {
    expect_translated("y = a * (b + c);");
    EXPECT_EQ(name_at(first_made), "+");
    EXPECT_EQ(name_at(first_made + 1), "*");
    EXPECT_EQ(driver(first_made + 1, 0), slot_a);
    EXPECT_EQ(driver(first_made + 1, 1), first_made);
}

TEST(operators, of_one_statement_may_be_made_in_several_passes_over_the_tokens) {
    // Tokens: - / d c * - b a x. The first pass makes "/" and the inner "-", the second "*" and the outer "-".
    expect_translated("y = (a - b) * x - c / d;");
    const std::vector<std::string_view> names{"/", "-", "*", "-"};
    // "/" c by d first, then the sum inside the product is read right operand first.
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(name_at(first_made + static_cast<std::int32_t>(index)), names[index]);
    }
}

TEST(operators, between_literal_and_name_keep_their_sides) {
    expect_translated("y = x * 2; z = 2 * x;");
    EXPECT_EQ(driver(first_made, 0), slot_x);
    expect_constant(first_made, 1, "LONG", 2);
    expect_constant(first_made + 1, 0, "LONG", 2);
    EXPECT_EQ(driver(first_made + 1, 1), slot_x);
    EXPECT_EQ(format_at(first_made), "Float");
    EXPECT_EQ(format_at(first_made + 1), "Float");
}

TEST(operators, take_a_negative_literal_on_either_side) {
    expect_translated("y = x - -2.5; z = -2.5 - x;");
    expect_constant(first_made, 1, "FLOAT", -2.5);
    EXPECT_EQ(driver(first_made, 0), slot_x);
    expect_constant(first_made + 1, 0, "FLOAT", -2.5);
    EXPECT_EQ(driver(first_made + 1, 1), slot_x);
}

TEST(operators, keep_a_literals_value_unchanged) {
    expect_translated("m = n + 3.75;");
    expect_constant(first_made, 1, "FLOAT", 3.75);
}

TEST(operators, of_two_literals_have_no_format) {
    expect_translated("y = 2 * 3;");
    expect_constant(first_made, 0, "LONG", 2);
    expect_constant(first_made, 1, "LONG", 3);
    EXPECT_EQ(format_at(first_made), "");
}

TEST(operators, on_undeclared_names_read_the_first_node) {
    expect_translated("y = nowhere * b;");
    EXPECT_EQ(driver(first_made, 0), slot_a);
    EXPECT_EQ(driver(first_made, 1), slot_b);
}

// ---- Formats ----

struct format_row_of_test {
    const char* expression;
    const char* format;
};

TEST(formats, of_an_operator_follow_its_operands) {
    constexpr std::array rows{
        format_row_of_test{"a + b", "Float"},  format_row_of_test{"a + e", "Double"},
        format_row_of_test{"e + a", "Double"}, format_row_of_test{"e * f", "Double"},
        format_row_of_test{"m + n", "Long"},   format_row_of_test{"m + a", "Float"},
        format_row_of_test{"a - m", "Float"},  format_row_of_test{"m * e", "Double"},
        format_row_of_test{"i * m", "Long"},   format_row_of_test{"a / i", "Float"},
        format_row_of_test{"i - e", "Double"}, format_row_of_test{"2 * m", "Long"},
        format_row_of_test{"m * 2.5", "Long"}, format_row_of_test{"2.5 * e", "Double"},
        format_row_of_test{"i * 2", ""},       format_row_of_test{"2 / i", ""},
    };
    for (const auto& [expression, format] : rows) {
        expect_translated(std::string("y = ") + expression + ";");
        EXPECT_EQ(format_at(first_made), format) << expression;
    }
}

TEST(formats, two_operands_without_any_are_refused) {
    expect_message("y = i + j;", "DFG4: Invalid Type");
    expect_message("y = max(i, j);", "DFG4: Invalid Type");
    // The node stands before its format is decided.
    EXPECT_EQ(dfg_used_slots(), first_made + 1);
    EXPECT_EQ(driver(first_made, 0), slot_i + 1);
    EXPECT_EQ(driver(first_made, 1), slot_i);
}

TEST(formats, of_a_one_argument_function_are_its_arguments) {
    expect_translated("y = sqrt(a); y = exp(e); y = log(m); y = fabs(i);");
    EXPECT_EQ(format_at(first_made), "Float");
    EXPECT_EQ(format_at(first_made + 1), "Double");
    EXPECT_EQ(format_at(first_made + 2), "Long");
    EXPECT_EQ(format_at(first_made + 3), "");
}

TEST(formats, of_a_two_argument_function_follow_its_arguments) {
    expect_translated("y = max(a, e); y = ldexp(e, 2); y = max(m, n);");
    EXPECT_EQ(format_at(first_made), "Double");
    EXPECT_EQ(format_at(first_made + 1), "Double");
    EXPECT_EQ(format_at(first_made + 2), "Long");
}

// ---- Functions ----

TEST(functions, of_one_argument_make_a_node_with_one_input) {
    for (const std::string name : {"sqrt", "invsqr", "inv", "exp", "log", "fabs", "negate"}) {
        expect_translated("y = " + name + "(x);");
        ASSERT_EQ(dfg_used_slots(), first_made + 1);
        EXPECT_EQ(name_at(first_made), name);
        EXPECT_EQ(node_at(first_made).input_count, 1);
        EXPECT_EQ(driver(first_made), slot_x);
        EXPECT_EQ(driver(slot_y), first_made);
    }
}

TEST(functions, of_two_arguments_take_the_second_on_input_0) {
    expect_translated("y = max(a, b);");
    EXPECT_EQ(name_at(first_made), "max");
    EXPECT_EQ(node_at(first_made).input_count, 2);
    EXPECT_EQ(driver(first_made, 0), slot_b);
    EXPECT_EQ(driver(first_made, 1), slot_a);
}

TEST(functions, truncate_a_literal_second_argument_toward_zero) {
    expect_translated("y = ldexp(x, 3.7); z = ldexp(x, -3.7);");
    expect_constant(first_made, 0, "FLOAT", 3);
    EXPECT_EQ(driver(first_made, 1), slot_x);
    expect_constant(first_made + 1, 0, "FLOAT", -3);
}

TEST(functions, keep_an_integer_second_argument_and_its_type) {
    expect_translated("y = ldexp(x, 12);");
    expect_constant(first_made, 0, "LONG", 12);
}

TEST(functions, clamp_a_literal_outside_the_32_bit_range) {
    expect_translated("y = ldexp(x, 3000000000); z = ldexp(x, -3000000000.5); y = ldexp(x, 2147483646.9);");
    expect_constant(first_made, 0, "LONG", 2147483647);
    expect_constant(first_made + 1, 0, "FLOAT", -2147483648.0);
    expect_constant(first_made + 2, 0, "FLOAT", 2147483646);
}

TEST(functions, do_not_take_a_literal_first_argument) {
    expect_message("y = ldexp(2, x);", "Constants not supported for this operand");
    expect_message("y = max(2.5, 3);", "Constants not supported for this operand");
    EXPECT_EQ(dfg_used_slots(), first_made + 1);
    expect_constant(first_made, 0, "LONG", 3);
}

TEST(functions, of_one_argument_refuse_a_literal_at_the_end_of_the_tokens) {
    constexpr std::string_view message = "Cannot process constant arguments for this function";
    expect_message("y = sqrt(2.0);", message);
    expect_message("y = sqrt(2);", message);
    expect_message("y = sqrt(-2.0);", message);
    expect_message("y = sqrt(2.0) + x;", message);
    expect_message("y = -(-2.0);", message);
    // Nothing has been made for it.
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(functions, of_one_argument_with_a_literal_take_the_next_token_as_a_second_argument) {
    // The tokens are + sqrt 2.0 x, so that x looks like the second argument.
    expect_message("y = x + sqrt(2.0);", "Constants not supported for this operand");
    EXPECT_EQ(dfg_used_slots(), first_made + 1);
    EXPECT_EQ(name_at(first_made), "sqrt");
    EXPECT_EQ(node_at(first_made).input_count, 2);
    EXPECT_EQ(driver(first_made, 0), slot_x);
    expect_message("y = x - -(-2.0);", "Constants not supported for this operand");
    EXPECT_EQ(name_at(first_made), "negate");
}

TEST(functions, of_one_argument_take_the_first_of_two) {
    // The tokens are sqrt a b: the root of a, and b is left over.
    expect_message("y = sqrt(a, b);", "DFG5: endless loop in stack");
    EXPECT_EQ(name_at(first_made), "sqrt");
    EXPECT_EQ(node_at(first_made).input_count, 1);
    EXPECT_EQ(driver(first_made), slot_a);
}

TEST(functions, without_a_known_name_do_not_reduce_with_one_argument) {
    expect_message("y = sine(x);", "DFG5: endless loop in stack");
    expect_message("y = ldexp(2);", "DFG5: endless loop in stack");
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(functions, without_arguments_are_names) {
    expect_translated("y = b() * c;");
    EXPECT_EQ(driver(first_made, 0), slot_b);
}

TEST(functions, take_expressions_as_arguments) {
    expect_translated("y = sqrt(a * b + c);");
    EXPECT_EQ(name_at(first_made), "*");
    EXPECT_EQ(name_at(first_made + 1), "+");
    EXPECT_EQ(name_at(first_made + 2), "sqrt");
    EXPECT_EQ(driver(first_made + 2), first_made + 1);
}

TEST(functions, are_nested) {
    expect_translated("y = ldexp(sqrt(a), 2) + log(exp(b));");
    EXPECT_EQ(dfg_used_slots(), first_made + 5);
    const std::int32_t scale = slot_named("ldexp");
    const std::int32_t sum = slot_named("+");
    EXPECT_EQ(name_at(driver(scale, 1)), "sqrt");
    EXPECT_EQ(driver(sum, 0), scale);
    EXPECT_EQ(name_at(driver(sum, 1)), "log");
    EXPECT_EQ(name_at(driver(driver(sum, 1))), "exp");
}

TEST(functions, keep_their_name_apart_from_a_variable_of_that_name) {
    ASSERT_EQ(translate_text("float sqrt, x, y;\nmain() { y = sqrt(sqrt) + sqrt * x; sqrt = x; }\n").status, 0);
    const std::int32_t variable = 0;
    const std::int32_t root = slot_named("sqrt", 1);
    EXPECT_EQ(driver(root), variable);
    const std::int32_t product = slot_named("*");
    EXPECT_EQ(driver(product, 0), variable);
    EXPECT_EQ(driver(variable), 1);
}

TEST(functions, called_through_parentheses_take_the_second_label_as_their_name) {
    // The labels behind the call are OP:+ T:IDENTIFIER b T:IDENTIFIER a: the name is "T:IDENTIFIER", b is passed over,
    // and a and x are two arguments.
    expect_translated("y = (a + b)(x);");
    EXPECT_EQ(name_at(first_made), "T:IDENTIFIER");
    EXPECT_EQ(driver(first_made, 0), slot_x);
    EXPECT_EQ(driver(first_made, 1), slot_a);
}

TEST(functions, of_a_called_string_do_not_reach_beyond_the_end_mark) {
    expect_error_line("y = \"f\"(\"g\"); z = a;", "Expression assigned to y has no value\n");
}

// ---- Unary minus ----

TEST(unary_minus, of_a_name_makes_a_negation) {
    expect_translated("y = -x;");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(driver(first_made), slot_x);
    EXPECT_EQ(driver(slot_y), first_made);
    EXPECT_EQ(format_at(first_made), "Float");
}

TEST(unary_minus, of_the_left_operand_stands_on_input_0) {
    expect_translated("y = -a * b;");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(driver(first_made), slot_a);
    EXPECT_EQ(driver(first_made + 1, 0), first_made);
    EXPECT_EQ(driver(first_made + 1, 1), slot_b);
}

TEST(unary_minus, of_the_right_operand_stands_on_input_1) {
    expect_translated("y = a - -b;");
    EXPECT_EQ(driver(first_made), slot_b);
    EXPECT_EQ(driver(first_made + 1, 0), slot_a);
    EXPECT_EQ(driver(first_made + 1, 1), first_made);
}

TEST(unary_minus, of_both_operands_makes_two_negations) {
    expect_translated("y = -a / -b;");
    EXPECT_EQ(dfg_used_slots(), first_made + 3);
    EXPECT_EQ(driver(first_made), slot_b);
    EXPECT_EQ(driver(first_made + 1), slot_a);
    EXPECT_EQ(driver(first_made + 2, 0), first_made + 1);
    EXPECT_EQ(driver(first_made + 2, 1), first_made);
}

TEST(unary_minus, of_a_sum_negates_its_result) {
    expect_translated("y = -(a + b);");
    EXPECT_EQ(name_at(first_made), "+");
    EXPECT_EQ(name_at(first_made + 1), "negate");
    EXPECT_EQ(driver(first_made + 1), first_made);
}

TEST(unary_minus, of_a_function_negates_its_result) {
    expect_translated("y = -sqrt(x);");
    EXPECT_EQ(name_at(first_made), "sqrt");
    EXPECT_EQ(name_at(first_made + 1), "negate");
    EXPECT_EQ(driver(slot_y), first_made + 1);
}

TEST(unary_minus, of_an_argument_stands_in_front_of_the_function) {
    expect_translated("y = sqrt(-x);");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(name_at(first_made + 1), "sqrt");
}

TEST(unary_minus, twice_makes_two_negations) {
    expect_translated("y = - -x;");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(name_at(first_made + 1), "negate");
    EXPECT_EQ(driver(first_made), slot_x);
    EXPECT_EQ(driver(first_made + 1), first_made);
}

TEST(unary_minus, in_front_of_another_unary_operator_still_negates) {
    expect_translated("y = -+x;");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(driver(first_made), slot_x);
    expect_translated("y = +-x;");
    EXPECT_EQ(name_at(first_made), "negate");
}

TEST(unary_minus, is_spent_by_the_first_constant) {
    expect_translated("y = -2 * x + 3;");
    expect_constant(slot_named("*"), 0, "LONG", -2);
    expect_constant(slot_named("+"), 1, "LONG", 3);
}

TEST(unary_minus, is_spent_by_the_negation_it_makes) {
    expect_translated("y = -(x * 2.5);");
    expect_constant(first_made, 1, "FLOAT", 2.5);
}

TEST(unary_minus, does_not_reach_a_constant_behind_a_plus_sign) {
    expect_message("y = -+2.5;", "Cannot process constant arguments for this function");
}

TEST(unary_minus, without_an_operand_takes_the_next_token) {
    // The string has no token, so that the tokens are + negate a.
    expect_message("y = a + -\"text\";", "DFG5: endless loop in stack");
    EXPECT_EQ(name_at(first_made), "negate");
    EXPECT_EQ(driver(first_made), slot_a);
}

// ---- Constants as texts ----

TEST(constants, are_read_as_decimal_numbers) {
    const std::array<std::pair<const char*, double>, 6> rows{
        {{"0.5", 0.5}, {"10.25", 10.25}, {"1.", 1}, {".5", 0.5}, {"000.125", 0.125}, {"123456789.5", 123456789.5}}};
    for (const auto& [text, value] : rows) {
        expect_translated(std::string("y = ") + text + ";");
        expect_constant(slot_y, 0, "FLOAT", value);
    }
}

TEST(constants, drop_an_integers_suffix_and_do_not_know_octal) {
    expect_translated("y = 12uL; z = 017;");
    expect_constant(slot_y, 0, "LONG", 12);
    expect_constant(slot_z, 0, "LONG", 17);
}

TEST(constants, beyond_32_bits_keep_their_value) {
    expect_translated("y = 4294967296;");
    expect_constant(slot_y, 0, "LONG", 4294967296.0);
}

TEST(constants, are_cut_to_31_characters) {
    expect_translated("y = 1" + std::string(40, '0') + ";");
    expect_constant(slot_y, 0, "LONG", 1e30);
}

TEST(constants, a_minus_in_front_of_zero_flips_its_sign) {
    expect_translated("y = -0.0;");
    EXPECT_TRUE(std::signbit(node_at(slot_y).inputs[0].constant_value));
}

}  // namespace

}  // namespace xfc::test
