#include "exact/optimizer/optimizer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr std::string_view small_program = "float a, y; main() { y = sqrt(a); }\n";

/// The banners, and between them what the passes themselves print for a program with one latency sweep of changes.
constexpr std::string_view small_log =
    "\n*** INITIALIZE OPTIMIZER SCRATCHPAD ***\n"
    "*** IDENTIFY NODES ***\n"
    "*** INSERT TYPE CONVERSIONS ***\n"
    "*** RENORMALIZE COMPLEX CLUSTERS ***\n"
    "*** ALIAS FUNCTIONS ***\n"
    "*** INSERT NORMALIZATIONS ***\n"
    "*** NODE ATTRIBUTES ***\n"
    "*** MAP FUNCTIONS ***\n"
    "*** BALANCE LATENCIES ***\n"
    // The root keeps its 28 cycles; the output variable, which stands before it, learns of them in the first sweep.
    "  Iterations 1 Balances 1 Depth 28\n"
    "  Iterations 2 Balances 0 Depth 28\n"
    "*** INSERT DELAYS ***\n"
    "*** REMOVE REDUNDANT NODES ***\n"
    "*** ASSIGN REMAINING BUS ATTRIBUTES ***\n";

TEST(optimizer, prints_every_banner_in_order) {
    ASSERT_EQ(translate_text(std::string(small_program)).status, 0);
    const run_result result = catch_output(optimize_datapath);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, small_log);
    EXPECT_EQ(result.standard_error, "");
}

TEST(optimizer, prints_its_log_behind_the_banner_of_the_datapath) {
    const run_result result = compile({.source = std::string(small_program)});
    EXPECT_NE(result.standard_output.find("***   DFG  ***\n**************\n\n" + std::string(small_log)),
              std::string::npos)
        << result.standard_output;
}

TEST(optimizer, runs_nothing_behind_the_banner_of_aliases) {
    const auto passes = optimizer_passes();
    ASSERT_EQ(passes.size(), 12U);
    for (const optimizer_pass& pass : passes) {
        EXPECT_EQ(pass.run == nullptr, pass.banner == "*** ALIAS FUNCTIONS ***\n") << pass.banner;
    }
}

TEST(optimizer, runs_each_pass_once_and_in_order) {
    const std::vector<void (*)()> expected{initialize_scratchpad,
                                           identify_nodes,
                                           insert_type_conversions,
                                           renormalize_complex_clusters,
                                           nullptr,
                                           insert_normalizations,
                                           assign_node_attributes,
                                           map_functions,
                                           balance_latencies,
                                           insert_delays,
                                           remove_redundant_nodes,
                                           assign_remaining_bus_attributes};
    std::vector<void (*)()> passes;
    for (const optimizer_pass& pass : optimizer_passes()) {
        passes.push_back(pass.run);
    }
    EXPECT_EQ(passes, expected);
}

std::vector<std::size_t> called_with;

TEST(optimizer, calls_its_listener_behind_every_pass) {
    ASSERT_EQ(translate_text(std::string(small_program)).status, 0);
    const auto before = after_optimizer_pass;
    called_with.clear();
    after_optimizer_pass = [](std::size_t index) { called_with.push_back(index); };
    EXPECT_EQ(catch_output(optimize_datapath).status, 0);
    after_optimizer_pass = before;
    EXPECT_EQ(called_with, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
}

// ---- Scratchpad ----

TEST(scratchpad, counts_the_consumers_of_every_node) {
    ASSERT_EQ(translate_text("float a, b, y, z; main() { y = a * a + b; z = y; }\n").status, 0);
    initialize_scratchpad();
    EXPECT_EQ(attributes_at(slot_named("a")).fanout, 2);
    EXPECT_EQ(attributes_at(slot_named("b")).fanout, 1);
    EXPECT_EQ(attributes_at(slot_named("*")).fanout, 1);
    EXPECT_EQ(attributes_at(slot_named("y")).fanout, 1);
    EXPECT_EQ(attributes_at(slot_named("z")).fanout, 0);
}

TEST(scratchpad, counts_stale_consumers_too) {
    ASSERT_EQ(translate_text("float a, b, y, z; main() { y = a; y = b; z = y; }\n").status, 0);
    initialize_scratchpad();
    EXPECT_EQ(attributes_at(slot_named("a")).fanout, 1);
    EXPECT_EQ(attributes_at(slot_named("b")).fanout, 1);
}

TEST(scratchpad, is_not_refreshed_by_later_splices) {
    ASSERT_EQ(optimize_text("float a, b, c, y; main() { y = (a + b) * c; }\n", insert_delays).status, 0);
    const std::int32_t norm = slot_named("norm");
    EXPECT_EQ(attributes_at(norm).fanout, 0);
    EXPECT_EQ(dfg_count_consumers(norm), 1);
}

// ---- Identification ----

TEST(identification, clears_the_mark_of_variables_that_nothing_reads) {
    ASSERT_EQ(translate_text("float a, b, t, y; main() { t = a + b; y = t; }\n").status, 0);
    const std::int32_t passed = slot_named("t");
    const std::int32_t output = slot_named("y");
    EXPECT_EQ(attributes_at(passed).is_internal, 1);
    EXPECT_EQ(attributes_at(output).is_internal, 1);
    identify_nodes();
    EXPECT_EQ(attributes_at(passed).is_internal, 1);
    EXPECT_EQ(attributes_at(output).is_internal, 0);
}

TEST(identification, leaves_unassigned_and_constant_variables_alone) {
    ASSERT_EQ(translate_text("float a, k, y; main() { k = 2.5; y = a * k; }\n").status, 0);
    identify_nodes();
    EXPECT_EQ(attributes_at(slot_named("a")).is_internal, 0);
    EXPECT_EQ(attributes_at(slot_named("k")).is_internal, 0);
}

}  // namespace

}  // namespace xfc::test
