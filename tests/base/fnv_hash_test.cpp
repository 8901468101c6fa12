#include "base/fnv_hash.h"

#include <gtest/gtest.h>

namespace xfc::test {

namespace {

TEST(fnv_hash, has_the_values_that_its_authors_print) {
    EXPECT_EQ(fnv_hash(""), 0xCBF29CE484222325U);
    EXPECT_EQ(fnv_hash("a"), 0xAF63DC4C8601EC8CU);
    EXPECT_EQ(fnv_hash("foobar"), 0x85944171F73967E8U);
}

TEST(fnv_hash, goes_on_behind_an_earlier_text) { EXPECT_EQ(fnv_hash("bar", fnv_hash("foo")), fnv_hash("foobar")); }

}  // namespace

}  // namespace xfc::test
