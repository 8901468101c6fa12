#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/node_record.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

// Which consumer decides a multiplier's output, and which drivers make an adder a dot adder.

namespace xfc::test {

namespace {

constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

std::int32_t add_operator(std::string_view name, number_format format, std::int32_t fanout) {
    const std::int32_t slot = add_node(name, 2, format);
    attributes_at(slot).fanout = fanout;
    return slot;
}

TEST(function_mapping_consumers, a_product_with_two_consumers_gets_the_extended_output_even_if_both_multiply) {
    for (const std::int32_t outputscale : {0, 1}) {
        start_graph();
        current.options.outputscale = outputscale;
        const std::int32_t product = add_operator("*", in_xfloat, 2);
        dfg_connect(product, add_node("*", 2, in_xfloat), 0);
        dfg_connect(product, add_node("*", 2, in_xfloat), 1);
        map_functions();
        EXPECT_EQ(node_at(product).bus_modes.output_select, 1);
        EXPECT_EQ(attributes_at(product).latency, outputscale + 3);
    }
}

TEST(function_mapping_consumers, a_square_feeding_both_inputs_of_one_multiplier_has_two_consumers) {
    start_graph();
    const std::int32_t product = add_operator("*", in_xfloat, 2);
    const std::int32_t square = add_node("*", 2, in_xfloat);
    dfg_connect(product, square, 0);
    dfg_connect(product, square, 1);
    map_functions();
    EXPECT_EQ(node_at(product).bus_modes.output_select, 1);
}

TEST(function_mapping_consumers, a_product_into_a_sum_gets_the_extended_output) {
    ASSERT_EQ(optimize_text("float a, b, c, y; void main() { y = a * b + c; }", map_functions, {"-mv", "0"}).status, 0);
    const std::int32_t product = slot_named("*");
    EXPECT_EQ(component_name(product), "xfc_mulfp1x");
    EXPECT_EQ(node_at(product).bus_modes.output_select, 1);
    EXPECT_EQ(attributes_at(product).latency, 3);
    EXPECT_EQ(node_at(product).outputs[0].width, 45);
}

TEST(function_mapping_consumers, a_double_product_into_a_divider_gets_the_multiplier_output) {
    ASSERT_EQ(optimize_text("double a, b, c, y; void main() { y = (a * b) / c; }", map_functions).status, 0);
    const std::int32_t product = slot_named("*");
    EXPECT_EQ(component_name(product), "xfc_mulfp2x");
    EXPECT_EQ(node_at(product).bus_modes.output_select, 2);
    EXPECT_EQ(node_at(product).outputs[0].width, 70);
}

TEST(function_mapping_consumers, a_product_into_an_output_drives_it_in_ieee_form) {
    ASSERT_EQ(optimize_text("float a, b, y; void main() { y = a * b; }", map_functions).status, 0);
    const std::int32_t product = slot_named("*");
    EXPECT_EQ(node_at(product).bus_modes.output_select, 0);
    EXPECT_EQ(node_at(product).outputs[0].width, 32);
    EXPECT_EQ(attributes_at(product).latency, 5);
}

TEST(function_mapping_consumers, the_live_first_consumer_counts_and_the_fanout_from_before) {
    start_graph();
    // One consumer before; now a normalizer stands in front of the divider.
    const std::int32_t product = add_operator("*", in_xfloat, 1);
    const std::int32_t divider = add_node("/", 2, in_xfloat);
    dfg_connect(product, divider, 0);
    map_functions();
    ASSERT_EQ(node_at(product).bus_modes.output_select, 3);
    dfg_splice_node(product, "norm", *consumers_of(node_at(product)), divider, 0);
    map_functions();
    EXPECT_EQ(node_at(product).bus_modes.output_select, 1);
    EXPECT_EQ(attributes_at(product).latency, 3);
}

TEST(function_mapping_consumers, a_conversion_to_float_in_between_makes_the_output_ieee) {
    start_graph();
    const std::int32_t product = add_operator("/", in_xfloat, 1);
    const std::int32_t root = add_node("+", 2, in_xfloat);
    dfg_connect(product, root, 0);
    const std::int32_t cast = dfg_splice_node(product, "cast", *consumers_of(node_at(product)), root, 0);
    attributes_at(cast).format = in_float;
    map_functions();
    EXPECT_EQ(node_at(product).bus_modes.output_select, 0);
    EXPECT_EQ(node_at(product).outputs[0].width, 32);
}

TEST(function_mapping_consumers, a_product_converted_to_double_keeps_the_extended_output) {
    ASSERT_EQ(optimize_text("float a, b; double y; void main() { y = a * b; }", map_functions).status, 0);
    const std::int32_t product = slot_named("*");
    ASSERT_EQ(attributes_at(product).format, in_xfloat);
    const std::vector<std::int32_t> next = consumers(product);
    ASSERT_EQ(next.size(), 1U);
    EXPECT_EQ(component_name(next[0]), "castxtod");
    EXPECT_EQ(node_at(product).bus_modes.output_select, 1);
}

TEST(function_mapping_consumers, more_live_consumers_than_before_do_not_change_the_fanout) {
    start_graph();
    const std::int32_t product = add_operator("*", in_ydouble, 1);
    dfg_connect(product, add_node("y", 1, in_double), 0);
    dfg_connect(product, add_node("+", 2, in_ydouble), 0);
    const std::int32_t other = add_operator("*", in_ydouble, 2);
    dfg_connect(other, add_node("y", 1, in_double), 0);
    map_functions();
    EXPECT_EQ(node_at(product).bus_modes.output_select, 0);
    EXPECT_EQ(node_at(other).bus_modes.output_select, 1);
}

TEST(function_mapping_consumers, without_consumers_the_output_is_extended_whatever_the_fanout_was) {
    for (const std::int32_t fanout : {0, 1, 2}) {
        start_graph();
        const std::vector<std::int32_t> slots{
            add_operator("*", in_xfloat, fanout), add_operator("/", in_xfloat, fanout),
            add_operator("*", in_ydouble, fanout), add_operator("/", in_ydouble, fanout)};
        map_functions();
        for (const std::int32_t slot : slots) {
            EXPECT_EQ(node_at(slot).bus_modes.output_select, 1);
        }
        EXPECT_EQ(attributes_at(slots[0]).latency, 3);
        EXPECT_EQ(attributes_at(slots[1]).latency, 13);
        EXPECT_EQ(attributes_at(slots[2]).latency, 7);
        EXPECT_EQ(attributes_at(slots[3]).latency, 20);
    }
}

// ---- The dot adder ----

struct dot_sum {
    std::int32_t first;
    std::int32_t second;
    std::int32_t adder;
};

/// Two IEEE products and the adder that sums them, in that order of slots.
dot_sum add_dot_sum(std::string_view adder_name = "+") {
    const std::int32_t first = add_node("*", 2, in_float);
    const std::int32_t second = add_node("*", 2, in_float);
    const std::int32_t adder = add_node(adder_name, 2, in_xfloat);
    dfg_connect(first, adder, 0);
    dfg_connect(second, adder, 1);
    return {first, second, adder};
}

TEST(function_mapping_consumers, two_dot_products_are_summed_by_the_dot_adder_with_optimization_2_or_3_only) {
    for (const std::int32_t optimization : {-1, 0, 1, 2, 3}) {
        for (const char* name : {"+", "-"}) {
            start_graph();
            current.options.optimization = optimization;
            const dot_sum sum = add_dot_sum(name);
            catch_output(map_functions);
            EXPECT_EQ(component_name(sum.adder), optimization >= 2 ? "xfc_alufp1_dot" : "xfc_alufp1x");
        }
    }
}

TEST(function_mapping_consumers, the_dot_adder_has_the_adders_latency_and_widths) {
    using options = compile_option_record;
    start_graph();
    const dot_sum sum = add_dot_sum();
    for_each_combination({{&options::mantissa, {32, 36}},
                          {&options::outputpipe, {0, 1}},
                          {&options::shiftspeed, {0, 1}},
                          {&options::optimization, {2, 3}}},
                         [&] {
                             node_record expected = put_sentinels(sum.adder, "");
                             const std::int32_t width = current.options.mantissa + 13;
                             const std::int32_t cycles = current.options.outputpipe + current.options.shiftspeed + 3;
                             expected.component = "xfc_alufp1_dot";
                             expected.latency = expected.ready_time = cycles;
                             expected.input_widths = {width, width};
                             expected.output_width = width;
                             put_sentinels(sum.first, "");
                             put_sentinels(sum.second, "");
                             catch_output(map_functions);
                             EXPECT_EQ(record_of(sum.adder), expected);
                         });
}

TEST(function_mapping_consumers, a_dot_product_in_a_higher_slot_than_the_adder_is_not_recognised) {
    for (const bool first_is_higher : {false, true}) {
        start_graph();
        current.options.optimization = 3;
        const std::int32_t lower = add_node("*", 2, in_float);
        const std::int32_t adder = add_node("+", 2, in_xfloat);
        const std::int32_t higher = add_node("*", 2, in_float);
        dfg_connect(lower, adder, first_is_higher ? 1 : 0);
        dfg_connect(higher, adder, first_is_higher ? 0 : 1);
        EXPECT_EQ(catch_output(map_functions).standard_output, "dot multiplierdot multiplier");
        EXPECT_EQ(component_name(adder), "xfc_alufp1x");
        EXPECT_EQ(component_name(lower), "xfc_mulfp1_dot");
        EXPECT_EQ(component_name(higher), "xfc_mulfp1_dot");
    }
}

TEST(function_mapping_consumers, one_dot_product_does_not_make_a_dot_adder) {
    for (const std::int32_t port : {0, 1}) {
        start_graph();
        current.options.optimization = 3;
        const std::int32_t product = add_node("*", 2, in_float);
        const std::int32_t other = add_node("*", 2, in_xfloat);
        const std::int32_t adder = add_node("+", 2, in_xfloat);
        dfg_connect(product, adder, port);
        dfg_connect(other, adder, 1 - port);
        catch_output(map_functions);
        EXPECT_EQ(component_name(adder), "xfc_alufp1x");
    }
}

TEST(function_mapping_consumers, one_dot_product_on_both_inputs_makes_a_dot_adder) {
    start_graph();
    current.options.optimization = 2;
    const std::int32_t product = add_node("*", 2, in_float);
    const std::int32_t adder = add_node("-", 2, in_xfloat);
    dfg_connect(product, adder, 0);
    dfg_connect(product, adder, 1);
    catch_output(map_functions);
    EXPECT_EQ(component_name(adder), "xfc_alufp1_dot");
}

TEST(function_mapping_consumers, an_adder_with_an_operand_that_nothing_drives_is_no_dot_adder) {
    for (const std::int32_t port : {0, 1}) {
        start_graph();
        current.options.optimization = 3;
        const std::int32_t product = add_node("*", 2, in_float);
        const std::int32_t adder = add_node("+", 2, in_xfloat);
        dfg_connect(product, adder, port);
        const std::int32_t alone = add_node("-", 2, in_xfloat);
        catch_output(map_functions);
        EXPECT_EQ(component_name(adder), "xfc_alufp1x");
        EXPECT_EQ(attributes_at(adder).latency, 5);
        EXPECT_EQ(component_name(alone), "xfc_alufp1x");
        EXPECT_EQ(node_at(alone).inputs[1].width, 45);
    }
}

TEST(function_mapping_consumers, a_double_adder_is_never_a_dot_adder) {
    start_graph();
    current.options.optimization = 3;
    const dot_sum sum = add_dot_sum();
    attributes_at(sum.adder).format = in_ydouble;
    catch_output(map_functions);
    EXPECT_EQ(component_name(sum.adder), "xfc_alufp2x");
}

TEST(function_mapping_consumers, a_dot_product_of_a_program_is_recognised) {
    const std::string source = "float a, b, c, d, y; void main() { y = a * b + c * d; }";
    ASSERT_EQ(optimize_text(source, map_functions, {"-mv", "2"}).status, 0);
    EXPECT_EQ(slots_with_component("xfc_mulfp1_dot").size(), 2U);
    EXPECT_EQ(slots_with_component("xfc_alufp1_dot").size(), 1U);
    ASSERT_EQ(optimize_text(source, map_functions).status, 0);
    EXPECT_EQ(slots_with_component("xfc_mulfp1_dot").size(), 2U);
    EXPECT_EQ(slots_with_component("xfc_alufp1_dot").size(), 0U);
    EXPECT_EQ(slots_with_component("xfc_alufp1x").size(), 1U);
}

}  // namespace

}  // namespace xfc::test
