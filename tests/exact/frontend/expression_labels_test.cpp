#include <gtest/gtest.h>

#include "exact/frontend/label_texts.h"

namespace xfc::test {

namespace {

const label_texts a = name("a");
const label_texts b = name("b");
const label_texts c = name("c");

label_texts one(const std::string& label) { return {label}; }

TEST(leaves, names_and_constants) {
    EXPECT_EQ(expression_labels("a"), a);
    EXPECT_EQ(expression_labels("12uL"), integer("12uL"));
    EXPECT_EQ(expression_labels("'x'"), (label_texts{"T:CHARACTER_CONSTANT", "'x'"}));
    EXPECT_EQ(expression_labels("1.5"), (label_texts{"T:FLOAT_CONSTANT", "1.5"}));
    EXPECT_EQ(expression_labels("(((a)))"), a);
}

TEST(leaves, a_string_leaves_nothing) {
    EXPECT_EQ(expression_labels("\"abc\""), (label_texts{}));
    EXPECT_EQ(expression_labels("a = \"abc\""),
              (one("B:assignment_expression") + a + label_texts{"B:=expression", "T:="}));
}

TEST(leaves, take_the_text_of_their_own_token) {
    EXPECT_EQ(expression_labels("a+1*2.5"),
              (one("OP:+") + one("OP:*") + label_texts{"T:FLOAT_CONSTANT", "2.5"} + integer("1") + a));
    EXPECT_EQ(expression_labels("a(b,c)"), one("B:function(args)") + a + b + c);
}

TEST(binary_operators, logical_bitwise_and_comparing_ones_hold_the_left_operand_first) {
    for (const std::string text : {"||", "&&", "|", "^", "&", "==", "!=", "<", ">", "<=", ">="}) {
        EXPECT_EQ(expression_labels("a " + text + " b"), one("OP:a" + text + "b") + a + b);
        EXPECT_EQ(expression_labels("a " + text + " b " + text + " c"),
                  one("OP:a" + text + "b") + one("OP:a" + text + "b") + a + b + c);
    }
}

TEST(binary_operators, shifts_sums_and_products_hold_the_right_operand_first) {
    for (const std::string text : {"<<", ">>", "+", "-", "*", "/", "%"}) {
        EXPECT_EQ(expression_labels("a " + text + " b"), one("OP:" + text) + b + a);
        EXPECT_EQ(expression_labels("a " + text + " b " + text + " c"),
                  one("OP:" + text) + c + one("OP:" + text) + b + a);
        EXPECT_EQ(expression_labels("a " + text + " (b " + text + " c)"),
                  one("OP:" + text) + one("OP:" + text) + c + b + a);
    }
}

TEST(binary_operators, the_subtree_of_the_right_operand_comes_first) {
    EXPECT_EQ(expression_labels("a = b - c"),
              (one("B:assignment_expression") + a + label_texts{"B:=expression", "T:="} + one("OP:-") + c + b));
}

/// Each level binds tighter than the one before it.
TEST(binary_operators, bind_in_levels) {
    const std::vector<std::string> levels{"||", "&&", "|", "^", "&", "==", "<", "<<", "+", "*"};
    for (std::size_t loose = 0; loose < levels.size(); ++loose) {
        for (std::size_t tight = loose + 1; tight < levels.size(); ++tight) {
            const std::string& outer = levels.at(loose);
            const std::string& inner = levels.at(tight);
            const label_texts grouped = expression_labels("(a " + inner + " b) " + outer + " c");
            EXPECT_EQ(expression_labels("a " + inner + " b " + outer + " c"), grouped);
            EXPECT_EQ(expression_labels("c " + outer + " a " + inner + " b"),
                      expression_labels("c " + outer + " (a " + inner + " b)"));
            EXPECT_NE(grouped, expression_labels("a " + inner + " (b " + outer + " c)"));
        }
    }
}

TEST(binary_operators, of_one_level_group_to_the_left) {
    const std::vector<std::vector<std::string>> levels{
        {"==", "!="}, {"<", ">", "<=", ">="}, {"<<", ">>"}, {"+", "-"}, {"*", "/", "%"}};
    for (const std::vector<std::string>& level : levels) {
        for (const std::string& left : level) {
            for (const std::string& right : level) {
                std::string text = "a ";
                text.append(left).append(" b ").append(right);
                EXPECT_EQ(expression_labels(text + " c"), expression_labels("(a " + left + " b) " + right + " c"));
            }
        }
    }
}

TEST(commas, group_to_the_left) {
    EXPECT_EQ(expression_labels("a, b"), one("B:expression,expression") + a + b);
    EXPECT_EQ(expression_labels("a, b, c"),
              (label_texts{"B:expression,expression", "B:expression,expression"} + a + b + c));
}

TEST(assignments, each_operator_has_its_label) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"=", "T:="},     {"*=", "T:*="},   {"/=", "T:/="},  {"%=", "T:%="}, {"+=", "T:+="}, {"-=", "T:-="},
        {"<<=", "T:<<="}, {">>=", "T:>>="}, {"&&=", "T:&="}, {"|=", "T:|="}, {"^=", "T:^="}};
    for (const auto& [text, label] : rows) {
        EXPECT_EQ(expression_labels("a " + text + " b"),
                  (one("B:assignment_expression") + a + label_texts{"B:=expression", label} + b));
    }
}

TEST(assignments, group_to_the_right) {
    EXPECT_EQ(expression_labels("a = b = c"),
              (one("B:assignment_expression") + a + label_texts{"B:=expression", "T:="} +
               one("B:assignment_expression") + b + label_texts{"B:=expression", "T:="} + c));
}

TEST(conditionals, hold_the_condition_first) {
    EXPECT_EQ(expression_labels("a ? b : c"), one("OP:?") + a + one("OP:??") + b + c);
    EXPECT_EQ(expression_labels("a ? b : c ? a : b"),
              one("OP:?") + a + one("OP:??") + b + one("OP:?") + c + one("OP:??") + a + b);
}

TEST(casts, lose_type_and_operand) {
    EXPECT_EQ(expression_labels("(float) a"), one("OP:cast"));
    EXPECT_EQ(expression_labels("b + (const float *) a"), one("OP:+") + one("OP:cast") + b);
    EXPECT_EQ(expression_labels("(int (*)[3]) (float) a * b"), one("OP:*") + b + one("OP:cast"));
}

TEST(unary_operators, each_has_its_label) {
    for (const std::string text : {"&", "*", "+", "-", "~", "!"}) {
        EXPECT_EQ(expression_labels(text + "a"), (label_texts{"OP:unaryoperator castexpression", "UOP:" + text} + a));
        EXPECT_EQ(expression_labels(text + "(" + text + "a)"),
                  (label_texts{"OP:unaryoperator castexpression", "UOP:" + text, "OP:unaryoperator castexpression",
                               "UOP:" + text} +
                   a));
    }
}

TEST(unary_operators, increments_before_the_operand) {
    EXPECT_EQ(expression_labels("++a"), one("OP:++a") + a);
    EXPECT_EQ(expression_labels("--a"), one("OP:--a") + a);
}

TEST(unary_operators, the_size_of_an_expression_or_a_type) {
    EXPECT_EQ(expression_labels("sizeof a"), one("OP:Sizeof expression") + a);
    EXPECT_EQ(expression_labels("sizeof (a)"), one("OP:Sizeof expression") + a);
    // Of a type the first symbol remains.
    EXPECT_EQ(expression_labels("sizeof (float)"), (label_texts{"OP:Sizeof(a)", "T:Type_Float"}));
    EXPECT_EQ(expression_labels("sizeof (const float *)"), (label_texts{"OP:Sizeof(a)", "T:Const"}));
    EXPECT_EQ(expression_labels("sizeof (unsigned long [2])"), (label_texts{"OP:Sizeof(a)", "T:Type_Unsigned"}));
    EXPECT_EQ(expression_labels("sizeof (struct s)"), (label_texts{"OP:Sizeof(a)", "TYPE_STRUCTORUNION"}));
}

TEST(postfix_operators, an_index_stands_between_its_brackets) {
    // The label has 32 characters, of which 31 are kept.
    EXPECT_EQ(expression_labels("a[b]"),
              one("B:postfix_expression[expression") + a + one("Array:[") + b + one("Array:]"));
}

TEST(postfix_operators, calls_hold_the_function_and_the_arguments_from_left_to_right) {
    EXPECT_EQ(expression_labels("a()"), one("B:function(noargs)") + a);
    EXPECT_EQ(expression_labels("a(b)"), one("B:function(args)") + a + b);
    EXPECT_EQ(expression_labels("f(a, b)"), one("B:function(args)") + name("f") + a + b);
    EXPECT_EQ(expression_labels("f(a, b, c)"), one("B:function(args)") + name("f") + a + b + c);
    EXPECT_EQ(expression_labels("f(a - b, c)"), one("B:function(args)") + name("f") + one("OP:-") + b + a + c);
    EXPECT_EQ(expression_labels("x = f(a, b)"),
              (one("B:assignment_expression") + name("x") + label_texts{"B:=expression", "T:="} +
               one("B:function(args)") + name("f") + a + b));
}

TEST(postfix_operators, members_lose_their_name) {
    EXPECT_EQ(expression_labels("a.b"), one("B:postfix_expression.identifier") + a);
    // The label has 33 characters, of which 31 are kept.
    EXPECT_EQ(expression_labels("a->b"), one("B:postfix_expressionPTRidentifi") + a);
}

TEST(postfix_operators, increments_behind_the_operand) {
    EXPECT_EQ(expression_labels("a++"), one("B:postfix_expression++") + a);
    EXPECT_EQ(expression_labels("a--"), one("B:postfix_expression--") + a);
}

TEST(postfix_operators, bind_tighter_than_unary_ones) {
    EXPECT_EQ(expression_labels("-a++"),
              (label_texts{"OP:unaryoperator castexpression", "UOP:-"} + one("B:postfix_expression++") + a));
    EXPECT_EQ(expression_labels("-a * b"),
              (one("OP:*") + b + label_texts{"OP:unaryoperator castexpression", "UOP:-"} + a));
}

}  // namespace

}  // namespace xfc::test
