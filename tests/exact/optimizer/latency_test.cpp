#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// Ready times, the depth and the lines printed sweep by sweep.

namespace xfc::test {

namespace {

/// A node whose component takes that many cycles, as the mapping passes leave it.
std::int32_t add_timed(std::string_view name, std::int32_t inputs, std::int32_t cycles) {
    const std::int32_t slot = add_node(name, inputs);
    attributes_at(slot).latency = cycles;
    attributes_at(slot).ready_time = cycles;
    return slot;
}

std::string line(std::int32_t iterations, std::int32_t balances, std::int32_t depth) {
    return "  Iterations " + std::to_string(iterations) + " Balances " + std::to_string(balances) + " Depth " +
           std::to_string(depth) + "\n";
}

std::string balance() {
    const run_result result = catch_output(balance_latencies);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_error, "");
    return result.standard_output;
}

std::int32_t ready(std::int32_t slot) { return attributes_at(slot).ready_time; }

TEST(latency, an_empty_graph_takes_one_sweep_and_has_depth_0) {
    start_graph();
    current.max_latency = 99;
    EXPECT_EQ(balance(), "  Iterations 1 Balances 0 Depth 0\n");
    EXPECT_EQ(current.max_latency, 0);
}

TEST(latency, nodes_without_drivers_do_not_count_for_the_depth) {
    start_graph();
    const std::int32_t x = add_timed("sqrt", 1, 28);
    EXPECT_EQ(balance(), line(1, 0, 0));
    EXPECT_EQ(ready(x), 28);
}

TEST(latency, an_operator_between_inputs_and_an_output_gives_its_own_latency) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 0);
    const std::int32_t b = add_timed("b", 1, 0);
    const std::int32_t y = add_timed("y", 1, 0);
    const std::int32_t product = add_timed("*", 2, 5);
    dfg_connect(a, product, 0);
    dfg_connect(b, product, 1);
    dfg_connect(product, y, 0);
    // y stands before its driver, whose ready time is 5 from the start.
    EXPECT_EQ(balance(), line(1, 1, 5) + line(2, 0, 5));
    EXPECT_EQ(ready(product), 5);
    EXPECT_EQ(ready(y), 5);
    EXPECT_EQ(current.max_latency, 5);
}

TEST(latency, each_port_that_raises_a_node_counts_as_a_balance) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 3);
    const std::int32_t b = add_timed("b", 1, 6);
    const std::int32_t sum = add_timed("+", 2, 2);
    dfg_connect(a, sum, 0);
    dfg_connect(b, sum, 1);
    EXPECT_EQ(balance(), line(1, 2, 8) + line(2, 0, 8));
    EXPECT_EQ(ready(sum), 8);
}

TEST(latency, the_depth_is_taken_after_the_second_port_only) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 10);
    const std::int32_t b = add_timed("b", 1, 2);
    const std::int32_t sum = add_timed("+", 2, 3);
    dfg_connect(a, sum, 0);
    dfg_connect(b, sum, 1);
    // Port 0 raises the node to 13, port 1 leaves 2 + 3 as the value that the depth sees.
    EXPECT_EQ(balance(), line(1, 1, 5) + line(2, 0, 5));
    EXPECT_EQ(ready(sum), 13);
    EXPECT_EQ(current.max_latency, 5);
}

TEST(latency, a_consumer_behind_the_node_makes_the_depth_right_again) {
    start_graph();
    const std::int32_t y = add_timed("y", 1, 0);
    const std::int32_t a = add_timed("a", 1, 10);
    const std::int32_t b = add_timed("b", 1, 2);
    const std::int32_t sum = add_timed("+", 2, 3);
    dfg_connect(a, sum, 0);
    dfg_connect(b, sum, 1);
    dfg_connect(sum, y, 0);
    // Sweep 1: y 0 -> 3 (depth 3), sum 3 -> 13 (depth 5). Sweep 2: y 3 -> 13.
    EXPECT_EQ(balance(), line(1, 2, 5) + line(2, 1, 13) + line(3, 0, 13));
    EXPECT_EQ(ready(y), 13);
}

TEST(latency, a_constant_first_operand_leaves_the_second_port_alone_to_count) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 4);
    const std::int32_t product = add_timed("*", 2, 3);
    node_at(product).inputs[0].is_constant = 1;
    dfg_connect(a, product, 1);
    EXPECT_EQ(balance(), line(1, 1, 7) + line(2, 0, 7));
    EXPECT_EQ(ready(product), 7);
}

TEST(latency, a_constant_second_operand_leaves_the_first_port_alone_to_count) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 4);
    const std::int32_t product = add_timed("*", 2, 3);
    node_at(product).inputs[1].is_constant = 1;
    dfg_connect(a, product, 0);
    EXPECT_EQ(balance(), line(1, 1, 7) + line(2, 0, 7));
}

TEST(latency, ports_beyond_the_second_are_not_looked_at) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 1);
    const std::int32_t late = add_timed("b", 1, 100);
    const std::int32_t node = add_timed("f", 3, 2);
    dfg_connect(a, node, 0);
    dfg_connect(a, node, 1);
    dfg_connect(late, node, 2);
    EXPECT_EQ(balance(), line(1, 1, 3) + line(2, 0, 3));
    EXPECT_EQ(ready(node), 3);
}

TEST(latency, each_driver_in_a_higher_slot_than_its_consumer_costs_a_sweep) {
    start_graph();
    const std::int32_t last = add_timed("n0", 1, 1);
    const std::int32_t middle = add_timed("n1", 1, 1);
    const std::int32_t first = add_timed("n2", 1, 1);
    const std::int32_t x = add_timed("x", 1, 4);
    dfg_connect(middle, last, 0);
    dfg_connect(first, middle, 0);
    dfg_connect(x, first, 0);
    // 1: 1->2, 1->2, 1->5. 2: 2->3, 2->6. 3: 3->7.
    EXPECT_EQ(balance(), line(1, 3, 5) + line(2, 2, 6) + line(3, 1, 7) + line(4, 0, 7));
    EXPECT_EQ(ready(last), 7);
    EXPECT_EQ(ready(middle), 6);
    EXPECT_EQ(ready(first), 5);
}

TEST(latency, a_driver_ahead_in_the_same_sweep_is_used_at_once) {
    start_graph();
    const std::int32_t y = add_timed("y", 1, 0);
    const std::int32_t x = add_timed("x", 1, 2);
    const std::int32_t p = add_timed("p", 1, 3);
    const std::int32_t q = add_timed("q", 1, 4);
    dfg_connect(x, p, 0);
    dfg_connect(p, q, 0);
    dfg_connect(q, y, 0);
    // 1: y 0->4, p 3->5, q 4->9 (depth 9). 2: y 4->9.
    EXPECT_EQ(balance(), line(1, 3, 9) + line(2, 1, 9) + line(3, 0, 9));
    EXPECT_EQ(ready(y), 9);
}

TEST(latency, a_ready_time_above_the_latency_is_kept) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 1);
    const std::int32_t sum = add_timed("+", 1, 2);
    attributes_at(sum).ready_time = 50;
    dfg_connect(a, sum, 0);
    const std::int32_t y = add_timed("y", 1, 0);
    dfg_connect(sum, y, 0);
    EXPECT_EQ(balance(), line(1, 1, 50) + line(2, 0, 50));
    EXPECT_EQ(ready(sum), 50);
    EXPECT_EQ(ready(y), 50);
}

TEST(latency, a_long_chain_in_slot_order_settles_in_one_sweep) {
    start_graph();
    constexpr std::int32_t length = 150;
    for (std::int32_t slot = 0; slot < length; ++slot) {
        add_timed("n", 1, 1);
        if (slot > 0) {
            dfg_connect(slot - 1, slot, 0);
        }
    }
    EXPECT_EQ(balance(), line(1, length - 1, length) + line(2, 0, length));
}

TEST(latency, a_long_chain_against_the_slot_order_takes_a_sweep_a_node) {
    start_graph();
    constexpr std::int32_t length = 150;
    for (std::int32_t slot = 0; slot < length; ++slot) {
        add_timed("n", 1, 1);
    }
    for (std::int32_t slot = 1; slot < length; ++slot) {
        dfg_connect(slot, slot - 1, 0);
    }
    // In sweep k all nodes but the last k rise by one cycle.
    std::string expected;
    for (std::int32_t sweep = 1; sweep < length; ++sweep) {
        expected += line(sweep, length - sweep, sweep + 1);
    }
    EXPECT_EQ(balance(), expected + line(length, 0, length));
    EXPECT_EQ(ready(0), length);
}

TEST(latency, nodes_that_a_sweep_leaves_alone_count_again_when_their_driver_rises_later) {
    start_graph();
    // Slots 0..2 hang on a chain against the slot order, 3 and 4 on one in slot order.
    const std::int32_t y = add_timed("y", 2, 0);
    const std::int32_t t = add_timed("t", 1, 1);
    const std::int32_t u = add_timed("u", 1, 1);
    const std::int32_t x = add_timed("x", 1, 0);
    const std::int32_t p = add_timed("p", 1, 9);
    dfg_connect(x, p, 0);
    dfg_connect(p, u, 0);
    dfg_connect(u, t, 0);
    dfg_connect(t, y, 0);
    dfg_connect(p, y, 1);
    // 1: y: port 0 0->1, port 1 1->9, depth 9; t 1->2; u 1->10, depth 10; p stays 9.
    // 2: y stays 9 (2, 9); t 2->11, depth 11. 3: y port 0 9->11; port 1 gives 9.
    EXPECT_EQ(balance(), line(1, 4, 10) + line(2, 1, 11) + line(3, 1, 11) + line(4, 0, 11));
    EXPECT_EQ(ready(y), 11);
}

TEST(latency, a_stale_consumer_entry_does_not_pull_its_node) {
    start_graph();
    const std::int32_t first = add_timed("a", 1, 20);
    const std::int32_t second = add_timed("b", 1, 3);
    const std::int32_t t = add_timed("t", 1, 0);
    dfg_connect(first, t, 0);
    dfg_connect(second, t, 0);
    EXPECT_EQ(balance(), line(1, 1, 3) + line(2, 0, 3));
    EXPECT_EQ(ready(t), 3);
}

TEST(latency, balancing_starts_the_depth_from_0_each_time) {
    start_graph();
    const std::int32_t a = add_timed("a", 1, 3);
    dfg_connect(a, add_timed("t", 1, 4), 0);
    EXPECT_EQ(balance(), line(1, 1, 7) + line(2, 0, 7));
    EXPECT_EQ(balance(), line(1, 0, 7));
    EXPECT_EQ(current.max_latency, 7);
}

TEST(latency, a_value_that_depends_on_itself_ends_the_run_before_the_first_sweep) {
    start_graph();
    const std::int32_t t = add_timed("t", 1, 0);
    const std::int32_t sum = add_timed("+", 2, 5);
    dfg_connect(t, sum, 0);
    dfg_connect(sum, t, 0);
    const run_result result = catch_output(balance_latencies);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "t depends on its own value\n");
}

// ---- Programs ----

struct program_depth {
    std::string source;
    std::vector<std::string> switches;
    std::int32_t depth;
    std::vector<std::int32_t> delays;  // lengths, in slot order
};

TEST(latency, the_depth_of_a_program_is_the_sum_along_its_longest_path) {
    const std::vector<program_depth> programs{
        {"float a, b, y; void main() { y = a * b; }", {}, 2 + 5, {}},
        {"float a, b, y; void main() { y = a + b; }", {}, 2 + 5 + 7, {}},
        {"float a, b, y; void main() { y = a / b; }", {}, 1 + 13, {}},
        {"double a, b, y; void main() { y = a * b; }", {}, 2 + 7, {}},
        {"double a, b, y; void main() { y = a + b; }", {}, 2 + 5 + 7, {}},
        {"long a, b, y; void main() { y = a - b; }", {}, 3, {}},
        {"float a, y; void main() { y = sqrt(a); }", {}, 28, {}},
        {"float a, y; void main() { y = a; }", {}, 0, {}},
        // The factor c waits for conversion, sum and normalizer.
        {"float a, b, c, y; void main() { y = (a + b) * c; }", {}, 2 + 5 + 1 + 5, {6}},
        {"float a, b, c, y; void main() { y = (a + b) * c; }", {"-op"}, 1 + 4 + 1 + 5, {5}},
        {"float a, b, c, y; void main() { y = (a + b) * c; }", {"-ni"}, 2 + 5 + 4 + 5, {9}},
        // The product takes IEEE operands at once; x waits behind its conversion.
        {"float x, y, a; void main() { a = x * y + x; }", {}, 4 + 5 + 7, {2}},
        {"float x, y, a; void main() { a = x * y + x; }", {"-mv", "0"}, 2 + 3 + 5 + 7, {3}},
    };
    for (const program_depth& program : programs) {
        const std::string what = program.source + testing::PrintToString(program.switches);
        ASSERT_EQ(optimize_text(program.source, insert_delays, program.switches).status, 0) << what;
        EXPECT_EQ(current.max_latency, program.depth) << what;
        std::vector<std::int32_t> lengths;
        for (const std::int32_t slot : slots_with_component("xfc_delay")) {
            lengths.push_back(attributes_at(slot).latency);
        }
        EXPECT_EQ(lengths, program.delays) << what;
    }
}

TEST(latency, the_sweeps_of_a_program_are_printed_behind_the_banner) {
    // Slots: x 0, y 1, a 2, * 3, + 4, conversion of x 5, conversion into a 6.
    const run_result result = compile({.source = "float x, y, a; void main() { a = x * y + x; }"});
    EXPECT_EQ(result.status, 0);
    // 1: a 0->7, + 5->9 (the second operand leaves 7), conversion 7->16. 2: a 7->16.
    const std::string expected = "*** BALANCE LATENCIES ***\n" + line(1, 3, 16) + line(2, 1, 16) + line(3, 0, 16) +
                                 "*** INSERT DELAYS ***\n*** REMOVE REDUNDANT NODES ***\n";
    EXPECT_NE(result.standard_output.find(expected), std::string::npos) << result.standard_output;
    EXPECT_NE(result.standard_output.find(" Maximum Latency 16    \n"), std::string::npos);
}

}  // namespace

}  // namespace xfc::test
