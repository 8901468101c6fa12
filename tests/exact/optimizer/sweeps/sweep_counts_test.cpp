#include "exact/optimizer/sweeps/sweep_counts.h"

#include <gtest/gtest.h>

#include <vector>

namespace xfc::test {

namespace {

TEST(sweep_counts, add_up_events_of_different_strides) {
    sweep_counts counts;
    counts.add(1, 3, 3);  // sweeps 1, 4, 7
    counts.add(0, 1, 5);  // sweeps 0 to 4
    counts.add(4, 1, 1);
    EXPECT_EQ(counts.counts(), (std::vector<std::int32_t>{1, 2, 1, 1, 3, 0, 0, 1}));
}

TEST(sweep_counts, are_none_without_events) { EXPECT_TRUE(sweep_counts().counts().empty()); }

}  // namespace

}  // namespace xfc::test
