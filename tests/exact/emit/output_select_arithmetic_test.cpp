#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(output_select, single_precision_multiplier_has_four_outputs_and_no_line_for_a_fifth) {
    start_operands();
    add_instance("xfc_mulfp1x", "*", 2, 45, 2);
    add_instance("xfc_mulfp1x", "*", 2, 45, 3);
    add_instance("xfc_mulfp1x", "*", 2, 45, 4);
    add_instance("xfc_mulfp1x", "*", 2, 45, -1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>0,divoutput=>1,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

  cmp3: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0006(42 DOWNTO 1),
            ccsat=>synth0006(43),cczip=>synth0006(44),ccnan=>synth0006(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(0),.divoutput(1),
            .outputscale(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_mulfp1x # (.mantissa(32),            .outputscale(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

  xfc_mulfp1x # (.mantissa(32),            .outputscale(0),.synthesize(0))
  cmp3 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0006[42 : 1]),
            .ccsat(synth0006[43]),.cczip(synth0006[44]),.ccnan(synth0006[45]));

)");
}

TEST(output_select, single_precision_divider_has_four_outputs_and_no_line_for_a_fifth) {
    start_operands();
    add_instance("xfc_divfp1x", "*", 2, 45, 2);
    add_instance("xfc_divfp1x", "*", 2, 45, 3);
    add_instance("xfc_divfp1x", "*", 2, 45, 4);
    add_instance("xfc_divfp1x", "*", 2, 45, -1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>0,divoutput=>1,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_divfp1x
  GENERIC MAP (mantissa=>32,               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

  cmp3: xfc_divfp1x
  GENERIC MAP (mantissa=>32,               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0006(42 DOWNTO 1),
            ccsat=>synth0006(43),cczip=>synth0006(44),ccnan=>synth0006(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
               .roundconvert(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(0),.divoutput(1),
               .roundconvert(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_divfp1x # (.mantissa(32),               .roundconvert(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

  xfc_divfp1x # (.mantissa(32),               .roundconvert(0),.synthesize(0))
  cmp3 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0006[42 : 1]),
            .ccsat(synth0006[43]),.cczip(synth0006[44]),.ccnan(synth0006[45]));

)");
}

TEST(output_select, double_precision_multiplier_has_three_outputs_and_neither_line_nor_result_for_a_fourth) {
    start_operands();
    add_instance("xfc_mulfp2x", "*", 2, 80);
    add_instance("xfc_mulfp2x", "*", 2, 80, 1);
    add_instance("xfc_mulfp2x", "*", 2, 80, 2);
    add_instance("xfc_mulfp2x", "*", 2, 80, 3);
    add_instance("xfc_mulfp2x", "*", 2, 80, -1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>1,xoutput=>0,multoutput=>0,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(64 DOWNTO 1));

  cmp1: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,multoutput=>0,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>0,multoutput=>1,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0005(67 DOWNTO 1),
            ccsat=>synth0005(68),cczip=>synth0005(69),ccnan=>synth0005(70));

  cmp3: xfc_mulfp2x
  GENERIC MAP (               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
  cmp4: xfc_mulfp2x
  GENERIC MAP (               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp2x # (
.ieeeoutput(1),.xoutput(0),.multoutput(0),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[64 : 1]));

  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(1),.multoutput(0),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(0),.multoutput(1),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0005[67 : 1]),
            .ccsat(synth0005[68]),.cczip(synth0005[69]),.ccnan(synth0005[70]));

  xfc_mulfp2x # (
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp3 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
  xfc_mulfp2x # (
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp4 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
)");
}

TEST(output_select, double_precision_divider_has_three_outputs_and_neither_line_nor_result_for_a_fourth) {
    start_operands();
    add_instance("xfc_divfp2x", "*", 2, 80);
    add_instance("xfc_divfp2x", "*", 2, 80, 1);
    add_instance("xfc_divfp2x", "*", 2, 80, 2);
    add_instance("xfc_divfp2x", "*", 2, 80, 3);
    add_instance("xfc_divfp2x", "*", 2, 80, -1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>1,xoutput=>0,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(64 DOWNTO 1));

  cmp1: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>0,divoutput=>1,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0005(67 DOWNTO 1),
            ccsat=>synth0005(68),cczip=>synth0005(69),ccnan=>synth0005(70));

  cmp3: xfc_divfp2x
  GENERIC MAP (               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
  cmp4: xfc_divfp2x
  GENERIC MAP (               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp2x # (
.ieeeoutput(1),.xoutput(0),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[64 : 1]));

  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(1),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(0),.divoutput(1),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0005[67 : 1]),
            .ccsat(synth0005[68]),.cczip(synth0005[69]),.ccnan(synth0005[70]));

  xfc_divfp2x # (
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp3 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
  xfc_divfp2x # (
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp4 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
)");
}

}  // namespace

}  // namespace xfc::test
