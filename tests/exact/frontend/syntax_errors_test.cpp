#include <gtest/gtest.h>

#include "exact/frontend/label_texts.h"
#include "exact/frontend/parse_tree.h"
#include "exact/frontend/parser.h"
#include "exact/run/compilation.h"

namespace xfc::test {

namespace {

const label_texts float_a{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "a", "S:END"};
const label_texts float_c{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "c", "S:END"};
const label_texts b_is_c{
    "T:start_expr_stat", "B:assignment_expression", "T:IDENTIFIER", "b", "B:=expression", "T:=", "T:IDENTIFIER", "c",
    "T:end_expr_stat"};
const label_texts main_head{"B:decl comp_stat", "B:direct_decl()", "T:IDENTIFIER", "main"};

/// Flattens a source whose errors are these lines; each line is one counted error.
label_texts erroneous(const std::string& source, const std::vector<std::string>& lines) {
    const run_result result = flatten_text(source);
    std::string expected;
    for (const std::string& line : lines) {
        expected += line + "\n";
    }
    EXPECT_EQ(result.standard_output, expected);
    EXPECT_EQ(result.standard_error, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(current.error_count, static_cast<std::int32_t>(lines.size()));
    return labels();
}

TEST(syntax_errors, an_empty_source_is_one) {
    EXPECT_EQ(erroneous("", {"line 1 error syntax error at "}), (label_texts{}));
    EXPECT_EQ(erroneous("\n\n/* a */\n", {"line 4 error syntax error at "}), (label_texts{}));
}

TEST(syntax_errors, the_line_and_the_token_are_those_just_read) {
    EXPECT_EQ(erroneous("float a;\nmain()\n{\n;\nb =\n\n; b = c; }", {"line 7 error syntax error at ;"}).size(),
              1 + float_a.size() + main_head.size() + 2 + 1 + 1 + b_is_c.size() + 1);
}

TEST(syntax_errors, a_string_or_a_long_name_is_shown_whole) {
    static_cast<void>(erroneous("main() { ; a \"b c\"; }", {"line 1 error syntax error at \"b c\""}));
    const std::string long_name(60, 'n');
    static_cast<void>(
        erroneous("main() { ; a = 1 " + long_name + "; }", {"line 1 error syntax error at " + long_name}));
}

TEST(syntax_errors, a_character_of_no_use_is_one) {
    static_cast<void>(erroneous("main() { ; @; }", {"line 1 error syntax error at @"}));
    static_cast<void>(erroneous("main() { ; \xff; }", {"line 1 error syntax error at \xff"}));
    static_cast<void>(erroneous("main() { ;\r; }", {"line 1 error syntax error at \r"}));
}

TEST(recovery, a_statement_ends_at_its_semicolon) {
    EXPECT_EQ(erroneous("main() { ; a = ; b = c; }", {"line 1 error syntax error at ;"}),
              (main_head + label_texts{"B:{statement_list}", "{", "B:statement_list", "B:statement_list"} + b_is_c +
               label_texts{"}"}));
}

TEST(recovery, an_erroneous_start_of_a_block_is_a_declaration) {
    EXPECT_EQ(erroneous("main() { a = ; b = c; }", {"line 1 error syntax error at ;"}),
              (main_head + label_texts{"B:{decl_list,statement_list}", "{"} + b_is_c + label_texts{"}"}));
}

TEST(recovery, a_declaration_ends_at_its_semicolon) {
    // No unit begins with the parenthesis, so the error stands for a whole declaration.
    EXPECT_EQ(erroneous("float a; ) ; float c;", {"line 1 error syntax error at )"}),
              (label_texts{"B:tran_unit ext_decl", "B:tran_unit ext_decl"} + float_a + float_c));
}

TEST(recovery, each_ended_statement_may_report_again_at_once) {
    static_cast<void>(erroneous("main() { ; a = ; b = ; a = c; }",
                                {"line 1 error syntax error at ;", "line 1 error syntax error at ;"}));
    static_cast<void>(erroneous(
        "main() { ;\na = ;\n) ;\n) ;\n}",
        {"line 2 error syntax error at ;", "line 3 error syntax error at )", "line 4 error syntax error at )"}));
}

TEST(recovery, a_structure_member_ends_at_its_semicolon) {
    EXPECT_EQ(erroneous("struct { float a; = ; float b; } s;", {"line 1 error syntax error at ="}),
              (label_texts{"S:Declaration", "B:decl_spec init_decl_list", "TYPE_STRUCTORUNION", "T:IDENTIFIER", "s",
                           "S:END"}));
    static_cast<void>(erroneous("struct { float a; = ; = ; float b; } s;",
                                {"line 1 error syntax error at =", "line 1 error syntax error at ="}));
}

TEST(recovery, errors_within_three_tokens_are_not_reported) {
    // Behind the head's error the brace and the name are two tokens.
    EXPECT_EQ(erroneous("main() = { = ; }", {"line 1 error syntax error at ="}),
              (label_texts{"B:direct_decl()", "T:IDENTIFIER", "main"}));
    static_cast<void>(erroneous("main() = { a ) ; }", {"line 1 error syntax error at ="}));
}

TEST(recovery, an_error_behind_three_tokens_is_reported) {
    static_cast<void>(
        erroneous("main() = { a = ; }", {"line 1 error syntax error at =", "line 1 error syntax error at ;"}));
}

TEST(recovery, an_error_behind_the_specifiers_discards_all_up_to_a_block) {
    EXPECT_EQ(erroneous("float a; float = 3; float c; main() { }", {"line 1 error syntax error at ="}),
              (label_texts{"B:tran_unit ext_decl"} + float_a + label_texts{"T:Type_Float"}));
}

TEST(recovery, an_error_behind_a_function_head_keeps_the_head) {
    EXPECT_EQ(erroneous("float a; main() 5 { }", {"line 1 error syntax error at 5"}),
              (label_texts{"B:tran_unit ext_decl"} + float_a + label_texts{"B:direct_decl()", "T:IDENTIFIER", "main"}));
}

TEST(recovery, an_error_behind_an_expression_keeps_what_stood_before) {
    EXPECT_EQ(erroneous("main() { ; b = (c a); }", {"line 1 error syntax error at a"}),
              (main_head + label_texts{"B:{statement_list}", "{", "B:statement_list"} + b_is_c + label_texts{"}"}));
}

TEST(recovery, an_error_in_the_head_of_a_for_ends_at_the_parenthesis) {
    EXPECT_EQ(erroneous("main() { ; for (=) a; b = c; }", {"line 1 error syntax error at ="}),
              (main_head + label_texts{"B:{statement_list}", "{", "B:statement_list", "B:statement_list"} + b_is_c +
               label_texts{"}"}));
}

TEST(recovery, an_error_in_a_list_ends_at_its_closing_mark) {
    EXPECT_EQ(erroneous("enum { = } e;", {"line 1 error syntax error at ="}),
              (label_texts{"S:Declaration", "B:decl_spec init_decl_list", "TYPE_ENUM_SPECIFIER", "T:IDENTIFIER", "e",
                           "S:END"}));
    EXPECT_EQ(erroneous("main(=) { }", {"line 1 error syntax error at ="}),
              (label_texts{"B:decl comp_stat", "B:direct_decl(id_list)", "T:IDENTIFIER", "main", "T:{}"}));
    EXPECT_EQ(erroneous("float a = { = };", {"line 1 error syntax error at ="}),
              (label_texts{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Float", "T:IDENTIFIER", "a",
                           "B:decl=init", "B:{init_list}", "S:END"}));
}

TEST(giving_up, keeps_the_units_before_the_error) {
    EXPECT_EQ(erroneous("float a;\nfloat = 3;\nfloat c;\n", {"line 2 error syntax error at ="}), float_a);
}

TEST(giving_up, in_the_first_unit_leaves_no_tree) {
    EXPECT_EQ(erroneous("float = 3;", {"line 1 error syntax error at ="}), (label_texts{}));
    EXPECT_EQ(current.tree.root, nullptr);
}

TEST(giving_up, the_end_of_the_source_inside_a_block_is_an_error) {
    EXPECT_EQ(erroneous("float a; main() { b = c;\n", {"line 2 error syntax error at "}), float_a);
}

TEST(giving_up, a_byte_of_value_0_is_the_end_of_the_source) {
    EXPECT_EQ(erroneous(std::string("float a;\0 float c;", 18), {}), float_a);
    EXPECT_EQ(erroneous(std::string("float a; main() { \0 }", 21), {"line 1 error syntax error at "}), float_a);
}

/// A body whose expression stands in that many parentheses. The stack holds the start state, the head, the brace, the
/// assigned name and the operator; each parenthesis adds one state, the expression in them and the closing one two.
std::string parentheses(std::size_t count) {
    return "main() { b = " + std::string(count, '(') + "c" + std::string(count, ')') + "; }";
}

TEST(parser_stack, holds_200_states) { EXPECT_EQ(labels_of(parentheses(193)), (labels_of("main() { b = c; }"))); }

TEST(parser_stack, the_201st_state_is_reported_and_not_counted) {
    const run_result closing = flatten_text(parentheses(194));
    EXPECT_EQ(closing.standard_output, "line 1 error pcyacc internal stack overflow at )\n");
    EXPECT_EQ(current.error_count, 0);
    EXPECT_EQ(labels(), (label_texts{}));
    EXPECT_EQ(flatten_text(parentheses(195)).standard_output, "line 1 error pcyacc internal stack overflow at c\n");
    EXPECT_EQ(flatten_text(parentheses(196)).standard_output, "line 1 error pcyacc internal stack overflow at (\n");
    EXPECT_EQ(flatten_text(parentheses(300)).standard_output, "line 1 error pcyacc internal stack overflow at (\n");
    EXPECT_EQ(current.error_count, 0);
}

TEST(parser_stack, an_overflow_keeps_the_units_before_it) {
    static_cast<void>(flatten_text("float a;\n" + parentheses(300)));
    EXPECT_EQ(labels(), float_a);
}

TEST(parser_stack, left_recursion_does_not_fill_it) {
    std::string sum = "b";
    std::string call = "f(b";
    for (int count = 0; count < 1000; ++count) {
        sum += " + b";
        call += ", b";
    }
    EXPECT_EQ(expression_labels(sum).size(), 1000U + 2U * 1001U);
    EXPECT_EQ(expression_labels(call + ")").size(), 1U + 2U + 2U * 1001U);
}

TEST(parsing, starts_with_no_errors_counted) {
    current.error_count = 7;
    static_cast<void>(parse_text("float a;"));
    EXPECT_EQ(current.error_count, 0);
}

TEST(parse_nodes, keep_at_most_31_characters_of_the_text) {
    const parse_node* node = make_node(nullptr, nullptr, "T:IDENTIFIER", std::string(40, 'a'));
    EXPECT_EQ(node->text, std::string(31, 'a'));
    EXPECT_EQ(node->label, "T:IDENTIFIER");
    EXPECT_EQ(node->first, nullptr);
    EXPECT_EQ(node->second, nullptr);
    const parse_node* parent = make_node(nullptr, make_node(nullptr, nullptr, "S:END"), "S:Declaration");
    EXPECT_EQ(parent->first, nullptr);
    ASSERT_NE(parent->second, nullptr);
    EXPECT_EQ(parent->second->label, "S:END");
    EXPECT_EQ(parent->text, "");
}

TEST(trace, prints_nothing) {
    const run_result result = catch_output([] {
        trace_reduction("Node:statement:expression_statement\n");
        trace_leaf("IDENTIFIER ", "a");
    });
    EXPECT_EQ(result.standard_output + result.standard_error, "");
}

}  // namespace

}  // namespace xfc::test
