#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// Delays: where they stand, how long and wide they are, what they leave alone.

namespace xfc::test {

namespace {

constexpr auto in_float = number_format::single_float;
constexpr auto in_xfloat = number_format::xfloat;

std::int32_t add_ready(std::string_view name, std::int32_t inputs, std::int32_t latency, std::int32_t ready_time,
                       number_format format = number_format::none) {
    const std::int32_t slot = add_node(name, inputs, format);
    attributes_at(slot).latency = latency;
    attributes_at(slot).ready_time = ready_time;
    return slot;
}

/// A node that makes its producer an inner node; it needs no delay itself.
void add_reader(std::int32_t producer) {
    const std::int32_t reader = add_ready("+", 2, 0, attributes_at(producer).ready_time);
    const std::int32_t output = add_ready("y", 1, 0, current.max_latency);
    dfg_connect(producer, reader, 0);
    dfg_connect(reader, output, 0);
}

void expect_delay(std::int32_t slot, std::int32_t length, std::int32_t ready_time) {
    EXPECT_EQ(node_at(slot).name, "delay");
    EXPECT_EQ(component_name(slot), "xfc_delay");
    EXPECT_EQ(attributes_at(slot).latency, length);
    EXPECT_EQ(attributes_at(slot).ready_time, ready_time);
    EXPECT_EQ(node_at(slot).input_count, 1);
}

void run_insert_delays() {
    const run_result result = catch_output(insert_delays);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "");
}

TEST(latency_delays, an_empty_graph_gets_no_delay) {
    start_graph();
    run_insert_delays();
    EXPECT_EQ(dfg_used_slots(), 0);
}

TEST(latency_delays, an_operand_that_is_early_waits_until_its_consumer_needs_it) {
    start_graph();
    current.max_latency = 30;
    const std::int32_t early = add_ready("a", 1, 2, 3);
    node_at(early).outputs[0].width = 45;
    const std::int32_t late = add_ready("b", 1, 2, 20);
    const std::int32_t sum = add_ready("+", 2, 5, 25, in_xfloat);
    dfg_connect(early, sum, 1);
    dfg_connect(late, sum, 0);
    add_reader(sum);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 1);
    const std::int32_t delay = before;
    expect_delay(delay, 17, 20);
    EXPECT_EQ(attributes_at(delay).format, in_xfloat);
    EXPECT_EQ(node_at(delay).inputs[0].width, 45);
    EXPECT_EQ(node_at(delay).outputs[0].width, 45);
    EXPECT_EQ(driver(delay), early);
    EXPECT_EQ(driver(sum, 1), delay);
    EXPECT_EQ(driver(sum, 0), late);
    EXPECT_EQ(consumers(early), std::vector<std::int32_t>{delay});
    EXPECT_EQ(consumers(delay), std::vector<std::int32_t>{sum});
    EXPECT_EQ(consumers_of(node_at(delay))->port, 1);
    EXPECT_EQ(attributes_at(sum).ready_time, 25);
    EXPECT_EQ(current.max_latency, 30);
}

TEST(latency_delays, a_width_that_is_not_known_yet_stays_0) {
    start_graph();
    current.max_latency = 9;
    const std::int32_t a = add_ready("a", 1, 0, 0);
    dfg_connect(a, add_ready("y", 1, 0, 0), 0);
    run_insert_delays();
    expect_delay(2, 9, 9);
    EXPECT_EQ(node_at(2).inputs[0].width, 0);
    EXPECT_EQ(node_at(2).outputs[0].width, 0);
}

TEST(latency_delays, every_output_becomes_ready_with_the_last_one) {
    start_graph();
    current.max_latency = 17;
    const std::int32_t a = add_ready("a", 1, 10, 10);
    const std::int32_t b = add_ready("b", 1, 17, 17);
    const std::int32_t early = add_ready("y", 1, 0, 10, in_float);
    const std::int32_t late = add_ready("z", 1, 0, 17, in_float);
    dfg_connect(a, early, 0);
    dfg_connect(b, late, 0);
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), 5);
    expect_delay(4, 7, 17);
    EXPECT_EQ(attributes_at(4).format, in_float);
    EXPECT_EQ(driver(early), 4);
    EXPECT_EQ(driver(late), b);
    EXPECT_EQ(attributes_at(early).ready_time, 17);
    EXPECT_EQ(attributes_at(late).ready_time, 17);
}

TEST(latency_delays, a_final_edge_is_measured_from_the_output_and_not_from_its_driver) {
    // The output's own latency and the driver's ready time do not enter.
    start_graph();
    current.max_latency = 40;
    const std::int32_t a = add_ready("a", 1, 1, 5);
    const std::int32_t y = add_ready("y", 1, 6, 28);
    dfg_connect(a, y, 0);
    run_insert_delays();
    expect_delay(2, 12, 40);
    EXPECT_EQ(attributes_at(y).ready_time, 40);
}

TEST(latency_delays, an_output_that_is_ready_with_the_last_one_gets_no_delay) {
    start_graph();
    current.max_latency = 12;
    const std::int32_t a = add_ready("a", 1, 3, 3);
    dfg_connect(a, add_ready("y", 1, 0, 12), 0);
    run_insert_delays();
    EXPECT_EQ(dfg_used_slots(), 2);
}

TEST(latency_delays, consumers_of_one_producer_get_a_delay_each_even_of_equal_length) {
    start_graph();
    current.max_latency = 9;
    const std::int32_t producer = add_ready("x", 1, 4, 4);
    const std::int32_t in_time = add_ready("*", 2, 5, 9);
    const std::int32_t first = add_ready("+", 2, 2, 9);
    const std::int32_t second = add_ready("-", 2, 2, 9);
    dfg_connect(producer, in_time, 0);
    dfg_connect(producer, first, 1);
    dfg_connect(producer, second, 0);
    for (const std::int32_t slot : {in_time, first, second}) {
        add_reader(slot);
    }
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 2);
    expect_delay(before, 3, 7);
    expect_delay(before + 1, 3, 7);
    EXPECT_EQ(consumers(producer), (std::vector<std::int32_t>{in_time, before, before + 1}));
    EXPECT_EQ(driver(in_time), producer);
    EXPECT_EQ(driver(first, 1), before);
    EXPECT_EQ(driver(second, 0), before + 1);
}

TEST(latency_delays, delays_of_different_length_are_never_chained) {
    start_graph();
    current.max_latency = 20;
    const std::int32_t producer = add_ready("x", 1, 1, 1);
    const std::int32_t first = add_ready("+", 2, 2, 8);
    const std::int32_t second = add_ready("+", 2, 2, 14);
    dfg_connect(producer, first, 0);
    dfg_connect(producer, second, 0);
    add_reader(first);
    add_reader(second);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 2);
    expect_delay(before, 5, 6);
    expect_delay(before + 1, 11, 12);
    EXPECT_EQ(driver(before), producer);
    EXPECT_EQ(driver(before + 1), producer);
}

TEST(latency_delays, both_inputs_of_one_consumer_get_a_delay) {
    start_graph();
    current.max_latency = 10;
    const std::int32_t producer = add_ready("x", 1, 0, 0);
    const std::int32_t square = add_ready("*", 2, 3, 7);
    dfg_connect(producer, square, 0);
    dfg_connect(producer, square, 1);
    add_reader(square);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 2);
    expect_delay(before, 4, 4);
    expect_delay(before + 1, 4, 4);
    EXPECT_EQ(driver(square, 0), before);
    EXPECT_EQ(driver(square, 1), before + 1);
}

TEST(latency_delays, an_early_output_and_an_early_operand_of_one_producer_get_their_own_delays) {
    start_graph();
    current.max_latency = 15;
    const std::int32_t t = add_ready("t", 1, 0, 4);
    const std::int32_t y = add_ready("y", 1, 0, 4);
    const std::int32_t sum = add_ready("+", 2, 5, 15);
    dfg_connect(t, y, 0);
    dfg_connect(t, sum, 0);
    add_reader(sum);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 2);
    expect_delay(before, 11, 15);
    expect_delay(before + 1, 6, 10);
}

TEST(latency_delays, a_late_operand_gets_a_delay_of_negative_length) {
    start_graph();
    current.max_latency = 9;
    const std::int32_t late = add_ready("a", 1, 9, 9);
    const std::int32_t sum = add_ready("+", 2, 2, 8);
    dfg_connect(late, sum, 0);
    add_reader(sum);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 1);
    expect_delay(before, -3, 6);
}

TEST(latency_delays, an_output_that_is_later_than_the_depth_gets_a_delay_of_negative_length) {
    start_graph();
    current.max_latency = 5;
    const std::int32_t a = add_ready("a", 1, 13, 13);
    const std::int32_t y = add_ready("y", 1, 0, 13);
    dfg_connect(a, y, 0);
    run_insert_delays();
    expect_delay(2, -8, 5);
    EXPECT_EQ(attributes_at(y).ready_time, 5);
}

// ---- A variable assigned twice ----

TEST(latency_delays, a_delay_on_a_stale_edge_takes_the_place_of_the_live_source) {
    start_graph();
    current.max_latency = 8;
    const std::int32_t first = add_ready("a", 1, 3, 3);
    const std::int32_t second = add_ready("b", 1, 8, 8);
    const std::int32_t t = add_ready("t", 1, 0, 8);
    dfg_connect(first, t, 0);
    dfg_connect(second, t, 0);
    add_reader(t);
    ASSERT_EQ(driver(t), second);
    const std::int32_t before = dfg_used_slots();
    run_insert_delays();
    ASSERT_EQ(dfg_used_slots(), before + 1);
    expect_delay(before, 5, 8);
    EXPECT_EQ(driver(before), first);
    EXPECT_EQ(driver(t), before);
    EXPECT_EQ(consumers(first), std::vector<std::int32_t>{before});
    EXPECT_EQ(consumers(second), std::vector<std::int32_t>{t});
}

TEST(latency_delays, of_two_edges_into_an_early_output_only_the_first_gets_a_delay) {
    start_graph();
    current.max_latency = 11;
    const std::int32_t first = add_ready("a", 1, 3, 3);
    const std::int32_t second = add_ready("b", 1, 6, 6);
    const std::int32_t y = add_ready("y", 1, 0, 6);
    dfg_connect(first, y, 0);
    dfg_connect(second, y, 0);
    run_insert_delays();
    // The first delay makes the output ready with the last one.
    ASSERT_EQ(dfg_used_slots(), 4);
    expect_delay(3, 5, 11);
    EXPECT_EQ(driver(3), first);
    EXPECT_EQ(driver(y), 3);
    EXPECT_EQ(attributes_at(y).ready_time, 11);
}

// ---- The pool ----

TEST(latency_delays, the_pool_grows_while_delays_are_inserted) {
    start_graph();
    current.max_latency = 6;
    const std::int32_t x = add_ready("x", 1, 0, 0);
    const std::int32_t y = add_ready("y", 1, 0, 2);
    const std::int32_t z = add_ready("z", 1, 0, 3);
    dfg_connect(x, y, 0);
    dfg_connect(x, z, 0);
    while (dfg_used_slots() < 10000) {
        add_ready("n", 1, 0, 0);
    }
    ASSERT_EQ(current.graph.capacity, 10000);
    run_insert_delays();
    EXPECT_EQ(current.graph.capacity, 20000);
    ASSERT_EQ(dfg_used_slots(), 10002);
    expect_delay(10000, 4, 6);
    expect_delay(10001, 3, 6);
    EXPECT_EQ(consumers(x), (std::vector<std::int32_t>{10000, 10001}));
}

}  // namespace

}  // namespace xfc::test
