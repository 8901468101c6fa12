#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constant_operands, double_precision_adder_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_alufp2x", "+", 2, 80);
    const std::int32_t bb = add_instance("xfc_alufp2x", "+", 2, 80);
    const std::int32_t both = add_instance("xfc_alufp2x", "+", 2, 80);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp2x
  GENERIC MAP (shiftspeed=>1,doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>constsynth0003(77 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>synth0001(77 DOWNTO 1),
            bbsat=>synth0001(78),bbzip=>synth0001(79),bbnan=>synth0001(80),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

  cmp1: xfc_alufp2x
  GENERIC MAP (shiftspeed=>1,doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),
            bb=>constsynth0004(77 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_alufp2x
  GENERIC MAP (shiftspeed=>1,doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>constsynth0005(77 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(77 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(77 DOWNTO 1),
            ccsat=>synth0005(78),cczip=>synth0005(79),ccnan=>synth0005(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp2x # (.shiftspeed(1),.doublespeed(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(constsynth0003[77 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[77 : 1]),
            .bbsat(synth0001[78]),.bbzip(synth0001[79]),.bbnan(synth0001[80]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

  xfc_alufp2x # (.shiftspeed(1),.doublespeed(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),
            .bb(constsynth0004[77 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_alufp2x # (.shiftspeed(1),.doublespeed(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(constsynth0005[77 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[77 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[77 : 1]),
            .ccsat(synth0005[78]),.cczip(synth0005[79]),.ccnan(synth0005[80]));

)");
}

TEST(constant_operands, double_precision_multiplier_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_mulfp2x", "*", 2, 70, 2);
    const std::int32_t bb = add_instance("xfc_mulfp2x", "*", 2, 70, 2);
    const std::int32_t both = add_instance("xfc_mulfp2x", "*", 2, 70, 2);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>0,multoutput=>1,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0003(67 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68),cczip=>synth0003(69),ccnan=>synth0003(70));

  cmp1: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>0,multoutput=>1,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>constsynth0004(67 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(67 DOWNTO 1),
            ccsat=>synth0004(68),cczip=>synth0004(69),ccnan=>synth0004(70));

  cmp2: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>0,multoutput=>1,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0005(67 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(67 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(67 DOWNTO 1),
            ccsat=>synth0005(68),cczip=>synth0005(69),ccnan=>synth0005(70));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(0),.multoutput(1),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0003[67 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]),.cczip(synth0003[69]),.ccnan(synth0003[70]));

  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(0),.multoutput(1),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(constsynth0004[67 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[67 : 1]),
            .ccsat(synth0004[68]),.cczip(synth0004[69]),.ccnan(synth0004[70]));

  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(0),.multoutput(1),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0005[67 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[67 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[67 : 1]),
            .ccsat(synth0005[68]),.cczip(synth0005[69]),.ccnan(synth0005[70]));

)");
}

TEST(constant_operands, double_precision_divider_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_divfp2x", "/", 2, 80, 1);
    const std::int32_t bb = add_instance("xfc_divfp2x", "/", 2, 80, 1);
    const std::int32_t both = add_instance("xfc_divfp2x", "/", 2, 80, 1);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0003(67 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

  cmp1: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>constsynth0004(67 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(77 DOWNTO 1),
            ccsat=>synth0004(78),cczip=>synth0004(79),ccnan=>synth0004(80));

  cmp2: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0005(67 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(67 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(77 DOWNTO 1),
            ccsat=>synth0005(78),cczip=>synth0005(79),ccnan=>synth0005(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(1),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0003[67 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(1),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(constsynth0004[67 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[77 : 1]),
            .ccsat(synth0004[78]),.cczip(synth0004[79]),.ccnan(synth0004[80]));

  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(1),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0005[67 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[67 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[77 : 1]),
            .ccsat(synth0005[78]),.cczip(synth0005[79]),.ccnan(synth0005[80]));

)");
}

/// The operand keeps its driver, so that what the instance names can be seen.
std::int32_t mark_as_constant(std::int32_t slot, std::int32_t port) {
    node_at(slot).inputs[port].is_constant = 1;
    return slot;
}

TEST(constant_operands, the_dot_product_adder_reads_its_drivers_all_the_same) {
    start_operands();
    mark_as_constant(mark_as_constant(add_instance("xfc_alufp1_dot", "-", 2, 45), 0), 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1_dot
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp1_dot # (.mantissa(32),.shiftspeed(1),.outputpipe(1))
  cmp0  (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(constant_operands, the_dot_product_multiplier_reads_its_drivers_all_the_same) {
    start_operands();
    mark_as_constant(mark_as_constant(add_instance("xfc_mulfp1_dot", "*", 2, 45), 0), 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1_dot
  GENERIC MAP (mantissa=>32,device=>0,optimization=>1,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1_dot # (.mantissa(32),.device(0),.optimization(1),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(constant_operands, a_normalizer_reads_its_driver_all_the_same) {
    start_operands();
    mark_as_constant(add_instance("xfc_normfp1x", "norm", 1, 45), 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp1x
  GENERIC MAP (mantissa=>32,inputnormalize=>0,roundnormalize=>0,
               normspeed=>2,target=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),

            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43), cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_normfp1x # (.mantissa(32),.inputnormalize(0),.roundnormalize(0),
               .normspeed(2),.target(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),

            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]), .cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(constant_operands, a_cast_reads_its_driver_all_the_same) {
    start_operands();
    mark_as_constant(add_instance("xfc_castftox", "cast", 1, 45), 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftox
  GENERIC MAP (target=>0,roundconvert=>0,mantissa=>32,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castftox # (
.target(0),.roundconvert(0),.mantissa(32),.outputpipe(1))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

}  // namespace

}  // namespace xfc::test
