#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constants, an_xfloat_constant_keeps_the_sign_of_a_negative_zero) {
    start_operands();
    add_constants("xfc_alufp1x", 45, number_format::xfloat, 1, {-0.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- -0.000000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(528482303,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(7,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(0,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // -0.000000
  assign constsynth0003[42 : 14] = 29'd528482303;  // X Float
  assign constsynth0003[13 : 11] = 3'd7;  // X Float
  assign constsynth0003[10 : 1] = 10'd0;  // X Float

)");
}

TEST(constants, an_xfloat_constant_below_the_normal_range_has_exponent_0) {
    start_operands();
    add_constants("xfc_alufp1x", 45, number_format::xfloat, 1, {1e-40});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 0.000000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(8459970,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(0,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 0.000000
  assign constsynth0003[42 : 14] = 29'd8459970;  // X Float
  assign constsynth0003[13 : 11] = 3'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd0;  // X Float

)");
}

TEST(constants, an_xfloat_constant_is_rounded_to_single_precision_first) {
    start_operands();
    add_constants("xfc_alufp1x", 45, number_format::xfloat, 1, {16777217.0, 16777219.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 16777216.000000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(8388608,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(151,10);  -- X Float
  -- 16777220.000000
  constsynth0004(42 DOWNTO 14) <= conv_std_logic_vector(8388610,29);  -- X Float
  constsynth0004(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(151,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 16777216.000000
  assign constsynth0003[42 : 14] = 29'd8388608;  // X Float
  assign constsynth0003[13 : 11] = 3'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd151;  // X Float
  // 16777220.000000
  assign constsynth0004[42 : 14] = 29'd8388610;  // X Float
  assign constsynth0004[13 : 11] = 3'd0;  // X Float
  assign constsynth0004[10 : 1] = 10'd151;  // X Float

)");
}

TEST(constants, a_ydouble_adder_constant_has_two_fields_of_29_bits_over_six_zeros) {
    start_operands();
    add_constants("xfc_alufp2x", 80, number_format::ydouble, 1, {1.5, -1.5, 0.0, 0.1, -0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(77 DOWNTO 49) <= conv_std_logic_vector(12582912,29);  -- Y Double
  constsynth0003(48 DOWNTO 20) <= conv_std_logic_vector(0,29);  -- Y Double
  constsynth0003(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  -- -1.500000
  constsynth0004(77 DOWNTO 49) <= conv_std_logic_vector(524287999,29);  -- Y Double
  constsynth0004(48 DOWNTO 20) <= conv_std_logic_vector(536870911,29);  -- Y Double
  constsynth0004(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0004(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  -- 0.000000
  constsynth0005(77 DOWNTO 49) <= conv_std_logic_vector(8388608,29);  -- Y Double
  constsynth0005(48 DOWNTO 20) <= conv_std_logic_vector(0,29);  -- Y Double
  constsynth0005(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0005(13 DOWNTO 1) <= conv_std_logic_vector(0,13);  -- Y Double
  -- 0.100000
  constsynth0006(77 DOWNTO 49) <= conv_std_logic_vector(13421772,29);  -- Y Double
  constsynth0006(48 DOWNTO 20) <= conv_std_logic_vector(429496730,29);  -- Y Double
  constsynth0006(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0006(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double
  -- -0.100000
  constsynth0007(77 DOWNTO 49) <= conv_std_logic_vector(523449139,29);  -- Y Double
  constsynth0007(48 DOWNTO 20) <= conv_std_logic_vector(107374181,29);  -- Y Double
  constsynth0007(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0007(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double
  -- 1000000000000000019884624838656.000000
  constsynth0008(77 DOWNTO 49) <= conv_std_logic_vector(13234889,29);  -- Y Double
  constsynth0008(48 DOWNTO 20) <= conv_std_logic_vector(429952234,29);  -- Y Double
  constsynth0008(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0008(13 DOWNTO 1) <= conv_std_logic_vector(1122,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[77 : 49] = 29'd12582912;  // Y Double
  assign constsynth0003[48 : 20] = 29'd0;  // Y Double
  assign constsynth0003[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1023;  // Y Double
  // -1.500000
  assign constsynth0004[77 : 49] = 29'd524287999;  // Y Double
  assign constsynth0004[48 : 20] = 29'd536870911;  // Y Double
  assign constsynth0004[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0004[13 : 1] = 13'd1023;  // Y Double
  // 0.000000
  assign constsynth0005[77 : 49] = 29'd8388608;  // Y Double
  assign constsynth0005[48 : 20] = 29'd0;  // Y Double
  assign constsynth0005[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0005[13 : 1] = 13'd0;  // Y Double
  // 0.100000
  assign constsynth0006[77 : 49] = 29'd13421772;  // Y Double
  assign constsynth0006[48 : 20] = 29'd429496730;  // Y Double
  assign constsynth0006[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0006[13 : 1] = 13'd1019;  // Y Double
  // -0.100000
  assign constsynth0007[77 : 49] = 29'd523449139;  // Y Double
  assign constsynth0007[48 : 20] = 29'd107374181;  // Y Double
  assign constsynth0007[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0007[13 : 1] = 13'd1019;  // Y Double
  // 1000000000000000019884624838656.000000
  assign constsynth0008[77 : 49] = 29'd13234889;  // Y Double
  assign constsynth0008[48 : 20] = 29'd429952234;  // Y Double
  assign constsynth0008[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0008[13 : 1] = 13'd1122;  // Y Double

)");
}

TEST(constants, a_ydouble_adder_constant_on_the_first_input_is_the_same) {
    start_operands();
    add_constants("xfc_alufp2x", 80, number_format::ydouble, 0, {-1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- -1000000000000000019884624838656.000000
  constsynth0003(77 DOWNTO 49) <= conv_std_logic_vector(523636022,29);  -- Y Double
  constsynth0003(48 DOWNTO 20) <= conv_std_logic_vector(106918677,29);  -- Y Double
  constsynth0003(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1122,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // -1000000000000000019884624838656.000000
  assign constsynth0003[77 : 49] = 29'd523636022;  // Y Double
  assign constsynth0003[48 : 20] = 29'd106918677;  // Y Double
  assign constsynth0003[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1122;  // Y Double

)");
}

TEST(constants, a_ydouble_multiplier_constant_has_two_fields_of_27_bits_with_its_sign) {
    start_operands();
    add_constants("xfc_mulfp2x", 70, number_format::ydouble, 0, {1.5, -1.5, 0.0, 0.1, -0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 1.500000
  constsynth0003(67 DOWNTO 41) <= conv_std_logic_vector(50331648,27);  -- Y Double
  constsynth0003(40 DOWNTO 14) <= conv_std_logic_vector(0,27);  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  -- -1.500000
  constsynth0004(67 DOWNTO 41) <= conv_std_logic_vector(117440512,27);  -- Y Double
  constsynth0004(40 DOWNTO 14) <= conv_std_logic_vector(0,27);  -- Y Double
  constsynth0004(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  -- 0.000000
  constsynth0005(67 DOWNTO 41) <= conv_std_logic_vector(33554432,27);  -- Y Double
  constsynth0005(40 DOWNTO 14) <= conv_std_logic_vector(0,27);  -- Y Double
  constsynth0005(13 DOWNTO 1) <= conv_std_logic_vector(0,13);  -- Y Double
  -- 0.100000
  constsynth0006(67 DOWNTO 41) <= conv_std_logic_vector(53687091,27);  -- Y Double
  constsynth0006(40 DOWNTO 14) <= conv_std_logic_vector(26843546,27);  -- Y Double
  constsynth0006(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double
  -- -0.100000
  constsynth0007(67 DOWNTO 41) <= conv_std_logic_vector(120795955,27);  -- Y Double
  constsynth0007(40 DOWNTO 14) <= conv_std_logic_vector(26843546,27);  -- Y Double
  constsynth0007(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double
  -- 1000000000000000019884624838656.000000
  constsynth0008(67 DOWNTO 41) <= conv_std_logic_vector(52939559,27);  -- Y Double
  constsynth0008(40 DOWNTO 14) <= conv_std_logic_vector(27299050,27);  -- Y Double
  constsynth0008(13 DOWNTO 1) <= conv_std_logic_vector(1122,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 1.500000
  assign constsynth0003[67 : 41] = 27'd50331648;  // Y Double
  assign constsynth0003[40 : 14] = 27'd0;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1023;  // Y Double
  // -1.500000
  assign constsynth0004[67 : 41] = 27'd117440512;  // Y Double
  assign constsynth0004[40 : 14] = 27'd0;  // Y Double
  assign constsynth0004[13 : 1] = 13'd1023;  // Y Double
  // 0.000000
  assign constsynth0005[67 : 41] = 27'd33554432;  // Y Double
  assign constsynth0005[40 : 14] = 27'd0;  // Y Double
  assign constsynth0005[13 : 1] = 13'd0;  // Y Double
  // 0.100000
  assign constsynth0006[67 : 41] = 27'd53687091;  // Y Double
  assign constsynth0006[40 : 14] = 27'd26843546;  // Y Double
  assign constsynth0006[13 : 1] = 13'd1019;  // Y Double
  // -0.100000
  assign constsynth0007[67 : 41] = 27'd120795955;  // Y Double
  assign constsynth0007[40 : 14] = 27'd26843546;  // Y Double
  assign constsynth0007[13 : 1] = 13'd1019;  // Y Double
  // 1000000000000000019884624838656.000000
  assign constsynth0008[67 : 41] = 27'd52939559;  // Y Double
  assign constsynth0008[40 : 14] = 27'd27299050;  // Y Double
  assign constsynth0008[13 : 1] = 13'd1122;  // Y Double

)");
}

TEST(constants, a_ydouble_divider_constant_has_the_multiplier_form) {
    start_operands();
    add_constants("xfc_divfp2x", 70, number_format::ydouble, 1, {-1.5, 0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- -1.500000
  constsynth0003(67 DOWNTO 41) <= conv_std_logic_vector(117440512,27);  -- Y Double
  constsynth0003(40 DOWNTO 14) <= conv_std_logic_vector(0,27);  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  -- 0.100000
  constsynth0004(67 DOWNTO 41) <= conv_std_logic_vector(53687091,27);  -- Y Double
  constsynth0004(40 DOWNTO 14) <= conv_std_logic_vector(26843546,27);  -- Y Double
  constsynth0004(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // -1.500000
  assign constsynth0003[67 : 41] = 27'd117440512;  // Y Double
  assign constsynth0003[40 : 14] = 27'd0;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1023;  // Y Double
  // 0.100000
  assign constsynth0004[67 : 41] = 27'd53687091;  // Y Double
  assign constsynth0004[40 : 14] = 27'd26843546;  // Y Double
  assign constsynth0004[13 : 1] = 13'd1019;  // Y Double

)");
}

TEST(constants, a_ydouble_constant_does_not_depend_on_the_mantissa) {
    start_operands();
    current.options.mantissa = 36;
    add_constants("xfc_mulfp2x", 80, number_format::ydouble, 1, {0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 0.100000
  constsynth0003(67 DOWNTO 41) <= conv_std_logic_vector(53687091,27);  -- Y Double
  constsynth0003(40 DOWNTO 14) <= conv_std_logic_vector(26843546,27);  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 0.100000
  assign constsynth0003[67 : 41] = 27'd53687091;  // Y Double
  assign constsynth0003[40 : 14] = 27'd26843546;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1019;  // Y Double

)");
}

TEST(constants, the_bus_width_of_50_bits_begins_the_double_form) {
    start_operands();
    add_constants("xfc_alufp1x", 50, number_format::xfloat, 1, {2.5});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 2.500000
  constsynth0003(77 DOWNTO 49) <= conv_std_logic_vector(10485760,29);  -- Y Double
  constsynth0003(48 DOWNTO 20) <= conv_std_logic_vector(0,29);  -- Y Double
  constsynth0003(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1024,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 2.500000
  assign constsynth0003[77 : 49] = 29'd10485760;  // Y Double
  assign constsynth0003[48 : 20] = 29'd0;  // Y Double
  assign constsynth0003[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1024;  // Y Double

)");
}

TEST(constants, the_bus_width_of_49_bits_is_still_the_single_form) {
    start_operands();
    add_constants("xfc_alufp2x", 49, number_format::ydouble, 0, {2.5});
    EXPECT_EQ(constants(language::vhdl), R"(
  -- 2.500000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(10485760,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(128,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  // 2.500000
  assign constsynth0003[42 : 14] = 29'd10485760;  // X Float
  assign constsynth0003[13 : 11] = 3'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd128;  // X Float

)");
}

}  // namespace

}  // namespace xfc::test
