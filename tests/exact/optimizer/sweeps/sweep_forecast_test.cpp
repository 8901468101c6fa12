#include "exact/optimizer/sweeps/sweep_forecast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/optimizer/sweeps/forecast_by_blocks.h"
#include "exact/optimizer/sweeps/forecast_by_curves.h"
#include "exact/optimizer/sweeps/forecast_by_lists.h"
#include "exact/optimizer/sweeps/planned_graph.h"
#include "exact/optimizer/sweeps/rounds.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// What is told of the sweeps to come is held against sweeps that really are made.

namespace xfc::test {

namespace {

TEST(sweep_forecast, of_a_balanced_graph_is_one_sweep_without_raises) {
    build(chain({5}), slots_as_planned(2));
    reference::sweep_ready_times();
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(forecast->balances, std::vector<std::int32_t>{0});
    EXPECT_EQ(forecast->depths, std::vector<std::int32_t>{5});
    EXPECT_EQ(forecast->ready_times, (std::vector<std::int32_t>{0, 5}));
}

TEST(sweep_forecast, of_an_empty_graph_is_one_sweep_without_raises) {
    build({}, {});
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(forecast->balances, std::vector<std::int32_t>{0});
    EXPECT_EQ(forecast->depths, std::vector<std::int32_t>{0});
}

TEST(sweep_forecast, tells_how_a_chain_against_the_slots_moves_on_by_one_node_a_sweep) {
    build(chain({2, 3, 4, 5}), slots_against_the_data(5));
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(forecast->balances, (std::vector<std::int32_t>{3, 2, 1, 0}));
    EXPECT_EQ(forecast->depths, (std::vector<std::int32_t>{9, 12, 14, 14}));
    EXPECT_EQ(forecast->ready_times, (std::vector<std::int32_t>{14, 9, 5, 2, 0}));
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

TEST(sweep_forecast, changes_nothing) {
    build(chain({2, 3, 4, 5}), slots_against_the_data(5));
    current.max_latency = 3;
    ASSERT_TRUE(forecast_sweeps().has_value());
    EXPECT_EQ(current.max_latency, 3);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        EXPECT_EQ(attributes_at(slot).ready_time, attributes_at(slot).latency);
    }
}

/// Empty when the sweeps over the planned graph can be told from the start on and really are like that.
std::string forecast_and_compare(const planned_graph& plan, const std::vector<std::size_t>& order) {
    build(plan, order);
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    return forecast ? difference(*forecast, make_sweeps()) : "not told";
}

TEST(sweep_forecast, tells_how_two_operands_raise_a_node_in_turn) {
    // Both operands of the last node are on their way.
    EXPECT_EQ(
        forecast_and_compare({{}, {1, {0}}, {1, {1}}, {7, {0}}, {7, {3}}, {2, {2, 4}}}, slots_against_the_data(6)), "");
}

TEST(sweep_forecast, takes_a_driver_of_both_ports_for_one) {
    build({{}, {4, {0, 0}}, {4, {1, 1}}, {4, {2, 2}}}, slots_against_the_data(4));
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(forecast->balances, (std::vector<std::int32_t>{2, 1, 0}));
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

/// Values that read the one before twice: through a node of `first` cycles and through one of `second` cycles.
planned_graph chain_that_reads_twice(std::int32_t first, std::int32_t second) {
    planned_graph plan{{}};
    for (int value = 0; value < 10; ++value) {
        const std::size_t before = plan.size() - 1;
        plan.push_back({first, {before}});
        plan.push_back({second, {before}});
        plan.push_back({7, {before + 1, before + 2}});
    }
    return plan;
}

TEST(sweep_forecast, tells_how_values_are_raised_that_read_the_one_before_twice) {
    for (const std::int32_t first : {0, 1, 3, 9}) {
        for (const std::int32_t second : {0, 1, 3, 9}) {
            const planned_graph plan = chain_that_reads_twice(first, second);
            EXPECT_EQ(forecast_and_compare(plan, slots_against_the_data(plan.size())), "") << first << " " << second;
        }
    }
}

TEST(sweep_forecast, tells_how_the_later_of_two_operands_comes_a_sweep_after_the_earlier_one) {
    for (const std::size_t later : {1U, 2U}) {
        const planned_graph plan = chain_that_reads_twice(later == 1 ? 3 : 1, later == 1 ? 1 : 3);
        // The earlier operand has a lower slot than its consumer, the later one a higher slot.
        std::vector<std::size_t> order;
        for (std::size_t value = plan.size() - 1; value > 0; value -= 3) {
            order.insert(order.end(), {value - 3 + (3 - later), value, value - 3 + later});
        }
        order.push_back(0);
        EXPECT_EQ(forecast_and_compare(plan, order), "") << later;
    }
}

TEST(sweep_forecast, tells_how_chains_of_their_own_meet) {
    for (const std::size_t more : {0U, 1U, 2U, 15U}) {
        planned_graph plan{{}};
        std::array<std::size_t, 2> ends{0, 0};
        for (std::size_t step = 0; step < 40 + more; ++step) {
            plan.push_back({step % 2 == 0 ? 1 : 9, {ends[0]}});
            ends[0] = plan.size() - 1;
        }
        for (std::size_t step = 0; step < 40; ++step) {
            plan.push_back({step % 2 == 0 ? 9 : 1, {ends[1]}});
            ends[1] = plan.size() - 1;
        }
        for (const bool longer_first : {true, false}) {
            planned_graph joined = plan;
            joined.push_back({2, {ends[longer_first ? 0 : 1], ends[longer_first ? 1 : 0]}});
            EXPECT_EQ(forecast_and_compare(joined, slots_against_the_data(joined.size())), "") << more;
        }
    }
}

/// Each value reads the one before and the one before that: the way over every second value takes fewer sweeps, the one
/// over every value more cycles.
planned_slots chain_that_skips_values(const std::vector<std::int32_t>& latencies) {
    planned_slots result{{{}, {3, {0}}}, {1, 0}};
    std::array<std::size_t, 2> before{1, 0};
    for (const std::int32_t latency : latencies) {
        result.plan.push_back({2, {before[1]}});
        result.plan.push_back({latency, {before[0], result.plan.size() - 1}});
        result.order.insert(result.order.begin(), {result.plan.size() - 2, result.plan.size() - 1});
        before = {result.plan.size() - 1, before[0]};
    }
    return result;
}

TEST(sweep_forecast, tells_how_the_way_of_more_cycles_overtakes_the_one_of_fewer_sweeps) {
    const planned_slots planned = chain_that_skips_values(std::vector<std::int32_t>(500, 3));
    build(planned.plan, planned.order);
    EXPECT_FALSE(forecast_by_lists().has_value());
    const std::optional<sweep_forecast> forecast = forecast_by_curves();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

TEST(sweep_forecast, tells_how_ways_overtake_each_other_that_do_not_repeat) {
    std::mt19937 random(577);  // NOLINT: the same graph in every run
    std::vector<std::int32_t> latencies(500);
    for (std::int32_t& latency : latencies) {
        latency = std::uniform_int_distribution<std::int32_t>(1, 9)(random);
    }
    const planned_slots planned = chain_that_skips_values(latencies);
    build(planned.plan, planned.order);
    EXPECT_FALSE(forecast_by_lists().has_value());
    EXPECT_FALSE(forecast_by_curves().has_value());
    const std::string lines = catch_output(balance_latencies).standard_output;
    build(planned.plan, planned.order);
    EXPECT_EQ(lines, catch_output(reference::balance_latencies).standard_output);
}

TEST(sweep_forecast, is_not_made_when_a_time_would_leave_32_bits) {
    planned_graph plan = chain({2000000000, 2000000000});
    build(plan, slots_against_the_data(3));
    EXPECT_FALSE(forecast_sweeps().has_value());
}

TEST(sweep_forecast, is_made_with_times_and_latencies_below_0) {
    build(chain({2, 3, 4}), slots_against_the_data(4));
    attributes_at(2).ready_time = -1;
    attributes_at(1).latency = -2;
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(forecast->ready_times, (std::vector<std::int32_t>{7, 3, 2, 0}));
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

TEST(sweep_forecast, is_not_made_when_a_time_would_leave_32_bits_downwards) {
    build(chain({2}), slots_against_the_data(2));
    attributes_at(1).ready_time = -2000000000;
    attributes_at(0).latency = -2000000000;
    EXPECT_FALSE(forecast_sweeps().has_value());
}

TEST(sweep_forecast, counts_an_operand_for_the_depth_that_raises_nothing_itself) {
    // The last node waits 50 cycles for its first operand; its second one, at the end of a chain, counts.
    planned_graph plan = chain({4, 4, 4, 4, 4});
    plan.push_back({50, {}});
    plan.push_back({3, {6, 5}});
    for (const bool consumer_first : {true, false}) {
        std::vector<std::size_t> order{6, 5, 4, 3, 2, 1, 0};
        order.insert(consumer_first ? order.begin() : order.end(), 7);
        build(plan, order);
        reference::sweep_ready_times();
        const std::optional<sweep_forecast> forecast = forecast_sweeps();
        ASSERT_TRUE(forecast.has_value());
        EXPECT_EQ(forecast->depths.back(), 23);
        EXPECT_EQ(difference(*forecast, make_sweeps()), "");
    }
}

TEST(sweep_forecast, counts_every_step_of_a_short_branch_for_the_depth) {
    planned_graph plan = chain(std::vector<std::int32_t>(40, 1));
    for (std::size_t step = 0; step < 5; ++step) {
        plan.push_back({30, {step == 0 ? 20 : plan.size() - 1}});
    }
    build(plan, slots_against_the_data(plan.size()));
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(std::vector<std::int32_t>(forecast->depths.begin(), forecast->depths.begin() + 6),
              (std::vector<std::int32_t>{60, 90, 120, 150, 151, 152}));
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

struct forecast_method {
    const char* name;
    std::optional<sweep_forecast> (*forecast)();
};

/// Tells the sweeps over graphs in every way and then makes them.
class random_rounds {
public:
    void check(const planned_slots& planned, int sweeps_before) {
        build(planned.plan, planned.order);
        for (; sweeps_before > 0; --sweeps_before) {
            reference::sweep_ready_times();
        }
        std::array<std::optional<sweep_forecast>, methods_.size()> told;
        for (std::size_t method = 0; method < methods_.size(); ++method) {
            told[method] = methods_[method].forecast();
        }
        const sweep_forecast made = make_sweeps();
        sweeps_ += made.balances.size();
        for (std::size_t method = 0; method < methods_.size(); ++method) {
            if (told[method]) {
                ++told_[method];
                ASSERT_EQ(difference(*told[method], made), "") << methods_[method].name;
            }
        }
    }

    [[nodiscard]] int told_by_lists() const { return told_[0]; }
    [[nodiscard]] int told_by_curves() const { return told_[1]; }
    [[nodiscard]] int told_by_blocks() const { return told_[2]; }
    [[nodiscard]] std::size_t sweeps() const { return sweeps_; }

private:
    static constexpr std::array<forecast_method, 3> methods_{
        {{"lists", forecast_by_lists}, {"curves", forecast_by_curves}, {"blocks", forecast_by_blocks}}};
    std::array<int, methods_.size()> told_{};
    std::size_t sweeps_ = 0;
};

TEST(sweep_forecast, over_random_chains_is_what_sweeps_come_to) {
    std::mt19937 random(19580);  // NOLINT: the same graphs in every run
    random_rounds checks;
    const int count = rounds(200);
    for (int round = 0; round < count; ++round) {
        SCOPED_TRACE(round);
        const planned_slots planned = random_chains(random);
        checks.check(planned, std::uniform_int_distribution<int>(0, 20)(random));
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_GT(checks.told_by_lists(), count * 19 / 20);
    EXPECT_GT(checks.told_by_curves(), count * 19 / 20);
    EXPECT_EQ(checks.told_by_blocks(), count);
    EXPECT_GT(checks.sweeps(), static_cast<std::size_t>(count) * 10);
}

TEST(sweep_forecast, over_random_values_that_read_the_one_before_twice_is_what_sweeps_come_to) {
    std::mt19937 random(31);  // NOLINT: the same graphs in every run
    random_rounds checks;
    const int count = rounds(100);
    for (int round = 0; round < count; ++round) {
        SCOPED_TRACE(round);
        const planned_slots planned = random_double_reads(random, round % 10 == 0 ? 200 : 80);
        checks.check(planned, std::uniform_int_distribution<int>(0, 3)(random) * 6);
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_GT(checks.told_by_lists(), count * 7 / 10);
    EXPECT_GT(checks.told_by_curves(), count * 9 / 10);
    EXPECT_EQ(checks.told_by_blocks(), count);
    EXPECT_GT(checks.sweeps(), static_cast<std::size_t>(count) * 30);
}

/// Adds rungs, each a step behind the one before, which it sees a sweep late, and behind each rung the latest one so
/// far. Returns the latest of all.
std::size_t add_ladder(planned_slots& planned, std::size_t foot, const std::vector<std::int32_t>& steps) {
    std::size_t rung = foot;
    std::size_t latest = foot;
    for (const std::int32_t step : steps) {
        planned.plan.push_back({step, {rung}});
        rung = planned.plan.size() - 1;
        planned.order.insert(planned.order.begin(), rung);
        planned.plan.push_back({0, {latest, rung}});
        latest = planned.plan.size() - 1;
        planned.order.push_back(latest);
    }
    return latest;
}

TEST(sweep_forecast, over_two_ladders_has_the_max_plus_convolution_of_their_steps_as_depths) {
    std::mt19937 random(1729);  // NOLINT: the same graph in every run
    constexpr std::size_t rungs = 60;
    constexpr std::int32_t before = 10000;
    planned_slots planned{{{before, {}}}, {0}};
    std::array<std::vector<std::int32_t>, 2> sums;
    std::size_t foot = 0;
    for (std::vector<std::int32_t>& sum : sums) {
        std::vector<std::int32_t> steps(rungs);
        sum = {0};
        for (std::int32_t& step : steps) {
            step = std::uniform_int_distribution<std::int32_t>(0, 9)(random);
            sum.push_back(sum.back() + step);
        }
        foot = add_ladder(planned, foot, steps);
    }
    build(planned.plan, planned.order);
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    for (std::size_t sweep = 1; sweep <= 2 * rungs; ++sweep) {
        std::int32_t depth = 0;
        for (std::size_t first = 1; first <= std::min(sweep, rungs); ++first) {
            depth = std::max(depth, before + sums[0][first] + sums[1][std::min(sweep - first, rungs)]);
        }
        ASSERT_EQ(forecast->depths[std::min(sweep, forecast->depths.size()) - 1], depth) << sweep;
    }
    EXPECT_EQ(difference(*forecast, make_sweeps()), "");
}

TEST(sweep_forecast, is_what_sweeps_over_mostly_regular_chains_come_to) {
    std::mt19937 random(2718);  // NOLINT: the same graphs in every run
    for (int round = 0; round < 60; ++round) {
        const planned_graph plan = chain(mostly_regular_latencies(random, 100));
        build(plan, slots_against_the_data(plan.size()));
        const std::optional<sweep_forecast> forecast = forecast_sweeps();
        ASSERT_TRUE(forecast.has_value()) << "round " << round;
        ASSERT_EQ(difference(*forecast, make_sweeps()), "") << "round " << round;
    }
}

TEST(sweep_forecast, continues_the_sweeps_that_balancing_has_made) {
    std::mt19937 random(1701);  // NOLINT: the same graphs in every run
    for (int round = 0; round < 5; ++round) {
        const planned_graph plan = chain(mostly_regular_latencies(random, 200));
        build(plan, slots_against_the_data(plan.size()));
        const std::string lines = catch_output(balance_latencies).standard_output;
        const std::int32_t depth = current.max_latency;
        build(plan, slots_against_the_data(plan.size()));
        ASSERT_EQ(lines, catch_output(reference::balance_latencies).standard_output) << "round " << round;
        ASSERT_EQ(depth, current.max_latency) << "round " << round;
    }
}

}  // namespace

}  // namespace xfc::test
