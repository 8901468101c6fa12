#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(output_select, single_precision_normalizer_takes_its_option_only_with_target_0) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_normfp1x", "norm", 1, 49);
    add_instance("xfc_normfp1x", "norm", 1, 49, 1);
    add_instance("xfc_normfp1x", "norm", 1, 49, 2);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp1x
  GENERIC MAP (mantissa=>36,inputnormalize=>42,roundnormalize=>45,
               normspeed=>2,target=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),

            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47), cczip=>synth0003(48),ccnan=>synth0003(49));

  cmp1: xfc_normfp1x
  GENERIC MAP (mantissa=>36,inputnormalize=>1,roundnormalize=>45,
               normspeed=>2,target=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),

            cc=>synth0004(46 DOWNTO 1),
            ccsat=>synth0004(47), cczip=>synth0004(48),ccnan=>synth0004(49));

  cmp2: xfc_normfp1x
  GENERIC MAP (mantissa=>36,inputnormalize=>1,roundnormalize=>45,
               normspeed=>2,target=>2)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),

            cc=>synth0005(46 DOWNTO 1),
            ccsat=>synth0005(47), cczip=>synth0005(48),ccnan=>synth0005(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_normfp1x # (.mantissa(36),.inputnormalize(42),.roundnormalize(45),
               .normspeed(2),.target(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),

            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]), .cczip(synth0003[48]),.ccnan(synth0003[49]));

  xfc_normfp1x # (.mantissa(36),.inputnormalize(1),.roundnormalize(45),
               .normspeed(2),.target(1))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),

            .cc(synth0004[46 : 1]),
            .ccsat(synth0004[47]), .cczip(synth0004[48]),.ccnan(synth0004[49]));

  xfc_normfp1x # (.mantissa(36),.inputnormalize(1),.roundnormalize(45),
               .normspeed(2),.target(2))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),

            .cc(synth0005[46 : 1]),
            .ccsat(synth0005[47]), .cczip(synth0005[48]),.ccnan(synth0005[49]));

)");
}

TEST(output_select, double_precision_normalizer_has_ten_bits_more_per_target) {
    start_operands();
    add_instance("xfc_normfp2x", "norm", 1, 80);
    add_instance("xfc_normfp2x", "norm", 1, 80, 1);
    add_instance("xfc_normfp2x", "norm", 1, 80, 2);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp2x
  GENERIC MAP (roundconvert=>0,roundnormalize=>0,normspeed=>3,
               doublespeed=>0,target=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68), cczip=>synth0003(69),ccnan=>synth0003(70));

  cmp1: xfc_normfp2x
  GENERIC MAP (roundconvert=>0,roundnormalize=>0,normspeed=>3,
               doublespeed=>0,target=>1,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78), cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_normfp2x
  GENERIC MAP (roundconvert=>0,roundnormalize=>0,normspeed=>3,
               doublespeed=>0,target=>2,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0005(87 DOWNTO 1),
            ccsat=>synth0005(88), cczip=>synth0005(89),ccnan=>synth0005(90));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_normfp2x # (
.roundconvert(0),.roundnormalize(0),.normspeed(3),
               .doublespeed(0),.target(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]), .cczip(synth0003[69]),.ccnan(synth0003[70]));

  xfc_normfp2x # (
.roundconvert(0),.roundnormalize(0),.normspeed(3),
               .doublespeed(0),.target(1),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]), .cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_normfp2x # (
.roundconvert(0),.roundnormalize(0),.normspeed(3),
               .doublespeed(0),.target(2),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0005[87 : 1]),
            .ccsat(synth0005[88]), .cczip(synth0005[89]),.ccnan(synth0005[90]));

)");
}

TEST(output_select, castftox_prints_any_target) {
    start_operands();
    add_instance("xfc_castftox", "cast", 1, 45);
    add_instance("xfc_castftox", "cast", 1, 45, 1);
    add_instance("xfc_castftox", "cast", 1, 45, 2);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftox
  GENERIC MAP (target=>0,roundconvert=>0,mantissa=>32,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_castftox
  GENERIC MAP (target=>1,roundconvert=>0,mantissa=>32,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_castftox
  GENERIC MAP (target=>2,roundconvert=>0,mantissa=>32,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castftox # (
.target(0),.roundconvert(0),.mantissa(32),.outputpipe(1))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_castftox # (
.target(1),.roundconvert(0),.mantissa(32),.outputpipe(1))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_castftox # (
.target(2),.roundconvert(0),.mantissa(32),.outputpipe(1))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

)");
}

TEST(output_select, castftoy_takes_its_ranges_from_the_width_and_not_from_the_target) {
    start_operands();
    add_instance("castftoy", "cast", 1, 70);
    add_instance("castftoy", "cast", 1, 80);
    add_instance("castftoy", "cast", 1, 70, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castftoy
  GENERIC MAP (target=>0,roundconvert=>0,mantissa=>32)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68),cczip=>synth0003(69),ccnan=>synth0003(70));

  cmp1: castftoy
  GENERIC MAP (target=>0,roundconvert=>0,mantissa=>32)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: castftoy
  GENERIC MAP (target=>1,roundconvert=>0,mantissa=>32)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0005(67 DOWNTO 1),
            ccsat=>synth0005(68),cczip=>synth0005(69),ccnan=>synth0005(70));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castftoy # (.target(0),.roundconvert(0),.mantissa(32))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]),.cczip(synth0003[69]),.ccnan(synth0003[70]));

  castftoy # (.target(0),.roundconvert(0),.mantissa(32))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  castftoy # (.target(1),.roundconvert(0),.mantissa(32))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0005[67 : 1]),
            .ccsat(synth0005[68]),.cczip(synth0005[69]),.ccnan(synth0005[70]));

)");
}

TEST(output_select, castdtoy_takes_its_ranges_from_the_width_and_not_from_the_target) {
    start_operands();
    add_instance("xfc_castdtoy", "cast", 1, 70);
    add_instance("xfc_castdtoy", "cast", 1, 80);
    add_instance("xfc_castdtoy", "cast", 1, 70, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castdtoy
  GENERIC MAP (target=>0,roundconvert=>0,outputpipe=>1,
               doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68),cczip=>synth0003(69),ccnan=>synth0003(70));

  cmp1: xfc_castdtoy
  GENERIC MAP (target=>0,roundconvert=>0,outputpipe=>1,
               doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_castdtoy
  GENERIC MAP (target=>1,roundconvert=>0,outputpipe=>1,
               doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0005(67 DOWNTO 1),
            ccsat=>synth0005(68),cczip=>synth0005(69),ccnan=>synth0005(70));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castdtoy # (
.target(0),.roundconvert(0),.outputpipe(1),
               .doublespeed(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]),.cczip(synth0003[69]),.ccnan(synth0003[70]));

  xfc_castdtoy # (
.target(0),.roundconvert(0),.outputpipe(1),
               .doublespeed(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_castdtoy # (
.target(1),.roundconvert(0),.outputpipe(1),
               .doublespeed(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0005[67 : 1]),
            .ccsat(synth0005[68]),.cczip(synth0005[69]),.ccnan(synth0005[70]));

)");
}

TEST(output_select, castdtox_prints_any_target) {
    start_operands();
    add_instance("castdtox", "cast", 1, 45);
    add_instance("castdtox", "cast", 1, 45, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castdtox
  GENERIC MAP (target=>0,roundconvert=>0,doublespeed=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: castdtox
  GENERIC MAP (target=>1,roundconvert=>0,doublespeed=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castdtox # (
.target(0),.roundconvert(0),.doublespeed(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  castdtox # (
.target(1),.roundconvert(0),.doublespeed(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

)");
}

TEST(output_select, a_single_precision_result_of_32_bits_is_plain_whatever_the_selector) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_mulfp1x", "*", 2, 32, 1);
    add_instance("xfc_divfp1x", "/", 2, 32, 2);
    add_instance("xfc_mulfp1x", "*", 2, 49);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1x
  GENERIC MAP (mantissa=>36,ieeeoutput=>0,xoutput=>1,multoutput=>0,divoutput=>0,
            outputscale=>43,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0003(32 DOWNTO 1));

  cmp1: xfc_divfp1x
  GENERIC MAP (mantissa=>36,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
               roundconvert=>44,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0004(32 DOWNTO 1));

  cmp2: xfc_mulfp1x
  GENERIC MAP (mantissa=>36,ieeeoutput=>1,xoutput=>0,multoutput=>0,divoutput=>0,
            outputscale=>43,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0005(46 DOWNTO 1),
            ccsat=>synth0005(47),cczip=>synth0005(48),ccnan=>synth0005(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1x # (.mantissa(36),.ieeeoutput(0),.xoutput(1),.multoutput(0),.divoutput(0),
            .outputscale(43),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0003[32 : 1]));

  xfc_divfp1x # (.mantissa(36),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
               .roundconvert(44),.synthesize(53))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0004[32 : 1]));

  xfc_mulfp1x # (.mantissa(36),.ieeeoutput(1),.xoutput(0),.multoutput(0),.divoutput(0),
            .outputscale(43),.synthesize(53))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0005[46 : 1]),
            .ccsat(synth0005[47]),.cczip(synth0005[48]),.ccnan(synth0005[49]));

)");
}

TEST(output_select, a_single_precision_result_of_any_width_but_32_has_flags) {
    start_operands();
    add_instance("xfc_mulfp1x", "*", 2, 31, 1);
    add_instance("xfc_mulfp1x", "*", 2, 33, 1);
    add_instance("xfc_divfp1x", "/", 2, 64, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>1,multoutput=>0,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>1,multoutput=>0,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>1,multoutput=>0,divoutput=>0,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(1),.multoutput(0),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(1),.multoutput(0),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(1),.multoutput(0),.divoutput(0),
               .roundconvert(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

)");
}

}  // namespace

}  // namespace xfc::test
