#include <gtest/gtest.h>

#include "exact/frontend/label_texts.h"

namespace xfc::test {

namespace {

const label_texts start{"T:start_expr_stat"};
const label_texts end{"T:end_expr_stat"};
const label_texts a_statement = start + name("a") + end;
const label_texts b_statement = start + name("b") + end;

TEST(statements, the_whole_body_of_a_function) {
    EXPECT_EQ(labels_of("main() { y = a - b * 2; }"), (label_texts{"B:decl comp_stat",
                                                                   "B:direct_decl()",
                                                                   "T:IDENTIFIER",
                                                                   "main",
                                                                   "B:{statement_list}",
                                                                   "{",
                                                                   "T:start_expr_stat",
                                                                   "B:assignment_expression",
                                                                   "T:IDENTIFIER",
                                                                   "y",
                                                                   "B:=expression",
                                                                   "T:=",
                                                                   "OP:-",
                                                                   "OP:*",
                                                                   "T:INTEGER_CONSTANT",
                                                                   "2",
                                                                   "T:IDENTIFIER",
                                                                   "b",
                                                                   "T:IDENTIFIER",
                                                                   "a",
                                                                   "T:end_expr_stat",
                                                                   "}"}));
}

TEST(statements, an_empty_one_leaves_nothing) {
    EXPECT_EQ(statement_labels(";"), (label_texts{}));
    EXPECT_EQ(statement_labels("a;"), a_statement);
}

TEST(statements, in_a_row_nest_to_the_left) {
    EXPECT_EQ(between({"B:decl comp_stat", "B:direct_decl()", "T:IDENTIFIER", "main", "B:{statement_list}", "{"},
                      labels_of("main() { a; b; a; }"), {"}"}),
              (label_texts{"B:statement_list", "B:statement_list"} + a_statement + b_statement + a_statement));
}

TEST(compounds, the_four_forms) {
    const label_texts declaration{"S:Declaration", "B:decl_spec init_decl_list", "T:Type_Int", "T:IDENTIFIER", "i",
                                  "S:END"};
    EXPECT_EQ(statement_labels("{ int i; a; }"),
              (label_texts{"B:{decl_list,statement_list}", "{"} + declaration + a_statement + label_texts{"}"}));
    EXPECT_EQ(statement_labels("{ int i; }"), (label_texts{"B:{decl_list}", "{"} + declaration + label_texts{"}"}));
    EXPECT_EQ(statement_labels("{ a; }"), (label_texts{"B:{statement_list}", "{"} + a_statement + label_texts{"}"}));
    EXPECT_EQ(statement_labels("{ }"), (label_texts{"T:{}"}));
    EXPECT_EQ(statement_labels("{ { } }"), (label_texts{"B:{statement_list}", "{", "T:{}", "}"}));
}

TEST(labeled_statements, hold_the_statement_first) {
    EXPECT_EQ(statement_labels("here: a;"), (label_texts{"B:ID:statement"} + a_statement + name("here")));
    EXPECT_EQ(statement_labels("case 1: a;"),
              (label_texts{"B:case_expression:statement"} + a_statement + integer("1")));
    EXPECT_EQ(statement_labels("default: a;"), (label_texts{"B:default:statement"} + a_statement));
}

TEST(jumps, each_is_one_label) {
    EXPECT_EQ(statement_labels("goto here;"), (label_texts{"B:Goto"}));
    EXPECT_EQ(statement_labels("continue;"), (label_texts{"T:Continue"}));
    EXPECT_EQ(statement_labels("break;"), (label_texts{"T:Break"}));
    EXPECT_EQ(statement_labels("return a + b;"), (label_texts{"B:Return_expression"}));
    EXPECT_EQ(statement_labels("return;"), (label_texts{"B:Return"}));
}

TEST(jumps, and_do_while_end_in_a_semicolon) {
    for (const std::string statement : {"goto here }", "continue }", "break }", "return a }", "return }",
                                        "do a; while (b) }", "do a; while (b) a; }"}) {
        EXPECT_NE(parse_text("main() { ; " + statement).standard_output, "") << statement;
    }
}

TEST(keyword_statements, leave_nothing) {
    for (const std::string statement :
         {"if (a) b;", "if (a) b; else a;", "if (a) if (b) a; else b;", "switch (a) { case 1: b; }", "while (a) b;",
          "do b; while (a);", "for (;;) b;", "for (;; a) b;", "for (; a;) b;", "for (; a; a) b;", "for (a;;) b;",
          "for (a;; a) b;", "for (a; a;) b;", "for (a; a; a) b;"}) {
        EXPECT_EQ(statement_labels(statement), (label_texts{})) << statement;
    }
}

TEST(keyword_statements, what_stands_beside_them_remains) {
    EXPECT_EQ(statement_labels("a; if (a) b; b;"),
              (label_texts{"B:statement_list", "B:statement_list"} + a_statement + b_statement));
}

TEST(flattening, a_text_is_cut_to_31_characters) {
    EXPECT_EQ(expression_labels(std::string(31, 'a')), name(std::string(31, 'a')));
    EXPECT_EQ(expression_labels(std::string(32, 'a')), name(std::string(31, 'a')));
    EXPECT_EQ(expression_labels(std::string(400, '1')), integer(std::string(31, '1')));
}

TEST(flattening, without_a_tree_the_list_is_empty) {
    EXPECT_EQ(flatten_text("= ").status, 0);
    EXPECT_EQ(labels(), label_texts{});
}

TEST(flattening, a_very_long_list_of_statements_is_no_problem) {
    std::string source = "main() { ";
    for (int count = 0; count < 20000; ++count) {
        source += "a;\n";
    }
    const label_texts list = labels_of(source + "}");
    // Four labels of the function; the block's head and its two braces; four a statement, one a joint.
    EXPECT_EQ(list.size(), 4U + 3U + 4U * 20000U + 19999U);
}

}  // namespace

}  // namespace xfc::test
