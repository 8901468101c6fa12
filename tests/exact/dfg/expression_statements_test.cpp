#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exact/dfg/translation.h"

// Variable nodes, the head of a statement, and statements of a single token.

namespace xfc::test {

namespace {

using slots = std::vector<std::int32_t>;

// ---- Variable nodes ----

TEST(variable_nodes, stand_in_declaration_order_with_one_input_and_one_output) {
    ASSERT_EQ(translate_text("float b, a;\ndouble c;\nmain() { long d; a = b; }\n").status, 0);
    const std::vector<std::string_view> names{"b", "a", "c", "d"};
    ASSERT_EQ(dfg_used_slots(), 4);
    for (std::int32_t slot = 0; slot < 4; ++slot) {
        EXPECT_EQ(name_at(slot), names[static_cast<std::size_t>(slot)]);
        EXPECT_EQ(node_at(slot).input_count, 1);
        EXPECT_EQ(node_at(slot).output_count, 1);
    }
}

TEST(variable_nodes, take_the_format_of_their_type) {
    expect_translated("y = a;");
    EXPECT_EQ(format_at(slot_a), "Float");
    EXPECT_EQ(format_at(slot_e), "Double");
    EXPECT_EQ(format_at(slot_m), "Long");
    EXPECT_EQ(format_at(slot_i), "");
}

TEST(variable_nodes, of_int_short_and_char_have_no_format) {
    ASSERT_EQ(translate_text("int a; short b; char c; float y; main() { y = y; }\n").status, 0);
    EXPECT_EQ(format_at(0), "");
    EXPECT_EQ(format_at(1), "");
    EXPECT_EQ(format_at(2), "");
    EXPECT_EQ(format_at(3), "Float");
}

TEST(variable_nodes, take_the_last_type_of_several) {
    ASSERT_EQ(translate_text("long double a; double long b; long int c; float y; main() { y = y; }\n").status, 0);
    EXPECT_EQ(format_at(0), "Double");
    EXPECT_EQ(format_at(1), "Long");
    EXPECT_EQ(format_at(2), "Long");
}

TEST(variable_nodes, a_declaration_without_a_name_makes_none) {
    ASSERT_EQ(translate_text("float; double a; float y; main() { y = a; }\n").status, 0);
    EXPECT_EQ(dfg_used_slots(), 2);
    EXPECT_EQ(name_at(0), "a");
    EXPECT_EQ(name_at(1), "y");
}

TEST(variable_nodes, of_one_name_declared_twice_are_two_and_the_first_is_used) {
    ASSERT_EQ(translate_text("float a; double a; float y; main() { y = a; }\n").status, 0);
    EXPECT_EQ(dfg_used_slots(), 3);
    EXPECT_EQ(driver(2), 0);
    EXPECT_TRUE(consumers(1).empty());
}

TEST(variable_nodes, are_made_without_any_statement) {
    const run_result result = translate_text("float a;\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, translation_banner);
    EXPECT_EQ(dfg_used_slots(), 1);
}

TEST(variable_nodes, are_not_made_for_an_empty_program) {
    ASSERT_EQ(translate_text("main() { }\n").status, 0);
    EXPECT_EQ(current.graph.capacity, 10000);
    // The function's own name is not declared by a type.
    EXPECT_EQ(dfg_used_slots(), 0);
}

// ---- Head ----

TEST(statement_head, a_call_is_no_assignment) { expect_message("f(x);", "DFG3: Error in Expression"); }

TEST(statement_head, a_lone_name_is_no_assignment) { expect_message("y;", "DFG3: Error in Expression"); }

TEST(statement_head, an_indexed_target_is_no_assignment) { expect_message("y[1] = x;", "DFG3: Error in Expression"); }

TEST(statement_head, a_statement_without_any_name_reaches_the_end_of_the_list) {
    expect_message("1;", "DFG3: Error in Expression");
    expect_message("y = a; 2 + 3;", "DFG3: Error in Expression");
}

TEST(statement_head, every_assignment_but_the_plain_one_is_refused) {
    for (const std::string operation : {"+=", "-=", "*=", "/=", "%=", "<<=", ">>=", "^=", "|="}) {
        expect_message("y " + operation + " x;", "DFG4: Error in Expression");
    }
}

TEST(statement_head, a_statement_without_a_name_takes_the_next_one_in) {
    expect_translated("5; y = a;");
    EXPECT_EQ(driver(slot_y), slot_a);
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(statement_head, the_target_is_found_behind_a_unary_operator_and_in_parentheses) {
    expect_translated("*y = a; (z) = b;");
    EXPECT_EQ(driver(slot_y), slot_a);
    EXPECT_EQ(driver(slot_z), slot_b);
}

TEST(statement_head, the_statements_before_a_refused_one_have_been_translated) {
    expect_message("y = a + b; z += c;", "DFG4: Error in Expression");
    EXPECT_EQ(dfg_used_slots(), first_made + 1);
    EXPECT_EQ(driver(slot_y), first_made);
}

TEST(statement_head, without_any_variable_the_first_lookup_ends_the_run) {
    for (const std::string statement : {"y = 1;", "y += 1;", "y;", "f(1);"}) {
        const run_result result = translate_text("main() { " + statement + " }\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.standard_output, translation_banner);
        EXPECT_EQ(result.standard_error, "No variable is declared\n");
    }
}

TEST(statement_head, without_any_variable_and_name_the_search_for_one_comes_first) {
    const run_result result = translate_text("main() { 1; }\n");
    EXPECT_EQ(result.standard_output, std::string(translation_banner) + "DFG3: Error in Expression");
    EXPECT_EQ(result.standard_error, "");
}

TEST(statement_head, an_undeclared_target_is_the_first_node) {
    expect_translated("nowhere = b;");
    EXPECT_EQ(driver(slot_a), slot_b);
    EXPECT_EQ(consumers(slot_b), slots{slot_a});
    EXPECT_EQ(attributes_at(slot_a).is_internal, 1);
}

// ---- Which statements are translated ----

TEST(statements, in_a_selection_or_loop_are_passed_over) {
    expect_translated("if (a) y = b; while (a) y = b; for (;;) y = b; return y;");
    EXPECT_EQ(driver(slot_y), no_slot);
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(statements, an_empty_one_does_nothing) {
    expect_translated("; ; y = a; ;");
    EXPECT_EQ(driver(slot_y), slot_a);
}

TEST(statements, in_an_inner_block_are_translated) {
    expect_translated("{ y = a; } z = b;");
    EXPECT_EQ(driver(slot_y), slot_a);
    EXPECT_EQ(driver(slot_z), slot_b);
}

// ---- A single token ----

TEST(single_token, a_floating_constant_makes_a_constant_port_and_nothing_else) {
    expect_translated("y = 2.5;");
    expect_constant(slot_y, 0, "FLOAT", 2.5);
    EXPECT_EQ(attributes_at(slot_y).is_internal, 0);
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(single_token, an_integer_constant_is_long) {
    expect_translated("e = 12;");
    expect_constant(slot_e, 0, "LONG", 12);
}

TEST(single_token, a_negative_constant_keeps_its_sign) {
    expect_translated("y = -2.5; m = -3;");
    expect_constant(slot_y, 0, "FLOAT", -2.5);
    expect_constant(slot_m, 0, "LONG", -3);
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(single_token, a_name_is_connected_and_the_target_passes_its_value_on) {
    expect_translated("y = x;");
    EXPECT_EQ(driver(slot_y), slot_x);
    EXPECT_EQ(consumers(slot_x), slots{slot_y});
    EXPECT_EQ(attributes_at(slot_y).is_internal, 1);
    EXPECT_EQ(attributes_at(slot_x).is_internal, 0);
    EXPECT_EQ(format_at(slot_y), "Float");
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(single_token, an_undeclared_name_is_the_first_node) {
    expect_translated("y = nowhere;");
    EXPECT_EQ(driver(slot_y), slot_a);
}

TEST(single_token, a_function_name_as_a_value_is_the_lowest_node_of_that_name) {
    expect_translated("y = sqrt(b) + sqrt(c); z = sqrt;");
    ASSERT_EQ(name_at(first_made), "sqrt");
    EXPECT_EQ(driver(slot_z), first_made);
}

TEST(single_token, a_name_assigned_to_itself_is_connected) {
    expect_translated("y = y;");
    EXPECT_EQ(driver(slot_y), slot_y);
    EXPECT_EQ(consumers(slot_y), slots{slot_y});
}

TEST(single_token, what_is_not_part_of_the_language_is_skipped) {
    for (const std::string expression : {"+x", "!x", "~x", "&x", "*x", "++x", "x++", "x--", "x()", "(x)", "sizeof x"}) {
        expect_translated("y = " + expression + ";");
        EXPECT_EQ(driver(slot_y), slot_x) << expression;
        EXPECT_EQ(dfg_used_slots(), first_made) << expression;
    }
}

TEST(single_token, a_plus_sign_leaves_a_constant_as_it_is) {
    expect_translated("y = +2.5;");
    expect_constant(slot_y, 0, "FLOAT", 2.5);
}

TEST(single_token, that_is_no_value_is_refused) {
    expect_error_line("y = -\"text\";", "Expression assigned to y has no value\n");
    expect_error_line("z = -'c';", "Expression assigned to z has no value\n");
}

TEST(single_token, that_is_no_value_is_refused_with_the_name_as_written) {
    expect_error_line("nowhere = -\"text\";", "Expression assigned to nowhere has no value\n");
}

TEST(single_token, the_end_mark_ends_the_statement_behind_a_minus_too) {
    expect_error_line("y = -\"text\"; z = a;", "Expression assigned to y has no value\n");
}

TEST(statement_without_tokens, never_reduces) {
    for (const std::string expression : {"\"text\"", "'c'", "(float) x", "+\"text\""}) {
        expect_message("y = " + expression + ";", "DFG5: endless loop in stack");
    }
}

// ---- Assigned again ----

TEST(reassigned_variable, keeps_the_last_source_and_leaves_the_first_edge_stale) {
    expect_translated("y = a; y = b;");
    EXPECT_EQ(driver(slot_y), slot_b);
    EXPECT_EQ(consumers(slot_a), slots{slot_y});
    EXPECT_EQ(consumers(slot_b), slots{slot_y});
}

TEST(reassigned_variable, with_a_constant_keeps_its_source) {
    expect_translated("y = a; y = 2.5;");
    EXPECT_EQ(node_at(slot_y).inputs[0].is_constant, 1);
    EXPECT_EQ(node_at(slot_y).inputs[0].constant_value, 2.5);
    EXPECT_EQ(driver(slot_y), slot_a);
    EXPECT_EQ(attributes_at(slot_y).is_internal, 1);
}

TEST(reassigned_variable, with_a_name_keeps_its_constant) {
    expect_translated("y = 2.5; y = a;");
    EXPECT_EQ(node_at(slot_y).inputs[0].is_constant, 1);
    EXPECT_EQ(driver(slot_y), slot_a);
}

TEST(reassigned_variable, is_read_through_its_node_wherever_the_reading_stands) {
    expect_translated("y = a; z = y; y = b;");
    EXPECT_EQ(driver(slot_z), slot_y);
    EXPECT_EQ(driver(slot_y), slot_b);
}

}  // namespace

}  // namespace xfc::test
