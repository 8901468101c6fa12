#include "exact/optimizer/sweeps/sweep_forecast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/optimizer.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/run_state.h"
#include "exact/support/compile.h"

// What is told of the sweeps to come is held against sweeps that really are made.

namespace xfc::test {

namespace {

/// A node before it has a slot: its component's cycles and the nodes that drive its ports.
struct planned_node {
    std::int32_t latency = 0;
    std::vector<std::size_t> drivers;
};

/// Makes the planned nodes; `order` tells which one gets slot 0, 1, 2, ...
void build(const std::vector<planned_node>& plan, const std::vector<std::size_t>& order) {
    start_graph();
    std::vector<std::int32_t> slots(plan.size());
    for (const std::size_t place : order) {
        const planned_node& node = plan[place];
        slots[place] = add_node("n", std::max(1, static_cast<std::int32_t>(node.drivers.size())));
        attributes_at(slots[place]).latency = node.latency;
        attributes_at(slots[place]).ready_time = node.latency;
    }
    for (std::size_t place = 0; place < plan.size(); ++place) {
        for (std::size_t port = 0; port < plan[place].drivers.size(); ++port) {
            dfg_connect(slots[plan[place].drivers[port]], slots[place], static_cast<std::int32_t>(port));
        }
    }
    max_latency = 0;
}

std::vector<std::size_t> slots_as_planned(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0);
    return order;
}

/// The slots fall along the data, so that each value moves on by one node a sweep.
std::vector<std::size_t> slots_against_the_data(std::size_t count) {
    std::vector<std::size_t> order = slots_as_planned(count);
    std::reverse(order.begin(), order.end());
    return order;
}

/// An input and nodes of those latencies, each driven by the one before.
std::vector<planned_node> chain(const std::vector<std::int32_t>& latencies) {
    std::vector<planned_node> plan{{}};
    for (const std::int32_t latency : latencies) {
        plan.push_back({latency, {plan.size() - 1}});
    }
    return plan;
}

/// Tells the rest and then makes it. Empty when both agree; otherwise the first difference.
std::string compare_with_sweeps(const sweep_forecast& forecast) {
    std::size_t sweep = 0;
    std::int32_t balances = 0;
    do {
        balances = reference::sweep_ready_times();
        const std::string where = "sweep " + std::to_string(sweep) + ": ";
        if (sweep == forecast.balances.size() || sweep == forecast.depths.size()) {
            return where + "not told";
        }
        if (forecast.balances[sweep] != balances) {
            return where + std::to_string(forecast.balances[sweep]) + " raises instead of " + std::to_string(balances);
        }
        if (forecast.depths[sweep] != max_latency) {
            return where + "depth " + std::to_string(forecast.depths[sweep]) + " instead of " +
                   std::to_string(max_latency);
        }
        ++sweep;
    } while (balances != 0);
    if (sweep != forecast.balances.size() || sweep != forecast.depths.size()) {
        return "too many sweeps told";
    }
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (forecast.ready_times[static_cast<std::size_t>(slot)] != attributes_at(slot).ready_time) {
            return "another ready time in slot " + std::to_string(slot);
        }
    }
    return {};
}

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
    EXPECT_EQ(compare_with_sweeps(*forecast), "");
}

TEST(sweep_forecast, changes_nothing) {
    build(chain({2, 3, 4, 5}), slots_against_the_data(5));
    max_latency = 3;
    ASSERT_TRUE(forecast_sweeps().has_value());
    EXPECT_EQ(max_latency, 3);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        EXPECT_EQ(attributes_at(slot).ready_time, attributes_at(slot).latency);
    }
}

/// Empty when the sweeps over the planned graph can be told from the start on and really are like that.
std::string forecast_and_compare(const std::vector<planned_node>& plan, const std::vector<std::size_t>& order) {
    build(plan, order);
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    return forecast ? compare_with_sweeps(*forecast) : "not told";
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
    EXPECT_EQ(compare_with_sweeps(*forecast), "");
}

/// Values that read the one before twice: through a node of `first` cycles and through one of `second` cycles.
std::vector<planned_node> chain_that_reads_twice(std::int32_t first, std::int32_t second) {
    std::vector<planned_node> plan{{}};
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
            const std::vector<planned_node> plan = chain_that_reads_twice(first, second);
            EXPECT_EQ(forecast_and_compare(plan, slots_against_the_data(plan.size())), "") << first << " " << second;
        }
    }
}

TEST(sweep_forecast, tells_how_the_later_of_two_operands_comes_a_sweep_after_the_earlier_one) {
    for (const std::size_t later : {1U, 2U}) {
        const std::vector<planned_node> plan = chain_that_reads_twice(later == 1 ? 3 : 1, later == 1 ? 1 : 3);
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
        std::vector<planned_node> plan{{}};
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
            std::vector<planned_node> joined = plan;
            joined.push_back({2, {ends[longer_first ? 0 : 1], ends[longer_first ? 1 : 0]}});
            EXPECT_EQ(forecast_and_compare(joined, slots_against_the_data(joined.size())), "") << more;
        }
    }
}

TEST(sweep_forecast, is_not_made_where_every_value_would_take_a_long_merge) {
    // The way over every second value takes fewer sweeps, the one over every value more cycles.
    std::vector<planned_node> plan{{}, {3, {0}}};
    std::vector<std::size_t> order{1, 0};
    std::array<std::size_t, 2> before{1, 0};
    for (int value = 0; value < 1000; ++value) {
        plan.push_back({2, {before[1]}});
        plan.push_back({3, {before[0], plan.size() - 1}});
        order.insert(order.begin(), {plan.size() - 2, plan.size() - 1});
        before = {plan.size() - 1, before[0]};
    }
    build(plan, order);
    EXPECT_FALSE(forecast_sweeps().has_value());
    const std::string lines = catch_output(balance_latencies).standard_output;
    build(plan, order);
    EXPECT_EQ(lines, catch_output(reference::balance_latencies).standard_output);
}

TEST(sweep_forecast, is_not_made_when_a_time_would_leave_32_bits) {
    std::vector<planned_node> plan = chain({2000000000, 2000000000});
    build(plan, slots_against_the_data(3));
    EXPECT_FALSE(forecast_sweeps().has_value());
}

TEST(sweep_forecast, is_not_made_with_times_or_latencies_below_0) {
    build(chain({2, 3}), slots_against_the_data(3));
    attributes_at(1).ready_time = -1;
    EXPECT_FALSE(forecast_sweeps().has_value());
    attributes_at(1).ready_time = 0;
    EXPECT_TRUE(forecast_sweeps().has_value());
    attributes_at(1).latency = -1;
    EXPECT_FALSE(forecast_sweeps().has_value());
}

TEST(sweep_forecast, counts_an_operand_for_the_depth_that_raises_nothing_itself) {
    // The last node waits 50 cycles for its first operand; its second one, at the end of a chain, counts.
    std::vector<planned_node> plan = chain({4, 4, 4, 4, 4});
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
        EXPECT_EQ(compare_with_sweeps(*forecast), "");
    }
}

TEST(sweep_forecast, counts_every_step_of_a_short_branch_for_the_depth) {
    std::vector<planned_node> plan = chain(std::vector<std::int32_t>(40, 1));
    for (std::size_t step = 0; step < 5; ++step) {
        plan.push_back({30, {step == 0 ? 20 : plan.size() - 1}});
    }
    build(plan, slots_against_the_data(plan.size()));
    const std::optional<sweep_forecast> forecast = forecast_sweeps();
    ASSERT_TRUE(forecast.has_value());
    EXPECT_EQ(std::vector<std::int32_t>(forecast->depths.begin(), forecast->depths.begin() + 6),
              (std::vector<std::int32_t>{60, 90, 120, 150, 151, 152}));
    EXPECT_EQ(compare_with_sweeps(*forecast), "");
}

class random_plan {
public:
    explicit random_plan(std::mt19937& random) : random_(random) {}

    /// Chains of operations that read the one before, an early or a late value, and now and then each other.
    std::vector<planned_node> make() {
        plan_ = {{}, {below(4), {0}}, {below(80), {0}}};
        const std::int32_t chains = 1 + below(3);
        const std::int32_t oddity = below(3) == 0 ? 5 + below(30) : 1000000;  // statements between two odd ones
        for (std::int32_t count = 0; count < chains; ++count) {
            std::vector<std::int32_t> pattern(1 + static_cast<std::size_t>(below(2) * below(5)));
            for (std::int32_t& latency : pattern) {
                latency = 1 + below(9);
            }
            std::size_t value = below(3) == 0 ? any_node() : 0;
            const std::int32_t statements = 1 + below(60);
            const std::int32_t reads_twice = below(10);
            std::size_t before = value;
            for (std::int32_t statement = 0; statement < statements; ++statement) {
                std::size_t other = static_cast<std::size_t>(below(2));
                if (reads_twice == 0) {
                    other = add(2, {value});
                } else if (reads_twice == 1) {
                    other = add(below(3), {before});
                }
                const bool odd = below(oddity) == 0;
                before = value;
                value = add_statement(value, odd ? any_node() : other,
                                      pattern[static_cast<std::size_t>(statement) % pattern.size()], odd);
            }
        }
        return plan_;
    }

private:
    std::int32_t below(std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random_);
    }

    std::size_t add(std::int32_t latency, std::vector<std::size_t> drivers) {
        plan_.push_back({latency, std::move(drivers)});
        return plan_.size() - 1;
    }

    std::size_t any_node() { return static_cast<std::size_t>(below(static_cast<std::int32_t>(plan_.size()))); }

    std::size_t add_statement(std::size_t value, std::size_t other, std::int32_t latency, bool odd) {
        const std::size_t converted = below(4) != 0 ? value : add(2, {value});
        const std::size_t result = below(2) == 0 ? add(latency, {converted, other}) : add(latency, {other, converted});
        if (below(12) == 0) {
            add(below(9), {2, converted});  // an output that waits for the late value
        }
        if (below(12) == 0) {
            std::size_t output = result;  // an output that is reached in some steps
            for (std::int32_t steps = 1 + below(7); steps > 0; --steps) {
                output = add(below(30), {output});
            }
        }
        return add(odd ? below(3) : 0, {result});
    }

    std::mt19937& random_;
    std::vector<planned_node> plan_;
};

/// Slots as a program gives them (variables first, then operations), in the order of the data, against it, or at
/// random.
std::vector<std::size_t> random_slots(const std::vector<planned_node>& plan, std::mt19937& random) {
    std::vector<std::size_t> order = slots_as_planned(plan.size());
    switch (std::uniform_int_distribution<int>(0, 4)(random)) {
        case 0:
            return order;
        case 1:
            return slots_against_the_data(plan.size());
        case 2:
            std::shuffle(order.begin(), order.end(), random);
            return order;
        default:
            std::stable_partition(order.begin(), order.end(),
                                  [&plan](std::size_t place) { return plan[place].latency == 0; });
            return order;
    }
}

TEST(sweep_forecast, is_what_sweeps_over_random_chains_come_to) {
    std::mt19937 random(19580);  // NOLINT: the same graphs in every run
    int made = 0;
    std::size_t sweeps = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::vector<planned_node> plan = random_plan(random).make();
        build(plan, random_slots(plan, random));
        for (int sweep = std::uniform_int_distribution<int>(0, 20)(random); sweep > 0; --sweep) {
            reference::sweep_ready_times();
        }
        const std::optional<sweep_forecast> forecast = forecast_sweeps();
        if (forecast) {
            ++made;
            sweeps += forecast->balances.size();
            ASSERT_EQ(compare_with_sweeps(*forecast), "") << "round " << round;
        }
    }
    EXPECT_GT(made, 1450);
    EXPECT_GT(sweeps, 20000U);
}

/// Latencies that repeat, but for a few; or that do not repeat at all.
std::vector<std::int32_t> mostly_regular_latencies(std::mt19937& random, std::size_t count) {
    const auto below = [&random](std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
    };
    const std::int32_t period = 1 + below(20);
    std::vector<std::int32_t> latencies(count);
    for (std::size_t place = 0; place < count; ++place) {
        latencies[place] = static_cast<std::int32_t>(place) < period
                               ? 1 + below(9)
                               : latencies[place - static_cast<std::size_t>(period)];
    }
    for (std::int32_t odd = below(5); odd > 0; --odd) {
        latencies[static_cast<std::size_t>(below(static_cast<std::int32_t>(count)))] += below(3);
    }
    return latencies;
}

TEST(sweep_forecast, is_what_sweeps_over_mostly_regular_chains_come_to) {
    std::mt19937 random(2718);  // NOLINT: the same graphs in every run
    for (int round = 0; round < 300; ++round) {
        const std::vector<planned_node> plan = chain(mostly_regular_latencies(random, 100));
        build(plan, slots_against_the_data(plan.size()));
        const std::optional<sweep_forecast> forecast = forecast_sweeps();
        ASSERT_TRUE(forecast.has_value()) << "round " << round;
        ASSERT_EQ(compare_with_sweeps(*forecast), "") << "round " << round;
    }
}

TEST(sweep_forecast, continues_the_sweeps_that_balancing_has_made) {
    std::mt19937 random(1701);  // NOLINT: the same graphs in every run
    for (int round = 0; round < 20; ++round) {
        const std::vector<planned_node> plan = chain(mostly_regular_latencies(random, 200));
        build(plan, slots_against_the_data(plan.size()));
        const std::string lines = catch_output(balance_latencies).standard_output;
        const std::int32_t depth = max_latency;
        build(plan, slots_against_the_data(plan.size()));
        ASSERT_EQ(lines, catch_output(reference::balance_latencies).standard_output) << "round " << round;
        ASSERT_EQ(depth, max_latency) << "round " << round;
    }
}

}  // namespace

}  // namespace xfc::test
