#include "base/wrapping.h"

#include <gtest/gtest.h>

#include <limits>

namespace xfc::test {

namespace {

constexpr auto lowest = std::numeric_limits<std::int32_t>::min();
constexpr auto highest = std::numeric_limits<std::int32_t>::max();

TEST(wrapping, arithmetic_keeps_the_low_32_bits) {
    EXPECT_EQ(wrapping_add(highest, 1), lowest);
    EXPECT_EQ(wrapping_subtract(lowest, 1), highest);
    EXPECT_EQ(wrapping_multiply(65536, 65536), 0);
    EXPECT_EQ(wrapping_multiply(highest, 2), -2);
    EXPECT_EQ(wrapping_add(2, -5), -3);
}

TEST(truncation, goes_toward_zero) {
    EXPECT_EQ(truncate_to_int32(3.99), 3);
    EXPECT_EQ(truncate_to_int32(-3.99), -3);
    EXPECT_EQ(truncate_to_int32(-0.5), 0);
    EXPECT_EQ(truncate_to_int32(2147483646.99), 2147483646);
    EXPECT_EQ(truncate_to_int32(-2147483647.99), -2147483647);
}

TEST(truncation, clamps_to_the_32_bit_range) {
    EXPECT_EQ(truncate_to_int32(2147483648.0), highest);
    EXPECT_EQ(truncate_to_int32(-2147483649.0), lowest);
    EXPECT_EQ(truncate_to_int32(1e30), highest);
    EXPECT_EQ(truncate_to_int32(-std::numeric_limits<double>::infinity()), lowest);
    EXPECT_EQ(truncate_to_int32(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace

}  // namespace xfc::test
