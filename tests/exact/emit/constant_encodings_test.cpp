#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constants, an_integer_constant_is_truncated_toward_zero) {
    start_operands();
    add_constants("xfc_alulong", 32, number_format::long_integer, 1,
                  {2.9, -2.9, 0.0, 7.0, -2147483648.0, 2147483647.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(2,32);  -- Long
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(-2,32);  -- Long
  constsynth0005(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- Long
  constsynth0006(32 DOWNTO 1) <= conv_std_logic_vector(7,32);  -- Long
  constsynth0007(32 DOWNTO 1) <= conv_std_logic_vector(-2147483648,32);  -- Long
  constsynth0008(32 DOWNTO 1) <= conv_std_logic_vector(2147483647,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd2;  // Long
  assign constsynth0004[32 : 1] = 32'd4294967294;  // Long
  assign constsynth0005[32 : 1] = 32'd0;  // Long
  assign constsynth0006[32 : 1] = 32'd7;  // Long
  assign constsynth0007[32 : 1] = 32'd2147483648;  // Long
  assign constsynth0008[32 : 1] = 32'd2147483647;  // Long

)");
}

TEST(constants, an_integer_constant_on_the_first_input_is_the_same) {
    start_operands();
    add_constants("xfc_mullong", 32, number_format::long_integer, 0, {2.9, -2.9});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(2,32);  -- Long
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(-2,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd2;  // Long
  assign constsynth0004[32 : 1] = 32'd4294967294;  // Long

)");
}

TEST(constants, a_first_constant_on_a_bus_of_32_bits_is_an_integer_whatever_the_format) {
    start_operands();
    add_constants("xfc_mulfp1x", 32, number_format::single_float, 0, {-2.9});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(-2,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd4294967294;  // Long

)");
}

TEST(constants, a_single_precision_scale_is_an_integer) {
    start_operands();
    add_constants("fp_ldexp", 32, number_format::single_float, 0, {-3.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(-3,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd4294967293;  // Long

)");
}

TEST(constants, a_double_precision_scale_is_an_integer) {
    start_operands();
    add_constants("dp_ldexp", 64, number_format::double_float, 0, {5.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(5,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd5;  // Long

)");
}

TEST(constants, the_scale_of_an_internal_single_precision_component_is_an_integer) {
    start_operands();
    add_constants("xfc_ldexp1x", 45, number_format::xfloat, 0, {4.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(4,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd4;  // Long

)");
}

TEST(constants, the_scale_of_an_internal_double_precision_component_is_an_integer) {
    start_operands();
    add_constants("xfc_ldexp2x", 80, number_format::ydouble, 0, {-4.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(-4,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd4294967292;  // Long

)");
}

TEST(constants, a_first_constant_of_float_format_is_written_in_both_encodings) {
    start_operands();
    add_constants("xfc_alufp1x", 45, number_format::single_float, 0, {1.5, -0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(1069547520,32);  -- IEEE Float
  -- 1.500000
  constsynth0003(42 DOWNTO 14) <= conv_std_logic_vector(12582912,29);  -- X Float
  constsynth0003(13 DOWNTO 11) <= conv_std_logic_vector(0,3);  -- X Float
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(127,10);  -- X Float
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(-1110651699,32);  -- IEEE Float
  -- -0.100000
  constsynth0004(42 DOWNTO 14) <= conv_std_logic_vector(523449138,29);  -- X Float
  constsynth0004(13 DOWNTO 11) <= conv_std_logic_vector(7,3);  -- X Float
  constsynth0004(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd1069547520;  // IEEE Float
  // 1.500000
  assign constsynth0003[42 : 14] = 29'd12582912;  // X Float
  assign constsynth0003[13 : 11] = 3'd0;  // X Float
  assign constsynth0003[10 : 1] = 10'd127;  // X Float
  assign constsynth0004[32 : 1] = 32'd3184315597;  // IEEE Float
  // -0.100000
  assign constsynth0004[42 : 14] = 29'd523449138;  // X Float
  assign constsynth0004[13 : 11] = 3'd7;  // X Float
  assign constsynth0004[10 : 1] = 10'd123;  // X Float

)");
}

TEST(constants, a_first_constant_of_float_format_on_a_wide_bus_is_an_ieee_float_and_a_ydouble) {
    start_operands();
    add_constants("xfc_alufp2x", 80, number_format::single_float, 0, {0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(1036831949,32);  -- IEEE Float
  -- 0.100000
  constsynth0003(77 DOWNTO 49) <= conv_std_logic_vector(13421772,29);  -- Y Double
  constsynth0003(48 DOWNTO 20) <= conv_std_logic_vector(429496730,29);  -- Y Double
  constsynth0003(19 DOWNTO 14) <= "000000";  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd1036831949;  // IEEE Float
  // 0.100000
  assign constsynth0003[77 : 49] = 29'd13421772;  // Y Double
  assign constsynth0003[48 : 20] = 29'd429496730;  // Y Double
  assign constsynth0003[19 : 14] = 6'b000000;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1019;  // Y Double

)");
}

TEST(constants, a_first_constant_of_double_format_is_written_in_both_encodings) {
    start_operands();
    add_constants("xfc_mulfp2x", 64, number_format::double_float, 0, {1.5, -0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(64 DOWNTO 33) <= conv_std_logic_vector(1073217536,32);  -- IEEE Double
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Double
  -- 1.500000
  constsynth0003(67 DOWNTO 41) <= conv_std_logic_vector(50331648,27);  -- Y Double
  constsynth0003(40 DOWNTO 14) <= conv_std_logic_vector(0,27);  -- Y Double
  constsynth0003(13 DOWNTO 1) <= conv_std_logic_vector(1023,13);  -- Y Double
  constsynth0004(64 DOWNTO 33) <= conv_std_logic_vector(-1078355559,32);  -- IEEE Double
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(-1717986918,32);  -- IEEE Double
  -- -0.100000
  constsynth0004(67 DOWNTO 41) <= conv_std_logic_vector(120795955,27);  -- Y Double
  constsynth0004(40 DOWNTO 14) <= conv_std_logic_vector(26843546,27);  -- Y Double
  constsynth0004(13 DOWNTO 1) <= conv_std_logic_vector(1019,13);  -- Y Double

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[64 : 33] = 32'd1073217536;  // IEEE Double
  assign constsynth0003[32 : 1] = 32'd0;  // IEEE Double
  // 1.500000
  assign constsynth0003[67 : 41] = 27'd50331648;  // Y Double
  assign constsynth0003[40 : 14] = 27'd0;  // Y Double
  assign constsynth0003[13 : 1] = 13'd1023;  // Y Double
  assign constsynth0004[64 : 33] = 32'd3216611737;  // IEEE Double
  assign constsynth0004[32 : 1] = 32'd2576980378;  // IEEE Double
  // -0.100000
  assign constsynth0004[67 : 41] = 27'd120795955;  // Y Double
  assign constsynth0004[40 : 14] = 27'd26843546;  // Y Double
  assign constsynth0004[13 : 1] = 13'd1019;  // Y Double

)");
}

TEST(constants, a_first_constant_of_double_format_on_a_narrow_bus_is_an_ieee_double_and_an_xfloat) {
    start_operands();
    add_constants("xfc_divfp1x", 45, number_format::double_float, 0, {-0.1});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(64 DOWNTO 33) <= conv_std_logic_vector(-1078355559,32);  -- IEEE Double
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(-1717986918,32);  -- IEEE Double
  -- -0.100000
  constsynth0003(42 DOWNTO 18) <= conv_std_logic_vector(30198989,25);  -- X Float (div)
  constsynth0003(17 DOWNTO 11) <= conv_std_logic_vector(0,7);  -- X Float (div)
  constsynth0003(10 DOWNTO 1) <= conv_std_logic_vector(123,10);  -- X Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[64 : 33] = 32'd3216611737;  // IEEE Double
  assign constsynth0003[32 : 1] = 32'd2576980378;  // IEEE Double
  // -0.100000
  assign constsynth0003[42 : 18] = 25'd30198989;  // X Float (div)
  assign constsynth0003[17 : 11] = 7'd0;  // X Float (div)
  assign constsynth0003[10 : 1] = 10'd123;  // X Float

)");
}

TEST(constants, a_second_constant_of_float_format_is_an_ieee_float_only_and_no_empty_line_follows) {
    start_operands();
    add_constants("xfc_mulfp1x", 32, number_format::single_float, 1, {1.5, -1.5, 0.0, 0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(1069547520,32);  -- IEEE Float
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(-1077936128,32);  -- IEEE Float
  constsynth0005(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Float
  constsynth0006(32 DOWNTO 1) <= conv_std_logic_vector(1036831949,32);  -- IEEE Float
  constsynth0007(32 DOWNTO 1) <= conv_std_logic_vector(1900671690,32);  -- IEEE Float
)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd1069547520;  // IEEE Float
  assign constsynth0004[32 : 1] = 32'd3217031168;  // IEEE Float
  assign constsynth0005[32 : 1] = 32'd0;  // IEEE Float
  assign constsynth0006[32 : 1] = 32'd1036831949;  // IEEE Float
  assign constsynth0007[32 : 1] = 32'd1900671690;  // IEEE Float
)");
}

TEST(constants, a_second_constant_of_double_format_is_an_ieee_double_only_and_no_empty_line_follows) {
    start_operands();
    add_constants("xfc_mulfp2x", 64, number_format::double_float, 1, {1.5, -1.5, 0.0, 0.1, 1e30});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(64 DOWNTO 33) <= conv_std_logic_vector(1073217536,32);  -- IEEE Double
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Double
  constsynth0004(64 DOWNTO 33) <= conv_std_logic_vector(-1074266112,32);  -- IEEE Double
  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Double
  constsynth0005(64 DOWNTO 33) <= conv_std_logic_vector(0,32);  -- IEEE Double
  constsynth0005(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Double
  constsynth0006(64 DOWNTO 33) <= conv_std_logic_vector(1069128089,32);  -- IEEE Double
  constsynth0006(32 DOWNTO 1) <= conv_std_logic_vector(-1717986918,32);  -- IEEE Double
  constsynth0007(64 DOWNTO 33) <= conv_std_logic_vector(1177108057,32);  -- IEEE Double
  constsynth0007(32 DOWNTO 1) <= conv_std_logic_vector(966823146,32);  -- IEEE Double
)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[64 : 33] = 32'd1073217536;  // IEEE Double
  assign constsynth0003[32 : 1] = 32'd0;  // IEEE Double
  assign constsynth0004[64 : 33] = 32'd3220701184;  // IEEE Double
  assign constsynth0004[32 : 1] = 32'd0;  // IEEE Double
  assign constsynth0005[64 : 33] = 32'd0;  // IEEE Double
  assign constsynth0005[32 : 1] = 32'd0;  // IEEE Double
  assign constsynth0006[64 : 33] = 32'd1069128089;  // IEEE Double
  assign constsynth0006[32 : 1] = 32'd2576980378;  // IEEE Double
  assign constsynth0007[64 : 33] = 32'd1177108057;  // IEEE Double
  assign constsynth0007[32 : 1] = 32'd966823146;  // IEEE Double
)");
}

TEST(constants, a_second_constant_of_a_scaling_function_has_no_special_encoding) {
    start_operands();
    add_constants("dp_ldexp", 64, number_format::double_float, 1, {5.0});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(64 DOWNTO 33) <= conv_std_logic_vector(1075052544,32);  -- IEEE Double
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(0,32);  -- IEEE Double
)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[64 : 33] = 32'd1075052544;  // IEEE Double
  assign constsynth0003[32 : 1] = 32'd0;  // IEEE Double
)");
}

TEST(constants, a_second_constant_of_an_internal_format_on_a_bus_of_32_bits_is_an_integer) {
    start_operands();
    add_constants("xfc_mulfp1x", 32, number_format::xfloat, 1, {-2.9});
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(-2,32);  -- Long

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd4294967294;  // Long

)");
}

}  // namespace

}  // namespace xfc::test
