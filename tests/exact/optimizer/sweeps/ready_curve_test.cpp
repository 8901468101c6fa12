#include "exact/optimizer/sweeps/ready_curve.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "exact/optimizer/sweeps/rounds.h"

// What a curve writer is given is what a reader gets back, in few stretches where it repeats.

namespace xfc::test {

namespace {

using raise_list = std::vector<std::int32_t>;

ready_curve write(const raise_list& raises) {
    curve_writer writer(100);
    for (const std::int32_t raise : raises) {
        writer.append(raise);
    }
    return writer.finish();
}

raise_list read(const ready_curve& curve, std::size_t sweeps) {
    raise_list raises;
    curve_reader reader(&curve);
    for (std::size_t sweep = 0; sweep < sweeps; ++sweep) {
        raises.push_back(reader.read());
    }
    return raises;
}

raise_list repeated(const raise_list& period, std::size_t sweeps) {
    raise_list raises;
    for (std::size_t sweep = 0; sweep < sweeps; ++sweep) {
        raises.push_back(period[sweep % period.size()]);
    }
    return raises;
}

TEST(ready_curve, of_raises_that_repeat_is_one_stretch) {
    const ready_curve curve = write(repeated({5, 0, 7}, 1000));
    ASSERT_EQ(curve.stretches.size(), 1U);
    EXPECT_EQ(curve.stretches[0].period, 3);
    EXPECT_EQ(curve.stretches[0].length, 1000);
    EXPECT_EQ(curve.raises, (raise_list{5, 0, 7}));
    EXPECT_EQ(curve.start, 100);
    EXPECT_EQ(curve.last, 100 + 333 * 12 + 5);
}

TEST(ready_curve, takes_in_what_fits_in_front_of_a_repetition_that_is_found_late) {
    raise_list raises{9, 8};
    for (const std::int32_t raise : repeated({1, 2}, 200)) {
        raises.push_back(raise);
    }
    const ready_curve curve = write(raises);
    ASSERT_EQ(curve.stretches.size(), 2U);
    EXPECT_EQ(curve.stretches[0].length, 2);
    EXPECT_EQ(curve.stretches[1].length, 200);
    EXPECT_EQ(curve.raises, (raise_list{9, 8, 1, 2}));
}

TEST(ready_curve, finds_no_short_repetition_within_a_period) {
    const raise_list period{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3};
    const ready_curve curve = write(repeated(period, 320));
    ASSERT_EQ(curve.stretches.size(), 1U);
    EXPECT_EQ(curve.raises, period);
}

TEST(ready_curve, keeps_no_raises_by_0_at_its_end) {
    EXPECT_TRUE(write(repeated({0}, 100)).stretches.empty());
    const ready_curve curve = write({3, 0, 4, 0, 0});
    EXPECT_EQ(curve.raises, (raise_list{3, 0, 4}));
    raise_list behind_a_repetition = repeated({6}, 100);
    behind_a_repetition.resize(200, 0);
    EXPECT_EQ(write(behind_a_repetition).raises, raise_list{6});
}

TEST(ready_curve, stays_where_it_is_behind_its_end_and_before_a_lag_is_over) {
    const ready_curve curve = write({3, 4});
    curve_reader reader(&curve, 1);
    EXPECT_EQ(reader.read(), 0);
    EXPECT_EQ(reader.read(), 3);
    EXPECT_FALSE(reader.ended());
    EXPECT_EQ(reader.read(), 4);
    EXPECT_TRUE(reader.ended());
    EXPECT_EQ(reader.read(), 0);
    EXPECT_TRUE(curve_reader(nullptr).ended());
}

TEST(ready_curve, is_the_same_whether_blocks_are_written_at_once_or_sweep_by_sweep) {
    std::mt19937 random(99);  // NOLINT: the same curves in every run
    const auto below = [&random](std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
    };
    std::size_t stretches = 0;
    const int count = rounds(300);
    for (int round = 0; round < count; ++round) {
        raise_list raises;
        curve_writer writer(100);
        for (std::int32_t blocks = below(5); blocks > 0; --blocks) {
            raise_list block(1 + static_cast<std::size_t>(below(below(2) == 0 ? 4 : 48)));
            for (std::int32_t& raise : block) {
                raise = below(3);
            }
            const std::int32_t length = below(200);
            writer.append_repeated(block.data(), static_cast<std::int32_t>(block.size()), length);
            const raise_list written = repeated(block, static_cast<std::size_t>(length));
            raises.insert(raises.end(), written.begin(), written.end());
        }
        const ready_curve at_once = writer.finish();
        const ready_curve sweep_by_sweep = write(raises);
        ASSERT_EQ(at_once.raises, sweep_by_sweep.raises) << "round " << round;
        ASSERT_EQ(at_once.last, sweep_by_sweep.last) << "round " << round;
        ASSERT_EQ(at_once.stretches.size(), sweep_by_sweep.stretches.size()) << "round " << round;
        ASSERT_EQ(read(at_once, raises.size()), raises) << "round " << round;
        stretches += at_once.stretches.size();
    }
    EXPECT_GT(stretches, static_cast<std::size_t>(count));
}

}  // namespace

}  // namespace xfc::test
