#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constants, an_xfloat_adder_constant_has_29_bits_over_a_fill_of_3) {
    start_operands();
    add_constants("xfc_alufp1x", 45, number_format::xfloat, 1, {1.5, -1.5, 0.0, 0.1, -0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(12582912,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- -1.500000
  constsynth0004(42 DOWNTO 14) <= conv_std_logic_vector(524287999,29);  -- X Float
  constsynth0004(13 DOWNTO 11) <= conv_std_logic_vector(7,3);  -- X Float
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.000000
  constsynth0005(42 DOWNTO 14) <= conv_std_logic_vector(8388608,29);  -- X Float
  constsynth0005(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0005(10 DOWNTO 1) <= conv_std_logic_vector(0,10);  -- X Float
  -- 0.100000
  constsynth0006(42 DOWNTO 14) <= conv_std_logic_vector(13421773,29);  -- X Float
  constsynth0006(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0006(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- -0.100000
  constsynth0007(42 DOWNTO 14) <= conv_std_logic_vector(523449138,29);  -- X Float
  constsynth0007(13 DOWNTO 11) <= conv_std_logic_vector(7,3);  -- X Float
  constsynth0007(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- 1000000015047466219876688855040.000000
  constsynth0008(42 DOWNTO 14) <= conv_std_logic_vector(13234890,29);  -- X Float
  constsynth0008(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0008(10 DOWNTO 1) <= conv_std_logic_vector(226,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[42 : 14] = 29'd12582912;  // X Float
  assign constsynth0003[13 : 11] = 3'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // -1.500000
  assign constsynth0004[42 : 14] = 29'd524287999;  // X Float
  assign constsynth0004[13 : 11] = 3'd7;  // X Float
  assign constsynth0004[10 : 1] = 10'd127;  // X Float
  // 0.000000
  assign constsynth0005[42 : 14] = 29'd8388608;  // X Float
  assign constsynth0005[13 : 11] = 3'd0;  // X Float
  assign constsynth0005[10 : 1] = 10'd0;  // X Float
  // 0.100000
  assign constsynth0006[42 : 14] = 29'd13421773;  // X Float
  assign constsynth0006[13 : 11] = 3'd0;  // X Float
  assign constsynth0006[10 : 1] = 10'd123;  // X Float
  // -0.100000
  assign constsynth0007[42 : 14] = 29'd523449138;  // X Float
  assign constsynth0007[13 : 11] = 3'd7;  // X Float
  assign constsynth0007[10 : 1] = 10'd123;  // X Float
  // 1000000015047466219876688855040.000000
  assign constsynth0008[42 : 14] = 29'd13234890;  // X Float
  assign constsynth0008[13 : 11] = 3'd0;  // X Float
  assign constsynth0008[10 : 1] = 10'd226;  // X Float

)");
}

TEST(constants, an_xfloat_adder_constant_has_a_fill_of_7_with_the_wider_mantissa) {
    start_operands();
    current.options.mantissa = 36;
    add_constants("xfc_alufp1x", 49, number_format::xfloat, 0, {1.5, -1.5, 0.1, -1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(46 DOWNTO 18) <= conv_std_logic_vector(12582912,29);  -- X Float
  constsynth0003(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- -1.500000
  constsynth0004(46 DOWNTO 18) <= conv_std_logic_vector(524287999,29);  -- X Float
  constsynth0004(17 DOWNTO 11) <= conv_std_logic_vector(127,7);  -- X Float
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.100000
  constsynth0005(46 DOWNTO 18) <= conv_std_logic_vector(13421773,29);  -- X Float
  constsynth0005(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float
  constsynth0005(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- -1000000015047466219876688855040.000000
  constsynth0006(46 DOWNTO 18) <= conv_std_logic_vector(523636021,29);  -- X Float
  constsynth0006(17 DOWNTO 11) <= conv_std_logic_vector(127,7);  -- X Float
  constsynth0006(10 DOWNTO 1) <= conv_std_logic_vector(226,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[46 : 18] = 29'd12582912;  // X Float
  assign constsynth0003[17 : 11] = 7'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // -1.500000
  assign constsynth0004[46 : 18] = 29'd524287999;  // X Float
  assign constsynth0004[17 : 11] = 7'd127;  // X Float
  assign constsynth0004[10 : 1] = 10'd127;  // X Float
  // 0.100000
  assign constsynth0005[46 : 18] = 29'd13421773;  // X Float
  assign constsynth0005[17 : 11] = 7'd0;  // X Float
  assign constsynth0005[10 : 1] = 10'd123;  // X Float
  // -1000000015047466219876688855040.000000
  assign constsynth0006[46 : 18] = 29'd523636021;  // X Float
  assign constsynth0006[17 : 11] = 7'd127;  // X Float
  assign constsynth0006[10 : 1] = 10'd226;  // X Float

)");
}

TEST(constants, an_xfloat_multiplier_constant_has_25_bits_and_a_complement_for_its_sign) {
    start_operands();
    add_constants("xfc_mulfp1x", 45, number_format::xfloat, 0, {1.5, -1.5, 0.0, 0.1, -0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(42 DOWNTO 18) <= conv_std_logic_vector(12582912,25);  -- X Float (mult)
  constsynth0003(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (mult)
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- -1.500000
  constsynth0004(42 DOWNTO 18) <= conv_std_logic_vector(20971519,25);  -- X Float (mult)
  constsynth0004(17 DOWNTO 11) <= conv_std_logic_vector(127,7);  -- X Float (mult)
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.000000
  constsynth0005(42 DOWNTO 18) <= conv_std_logic_vector(8388608,25);  -- X Float (mult)
  constsynth0005(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (mult)
  constsynth0005(10 DOWNTO 1) <= conv_std_logic_vector(0,10);  -- X Float
  -- 0.100000
  constsynth0006(42 DOWNTO 18) <= conv_std_logic_vector(13421773,25);  -- X Float (mult)
  constsynth0006(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (mult)
  constsynth0006(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- -0.100000
  constsynth0007(42 DOWNTO 18) <= conv_std_logic_vector(20132658,25);  -- X Float (mult)
  constsynth0007(17 DOWNTO 11) <= conv_std_logic_vector(127,7);  -- X Float (mult)
  constsynth0007(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- 1000000015047466219876688855040.000000
  constsynth0008(42 DOWNTO 18) <= conv_std_logic_vector(13234890,25);  -- X Float (mult)
  constsynth0008(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (mult)
  constsynth0008(10 DOWNTO 1) <= conv_std_logic_vector(226,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[42 : 18] = 25'd12582912;  // X Float (mult)
  assign constsynth0003[17 : 11] = 7'd0;  // X Float (mult)
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // -1.500000
  assign constsynth0004[42 : 18] = 25'd20971519;  // X Float (mult)
  assign constsynth0004[17 : 11] = 7'd127;  // X Float (mult)
  assign constsynth0004[10 : 1] = 10'd127;  // X Float
  // 0.000000
  assign constsynth0005[42 : 18] = 25'd8388608;  // X Float (mult)
  assign constsynth0005[17 : 11] = 7'd0;  // X Float (mult)
  assign constsynth0005[10 : 1] = 10'd0;  // X Float
  // 0.100000
  assign constsynth0006[42 : 18] = 25'd13421773;  // X Float (mult)
  assign constsynth0006[17 : 11] = 7'd0;  // X Float (mult)
  assign constsynth0006[10 : 1] = 10'd123;  // X Float
  // -0.100000
  assign constsynth0007[42 : 18] = 25'd20132658;  // X Float (mult)
  assign constsynth0007[17 : 11] = 7'd127;  // X Float (mult)
  assign constsynth0007[10 : 1] = 10'd123;  // X Float
  // 1000000015047466219876688855040.000000
  assign constsynth0008[42 : 18] = 25'd13234890;  // X Float (mult)
  assign constsynth0008[17 : 11] = 7'd0;  // X Float (mult)
  assign constsynth0008[10 : 1] = 10'd226;  // X Float

)");
}

TEST(constants, an_xfloat_multiplier_constant_has_a_fill_of_11_with_the_wider_mantissa) {
    start_operands();
    current.options.mantissa = 36;
    add_constants("xfc_mulfp1x", 49, number_format::xfloat, 1, {1.5, -1.5, 0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(46 DOWNTO 22) <= conv_std_logic_vector(12582912,25);  -- X Float (mult)
  constsynth0003(21 DOWNTO 11) <= conv_std_logic_vector(0,11);  -- X Float (mult)
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- -1.500000
  constsynth0004(46 DOWNTO 22) <= conv_std_logic_vector(20971519,25);  -- X Float (mult)
  constsynth0004(21 DOWNTO 11) <= conv_std_logic_vector(2047,11);  -- X Float (mult)
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.100000
  constsynth0005(46 DOWNTO 22) <= conv_std_logic_vector(13421773,25);  -- X Float (mult)
  constsynth0005(21 DOWNTO 11) <= conv_std_logic_vector(0,11);  -- X Float (mult)
  constsynth0005(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[46 : 22] = 25'd12582912;  // X Float (mult)
  assign constsynth0003[21 : 11] = 11'd0;  // X Float (mult)
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // -1.500000
  assign constsynth0004[46 : 22] = 25'd20971519;  // X Float (mult)
  assign constsynth0004[21 : 11] = 11'd2047;  // X Float (mult)
  assign constsynth0004[10 : 1] = 10'd127;  // X Float
  // 0.100000
  assign constsynth0005[46 : 22] = 25'd13421773;  // X Float (mult)
  assign constsynth0005[21 : 11] = 11'd0;  // X Float (mult)
  assign constsynth0005[10 : 1] = 10'd123;  // X Float

)");
}

TEST(constants, an_xfloat_divider_constant_has_a_sign_over_its_magnitude) {
    start_operands();
    add_constants("xfc_divfp1x", 45, number_format::xfloat, 1, {1.5, -1.5, 0.0, 0.1, -0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(42 DOWNTO 18) <= conv_std_logic_vector(12582912,25);  -- X Float (div)
  constsynth0003(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- -1.500000
  constsynth0004(42 DOWNTO 18) <= conv_std_logic_vector(29360128,25);  -- X Float (div)
  constsynth0004(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.000000
  constsynth0005(42 DOWNTO 18) <= conv_std_logic_vector(8388608,25);  -- X Float (div)
  constsynth0005(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0005(10 DOWNTO 1) <= conv_std_logic_vector(0,10);  -- X Float
  -- 0.100000
  constsynth0006(42 DOWNTO 18) <= conv_std_logic_vector(13421773,25);  -- X Float (div)
  constsynth0006(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0006(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- -0.100000
  constsynth0007(42 DOWNTO 18) <= conv_std_logic_vector(30198989,25);  -- X Float (div)
  constsynth0007(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0007(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float
  -- 1000000015047466219876688855040.000000
  constsynth0008(42 DOWNTO 18) <= conv_std_logic_vector(13234890,25);  -- X Float (div)
  constsynth0008(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0008(10 DOWNTO 1) <= conv_std_logic_vector(226,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[42 : 18] = 25'd12582912;  // X Float (div)
  assign constsynth0003[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // -1.500000
  assign constsynth0004[42 : 18] = 25'd29360128;  // X Float (div)
  assign constsynth0004[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0004[10 : 1] = 10'd127;  // X Float
  // 0.000000
  assign constsynth0005[42 : 18] = 25'd8388608;  // X Float (div)
  assign constsynth0005[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0005[10 : 1] = 10'd0;  // X Float
  // 0.100000
  assign constsynth0006[42 : 18] = 25'd13421773;  // X Float (div)
  assign constsynth0006[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0006[10 : 1] = 10'd123;  // X Float
  // -0.100000
  assign constsynth0007[42 : 18] = 25'd30198989;  // X Float (div)
  assign constsynth0007[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0007[10 : 1] = 10'd123;  // X Float
  // 1000000015047466219876688855040.000000
  assign constsynth0008[42 : 18] = 25'd13234890;  // X Float (div)
  assign constsynth0008[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0008[10 : 1] = 10'd226;  // X Float

)");
}

TEST(constants, an_xfloat_divider_constant_has_a_zero_fill_of_11_with_the_wider_mantissa) {
    start_operands();
    current.options.mantissa = 36;
    add_constants("xfc_divfp1x", 49, number_format::xfloat, 0, {-1.5, 0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- -1.500000
  constsynth0003(46 DOWNTO 22) <= conv_std_logic_vector(29360128,25);  -- X Float (div)
  constsynth0003(21 DOWNTO 11) <= conv_std_logic_vector(0,11);  -- X Float (div)
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  -- 0.100000
  constsynth0004(46 DOWNTO 22) <= conv_std_logic_vector(13421773,25);  -- X Float (div)
  constsynth0004(21 DOWNTO 11) <= conv_std_logic_vector(0,11);  -- X Float (div)
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // -1.500000
  assign constsynth0003[46 : 22] = 25'd29360128;  // X Float (div)
  assign constsynth0003[21 : 11] = 11'd0;  // X Float (div)
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  // 0.100000
  assign constsynth0004[46 : 22] = 25'd13421773;  // X Float (div)
  assign constsynth0004[21 : 11] = 11'd0;  // X Float (div)
  assign constsynth0004[10 : 1] = 10'd123;  // X Float

)");
}

TEST(constants, an_xfloat_constant_of_any_other_component_is_that_of_an_adder) {
    start_operands();
    add_constants("xfc_mulfp1_dot", 45, number_format::xfloat, 1, {-3.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- -3.000000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(524287999,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(7,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(128,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // -3.000000
  assign constsynth0003[42 : 14] = 29'd524287999;  // X Float
  assign constsynth0003[13 : 11] = 3'd7;  // X Float
  assign constsynth0003[10 : 1] = 10'd128;  // X Float

)");
}

}  // namespace

}  // namespace xfc::test
