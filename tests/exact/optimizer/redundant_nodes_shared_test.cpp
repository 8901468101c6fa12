#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// Merging of normalizers and delays.

namespace xfc::test {

namespace {

constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

std::string merge_output() {
    const run_result result = catch_output(remove_redundant_nodes);
    EXPECT_EQ(result.status, 0);
    return result.standard_output;
}

std::int32_t add_driven(std::string_view name, std::int32_t producer, number_format format,
                        std::string_view component) {
    const std::int32_t slot = add_node(name, 1, format, component);
    dfg_connect(producer, slot, 0);
    return slot;
}

std::int32_t removed(std::int32_t slot) { return attributes_at(slot).is_removed; }

// ---- Normalizers ----

/// Two normalizers of one value, slots 1 and 2, into two consumers, slots 3 (port 0) and 4 (port 1).
void build_two_normalizers(std::string_view component, std::int32_t first_select, std::int32_t second_select) {
    start_graph();
    const std::int32_t a = add_node("+", 2, in_xfloat);
    const std::int32_t first = add_driven("norm", a, in_xfloat, component);
    const std::int32_t second = add_driven("norm", a, in_xfloat, component);
    node_at(first).bus_modes.output_select = first_select;
    node_at(second).bus_modes.output_select = second_select;
    dfg_connect(first, add_node("*", 2), 0);
    dfg_connect(second, add_node("-", 2), 1);
}

TEST(redundant_normalizers, normalizers_of_one_value_with_the_same_output_are_merged) {
    for (const char* component : {"xfc_normfp1x", "xfc_normfp2x"}) {
        for (const std::int32_t select : {0, 1, 2}) {
            build_two_normalizers(component, select, select);
            EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
            EXPECT_EQ(removed(2), 1);
            EXPECT_EQ(driver(4, 1), 1);
            EXPECT_EQ(consumers(1), (std::vector<std::int32_t>{3, 4}));
            EXPECT_EQ(consumers_of(node_at(1))->next->port, 1);
        }
    }
}

TEST(redundant_normalizers, normalizers_with_different_outputs_stay_separate) {
    build_two_normalizers("xfc_normfp1x", 0, 2);
    EXPECT_EQ(merge_output(), "");
    build_two_normalizers("xfc_normfp2x", 1, 0);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_normalizers, normalizers_of_different_precision_or_of_different_values_stay_separate) {
    build_two_normalizers("xfc_normfp1x", 0, 0);
    attributes_at(2).component = component_named("xfc_normfp2x");
    EXPECT_EQ(merge_output(), "");
    build_two_normalizers("xfc_normfp1x", 0, 0);
    dfg_set_source(2, 0, add_node("+", 2), 0);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_normalizers, name_format_latency_and_width_are_not_compared) {
    build_two_normalizers("xfc_normfp1x", 0, 0);
    rename_node(1, "t");
    node_at(2).name = "u";
    attributes_at(2).format = in_ydouble;
    attributes_at(2).latency = 9;
    node_at(2).outputs[0].width = 49;
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
}

TEST(redundant_normalizers, other_components_are_not_taken_for_normalizers) {
    build_two_normalizers("xfc_castytox", 0, 0);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_normalizers, only_the_first_consumer_moves) {
    build_two_normalizers("xfc_normfp1x", 0, 0);
    const std::int32_t other = add_node("+", 2);
    dfg_connect(2, other, 0);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
    EXPECT_EQ(driver(other), 2);
}

TEST(redundant_normalizers, a_removed_normalizer_takes_nothing_but_may_be_merged) {
    build_two_normalizers("xfc_normfp1x", 0, 0);
    attributes_at(1).is_removed = 1;
    EXPECT_EQ(merge_output(), "");
    build_two_normalizers("xfc_normfp1x", 0, 0);
    attributes_at(2).is_removed = 1;
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
}

TEST(redundant_normalizers, a_normalizer_whose_driver_was_merged_can_be_merged_a_second_time) {
    // Slots: value 0, normalizer 1 behind 3, equal normalizers 2 and 3, normalizer 4 behind 2, normalizer 5 behind 3.
    start_graph();
    const std::int32_t value = add_node("+", 2, in_xfloat);
    const std::int32_t early = add_node("norm", 1, in_xfloat, "xfc_normfp1x");
    const std::int32_t kept = add_driven("norm", value, in_xfloat, "xfc_normfp1x");
    const std::int32_t merged = add_driven("norm", value, in_xfloat, "xfc_normfp1x");
    const std::int32_t late = add_driven("norm", kept, in_xfloat, "xfc_normfp1x");
    const std::int32_t twice = add_driven("norm", merged, in_xfloat, "xfc_normfp1x");
    dfg_connect(merged, early, 0);
    const std::int32_t reader = add_node("+", 2);
    dfg_connect(twice, reader, 1);
    dfg_connect(early, add_node("+", 2), 0);
    dfg_connect(late, add_node("+", 2), 0);
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6 to 1  \n"
              "  Replace 3 with 2  Connect 5 to 2  \n"
              "  Replace 5 with 4  Connect 6 to 4  \n");
    EXPECT_EQ(driver(reader, 1), late);
    EXPECT_EQ(consumers(early), (std::vector<std::int32_t>{7, 6}));
    EXPECT_EQ(consumers(late), (std::vector<std::int32_t>{8, 6}));
    EXPECT_EQ(removed(early), 0);
    EXPECT_EQ(removed(late), 0);
}

TEST(redundant_normalizers, a_variable_named_norm_is_shared_like_any_normalizer) {
    // norm reads the sum, and so does the normalizer that the pass of clusters puts behind it.
    start_graph();
    const std::int32_t sum = add_node("+", 2, in_xfloat);
    const std::int32_t variable = add_driven("norm", sum, in_xfloat, "");
    const std::int32_t inserted = add_driven("norm", sum, in_xfloat, "");
    dfg_connect(variable, add_node("+", 2, in_xfloat), 0);
    dfg_connect(inserted, add_node("+", 2, in_xfloat), 0);
    assign_node_attributes();
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
}

// ---- Delays ----

/// Two delays of one value, slots 1 and 2, into two consumers, slots 3 (port 0) and 4 (port 1).
void build_two_delays(std::int32_t first_length, std::int32_t second_length) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    for (const std::int32_t length : {first_length, second_length}) {
        const std::int32_t delay = add_driven("delay", a, in_xfloat, "xfc_delay");
        attributes_at(delay).latency = length;
        node_at(delay).inputs[0].width = 45;
        node_at(delay).outputs[0].width = 45;
    }
    dfg_connect(1, add_node("+", 2), 0);
    dfg_connect(2, add_node("*", 2), 1);
}

TEST(redundant_delays, delays_of_equal_length_of_one_value_are_shared) {
    build_two_delays(3, 3);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
    EXPECT_EQ(removed(1), 0);
    EXPECT_EQ(removed(2), 1);
    EXPECT_EQ(driver(4, 1), 1);
    EXPECT_EQ(consumers(1), (std::vector<std::int32_t>{3, 4}));
    EXPECT_EQ(consumers(0), (std::vector<std::int32_t>{1, 2}));
}

TEST(redundant_delays, delays_of_different_length_stay_separate) {
    build_two_delays(3, 5);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_delays, delays_of_negative_length_are_compared_like_any) {
    build_two_delays(-1, -1);
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
    build_two_delays(-1, 1);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_delays, delays_of_different_width_or_of_different_values_stay_separate) {
    build_two_delays(3, 3);
    node_at(2).outputs[0].width = 32;
    EXPECT_EQ(merge_output(), "");
    build_two_delays(3, 3);
    dfg_set_source(2, 0, add_node("b", 1), 0);
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_delays, formats_and_input_widths_of_delays_are_not_compared) {
    build_two_delays(3, 3);
    attributes_at(2).format = in_double;
    node_at(2).inputs[0].width = 64;
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
}

TEST(redundant_delays, a_delay_of_another_width_in_between_does_not_stop_the_merge) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    for (const std::int32_t width : {45, 32, 45, 32}) {
        const std::int32_t delay = add_driven("delay", a, in_xfloat, "xfc_delay");
        attributes_at(delay).latency = 3;
        node_at(delay).outputs[0].width = width;
        dfg_connect(delay, add_node("+", 2), 0);
    }
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6 to 1  \n"
              "  Replace 7 with 3  Connect 8 to 3  \n");
}

TEST(redundant_delays, a_delay_is_known_by_its_name) {
    build_two_delays(3, 3);
    rename_node(2, "t");
    EXPECT_EQ(merge_output(), "");
    // Variables of that name are wires of length 0.
    build_two_delays(0, 0);
    attributes_at(1).component = component_named("");
    attributes_at(2).component = component_named("");
    EXPECT_EQ(merge_output(), "  Replace 2 with 1  Connect 4 to 1  \n");
}

TEST(redundant_delays, a_removed_delay_takes_no_part) {
    build_two_delays(3, 3);
    attributes_at(1).is_removed = 1;
    EXPECT_EQ(merge_output(), "");
    build_two_delays(3, 3);
    attributes_at(2).is_removed = 1;
    EXPECT_EQ(merge_output(), "");
}

TEST(redundant_delays, a_delay_merged_once_is_not_merged_again_when_its_driver_changes) {
    // As with the normalizers: delays 2 and 3 of one length, 1, 4 and 5 of another.
    start_graph();
    const std::int32_t value = add_node("+", 2, in_xfloat);
    const auto add_delay = [](std::int32_t length) {
        const std::int32_t slot = add_node("delay", 1, in_xfloat, "xfc_delay");
        attributes_at(slot).latency = length;
        return slot;
    };
    const std::int32_t early = add_delay(3);
    const std::int32_t kept = add_delay(2);
    const std::int32_t merged = add_delay(2);
    const std::int32_t late = add_delay(3);
    const std::int32_t twice = add_delay(3);
    dfg_connect(value, kept, 0);
    dfg_connect(value, merged, 0);
    dfg_connect(kept, late, 0);
    dfg_connect(merged, twice, 0);
    dfg_connect(merged, early, 0);
    for (const std::int32_t slot : {twice, early, late}) {
        dfg_connect(slot, add_node("+", 2), 0);
    }
    EXPECT_EQ(merge_output(),
              "  Replace 5 with 1  Connect 6 to 1  \n"
              "  Replace 3 with 2  Connect 5 to 2  \n");
}

TEST(redundant_delays, three_early_consumers_of_one_value_end_with_one_delay) {
    start_graph();
    current.max_latency = 9;
    const std::int32_t producer = add_node("x", 1, in_float);
    attributes_at(producer).ready_time = 4;
    for (const std::int32_t latency : {5, 2, 2}) {
        const std::int32_t consumer = add_node("+", 2, in_float);
        attributes_at(consumer).latency = latency;
        attributes_at(consumer).ready_time = 9;
        const std::int32_t output = add_node("y", 1, in_float);
        attributes_at(output).ready_time = 9;
        dfg_connect(producer, consumer, 0);
        dfg_connect(consumer, output, 0);
    }
    insert_delays();
    ASSERT_EQ(slots_with_component("xfc_delay"), (std::vector<std::int32_t>{7, 8}));
    EXPECT_EQ(merge_output(), "  Replace 8 with 7  Connect 5 to 7  \n");
    EXPECT_EQ(consumers(7), (std::vector<std::int32_t>{3, 5}));
}

TEST(redundant_delays, equal_delays_of_a_program_are_shared) {
    // a and b arrive together in two sums that wait for c's product: each of them once delayed, once shared.
    const std::string source = "long a, b, c, y, z; void main() { y = a + b * c; z = a - b * c; }";
    // a 0, b 1, c 2, y 3, z 4, product 5, sum 6, product 7, difference 8, delays of a 9 and 10: three cycles each.
    const run_result result = compile({.source = source});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standard_output.find("*** REMOVE REDUNDANT NODES ***\n"
                                          "  Replace 10 with 9  Connect 8 to 9  \n"
                                          "*** ASSIGN REMAINING BUS ATTRIBUTES ***\n"),
              std::string::npos)
        << result.standard_output;
}

}  // namespace

}  // namespace xfc::test
