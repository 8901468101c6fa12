#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

// Merging of conversions, and the phases one after the other.

namespace xfc::test {

namespace {

constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

std::string merge_output() {
    const run_result result = catch_output(remove_redundant_nodes);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_error, "");
    return result.standard_output;
}

std::int32_t add_driven(std::string_view name, std::int32_t producer, number_format format,
                        std::string_view component) {
    const std::int32_t slot = add_node(name, 1, format, component);
    dfg_connect(producer, slot, 0);
    return slot;
}

std::int32_t removed(std::int32_t slot) { return attributes_at(slot).is_removed; }

/// Two conversions of one value, slots 1 and 2, into two consumers, slots 3 (port 0) and 4 (port 1).
void build_two_conversions(std::string_view component, number_format format, std::string_view first_consumer,
                           std::string_view second_consumer) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t first = add_driven("cast", a, format, component);
    const std::int32_t second = add_driven("cast", a, format, component);
    dfg_connect(first, add_node(first_consumer, 2), 0);
    dfg_connect(second, add_node(second_consumer, 2), 1);
}

TEST(redundant_nodes, an_empty_graph_prints_nothing) {
    start_graph();
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, conversions_into_an_internal_format_are_merged_when_their_consumers_are_the_same_operator) {
    for (const auto& [component, format] : {std::pair{"xfc_castftox", in_xfloat}, {"castftoy", in_ydouble}}) {
        build_two_conversions(component, format, "+", "+");
        EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
        EXPECT_EQ(removed(1), 0);
        EXPECT_EQ(removed(2), 1);
        EXPECT_EQ(driver(4, 1), 1);
        EXPECT_EQ(source_of(node_at(4), 1)->port, 0);
        EXPECT_EQ(consumers(1), (std::vector<std::int32_t>{3, 4}));
        EXPECT_EQ(consumers_of(node_at(1))->next->port, 1);
        // The merged node keeps its own links.
        EXPECT_EQ(consumers(2), std::vector<std::int32_t>{4});
        EXPECT_EQ(driver(2), 0);
        EXPECT_EQ(consumers(0), (std::vector<std::int32_t>{1, 2}));
    }
}

TEST(redundant_nodes, conversions_into_an_internal_format_for_different_operators_stay_separate) {
    for (const auto& [component, format] : {std::pair{"xfc_castftox", in_xfloat}, {"castftoy", in_ydouble}}) {
        for (const char* second : {"*", "-", "/", "delay", "++", ""}) {
            build_two_conversions(component, format, "+", second);
            EXPECT_EQ(merge_output(), "") << second;
            EXPECT_EQ(removed(2), 0);
            EXPECT_EQ(driver(4, 1), 2);
        }
    }
}

TEST(redundant_nodes, conversions_into_an_ieee_format_are_merged_whatever_their_consumers) {
    for (const auto& [component, format] : {std::pair{"xfc_castxtof", in_float}, {"xfc_castytod", in_double}}) {
        build_two_conversions(component, format, "sqrt", "y");
        EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
    }
}

TEST(redundant_nodes, conversions_to_integers_are_never_merged) {
    for (const char* component : {"xfc_castftol", "xfc_castdtol", "xfc_castxtol", "xfc_castytol"}) {
        build_two_conversions(component, in_long, "+", "+");
        EXPECT_EQ(merge_output(), "") << component;
    }
}

TEST(redundant_nodes, conversions_without_a_format_are_never_merged) {
    build_two_conversions("xfc_castftox", number_format::none, "+", "+");
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, conversions_of_different_kind_or_of_different_values_stay_separate) {
    build_two_conversions("xfc_castftox", in_xfloat, "+", "+");
    attributes_at(2).component = component_named("castdtox");
    EXPECT_EQ(merge_output(), "");
    build_two_conversions("xfc_castftox", in_xfloat, "+", "+");
    dfg_set_source(2, 0, add_node("b", 1, in_float), 0);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, the_drivers_output_port_is_not_compared) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    dfg_set_source(2, 0, 0, 1);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
}

TEST(redundant_nodes, the_format_of_the_kept_conversion_decides) {
    build_two_conversions("xfc_castftox", in_float, "+", "*");
    attributes_at(2).format = in_xfloat;
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
    build_two_conversions("xfc_castftox", in_xfloat, "+", "*");
    attributes_at(2).format = in_float;
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, the_names_of_the_first_consumers_decide_as_they_are_behind_the_delays) {
    // Both conversions feed a delay first: they are alike, though one value is added and the other multiplied.
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t first = add_driven("cast", a, in_xfloat, "xfc_castftox");
    const std::int32_t second = add_driven("cast", a, in_xfloat, "xfc_castftox");
    const std::int32_t third = add_driven("cast", a, in_xfloat, "xfc_castftox");
    const std::int32_t first_delay = add_driven("delay", first, in_xfloat, "xfc_delay");
    const std::int32_t second_delay = add_driven("delay", second, in_xfloat, "xfc_delay");
    attributes_at(first_delay).latency = 3;
    attributes_at(second_delay).latency = 4;
    const std::int32_t sum = add_node("+", 2, in_xfloat);
    const std::int32_t product = add_node("*", 2, in_xfloat);
    const std::int32_t other_sum = add_node("+", 2, in_xfloat);
    dfg_connect(first_delay, sum, 0);
    dfg_connect(second_delay, product, 0);
    dfg_connect(third, other_sum, 0);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 5,0 to 1  \n");
    EXPECT_EQ(removed(third), 0);
    EXPECT_EQ(driver(second_delay), first);
}

TEST(redundant_nodes, a_later_consumer_of_a_conversion_has_no_say) {
    build_two_conversions("xfc_castftox", in_xfloat, "+", "+");
    dfg_connect(1, add_node("/", 2), 0);
    dfg_connect(2, add_node("*", 2), 0);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
}

TEST(redundant_nodes, only_the_first_consumer_moves) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    const std::int32_t other = add_node("w", 1, in_float);
    dfg_connect(2, other, 0);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
    EXPECT_EQ(driver(other), 2);
    EXPECT_EQ(consumers(2), (std::vector<std::int32_t>{4, other}));
    EXPECT_EQ(consumers(1), (std::vector<std::int32_t>{3, 4}));
}

TEST(redundant_nodes, all_later_equals_are_merged_into_the_earliest) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    const std::int32_t third = add_driven("cast", 0, in_float, "xfc_castxtof");
    dfg_connect(third, add_node("w", 1), 0);
    EXPECT_EQ(merge_output(),
              "  Replace 2 with 1  Connect 4,1 to 1  \n"
              "  Replace 5 with 1  Connect 6,0 to 1  \n");
    EXPECT_EQ(consumers(1), (std::vector<std::int32_t>{3, 4, 6}));
}

TEST(redundant_nodes, conversions_fall_into_groups_by_the_operator_they_feed) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    for (const char* name : {"+", "*", "+", "*", "/"}) {
        const std::int32_t cast = add_driven("cast", a, in_xfloat, "xfc_castftox");
        dfg_connect(cast, add_node(name, 2, in_xfloat), 0);
    }
    // Conversions 1 3 5 7 9, operators 2 4 6 8 10.
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6,0 to 1  \n"
              "  Replace 7 with 3  Connect 8,0 to 3  \n");
}

TEST(redundant_nodes, a_conversion_that_was_merged_takes_no_further_part) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    attributes_at(1).is_removed = 1;
    EXPECT_EQ(merge_output(), "");
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    attributes_at(2).is_removed = 1;
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, a_merge_lets_the_conversions_behind_it_be_merged) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t first = add_driven("cast", a, in_double, "xfc_castftod");
    const std::int32_t second = add_driven("cast", a, in_double, "xfc_castftod");
    const std::int32_t behind_first = add_driven("cast", first, in_xfloat, "castdtox");
    const std::int32_t behind_second = add_driven("cast", second, in_xfloat, "castdtox");
    dfg_connect(behind_first, add_node("+", 2), 0);
    dfg_connect(behind_second, add_node("+", 2), 1);
    EXPECT_EQ(merge_output(),
              "  Replace 2 with 1  Connect 4,0 to 1  \n"
              "  Replace 4 with 3  Connect 6,1 to 3  \n");
}

TEST(redundant_nodes, a_merge_does_not_reach_back_to_conversions_already_passed) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t behind_first = add_node("cast", 1, in_xfloat, "castdtox");
    const std::int32_t behind_second = add_node("cast", 1, in_xfloat, "castdtox");
    const std::int32_t first = add_driven("cast", a, in_double, "xfc_castftod");
    const std::int32_t second = add_driven("cast", a, in_double, "xfc_castftod");
    dfg_connect(first, behind_first, 0);
    dfg_connect(second, behind_second, 0);
    dfg_connect(behind_first, add_node("+", 2), 0);
    dfg_connect(behind_second, add_node("+", 2), 1);
    EXPECT_EQ(merge_output(), "  Replace 4 with 3  Connect 2,0 to 3  \n");
}

TEST(redundant_nodes, a_conversion_merged_once_is_not_merged_again_when_its_driver_changes) {
    // Slots: value 0, conversion 1 behind 3, equal conversions 2 and 3, conversion 4 behind 2, conversion 5 behind 3.
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t early = add_node("cast", 1, in_xfloat, "castdtox");
    const std::int32_t kept = add_driven("cast", a, in_double, "xfc_castftod");
    const std::int32_t merged = add_driven("cast", a, in_double, "xfc_castftod");
    const std::int32_t late = add_driven("cast", kept, in_xfloat, "castdtox");
    const std::int32_t twice = add_driven("cast", merged, in_xfloat, "castdtox");
    dfg_connect(merged, early, 0);
    const std::int32_t sum = add_node("+", 2);
    dfg_connect(twice, sum, 0);
    dfg_connect(early, add_node("+", 2), 0);
    dfg_connect(late, add_node("+", 2), 0);
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6,0 to 1  \n"
              "  Replace 3 with 2  Connect 5,0 to 2  \n");
    EXPECT_EQ(driver(sum), early);
}

TEST(redundant_nodes, the_later_node_need_not_be_named_cast_but_the_earlier_must) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    rename_node(2, "t");
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4,1 to 1  \n");
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    rename_node(1, "t");
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, a_variable_named_cast_absorbs_the_wires_of_its_source) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t variable = add_driven("cast", a, in_float, "");
    const std::int32_t wire = add_driven("t", a, in_float, "");
    const std::int32_t other = add_driven("u", add_node("b", 1, in_float), in_float, "");
    for (const std::int32_t slot : {variable, wire, other}) {
        dfg_connect(slot, add_node("sqrt", 1, in_float), 0);
    }
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 6,0 to 1  \n");
}

TEST(redundant_nodes, a_variable_named_cast_that_takes_its_own_stale_entry_compares_with_its_new_driver) {
    // cast is assigned t and then d; t's entry for it is stale. The merge of t makes cast its own driver, so that u,
    // which reads d, is no equal any more.
    start_graph();
    const std::int32_t d = add_node("d", 1, in_float);
    const std::int32_t variable = add_node("cast", 1, in_float);
    const std::int32_t t = add_driven("t", d, in_float, "");
    const std::int32_t u = add_driven("u", d, in_float, "");
    dfg_connect(t, variable, 0);
    dfg_connect(d, variable, 0);
    dfg_connect(variable, add_node("sqrt", 1, in_float, "fp_sqr"), 0);
    dfg_connect(u, add_node("sqrt", 1, in_float, "fp_sqr"), 0);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 1,0 to 1  \n");
    EXPECT_EQ(driver(variable), variable);
    EXPECT_EQ(removed(u), 0);
}

TEST(redundant_nodes, nodes_without_a_driver_are_not_equal) {
    start_graph();
    for (int count = 0; count < 2; ++count) {
        for (const auto& [name, component] :
             {std::pair{"cast", "xfc_castxtof"}, {"norm", "xfc_normfp1x"}, {"delay", "xfc_delay"}}) {
            const std::int32_t node = add_node(name, 1, in_float, component);
            dfg_connect(node, add_node("y", 1, in_float), 0);
        }
    }
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, a_node_that_nothing_reads_is_not_merged) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    for (const auto& [name, component] :
         {std::pair{"cast", "xfc_castxtof"}, {"norm", "xfc_normfp1x"}, {"delay", "xfc_delay"}}) {
        const std::int32_t read = add_driven(name, a, in_float, component);
        dfg_connect(read, add_node("y", 1), 0);
        add_driven(name, a, in_float, component);
    }
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_nodes, a_node_that_nothing_reads_may_still_take_the_consumer_of_a_later_one) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t unread = add_driven("cast", a, in_float, "xfc_castxtof");
    const std::int32_t y = add_node("y", 1, in_float);
    dfg_connect(add_driven("cast", a, in_float, "xfc_castxtof"), y, 0);
    EXPECT_EQ(merge_output(), "  Replace 3 with 1  Connect 2,0 to 1  \n");
    EXPECT_EQ(driver(y), unread);
}

// ---- The phases one after the other ----

TEST(redundant_nodes, conversions_then_normalizers_then_delays_are_merged) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    std::vector<std::int32_t> operators;
    for (const char* name : {"*", "/"}) {
        const std::int32_t cast = add_driven("cast", a, in_xfloat, "xfc_castftox");
        const std::int32_t normalizer = add_driven("norm", cast, in_xfloat, "xfc_normfp1x");
        const std::int32_t delay = add_driven("delay", normalizer, in_xfloat, "xfc_delay");
        attributes_at(delay).latency = 3;
        operators.push_back(add_node(name, 2, in_xfloat));
        dfg_connect(delay, operators.back(), 1);
    }
    // First row: 1 2 3 4, second row: 5 6 7 8.
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6,0 to 1  \n"
              "  Replace 6 with 2  Connect 7 to 2  \n"
              "  Replace 7 with 3  Connect 8 to 3  \n");
    EXPECT_EQ(driver(operators[1], 1), 3);
}

TEST(redundant_nodes, a_later_phase_does_not_reopen_an_earlier_one) {
    // The delays are merged last, so the conversions behind them stay separate.
    start_graph();
    const std::int32_t a = add_node("a", 1, in_double);
    for (int count = 0; count < 2; ++count) {
        const std::int32_t delay = add_driven("delay", a, in_double, "xfc_delay");
        const std::int32_t cast = add_driven("cast", delay, in_float, "xfc_castdtof");
        dfg_connect(cast, add_node("y", 1, in_float), 0);
    }
    EXPECT_EQ(merge_output(), "  Replace 4 with 1  Connect 5 to 1  \n");
}

TEST(redundant_nodes, ready_times_and_latencies_stay) {
    build_two_conversions("xfc_castxtof", in_float, "y", "z");
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        attributes_at(slot).latency = 10 + slot;
        attributes_at(slot).ready_time = 20 + slot;
    }
    ASSERT_NE(merge_output(), "");
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        EXPECT_EQ(attributes_at(slot).latency, 10 + slot);
        EXPECT_EQ(attributes_at(slot).ready_time, 20 + slot);
    }
}

// ---- Programs ----

TEST(redundant_nodes, a_value_multiplied_twice_is_converted_once) {
    // a 0, b 1, c 2, y 3, a * c 4, a * b 5, sum 6, conversions: of a 7 and 8, of b 9, of c 10, into y 11.
    const std::string source = "float a, b, c, y; void main() { y = a * b + a * c; }";
    const run_result result = compile({.source = source, .switches = {"-mv", "0"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standard_output.find("*** REMOVE REDUNDANT NODES ***\n"
                                          "  Replace 8 with 7  Connect 5,0 to 7  \n"
                                          "*** ASSIGN REMAINING BUS ATTRIBUTES ***\n"),
              std::string::npos)
        << result.standard_output;
}

TEST(redundant_nodes, a_value_added_and_multiplied_is_converted_twice) {
    const std::string source = "float a, b, c, y; void main() { y = a * b + a; }";
    const run_result result = compile({.source = source, .switches = {"-mv", "0"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standard_output.find("*** REMOVE REDUNDANT NODES ***\n*** ASSIGN REMAINING BUS ATTRIBUTES ***\n"),
              std::string::npos)
        << result.standard_output;
}

}  // namespace

}  // namespace xfc::test
