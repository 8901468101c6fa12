#include "flow/simulate/accuracy.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>

#include "flow/graph/fold.h"
#include "flow/simulate/reference.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

std::uint64_t bits_of(float number) { return std::bit_cast<std::uint32_t>(number); }

/// What is said of a result for these operands.
deviation judged(const graph& source, const std::vector<float>& operands, float result) {
    exact_reference exact(source);
    std::vector<std::uint64_t> inputs;
    for (const float one : operands) {
        inputs.push_back(bits_of(one));
    }
    exact.run(inputs);
    return exact.deviation_of(0, bits_of(result));
}

graph of_two(operation op) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    w.output("y", make_folded(w.made, op, number_format::single_float, std::array{a, b}));
    return w.made;
}

graph of_one(operation op) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", make_folded(w.made, op, number_format::single_float, std::array{a}));
    return w.made;
}

float next(float number) { return std::nextafter(number, INFINITY); }

TEST(bounds, leave_room_for_rounding_and_for_nothing_more) {
    const graph sum = of_two(operation::add);
    EXPECT_FALSE(judged(sum, {1.0F, 0x1p-30F}, 1.0F).outside);
    EXPECT_TRUE(judged(sum, {1.0F, 0x1p-30F}, next(1.0F)).outside);
    EXPECT_TRUE(judged(sum, {1.0F, 2.0F}, next(next(3.0F))).outside);
    EXPECT_TRUE(judged(sum, {1.0F, 2.0F}, -3.0F).outside);
    const graph product = of_two(operation::multiply);
    EXPECT_FALSE(judged(product, {1.1F, 1.3F}, 1.1F * 1.3F).outside);
    EXPECT_TRUE(judged(product, {1.1F, 1.3F}, next(next(1.1F * 1.3F))).outside);
    const graph root = of_one(operation::square_root);
    EXPECT_FALSE(judged(root, {2.0F}, std::sqrt(2.0F)).outside);
    EXPECT_TRUE(judged(root, {2.0F}, next(next(std::sqrt(2.0F)))).outside);
}

TEST(bounds, of_a_wire_are_zero) {
    graph_writer w;
    w.output("y", w.input("a"));
    EXPECT_FALSE(judged(w.made, {1.5F}, 1.5F).outside);
    EXPECT_TRUE(judged(w.made, {1.5F}, next(1.5F)).outside);
}

TEST(bounds, grow_where_operands_are_inexact_and_cancel) {
    // (a + b) - a: what a's last place hides of b may be lost.
    graph_writer w;
    const value_id a = w.input("a");
    const value_id sum = w.add(a, w.input("b"));
    w.output("y", make_folded(w.made, operation::subtract, number_format::single_float, std::array{sum, a}));
    EXPECT_FALSE(judged(w.made, {0x1p30F, 1.0F}, 0.0F).outside);
    EXPECT_EQ(judged(w.made, {0x1p30F, 1.0F}, 0.0F).apart, apart_reason::cancelled);
    EXPECT_TRUE(judged(w.made, {0x1p30F, 1.0F}, 0x1p10F).outside);
    EXPECT_EQ(judged(w.made, {2.0F, 1.0F}, 1.0F).apart, apart_reason::none);
}

TEST(bounds, that_reach_beyond_the_range_let_results_be_infinite) {
    // ((a + b) - a) * c: what is left of b has any sign, and may be large enough for infinity.
    graph_writer w;
    const value_id a = w.input("a");
    const value_id sum = w.add(a, w.input("b"));
    const value_id rest = make_folded(w.made, operation::subtract, number_format::single_float, std::array{sum, a});
    w.output("y", w.multiply(rest, w.input("c")));
    const std::vector<float> small = {0x1p120F, 1.0F, 0x1p60F};
    const std::vector<float> large = {0x1p120F, 0x1p80F, 0x1p60F};
    for (const auto& operands : {small, large}) {
        for (const float result : {INFINITY, -INFINITY, 0.0F}) {
            EXPECT_FALSE(judged(w.made, operands, result).outside) << result;
        }
        EXPECT_TRUE(judged(w.made, operands, NAN).outside);
    }
    const std::vector<float> kept = {0x1p120F, 0x1p119F, 0x1p60F};
    EXPECT_FALSE(judged(w.made, kept, INFINITY).outside);
    EXPECT_TRUE(judged(w.made, kept, -INFINITY).outside);
    EXPECT_TRUE(judged(w.made, {0x1p100F, 1.0F, 0x1p30F}, INFINITY).outside);
}

TEST(bounds, let_too_small_results_be_zero_and_measure_in_the_smallest_normal_numbers_unit) {
    const graph product = of_two(operation::multiply);
    EXPECT_FALSE(judged(product, {0x1p-100F, 0x1p-30F}, 0.0F).outside);
    EXPECT_EQ(judged(product, {0x1p-100F, 0x1p-30F}, 0.0F).ulp, 0.0);
    EXPECT_EQ(judged(product, {0x1p-100F, 0x1p-30F}, 0x1p-126F).ulp, 0x1p23 - 0x1p19);
    EXPECT_TRUE(judged(product, {0x1p-100F, 0x1p-20F}, 0.0F).outside);
}

TEST(bounds, count_apart_what_comes_from_a_subnormal_input_as_too_small) {
    const float subnormal = 1e-40F;
    const graph product = of_two(operation::multiply);
    EXPECT_EQ(judged(product, {subnormal, 1e30F}, 0.0F).apart, apart_reason::range);
    EXPECT_EQ(judged(of_one(operation::square_root), {subnormal}, 0.0F).apart, apart_reason::range);
    EXPECT_EQ(judged(of_two(operation::divide), {1e-3F, subnormal}, INFINITY).apart, apart_reason::range);
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id less = make_folded(w.made, operation::less, number_format::boolean, std::array{a, b});
    w.output("y", make_folded(w.made, operation::select, number_format::single_float, std::array{less, a, b}));
    EXPECT_EQ(judged(w.made, {subnormal, 1.0F}, 0.0F).apart, apart_reason::range);
    EXPECT_EQ(judged(w.made, {2.0F, 1.0F}, 1.0F).apart, apart_reason::none);
    // Zeros are no such inputs, and what a zero in its place makes no difference to is measured.
    EXPECT_EQ(judged(product, {0.0F, 1e30F}, 0.0F).apart, apart_reason::none);
    EXPECT_EQ(judged(of_two(operation::add), {subnormal, 1.0F}, 1.0F).apart, apart_reason::none);
    // It is still held against its bounds.
    EXPECT_TRUE(judged(product, {subnormal, 1e30F}, 1e-5F).outside);
    EXPECT_FALSE(judged(product, {subnormal, 1e30F}, subnormal * 1e30F).outside);
}

TEST(bounds, count_apart_what_leaves_the_range_on_the_way_only) {
    graph_writer w;
    const value_id square = w.multiply(w.input("a"), w.input("b"));
    w.output("y",
             make_folded(w.made, operation::divide, number_format::single_float, std::array{square, w.input("c")}));
    for (const float result : {1.0F, INFINITY}) {
        const deviation found = judged(w.made, {0x1p100F, 0x1p100F, 0x1p100F}, result);
        EXPECT_EQ(found.apart, apart_reason::range);
        EXPECT_FALSE(found.outside);
    }
    const graph product = of_two(operation::multiply);
    EXPECT_EQ(judged(product, {0x1p100F, 0x1p100F}, INFINITY).apart, apart_reason::none);
    EXPECT_FALSE(judged(product, {0x1p100F, 0x1p100F}, INFINITY).outside);
    EXPECT_TRUE(judged(product, {0x1p100F, 0x1p100F}, 1.0F).outside);
    EXPECT_TRUE(judged(product, {0x1p10F, 0x1p10F}, INFINITY).outside);
}

TEST(bounds, want_the_class_that_c_has) {
    const graph sum = of_two(operation::add);
    EXPECT_FALSE(judged(sum, {INFINITY, -INFINITY}, NAN).outside);
    EXPECT_TRUE(judged(sum, {INFINITY, -INFINITY}, 0.0F).outside);
    EXPECT_TRUE(judged(sum, {INFINITY, 1.0F}, NAN).outside);
    EXPECT_TRUE(judged(sum, {INFINITY, 1.0F}, -INFINITY).outside);
    EXPECT_FALSE(judged(of_two(operation::divide), {1.0F, 0.0F}, INFINITY).outside);
    EXPECT_TRUE(judged(of_two(operation::divide), {1.0F, 0.0F}, -INFINITY).outside);
    EXPECT_TRUE(judged(of_one(operation::square_root), {-1.0F}, 1.0F).outside);
    EXPECT_FALSE(judged(of_one(operation::logarithm), {0.0F}, -INFINITY).outside);
    EXPECT_FALSE(judged(of_one(operation::inverse_square_root), {-0.0F}, -INFINITY).outside);
    EXPECT_TRUE(judged(of_one(operation::inverse_square_root), {-0.0F}, INFINITY).outside);
}

TEST(bounds, know_no_sign_that_was_copied_from_what_is_no_number) {
    graph_writer w;
    const value_id zero = w.input("zero");
    const value_id sign = w.input("sign");
    const auto single = number_format::single_float;
    const value_id signed_zero = w.make(operation::copy_sign, single, {zero, sign});
    w.output("y", w.make(operation::copy_sign, single, {w.input("size"), signed_zero}));
    for (const float either : {-3.0F, 3.0F}) {
        EXPECT_FALSE(judged(w.made, {0.0F, NAN, 3.0F}, either).outside);
    }
    EXPECT_TRUE(judged(w.made, {0.0F, -1.0F, 3.0F}, 3.0F).outside);
}

TEST(bounds, of_a_choice_are_those_of_the_side_that_is_taken_unless_it_is_open) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id sum = w.add(a, b);
    const value_id one = w.made.make_single(1.0F);
    const value_id less = make_folded(w.made, operation::less, number_format::boolean, std::array{sum, one});
    w.output("y", make_folded(w.made, operation::select, number_format::single_float, std::array{less, a, b}));
    EXPECT_FALSE(judged(w.made, {0.25F, 0.5F}, 0.25F).outside);
    EXPECT_TRUE(judged(w.made, {0.25F, 0.5F}, 0.5F).outside);
    // A sum of 1 less than its own rounding away from the limit.
    const deviation open = judged(w.made, {1.0F, -0x1p-40F}, 1.0F);
    EXPECT_EQ(open.apart, apart_reason::undecided);
    EXPECT_FALSE(open.outside);
    EXPECT_FALSE(judged(w.made, {1.0F, -0x1p-40F}, -0x1p-40F).outside);
    EXPECT_TRUE(judged(w.made, {1.0F, -0x1p-40F}, 17.0F).outside);
}

TEST(bounds, of_whole_numbers_are_zero_unless_the_number_was_close_to_call) {
    graph_writer w;
    const value_id sum = w.add(w.input("a"), w.input("b"));
    w.output("n", make_folded(w.made, operation::convert, number_format::integer, std::array{sum}));
    exact_reference exact(w.made);
    exact.run(std::array{bits_of(1.25F), bits_of(1.5F)});
    EXPECT_FALSE(exact.deviation_of(0, 2).outside);
    EXPECT_TRUE(exact.deviation_of(0, 3).outside);
    exact.run(std::array{bits_of(3.0F), bits_of(-0x1p-40F)});
    EXPECT_FALSE(exact.deviation_of(0, 2).outside);
    EXPECT_FALSE(exact.deviation_of(0, 3).outside);
    EXPECT_TRUE(exact.deviation_of(0, 4).outside);
}

TEST(reference, of_a_double_that_was_a_single_measures_in_the_singles_units) {
    graph_writer w;
    const value_id sum = w.add(w.input("a"), w.input("b"));
    w.output("y", make_folded(w.made, operation::convert, number_format::double_float, std::array{sum}));
    exact_reference exact(w.made);
    exact.run(std::array{bits_of(1.0F), bits_of(0x1p-25F)});
    EXPECT_EQ(exact.deviation_of(0, std::bit_cast<std::uint64_t>(1.0)).ulp, 0.25);
}

TEST(accuracy, finds_the_largest_the_median_and_the_worst_vector) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(a, w.input("b")));
    stimulus applied;
    std::vector<std::vector<std::uint64_t>> results;
    std::vector<std::vector<std::uint64_t>> of_c;
    for (const float small : {0.0F, 0x1p-26F, 0x1p-25F}) {
        applied.vectors.push_back({bits_of(1.0F), bits_of(small)});
        results.push_back({bits_of(1.0F)});
        of_c.push_back({bits_of(1.0F)});
    }
    const auto rows = accuracy_of({.source = w.made, .applied = applied, .results = results, .of_host = &of_c});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].largest_ulp, 0.25);
    EXPECT_EQ(rows[0].median_ulp, 0.125);
    EXPECT_EQ(rows[0].largest_ulp_of_c, 0.25);
    EXPECT_EQ(rows[0].worst_vector, 3U);
    EXPECT_EQ(rows[0].worst, "a=0x1p+0 b=0x1p-25");
    EXPECT_EQ(rows[0].c_differs, 0U);
    const std::string table = accuracy_table(rows);
    EXPECT_NE(table.find("worst in vector 3: a=0x1p+0 b=0x1p-25"), std::string::npos) << table;

    results[1][0] = bits_of(1.5F);
    of_c[0][0] = bits_of(2.0F);
    const auto wrong = accuracy_of({.source = w.made, .applied = applied, .results = results, .of_host = &of_c});
    EXPECT_EQ(wrong[0].outside, 1U);
    EXPECT_EQ(wrong[0].c_differs, 1U);
    EXPECT_EQ(wrong[0].c_differs_at, "a=0x1p+0 b=0x0p+0: C 0x1p+1, understood 0x1p+0");
}

TEST(accuracy, tells_a_result_outside_its_bounds_with_its_operands) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("y", w.add(a, w.input("b")));
    const stimulus applied{.vectors = {{bits_of(1.0F), bits_of(2.0F)}, {bits_of(1.0F), bits_of(0.5F)}}};
    // A model that is wrong in the second vector.
    const std::vector<std::vector<std::uint64_t>> results = {{bits_of(3.0F)}, {bits_of(1.75F)}};
    diagnostics messages;
    report_faults(accuracy_of({.source = w.made, .applied = applied, .results = results}), messages);
    EXPECT_EQ(rendered(messages, {}),
              "xfcflow: error: output 'y' is farther from the exact result than its operations allow: "
              "a=0x1p+0 b=0x1p-1 [result-outside]\n"
              "      hint: this is a fault of xfcflow or of its library; the program and these operands would help to "
              "mend it\n");
    EXPECT_TRUE(messages.has_errors());
}

TEST(accuracy, leaves_the_column_of_c_out_without_a_compiler) {
    graph_writer w;
    w.output("y", w.input("a"));
    stimulus applied{.vectors = {{bits_of(1.0F)}}};
    const std::vector<std::vector<std::uint64_t>> results = {{bits_of(1.0F)}};
    const auto rows = accuracy_of({.source = w.made, .applied = applied, .results = results});
    EXPECT_FALSE(rows[0].largest_ulp_of_c.has_value());
    EXPECT_FALSE(rows[0].bits_equal.has_value());
}

TEST(c_outputs, knows_that_the_sign_of_what_is_no_number_is_open) {
    const graph signs = of_two(operation::copy_sign);
    c_freedom freedom;
    (void)c_outputs(signs, std::array{bits_of(1.0F), bits_of(NAN)}, &freedom);
    EXPECT_FALSE(freedom.defined);
    EXPECT_FALSE(judged(signs, {1.0F, NAN}, -1.0F).outside);
    EXPECT_FALSE(judged(signs, {1.0F, NAN}, 1.0F).outside);
    EXPECT_TRUE(judged(signs, {1.0F, NAN}, 4.0F).outside);
    EXPECT_TRUE(judged(signs, {1.0F, 2.0F}, -1.0F).outside);
}

TEST(c_outputs, knows_that_the_larger_one_of_two_zeros_is_open) {
    const graph larger = of_two(operation::maximum);
    c_freedom freedom;
    (void)c_outputs(larger, std::array{bits_of(0.0F), bits_of(-0.0F)}, &freedom);
    EXPECT_FALSE(freedom.defined);
    (void)c_outputs(larger, std::array{bits_of(-0.0F), bits_of(-0.0F)}, &freedom);
    EXPECT_TRUE(freedom.defined);
}

TEST(c_outputs, leaves_the_sign_of_a_zero_sum_free_and_of_what_is_computed_from_it) {
    const auto single = number_format::single_float;
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id difference = w.make(operation::subtract, single, {a, b});
    const value_id product = w.multiply(difference, a);
    const value_id absolute = w.make(operation::absolute, single, {difference});
    const value_id less = w.make(operation::less, number_format::boolean, {a, b});
    for (const value_id one : {difference, product, absolute, w.make(operation::select, single, {less, product, b}),
                               w.make(operation::divide, single, {absolute, b}), w.multiply(a, b)}) {
        w.output("y" + std::to_string(one), one);
    }
    c_freedom freedom;
    (void)c_outputs(w.made, std::array{bits_of(2.0F), bits_of(2.0F)}, &freedom);
    EXPECT_EQ(freedom.either_zero, (std::vector<bool>{true, true, false, false, false, false}));
    EXPECT_TRUE(freedom.defined);
    (void)c_outputs(w.made, std::array{bits_of(2.0F), bits_of(3.0F)}, &freedom);
    EXPECT_EQ(freedom.either_zero, std::vector<bool>(6, false));
    (void)c_outputs(w.made, std::array{bits_of(-0.0F), bits_of(5.0F)}, &freedom);
    EXPECT_EQ(freedom.either_zero, std::vector<bool>(6, false));  // a product's zero has its sign
}

TEST(c_outputs, knows_that_nothing_takes_its_sign_from_a_zero_sum) {
    for (const operation op : {operation::divide, operation::copy_sign}) {
        graph_writer w;
        const value_id a = w.input("a");
        const value_id sum = w.add(a, w.input("b"));
        w.output("y", w.make(op, number_format::single_float, {a, sum}));
        c_freedom freedom;
        (void)c_outputs(w.made, std::array{bits_of(2.0F), bits_of(-2.0F)}, &freedom);
        EXPECT_FALSE(freedom.defined);
        (void)c_outputs(w.made, std::array{bits_of(2.0F), bits_of(2.0F)}, &freedom);
        EXPECT_TRUE(freedom.defined);
    }
}

TEST(c_differences, of_zeros_count_where_their_sign_is_not_free) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    w.output("sum", w.add(a, b));
    w.output("product", w.multiply(a, w.made.make_single(0.0F)));
    const stimulus applied{.vectors = {{bits_of(2.0F), bits_of(-2.0F)}}};
    for (const float sum : {0.0F, -0.0F, 0x1p-149F}) {
        const std::vector<std::vector<std::uint64_t>> of_host = {{bits_of(sum), bits_of(-0.0F)}};
        const auto rows = accuracy_of({.source = w.made, .applied = applied, .results = of_host, .of_host = &of_host});
        EXPECT_EQ(rows[0].c_differs, sum == 0 ? 0U : 1U) << sum;
        EXPECT_EQ(rows[1].c_differs, 1U) << sum;
    }
}

TEST(c_outputs, says_where_c_says_nothing) {
    graph_writer w;
    const value_id a = w.input("a");
    w.output("n", make_folded(w.made, operation::convert, number_format::integer, std::array{a}));
    c_freedom freedom;
    EXPECT_EQ(c_outputs(w.made, std::array{bits_of(-7.9F)}, &freedom)[0], 0xFFFFFFF9U);
    EXPECT_TRUE(freedom.defined);
    for (const float number : {NAN, INFINITY, 0x1p31F}) {
        (void)c_outputs(w.made, std::array{bits_of(number)}, &freedom);
        EXPECT_FALSE(freedom.defined) << number;
    }
}

}  // namespace
}  // namespace xfc::flow
