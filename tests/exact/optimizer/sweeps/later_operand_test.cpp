#include "exact/optimizer/sweeps/later_operand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "exact/optimizer/sweeps/rounds.h"

// Nodes whose operands rise in stretches that repeat are held against nodes that are raised sweep by sweep.

namespace xfc::test {

namespace {

/// Raises of a driver in each sweep.
using raises_by_sweep = std::vector<std::int32_t>;

ready_curve curve_of(std::int64_t start, const raises_by_sweep& raises) {
    curve_writer writer(start);
    for (const std::int32_t raise : raises) {
        writer.append(raise);
    }
    return writer.finish();
}

raises_by_sweep raises_of(const ready_curve& curve, std::size_t sweeps) {
    raises_by_sweep raises;
    curve_reader reader(&curve);
    for (std::size_t sweep = 0; sweep < sweeps; ++sweep) {
        raises.push_back(reader.read());
    }
    return raises;
}

struct planned_operand {
    std::int64_t start;
    raises_by_sweep raises;
    std::int32_t lag;
    std::int32_t latency;

    /// What the operand asks for after the sweeps 1, 2, ...
    [[nodiscard]] std::vector<std::int64_t> times(std::size_t sweeps) const {
        std::vector<std::int64_t> result;
        std::int64_t time = start + latency;
        for (std::size_t sweep = 1; sweep <= sweeps; ++sweep) {
            const std::size_t place = sweep - 1 - static_cast<std::size_t>(lag);  // huge where the lag keeps it back
            time += place < raises.size() ? raises[place] : 0;
            result.push_back(time);
        }
        return result;
    }
};

struct node_course {
    raises_by_sweep raises;
    std::vector<std::int32_t> second_raises;
    bool operator==(const node_course&) const = default;
};

node_course sweep_by_sweep(std::int64_t time, const planned_operand& first, const planned_operand& second,
                           std::size_t sweeps) {
    node_course course;
    const std::vector<std::int64_t> first_times = first.times(sweeps);
    const std::vector<std::int64_t> second_times = second.times(sweeps);
    for (std::size_t sweep = 0; sweep < sweeps; ++sweep) {
        const std::int64_t before = time;
        const bool by_first = first_times[sweep] > time;
        time = std::max(time, first_times[sweep]);
        const bool by_second = second_times[sweep] > time;
        time = std::max(time, second_times[sweep]);
        course.raises.push_back(static_cast<std::int32_t>(time - before));
        course.second_raises.push_back(by_first && by_second ? 1 : 0);
    }
    return course;
}

node_course many_at_a_time(std::int64_t time, const planned_operand& first, const planned_operand& second,
                           std::size_t sweeps) {
    const ready_curve first_curve = curve_of(first.start, first.raises);
    const ready_curve second_curve = curve_of(second.start, second.raises);
    sweep_counts second_raises;
    later_operand nodes(second_raises, 1000000);
    const ready_curve curve =
        nodes.of(time, {&first_curve, first.lag, first.latency}, {&second_curve, second.lag, second.latency});
    node_course course{raises_of(curve, sweeps), second_raises.counts()};
    course.second_raises.resize(sweeps, 0);
    return course;
}

class random_operands {
public:
    explicit random_operands(std::uint32_t seed) : random_(seed) {}

    std::int32_t below(std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random_);
    }

    planned_operand make() {
        planned_operand operand{below(60), {}, below(2), below(20)};
        for (std::int32_t stretches = below(4); stretches > 0; --stretches) {
            std::vector<std::int32_t> period(static_cast<std::size_t>(1 + below(below(2) == 0 ? 3 : 8)));
            for (std::int32_t& raise : period) {
                raise = below(3) == 0 ? 0 : below(7);
            }
            for (std::int32_t sweep = 0, sweeps = below(300); sweep < sweeps; ++sweep) {
                operand.raises.push_back(period[static_cast<std::size_t>(sweep) % period.size()]);
            }
        }
        return operand;
    }

private:
    std::mt19937 random_;
};

TEST(later_operand, raises_a_node_as_sweeps_do) {
    random_operands random(4711);  // the same operands in every run
    const int count = rounds(1000);
    for (int round = 0; round < count; ++round) {
        const planned_operand first = random.make();
        const planned_operand second = random.make();
        const std::int64_t start = random.below(2) == 0 ? random.below(60) : random.below(600);
        const std::size_t sweeps = std::max(first.raises.size(), second.raises.size()) + 2;
        ASSERT_TRUE(sweep_by_sweep(start, first, second, sweeps) == many_at_a_time(start, first, second, sweeps))
            << "round " << round;
    }
}

TEST(later_operand, goes_sweep_by_sweep_while_two_operands_that_drift_apart_take_turns) {
    raises_by_sweep fast;
    raises_by_sweep slow;
    for (int block = 0; block < 50; ++block) {
        fast.insert(fast.end(), {10, 28});
        slow.insert(slow.end(), {27, 10});
    }
    const planned_operand first{0, fast, 0, 3};
    const planned_operand second{0, slow, 0, 0};
    const std::size_t sweeps = 101;
    EXPECT_TRUE(sweep_by_sweep(0, first, second, sweeps) == many_at_a_time(0, first, second, sweeps));
}

ready_curve steady_rise(std::int32_t raise, std::int32_t sweeps) {
    curve_writer writer(0);
    writer.append_repeated(&raise, 1, sweeps);
    return writer.finish();
}

TEST(later_operand, takes_as_many_steps_for_a_million_sweeps_as_for_a_thousand) {
    for (const std::int32_t sweeps : {1000, 1000000}) {
        const ready_curve fast = steady_rise(5, sweeps / 2);
        const ready_curve slow = steady_rise(3, sweeps);
        sweep_counts second_raises;
        later_operand nodes(second_raises, 50);
        const ready_curve curve = nodes.of(0, {&fast, 0, 1}, {&slow, 0, 1});
        EXPECT_FALSE(nodes.exceeded());
        EXPECT_EQ(curve.last, 3 * sweeps + 1);
    }
}

TEST(later_operand, tells_when_its_steps_do_not_suffice) {
    const ready_curve rise = steady_rise(5, 1000);
    sweep_counts second_raises;
    later_operand nodes(second_raises, 1);
    static_cast<void>(nodes.of(0, {&rise, 0, 1}, {}));
    EXPECT_TRUE(nodes.exceeded());
}

}  // namespace

}  // namespace xfc::test
