#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "exact/dfg/graph_dump.h"
#include "exact/properties/program_generator.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/support/compile.h"

// The passes of the compiler against their plainest forms, on generated programs: after every pass both graphs and
// all printed lines must be the same.

namespace xfc::test {

namespace {

using pass_function = void (*)();

struct pass_pair {
    std::string name;
    pass_function fast;
    pass_function plain;
};

const std::vector<pass_pair>& pass_pairs() {
    static const std::vector<pass_pair> pairs{
        {"initialize_scratchpad", initialize_scratchpad, reference::initialize_scratchpad},
        {"identify_nodes", identify_nodes, reference::identify_nodes},
        {"insert_type_conversions", insert_type_conversions, reference::insert_type_conversions},
        {"renormalize_complex_clusters", renormalize_complex_clusters, reference::renormalize_complex_clusters},
        {"insert_normalizations", insert_normalizations, reference::insert_normalizations},
        {"assign_node_attributes", assign_node_attributes, assign_node_attributes},
        {"map_functions", map_functions, map_functions},
        {"balance_latencies", balance_latencies, reference::balance_latencies},
        {"insert_delays", insert_delays, reference::insert_delays},
        {"remove_redundant_nodes", remove_redundant_nodes, reference::remove_redundant_nodes},
        {"assign_remaining_bus_attributes", assign_remaining_bus_attributes,
         reference::assign_remaining_bus_attributes},
    };
    return pairs;
}

struct pass_result {
    std::string graph;
    run_result printed;
};

/// All passes up to the first that ends the run.
std::vector<pass_result> run_passes(const std::string& source, const std::vector<std::string>& switches,
                                    pass_function pass_pair::*version) {
    std::vector<pass_result> results;
    EXPECT_EQ(translate_text(source).status, 0) << source;
    set_options(switches);
    for (const pass_pair& pair : pass_pairs()) {
        run_result printed = catch_output(pair.*version);
        const bool ended = printed.status != 0;
        results.push_back({dump_graph(), std::move(printed)});
        if (ended) {
            break;
        }
    }
    return results;
}

/// How often something happened over all programs of a test, so that no test passes for want of cases.
struct tally {
    int programs = 0;
    int finished = 0;
    int cycles = 0;
    int merges = 0;
};

/// The first difference as a sentence, empty when both versions agree.
std::string compare(const std::string& source, const std::vector<std::string>& switches, tally& seen) {
    const std::vector<pass_result> fast = run_passes(source, switches, &pass_pair::fast);
    const std::vector<pass_result> plain = run_passes(source, switches, &pass_pair::plain);
    ++seen.programs;
    for (std::size_t index = 0; index < fast.size(); ++index) {
        const std::string& pass = pass_pairs()[index].name;
        if (index == plain.size()) {
            return "the plain form ended the run before " + pass + ", the fast one did not";
        }
        if (fast[index].graph != plain[index].graph) {
            return "after " + pass + "\n" + fast[index].graph + "instead of\n" + plain[index].graph;
        }
        if (fast[index].printed.standard_output != plain[index].printed.standard_output) {
            return pass + " printed\n" + fast[index].printed.standard_output + "instead of\n" +
                   plain[index].printed.standard_output;
        }
        // The plain widths do not include the checks behind them.
        const bool checks_follow = index + 1 == pass_pairs().size() && plain[index].printed.status == 0;
        if (!checks_follow && fast[index].printed.standard_error != plain[index].printed.standard_error) {
            return pass + " reported\n" + fast[index].printed.standard_error + "instead of\n" +
                   plain[index].printed.standard_error;
        }
        if (pass == "remove_redundant_nodes" && !fast[index].printed.standard_output.empty()) {
            ++seen.merges;
        }
    }
    if (fast.size() != plain.size()) {
        return "the fast form ended the run before the plain one did";
    }
    seen.finished += fast.size() == pass_pairs().size() ? 1 : 0;
    seen.cycles += fast.back().printed.standard_error.find("depends on its own value") != std::string::npos ? 1 : 0;
    return {};
}

/// Compares `count` programs of that kind.
tally compare_programs(program_request request, std::uint64_t count) {
    tally seen;
    for (request.seed = 0; request.seed < count; ++request.seed) {
        const std::string source = generate_program(request);
        const std::string difference = compare(source, generate_switches(request.seed), seen);
        EXPECT_EQ(difference, "") << "seed " << request.seed << "\n" << source;
        if (!difference.empty()) {
            break;
        }
    }
    return seen;
}

/// Every choice of switches five times.
constexpr std::uint64_t programs_per_test = 45;

TEST(plain_passes, agree_on_single_precision_programs) {
    const tally seen = compare_programs({.kind = program_kind::single_precision}, programs_per_test);
    EXPECT_EQ(seen.finished, seen.programs);
    EXPECT_GT(seen.merges, seen.programs / 2);
}

TEST(plain_passes, agree_on_double_precision_programs) {
    const tally seen = compare_programs({.kind = program_kind::double_precision}, programs_per_test);
    EXPECT_EQ(seen.finished, seen.programs);
    EXPECT_GT(seen.merges, seen.programs / 2);
}

TEST(plain_passes, agree_on_integer_programs) {
    const tally seen = compare_programs({.kind = program_kind::integer}, programs_per_test);
    EXPECT_EQ(seen.finished, seen.programs);
}

TEST(plain_passes, agree_on_mixed_programs) {
    const tally seen = compare_programs({.kind = program_kind::mixed}, programs_per_test);
    EXPECT_EQ(seen.finished, seen.programs);
    EXPECT_GT(seen.merges, seen.programs / 2);
}

TEST(plain_passes, agree_on_programs_that_assign_variables_twice) {
    const tally seen = compare_programs({.kind = program_kind::single_precision, .reassigns = true}, programs_per_test);
    EXPECT_GT(seen.finished, seen.programs / 3);
    EXPECT_GT(seen.cycles, 0);
}

TEST(plain_passes, agree_on_mixed_programs_that_assign_variables_twice) {
    const tally seen = compare_programs({.kind = program_kind::mixed, .reassigns = true}, programs_per_test);
    EXPECT_GT(seen.finished, seen.programs / 3);
    EXPECT_GT(seen.cycles, 0);
}

TEST(plain_passes, agree_on_programs_with_variables_named_like_nodes) {
    const tally seen = compare_programs({.kind = program_kind::mixed, .odd_names = true}, programs_per_test);
    EXPECT_GT(seen.finished, seen.programs / 2);
}

TEST(plain_passes, agree_on_reassigned_variables_named_like_nodes) {
    const tally seen =
        compare_programs({.kind = program_kind::mixed, .reassigns = true, .odd_names = true}, programs_per_test);
    EXPECT_GT(seen.finished, seen.programs / 4);
}

/// A stale consumer entry makes a merged wire drive the wire it is merged into.
TEST(plain_passes, agree_when_a_wire_is_merged_into_its_own_former_consumer) {
    tally seen;
    const std::string source =
        "double d, cast, b, z, w, y; void main() { b = d; cast = b; cast = d; z = cast; w = z; y = cast; }\n";
    EXPECT_EQ(compare(source, {}, seen), "");
    EXPECT_EQ(seen.merges, 1);
}

}  // namespace

}  // namespace xfc::test
