#include <gtest/gtest.h>

#include <string>

#include "exact/dfg/translation.h"

// The 2000 steps and the 1000 tokens of a statement.

namespace xfc::test {

namespace {

/// Steps that a row of tokens takes: 'f' a function of one argument, '+' an operator, 'n' a value. A step looks at one
/// position and then moves on by one, from the end back to the start.
int count_steps(std::string tokens) {
    int steps = 0;
    for (std::size_t cursor = 0; tokens.size() != 1; ++steps) {
        if (tokens.compare(cursor, 2, "fn") == 0) {
            tokens.replace(cursor, 2, "n");
        } else if (tokens.compare(cursor, 3, "+nn") == 0) {
            tokens.replace(cursor, 3, "n");
        }
        cursor = cursor + 1 >= tokens.size() ? 0 : cursor + 1;
    }
    return steps;
}

/// The tokens of a sum, which stand right operand first.
std::string sum_tokens(std::size_t operands) { return repeated("+n", operands - 1) + "n"; }

std::string sum(std::size_t operands) { return repeated("a", operands, " + "); }

std::string minuses(std::size_t count) { return repeated("- ", count); }

/// A sum in parentheses that halve it, so that its depth stays low.
std::string halved_sum(std::size_t operands) {
    return operands == 1 ? "a" : "(" + halved_sum(operands / 2) + " + " + halved_sum(operands - operands / 2) + ")";
}

constexpr std::string_view endless = "DFG5: endless loop in stack";

TEST(reduction_steps, of_a_sum_are_the_square_of_its_operators) {
    for (const std::size_t operands : {2U, 3U, 10U, 44U, 45U}) {
        EXPECT_EQ(count_steps(sum_tokens(operands)), static_cast<int>((operands - 1) * (operands - 1)));
    }
}

TEST(reduction_steps, let_a_sum_of_44_operands_pass) {
    expect_translated("y = " + sum(44) + ";");
    EXPECT_EQ(dfg_used_slots(), first_made + 43);
}

TEST(reduction_steps, let_a_sum_of_45_operands_pass_with_1936_of_them) {
    EXPECT_EQ(count_steps(sum_tokens(45)), 1936);
    expect_translated("y = " + sum(45) + ";");
    EXPECT_EQ(dfg_used_slots(), first_made + 44);
}

TEST(reduction_steps, end_the_run_at_a_sum_of_46_operands) {
    EXPECT_EQ(count_steps(sum_tokens(46)), 2025);
    expect_message("y = " + sum(46) + ";", endless);
    // Six operands, which take 25 more steps, are left after 2000.
    EXPECT_EQ(dfg_used_slots(), first_made + 40);
}

TEST(reduction_steps, are_as_many_for_a_sum_that_leans_to_the_right) {
    std::string expression = "a";
    for (int operands = 1; operands < 45; ++operands) {
        expression = "a + (" + expression + ")";
    }
    expect_translated("y = " + expression + ";");
    expect_message("y = a + (" + expression + ");", endless);
}

TEST(reduction_steps, may_be_exactly_2000) {
    // 53 negations and a sum of 23.
    EXPECT_EQ(count_steps("+" + std::string(53, 'f') + "n" + sum_tokens(23)), 2000);
    expect_translated("y = (" + sum(23) + ") + (" + minuses(53) + "b);");
    EXPECT_EQ(dfg_used_slots(), first_made + 53 + 22 + 1);
}

TEST(reduction_steps, may_not_be_2001) {
    // A sum of 15 whose first operand is negated 38 times.
    EXPECT_EQ(count_steps(repeated("+n", 14) + std::string(38, 'f') + "n"), 2001);
    expect_message("y = " + minuses(38) + sum(15) + ";", endless);
}

TEST(reduction_steps, of_negations_are_the_sum_of_their_depths) {
    EXPECT_EQ(count_steps(std::string(62, 'f') + "n"), 62 * 63 / 2);
    expect_translated("y = " + minuses(62) + "x;");
    EXPECT_EQ(dfg_used_slots(), first_made + 62);
    expect_message("y = " + minuses(63) + "x;", endless);
}

TEST(reduction_steps, are_counted_anew_for_every_statement) {
    expect_translated("y = " + sum(45) + "; z = " + sum(45) + ";");
    EXPECT_EQ(dfg_used_slots(), first_made + 88);
}

TEST(reduction_that_never_ends, is_noticed) {
    for (const std::string expression : {"a % b", "a & b", "a < b", "a == b", "a << b", "a ? b : c", "a, b", "x = a",
                                         "max(a, b, c)", "a[b]", "a || b"}) {
        expect_message("y = " + expression + ";", endless);
    }
}

TEST(reduction_that_never_ends, keeps_what_it_has_made) {
    expect_message("y = a % (b + c);", endless);
    EXPECT_EQ(dfg_used_slots(), first_made + 1);
    EXPECT_EQ(driver(slot_y), no_slot);
}

// ---- Tokens ----

TEST(tokens, a_thousand_of_them_are_translated) {
    // 500 operands, 499 operators and one negation.
    expect_translated("y = -" + halved_sum(500) + ";");
    EXPECT_EQ(dfg_used_slots(), first_made + 500);
}

TEST(tokens, a_thousand_that_take_too_many_steps_end_in_the_endless_loop) {
    expect_message("y = -" + sum(500) + ";", endless);
}

TEST(tokens, a_thousand_and_one_are_refused) {
    constexpr std::string_view line = "Expression assigned to y has more than 1000 tokens\n";
    expect_error_line("y = - -" + halved_sum(500) + ";", line);
    expect_error_line("y = " + sum(501) + ";", line);
    // No node has been made.
    EXPECT_EQ(dfg_used_slots(), first_made);
}

TEST(tokens, too_many_are_refused_with_the_name_as_written) {
    expect_error_line("nowhere = " + sum(600) + ";", "Expression assigned to nowhere has more than 1000 tokens\n");
}

TEST(tokens, of_constants_and_functions_count_as_one) {
    // 200 terms of an operator, a function, a name and a constant, with 199 operators between them, are 999 tokens.
    expect_message("y = " + repeated("sqrt(a) * 2.5", 200, " + ") + ";", endless);
    expect_error_line("y = " + repeated("sqrt(a) * 2.5", 201, " + ") + ";",
                      "Expression assigned to y has more than 1000 tokens\n");
}

}  // namespace

}  // namespace xfc::test
