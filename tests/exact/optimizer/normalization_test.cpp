#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

// Where normalizers stand in front of multipliers and dividers, and what a renormalized node gets.
// The chains that the cluster size cuts are in cluster_size_test.cpp.

namespace xfc::test {

namespace {

using slots = std::vector<std::int32_t>;

constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

slots nodes_named(std::string_view name) {
    slots found;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (node_at(slot).name == name) {
            found.push_back(slot);
        }
    }
    return found;
}

/// The normalizers of a program behind both passes.
slots normalizers_of(const std::string& statements, const std::vector<std::string>& switches = {}) {
    const run_result result = optimize_text(
        "float a, b, c, d, t, u, y, z;\ndouble e, f, g, h;\nlong m, n, o;\nmain()\n{\n" + statements + "\n}\n",
        insert_normalizations, switches);
    EXPECT_EQ(result.status, 0) << result.standard_error;
    EXPECT_EQ(result.standard_output, "***MAKE EXPRESSIONS***\n");
    return nodes_named("norm");
}

/// Checks one normalizer between a producer and a consumer.
void expect_normalizer(std::int32_t slot, std::int32_t producer, std::int32_t consumer, number_format format) {
    EXPECT_EQ(driver(slot), producer);
    EXPECT_EQ(consumers(slot), slots{consumer});
    EXPECT_EQ(attributes_at(slot).format, format);
    EXPECT_EQ(attributes_at(slot).is_normalized, 1);
    EXPECT_EQ(component_name(slot), "");
}

// ---- In front of multipliers and dividers ----

TEST(normalizations, stand_between_a_sum_and_a_multiplier_or_divider) {
    for (const std::string operation : {"*", "/"}) {
        for (const std::string addition : {"+", "-"}) {
            const slots found = normalizers_of("y = (a " + addition + " b) " + operation + " c;");
            ASSERT_EQ(found.size(), 1U);
            expect_normalizer(found[0], slot_named(addition), slot_named(operation), in_xfloat);
            EXPECT_EQ(driver(slot_named(operation), 0), found[0]);
        }
    }
}

TEST(normalizations, of_double_sums_have_the_double_format) {
    const slots found = normalizers_of("e = (f + g) * h;");
    ASSERT_EQ(found.size(), 1U);
    expect_normalizer(found[0], slot_named("+"), slot_named("*"), in_ydouble);
}

TEST(normalizations, stand_on_each_edge_that_needs_one) {
    const slots found = normalizers_of("y = (a + b) * (c - d);");
    // The right operand is made first, so that its normalizer comes first.
    ASSERT_EQ(found.size(), 2U);
    expect_normalizer(found[0], slot_named("-"), slot_named("*"), in_xfloat);
    expect_normalizer(found[1], slot_named("+"), slot_named("*"), in_xfloat);
    const slots squared = normalizers_of("t = a + b; y = t * t;");
    ASSERT_EQ(squared.size(), 2U);
    EXPECT_EQ(consumers(slot_named("t")), squared);
}

TEST(normalizations, are_not_needed_behind_conversions_of_ieee_values) {
    EXPECT_TRUE(normalizers_of("y = a * b;").empty());
    EXPECT_TRUE(normalizers_of("e = f / g;").empty());
    EXPECT_TRUE(normalizers_of("y = sqrt(a) * -b;").empty());
    EXPECT_TRUE(normalizers_of("y = a * m;").empty());
}

TEST(normalizations, are_not_needed_between_multipliers_and_dividers) {
    for (const std::string first : {"*", "/"}) {
        for (const std::string second : {"*", "/"}) {
            EXPECT_TRUE(normalizers_of("y = (a " + first + " b) " + second + " c;").empty()) << first << second;
            EXPECT_TRUE(normalizers_of("e = (f " + first + " g) " + second + " h;").empty()) << first << second;
        }
    }
}

TEST(normalizations, are_not_needed_in_front_of_sums_functions_and_outputs) {
    EXPECT_TRUE(normalizers_of("y = sqrt(a + b) - c;").empty());
    EXPECT_TRUE(normalizers_of("y = a + b; e = f - g;").empty());
}

TEST(normalizations, are_not_needed_by_integers) {
    EXPECT_TRUE(normalizers_of("m = (n + o) * n;").empty());
    EXPECT_TRUE(normalizers_of("m = n * o * n;").empty());
}

TEST(normalizations, stand_behind_a_variable_that_passes_a_product_on) {
    // The variable is no multiplier, and nothing tells that its value is normalized.
    const slots found = normalizers_of("t = a * b; y = t * c;");
    ASSERT_EQ(found.size(), 1U);
    expect_normalizer(found[0], slot_named("t"), slot_named("*", 1), in_xfloat);
}

TEST(normalizations, stand_behind_a_conversion_from_one_internal_format_into_the_other) {
    const slots found = normalizers_of("e = (a + b) * f;");
    ASSERT_EQ(found.size(), 1U);
    expect_normalizer(found[0], slots_with_component("castxtoy").front(), slot_named("*"), in_ydouble);
}

TEST(normalizations, stand_behind_the_conversion_of_a_product_too) {
    const slots found = normalizers_of("e = (a * b) / f;");
    ASSERT_EQ(found.size(), 1U);
    expect_normalizer(found[0], slots_with_component("castxtoy").front(), slot_named("/"), in_ydouble);
}

TEST(normalizations, do_not_depend_on_the_normalizers_own_switches) {
    const std::string statements = "y = (a + b) * c + d; z = y * (a - c);";
    const std::size_t count = normalizers_of(statements).size();
    for (const std::vector<std::string>& switches :
         std::vector<std::vector<std::string>>{{"-ni"}, {"-no"}, {"-rn"}, {"-ns", "1"}, {"-rc"}, {"-mm", "36"}}) {
        EXPECT_EQ(normalizers_of(statements, switches).size(), count) << switches.front();
    }
}

/// Whether a normalizer goes between two nodes that are made by hand.
bool needs_normalizer(std::string_view producer, number_format from, std::string_view consumer, number_format to,
                      std::int32_t is_normalized = 0) {
    start_graph();
    add_node(producer, 1, from);
    add_node(consumer, 2, to);
    dfg_connect(0, 1, 1);
    attributes_at(0).is_normalized = is_normalized;
    insert_normalizations();
    if (dfg_used_slots() == 3) {
        expect_normalizer(2, 0, 1, to);
        EXPECT_EQ(driver(1, 1), 2);
    }
    return dfg_used_slots() == 3;
}

TEST(normalizations, are_decided_by_names_and_formats) {
    constexpr std::array formats{in_long, in_float, in_double, in_xfloat, in_ydouble};
    for (const std::string_view producer : {"+", "-", "*", "/", "cast", "t"}) {
        for (const std::string_view consumer : {"+", "-", "*", "/", "sqrt", "y"}) {
            for (const number_format from : formats) {
                for (const number_format to : formats) {
                    const bool multiplies = consumer == "*" || consumer == "/";
                    const bool is_internal = from == in_xfloat || from == in_ydouble;
                    const bool direct = (producer == "*" || producer == "/") && from == to;
                    EXPECT_EQ(needs_normalizer(producer, from, consumer, to), multiplies && is_internal && !direct)
                        << producer << format_row(from).text << consumer << format_row(to).text;
                    EXPECT_FALSE(needs_normalizer(producer, from, consumer, to, 1));
                }
            }
        }
    }
}

TEST(normalizations, of_a_value_without_any_format_are_inserted) {
    // Only an integer, an IEEE single and an IEEE double are known to need none.
    EXPECT_TRUE(needs_normalizer("t", number_format::none, "*", in_xfloat));
    EXPECT_TRUE(needs_normalizer("*", number_format::none, "*", number_format::none));
    EXPECT_FALSE(needs_normalizer("t", number_format::none, "+", in_xfloat));
}

TEST(normalizations, keep_the_order_of_the_consumers) {
    start_graph();
    add_node("+", 1, in_xfloat);
    add_node("*", 2, in_xfloat);
    add_node("+", 2, in_xfloat);
    add_node("/", 2, in_xfloat);
    dfg_connect(0, 3, 0);
    dfg_connect(0, 2, 0);
    dfg_connect(0, 1, 1);
    insert_normalizations();
    EXPECT_EQ(consumers(0), (slots{4, 2, 5}));
    expect_normalizer(4, 0, 3, in_xfloat);
    expect_normalizer(5, 0, 1, in_xfloat);
}

// ---- What a renormalized node gets ----

/// A sum of two inputs by hand that feeds one consumer of that name.
std::int32_t make_full_sum(std::string_view consumer, std::int32_t is_internal = 0) {
    start_graph();
    set_options({"-xc", "2"});
    add_node("a", 1, in_xfloat);
    add_node("b", 1, in_xfloat);
    const std::int32_t sum = add_node("+", 2, in_xfloat);
    const std::int32_t reader = add_node(consumer, 1, in_xfloat);
    attributes_at(reader).is_internal = is_internal;
    dfg_connect(0, sum, 0);
    dfg_connect(1, sum, 1);
    dfg_connect(sum, reader, 0);
    return sum;
}

TEST(renormalization, puts_a_normalizer_in_front_of_sums_and_passing_variables_only) {
    for (const std::string_view name : {"*", "/", "sqrt", "negate", "cast", "y", "norm"}) {
        const std::int32_t sum = make_full_sum(name);
        renormalize_complex_clusters();
        EXPECT_EQ(attributes_at(sum).is_normalized, 1);
        EXPECT_EQ(dfg_used_slots(), 4) << name;
    }
    make_full_sum("t", 1);
    renormalize_complex_clusters();
    ASSERT_EQ(dfg_used_slots(), 5);
    expect_normalizer(4, 2, 3, in_xfloat);
}

TEST(renormalization, of_a_node_that_feeds_a_sum_and_a_multiplier_normalizes_the_sums_edge_only) {
    start_graph();
    set_options({"-xc", "2"});
    add_node("a", 1, in_xfloat);
    const std::int32_t sum = add_node("+", 2, in_xfloat);
    const std::int32_t product = add_node("*", 2, in_xfloat);
    const std::int32_t second = add_node("-", 2, in_xfloat);
    add_node("y", 1, in_xfloat);
    dfg_connect(0, sum, 0);
    dfg_connect(0, sum, 1);
    dfg_connect(sum, product, 0);
    dfg_connect(sum, second, 0);
    dfg_connect(0, second, 1);
    attributes_at(0).is_normalized = 1;
    renormalize_complex_clusters();
    EXPECT_EQ(consumers(sum), (slots{product, 5}));
    expect_normalizer(5, sum, second, in_xfloat);
    insert_normalizations();
    EXPECT_EQ(dfg_used_slots(), 6);
    EXPECT_EQ(driver(product, 0), sum);
}

TEST(renormalization, of_a_sum_in_a_variable_leaves_the_variables_multiplier_to_the_second_pass) {
    const slots found = normalizers_of("t = a + b; y = t + c; z = t * d;", {"-xc", "2"});
    // One in front of the variable, and one between the variable and the product.
    ASSERT_EQ(found.size(), 2U);
    expect_normalizer(found[0], slot_named("+"), slot_named("t"), in_xfloat);
    expect_normalizer(found[1], slot_named("t"), slot_named("*"), in_xfloat);
}

TEST(renormalization, normalizes_each_edge_of_a_doubled_operand) {
    const slots found = normalizers_of("t = a + b; u = t + t; y = u + u;", {"-xc", "2"});
    // Both sums that feed a variable; the last one feeds the output's conversion.
    EXPECT_EQ(found.size(), 2U);
    start_graph();
    set_options({"-xc", "2"});
    add_node("a", 1, in_xfloat);
    add_node("+", 2, in_xfloat);
    add_node("+", 2, in_xfloat);
    dfg_connect(0, 1, 0);
    dfg_connect(0, 1, 1);
    dfg_connect(1, 2, 0);
    dfg_connect(1, 2, 1);
    renormalize_complex_clusters();
    ASSERT_EQ(dfg_used_slots(), 5);
    EXPECT_EQ(consumers(1), (slots{3, 4}));
    EXPECT_EQ(driver(2, 0), 3);
    EXPECT_EQ(driver(2, 1), 4);
}

TEST(renormalization, leaves_depth_1_everywhere_when_it_was_the_last) {
    make_full_sum("t", 1);
    renormalize_complex_clusters();
    // The normalizer included; the scans behind it find normalized values only.
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        EXPECT_EQ(attributes_at(slot).cluster_depth, 1) << slot;
    }
}

}  // namespace

}  // namespace xfc::test
