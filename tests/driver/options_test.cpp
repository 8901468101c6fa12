#include <gtest/gtest.h>

#include "base/compile_options.h"
#include "support/compile.h"

namespace xfc::test {

namespace {

constexpr const char* sum = "float a, b, y; main() { y = a + b; }";

TEST(switches, an_ns_of_3_leaves_the_second_speed_at_2) {
    set_options({"-ns", "3"});
    EXPECT_EQ(compile_options.normspeed, 3);
    EXPECT_EQ(compile_options.normspeed2, 2);
}

TEST(run, a_sum_compiles_to_a_vhdl_file) {
    const run_result result = compile({.source = sum});
    EXPECT_EQ(result.status, 0) << result.standard_error;
    ASSERT_EQ(result.files.size(), 1U);
    EXPECT_EQ(result.files.begin()->first, "prog.vhd");
}

}  // namespace

}  // namespace xfc::test
