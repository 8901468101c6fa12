#include "exact/optimizer/verifier.h"
#include "exact/dfg/graph_dump.h"
#include "exact/optimizer/optimizer.h"
#include "exact/optimizer/pass_checks.h"

#include <gtest/gtest.h>

#include <string>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// a and b feed a sum, the sum feeds y.
void make_sum() {
    start_graph();
    add_node("a", 1);
    add_node("b", 1);
    add_node("+", 2);
    add_node("y", 1);
    dfg_connect(0, 2, 0);
    dfg_connect(1, 2, 1);
    dfg_connect(2, 3, 0);
}

constexpr graph_expectations strict{.every_consumer_agrees = true, .acyclic = true};

// ---- Links ----

TEST(graph_verifier, passes_a_sound_graph) {
    make_sum();
    EXPECT_EQ(verify_graph(strict), "");
    EXPECT_TRUE(consumers_agree());
}

TEST(graph_verifier, passes_an_empty_graph) {
    start_graph();
    EXPECT_EQ(verify_graph(strict), "");
}

TEST(graph_verifier, finds_a_consumer_that_does_not_exist) {
    make_sum();
    dfg_add_consumer(2, 4, 0);
    EXPECT_EQ(verify_graph({}), "node 2 has a consumer 4.0 that does not exist");
}

TEST(graph_verifier, finds_a_consumer_port_that_does_not_exist) {
    make_sum();
    dfg_add_consumer(0, 3, 1);
    EXPECT_EQ(verify_graph({}), "node 0 has a consumer 3.1 that does not exist");
    make_sum();
    consumers_of(node_at(0))->port = -1;
    EXPECT_EQ(verify_graph({}), "node 0 has a consumer 2.-1 that does not exist");
}

TEST(graph_verifier, finds_a_source_that_does_not_exist) {
    make_sum();
    dfg_set_source(3, 0, 7, 0);
    EXPECT_EQ(verify_graph({}), "input 3.0 has a source that does not exist");
}

TEST(graph_verifier, finds_a_source_that_does_not_list_its_consumer) {
    make_sum();
    dfg_set_source(3, 0, 1, 0);
    EXPECT_EQ(verify_graph({}), "input 3.0 is driven by node 1, which does not list it");
}

TEST(graph_verifier, tells_the_ports_of_a_consumer_apart) {
    make_sum();
    consumers_of(node_at(1))->port = 0;
    EXPECT_EQ(verify_graph({}), "input 2.1 is driven by node 1, which does not list it");
}

TEST(graph_verifier, finds_a_stale_consumer_only_when_all_must_agree) {
    make_sum();
    dfg_add_consumer(0, 3, 0);
    EXPECT_EQ(verify_graph({}), "");
    EXPECT_EQ(verify_graph({.every_consumer_agrees = true}), "node 0 lists consumer 3.0, which another node drives");
    EXPECT_FALSE(consumers_agree());
}

TEST(graph_verifier, finds_a_consumer_that_nothing_drives) {
    make_sum();
    dfg_add_consumer(0, 1, 0);
    EXPECT_EQ(verify_graph({}), "");
    EXPECT_EQ(verify_graph({.every_consumer_agrees = true}), "node 0 lists consumer 1.0, which another node drives");
}

TEST(graph_verifier, finds_a_cycle_only_when_there_must_be_none) {
    make_sum();
    dfg_connect(3, 0, 0);
    EXPECT_EQ(verify_graph({.every_consumer_agrees = true}), "");
    EXPECT_EQ(verify_graph({.acyclic = true}), "the graph has a cycle");
}

TEST(graph_verifier, finds_a_node_that_drives_itself) {
    start_graph();
    add_node("y", 1);
    dfg_connect(0, 0, 0);
    EXPECT_EQ(verify_graph(strict), "the graph has a cycle");
}

TEST(graph_verifier, sees_the_stale_edges_of_a_program_that_assigns_twice) {
    ASSERT_EQ(translate_text("float a, b, y; main() { y = a; y = b; }\n").status, 0);
    EXPECT_FALSE(consumers_agree());
    EXPECT_EQ(verify_graph({}), "");
    ASSERT_EQ(translate_text("float a, b, y; main() { y = a + b; }\n").status, 0);
    EXPECT_TRUE(consumers_agree());
}

// ---- Schedule ----

/// The sum with a latency of 5 behind operands that are ready in cycle 2, and an output.
void make_schedule() {
    make_sum();
    attributes_at(0).ready_time = 2;
    attributes_at(1).ready_time = 2;
    attributes_at(2).latency = 5;
    attributes_at(2).ready_time = 7;
    attributes_at(3).ready_time = 7;
    current.max_latency = 7;
}

TEST(schedule_verifier, passes_a_punctual_graph) {
    make_schedule();
    EXPECT_EQ(verify_schedule(), "");
}

TEST(schedule_verifier, finds_an_early_operand) {
    make_schedule();
    attributes_at(1).ready_time = 1;
    EXPECT_EQ(verify_schedule(), "input 2.1 gets its operand in cycle 1 and needs it in cycle 2");
}

TEST(schedule_verifier, finds_a_late_operand) {
    make_schedule();
    attributes_at(0).ready_time = 3;
    EXPECT_EQ(verify_schedule(), "input 2.0 gets its operand in cycle 3 and needs it in cycle 2");
}

TEST(schedule_verifier, finds_an_output_that_is_ready_early) {
    make_schedule();
    current.max_latency = 9;
    EXPECT_EQ(verify_schedule(), "output 3 is ready in cycle 7 of 9");
}

TEST(schedule_verifier, does_not_ask_for_outputs_that_nothing_drives) {
    make_schedule();
    add_node("unused", 1);
    EXPECT_EQ(verify_schedule(), "");
}

TEST(schedule_verifier, finds_a_schedule_without_delays) {
    ASSERT_EQ(optimize_text("float a, b, y; main() { y = sqrt(a) + b; }\n", balance_latencies).status, 0);
    EXPECT_NE(verify_schedule(), "");
    insert_delays();
    EXPECT_EQ(verify_schedule(), "");
}

TEST(schedule_verifier, passes_an_output_variable_named_like_a_function) {
    // It is mapped to the function and has its latency, but is delayed as if it had none.
    const run_result result = optimize_text("float a, sqrt, y; main() { sqrt = a; y = exp(a); }\n", insert_delays);
    ASSERT_EQ(result.status, 0);
    ASSERT_NE(attributes_at(slot_named("sqrt")).latency, 0);
    EXPECT_EQ(verify_schedule(), "");
}

// ---- Behind every pass ----

/// The text of the violation that `action` meets, empty when it meets none.
template <class function>
std::string violation_of(function action) {
    try {
        action();
    } catch (const graph_violation& violation) {
        return violation.what();
    }
    return {};
}

TEST(pass_checks, throw_at_a_broken_link_and_show_the_graph) {
    make_sum();
    dfg_set_source(3, 0, 1, 0);
    EXPECT_EQ(violation_of([] { check_behind_pass(0); }),
              std::string(optimizer_passes()[0].banner) +
                  "graph check: input 3.0 is driven by node 1, which does not list it\n" + dump_graph());
}

TEST(pass_checks, throw_at_a_consumer_that_became_stale) {
    make_sum();
    check_behind_pass(0);
    dfg_set_source(3, 0, 1, 0);
    dfg_add_consumer(1, 3, 0);
    EXPECT_TRUE(violation_of([] {
                    check_behind_pass(1);
                }).starts_with("*** IDENTIFY NODES ***\ngraph check: node 2 lists consumer 3.0"));
}

TEST(pass_checks, expect_of_each_pass_what_its_row_promises) {
    const auto passes = optimizer_passes();
    for (std::size_t index = 0; index < passes.size(); ++index) {
        const graph_expectations expected = expectations_behind(index);
        EXPECT_EQ(expected.acyclic, index >= 2) << index;
        EXPECT_EQ(expected.balanced, passes[index].run == insert_delays) << index;
        EXPECT_EQ(expected.every_consumer_agrees, index < 10) << index;
    }
}

TEST(pass_checks, pass_stale_consumers_that_were_there_from_the_start) {
    make_sum();
    dfg_add_consumer(0, 3, 0);
    check_behind_pass(0);
    check_behind_pass(1);
    EXPECT_FALSE(consumers_agree());
}

}  // namespace

}  // namespace xfc::test
