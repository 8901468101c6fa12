#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/verifier.h"
#include "exact/properties/program_generator.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// What was found over all programs of a test, so that none passes for want of cases.
struct schedule_tally {
    std::int64_t edges = 0;
    std::int64_t outputs = 0;
    std::int64_t delays = 0;
};

/// Checks every edge and every output of the graph as it stands behind the delays.
void expect_punctual_graph(schedule_tally& seen) {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const node_attributes& to = attributes_at(slot);
        seen.delays += node_at(slot).name == "delay" ? 1 : 0;
        bool driven = false;
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            if (driver(slot, port) != no_slot) {
                EXPECT_EQ(attributes_at(driver(slot, port)).ready_time + to.latency, to.ready_time)
                    << "input " << slot << "." << port;
                driven = true;
                ++seen.edges;
            }
        }
        if (driven && consumers(slot).empty()) {
            EXPECT_EQ(to.ready_time, current.max_latency) << "output " << slot;
            ++seen.outputs;
        }
    }
}

schedule_tally expect_punctual_programs(program_request request, std::uint64_t count) {
    schedule_tally seen;
    for (request.seed = 3000; request.seed < 3000 + count; ++request.seed) {
        const std::string source = generate_program(request);
        const run_result result = optimize_text(source, insert_delays, generate_switches(request.seed));
        EXPECT_EQ(result.status, 0) << result.standard_error;
        EXPECT_EQ(verify_schedule(), "");
        expect_punctual_graph(seen);
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "seed " << request.seed << "\n" << source;
            break;
        }
    }
    return seen;
}

void expect_many(const schedule_tally& seen, std::int64_t programs) {
    EXPECT_GT(seen.edges, 20 * programs);
    EXPECT_GE(seen.outputs, programs);
    EXPECT_GT(seen.delays, programs);
}

TEST(schedule, single_precision_operands_arrive_in_the_cycle_in_which_they_are_needed) {
    expect_many(expect_punctual_programs({.kind = program_kind::single_precision}, 45), 45);
}

TEST(schedule, double_precision_operands_arrive_in_the_cycle_in_which_they_are_needed) {
    expect_many(expect_punctual_programs({.kind = program_kind::double_precision}, 45), 45);
}

TEST(schedule, integer_operands_arrive_in_the_cycle_in_which_they_are_needed) {
    expect_many(expect_punctual_programs({.kind = program_kind::integer}, 45), 45);
}

TEST(schedule, mixed_operands_arrive_in_the_cycle_in_which_they_are_needed) {
    expect_many(expect_punctual_programs({.kind = program_kind::mixed}, 90), 90);
}

// ---- Links ----

std::string link_violation;
int passes_seen = 0;
int passes_checked = 0;

void check_links(std::size_t index) {
    ++passes_seen;
    const auto passes = optimizer_passes();
    for (std::size_t row = 0; row <= index; ++row) {
        // Merging moves first consumers only and leaves entries behind.
        if (passes[row].run == remove_redundant_nodes) {
            return;
        }
    }
    ++passes_checked;
    const std::string violation = verify_graph({.every_consumer_agrees = true, .acyclic = true});
    if (link_violation.empty() && !violation.empty()) {
        link_violation = std::string(passes[index].banner) + violation;
    }
}

/// Runs all passes with the links checked behind each.
void expect_matching_links(program_request request, std::uint64_t count) {
    const auto listener = after_optimizer_pass;
    for (request.seed = 4000; request.seed < 4000 + count; ++request.seed) {
        const std::string source = generate_program(request);
        ASSERT_EQ(translate_text(source).status, 0) << source;
        set_options(generate_switches(request.seed));
        link_violation.clear();
        passes_seen = 0;
        passes_checked = 0;
        after_optimizer_pass = check_links;
        EXPECT_EQ(catch_output(optimize_datapath).status, 0) << source;
        after_optimizer_pass = listener;
        ASSERT_EQ(link_violation, "") << "seed " << request.seed << "\n" << source;
        EXPECT_EQ(passes_seen, 12);
        EXPECT_EQ(passes_checked, 10);
    }
}

TEST(links, agree_in_both_directions_behind_every_pass_of_single_precision_programs) {
    expect_matching_links({.kind = program_kind::single_precision}, 27);
}

TEST(links, agree_in_both_directions_behind_every_pass_of_double_precision_programs) {
    expect_matching_links({.kind = program_kind::double_precision}, 27);
}

TEST(links, agree_in_both_directions_behind_every_pass_of_integer_programs) {
    expect_matching_links({.kind = program_kind::integer}, 27);
}

TEST(links, agree_in_both_directions_behind_every_pass_of_mixed_programs) {
    expect_matching_links({.kind = program_kind::mixed}, 54);
}

}  // namespace

}  // namespace xfc::test
