#include "exact/optimizer/cycle_check.h"

#include <gtest/gtest.h>

#include <string>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr std::string_view declarations = "float a, b, s, t, u, y;\ndouble d;\n";

run_result optimize(const std::string& statements, void (*last)() = assign_remaining_bus_attributes) {
    return optimize_text(std::string(declarations) + "main()\n{\n" + statements + "\n}\n", last);
}

void expect_cycle(const std::string& statements, std::string_view name) {
    const run_result result = optimize(statements, insert_type_conversions);
    EXPECT_EQ(result.status, 1) << statements;
    EXPECT_EQ(result.standard_error, std::string(name) + " depends on its own value\n") << statements;
    EXPECT_EQ(result.standard_output, "***MAKE EXPRESSIONS***\n");
}

TEST(cycle_check, passes_a_graph_without_cycles) { EXPECT_EQ(optimize("t = a + b; u = t * t; y = u - t;").status, 0); }

TEST(cycle_check, passes_an_empty_graph) {
    start_graph();
    EXPECT_EQ(catch_output(require_acyclic_graph).status, 0);
}

TEST(cycle_check, names_a_variable_that_is_added_to) { expect_cycle("y = y + a;", "y"); }

TEST(cycle_check, names_a_variable_that_is_assigned_to_itself) { expect_cycle("y = y;", "y"); }

TEST(cycle_check, names_a_variable_that_is_multiplied_after_its_assignment) { expect_cycle("t = a; t = t * b;", "t"); }

TEST(cycle_check, follows_the_second_operand_and_functions) {
    expect_cycle("y = a - y;", "y");
    expect_cycle("y = sqrt(-y);", "y");
    expect_cycle("y = ldexp(y, 2);", "y");
}

TEST(cycle_check, follows_a_chain_of_variables) { expect_cycle("t = u; u = s; s = t + a;", "s"); }

TEST(cycle_check, names_the_lowest_variable_on_any_cycle) {
    // u and t lie on one cycle, y on another; s only reads one.
    expect_cycle("y = y + a; u = t * b; t = u; s = t + y;", "t");
}

TEST(cycle_check, does_not_name_variables_in_front_of_or_behind_a_cycle) {
    expect_cycle("s = a + b; t = u + s; u = t; y = t;", "t");
    expect_cycle("s = u; u = u * b; y = s;", "u");
}

TEST(cycle_check, follows_the_source_of_a_variable_that_became_a_constant) { expect_cycle("y = y + a; y = 2.5;", "y"); }

TEST(cycle_check, leaves_out_a_cycle_that_a_later_assignment_opened) {
    const run_result result = optimize("t = t; t = a; y = t;");
    EXPECT_EQ(result.status, 0) << result.standard_error;
}

TEST(cycle_check, comes_right_behind_the_banner_of_the_conversions) {
    const run_result result = compile({.source = "float a, y; main() { y = y + a; }\n"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.standard_output.ends_with("*** IDENTIFY NODES ***\n*** INSERT TYPE CONVERSIONS ***\n"));
    EXPECT_EQ(result.standard_error, "y depends on its own value\n");
    EXPECT_TRUE(result.files.empty());
}

// ---- Cycles that close late ----

/// The sum is made of t itself, then t gets another value. The conversion of the sum's internal format goes into the
/// edge to t all the same, and makes it t's source again.
constexpr std::string_view late_cycle = "t = t + b; t = a; y = t;";

TEST(cycle_check, does_not_see_a_cycle_that_a_conversion_closes_later) {
    EXPECT_EQ(optimize(std::string(late_cycle), map_functions).status, 0);
    const std::int32_t t = slot_named("t");
    EXPECT_EQ(component_name(driver(t)), "xfc_castxtof");
    EXPECT_EQ(driver(driver(t)), slot_named("+"));
}

TEST(cycle_check, finds_a_cycle_that_closed_late_when_latencies_are_balanced) {
    const run_result result = optimize(std::string(late_cycle), balance_latencies);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "***MAKE EXPRESSIONS***\n");
    EXPECT_EQ(result.standard_error, "t depends on its own value\n");
}

TEST(cycle_check, comes_right_behind_the_banner_of_the_balancing) {
    const run_result result =
        compile({.source = std::string(declarations) + "main() { " + std::string(late_cycle) + " }\n"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.standard_output.ends_with("*** MAP FUNCTIONS ***\n*** BALANCE LATENCIES ***\n"))
        << result.standard_output;
    EXPECT_EQ(result.standard_error, "t depends on its own value\n");
    EXPECT_TRUE(result.files.empty());
}

TEST(stale_edges, give_a_variable_its_first_value_back_when_a_conversion_goes_into_them) {
    ASSERT_EQ(optimize("t = d; t = a; y = t;", insert_type_conversions).status, 0);
    const std::int32_t t = slot_named("t");
    EXPECT_EQ(component_name(driver(t)), "xfc_castdtof");
    EXPECT_EQ(driver(driver(t)), slot_named("d"));
    // The second assignment's edge is the stale one now.
    EXPECT_EQ(consumers(slot_named("a")).front(), t);
}

TEST(stale_edges, without_a_conversion_stay_stale) {
    ASSERT_EQ(optimize("t = b; t = a; y = t;", insert_type_conversions).status, 0);
    EXPECT_EQ(driver(slot_named("t")), slot_named("a"));
    EXPECT_EQ(consumers(slot_named("b")).front(), slot_named("t"));
}

// ---- Graphs made by hand ----

TEST(cycle_check, without_a_variable_on_a_cycle_names_its_lowest_node) {
    start_graph();
    add_node("a", 1);
    add_node("/", 2);
    add_node("*", 2);
    dfg_connect(0, 1, 1);
    dfg_connect(2, 1, 0);
    dfg_connect(1, 2, 0);
    const run_result result = catch_output(require_acyclic_graph);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "/ depends on its own value\n");
}

TEST(cycle_check, only_follows_sources) {
    start_graph();
    add_node("a", 1);
    add_node("b", 1);
    dfg_connect(0, 1, 0);
    // A stale consumer entry is no dependence.
    dfg_add_consumer(1, 0, 0);
    EXPECT_EQ(catch_output(require_acyclic_graph).status, 0);
}

TEST(cycle_check, does_not_take_shared_operands_for_a_cycle) {
    start_graph();
    add_node("a", 1);
    for (std::int32_t slot = 1; slot < 60; ++slot) {
        add_node("+", 2);
        dfg_connect(slot - 1, slot, 0);
        dfg_connect(slot - 1, slot, 1);
    }
    EXPECT_EQ(catch_output(require_acyclic_graph).status, 0);
}

TEST(cycle_check, copes_with_chains_as_long_as_the_program) {
    start_graph();
    constexpr std::int32_t length = 300000;
    for (std::int32_t slot = 0; slot < length; ++slot) {
        dfg_create_node("v", 1, 1);
    }
    for (std::int32_t slot = 0; slot + 1 < length; ++slot) {
        dfg_connect(slot + 1, slot, 0);
    }
    EXPECT_EQ(catch_output(require_acyclic_graph).status, 0);
    dfg_connect(5, length - 1, 0);
    const run_result result = catch_output(require_acyclic_graph);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "v depends on its own value\n");
}

}  // namespace

}  // namespace xfc::test
