#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constant_operands, integer_adder_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_alulong", "+", 2, 32);
    const std::int32_t bb = add_instance("xfc_alulong", "+", 2, 32);
    const std::int32_t both = add_instance("xfc_alulong", "+", 2, 32);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alulong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>constsynth0003(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

  cmp1: xfc_alulong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>synth0000(32 DOWNTO 1),
            bb=>constsynth0004(32 DOWNTO 1),
            cc=>synth0004(32 DOWNTO 1));

  cmp2: xfc_alulong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>constsynth0005(32 DOWNTO 1),
            bb=>constsynth0005(32 DOWNTO 1),
            cc=>synth0005(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alulong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(constsynth0003[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

  xfc_alulong
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(synth0000[32 : 1]),
            .bb(constsynth0004[32 : 1]),
            .cc(synth0004[32 : 1]));

  xfc_alulong
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(constsynth0005[32 : 1]),
            .bb(constsynth0005[32 : 1]),
            .cc(synth0005[32 : 1]));

)");
}

TEST(constant_operands, integer_multiplier_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_mullong", "*", 2, 32);
    const std::int32_t bb = add_instance("xfc_mullong", "*", 2, 32);
    const std::int32_t both = add_instance("xfc_mullong", "*", 2, 32);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mullong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0003(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

  cmp1: xfc_mullong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            bb=>constsynth0004(32 DOWNTO 1),
            cc=>synth0004(32 DOWNTO 1));

  cmp2: xfc_mullong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0005(32 DOWNTO 1),
            bb=>constsynth0005(32 DOWNTO 1),
            cc=>synth0005(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mullong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0003[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

  xfc_mullong
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .bb(constsynth0004[32 : 1]),
            .cc(synth0004[32 : 1]));

  xfc_mullong
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0005[32 : 1]),
            .bb(constsynth0005[32 : 1]),
            .cc(synth0005[32 : 1]));

)");
}

TEST(constant_operands, single_precision_adder_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_alufp1x", "-", 2, 45);
    const std::int32_t bb = add_instance("xfc_alufp1x", "-", 2, 45);
    const std::int32_t both = add_instance("xfc_alufp1x", "-", 2, 45);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1x
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>constsynth0003(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_alufp1x
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>constsynth0004(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_alufp1x
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>constsynth0005(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp1x # (.mantissa(32),.shiftspeed(1),.outputpipe(1))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(constsynth0003[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_alufp1x # (.mantissa(32),.shiftspeed(1),.outputpipe(1))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(constsynth0004[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_alufp1x # (.mantissa(32),.shiftspeed(1),.outputpipe(1))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(constsynth0005[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

)");
}

TEST(constant_operands, single_precision_multiplier_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_mulfp1x", "*", 2, 45, 2);
    const std::int32_t bb = add_instance("xfc_mulfp1x", "*", 2, 45, 2);
    const std::int32_t both = add_instance("xfc_mulfp1x", "*", 2, 45, 2);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0003(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

  cmp1: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>constsynth0004(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_mulfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>1,divoutput=>0,
            outputscale=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0005(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0003[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(constsynth0004[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_mulfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(1),.divoutput(0),
            .outputscale(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0005[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

)");
}

TEST(constant_operands, single_precision_divider_reads_its_own_constant_signal_as_aa_as_bb_and_as_both) {
    start_operands();
    const std::int32_t aa = add_instance("xfc_divfp1x", "/", 2, 45, 3);
    const std::int32_t bb = add_instance("xfc_divfp1x", "/", 2, 45, 3);
    const std::int32_t both = add_instance("xfc_divfp1x", "/", 2, 45, 3);
    make_constant(aa, 0);
    make_constant(bb, 1);
    make_constant(both, 0);
    make_constant(both, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>0,divoutput=>1,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0003(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
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
            bb=>constsynth0004(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0004(42 DOWNTO 1),
            ccsat=>synth0004(43),cczip=>synth0004(44),ccnan=>synth0004(45));

  cmp2: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>0,multoutput=>0,divoutput=>1,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>constsynth0005(42 DOWNTO 1),
            aasat=>'0',aazip=>'0',aanan=>'0',
            bb=>constsynth0005(42 DOWNTO 1),
            bbsat=>'0',bbzip=>'0',bbnan=>'0',
            cc=>synth0005(42 DOWNTO 1),
            ccsat=>synth0005(43),cczip=>synth0005(44),ccnan=>synth0005(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(0),.divoutput(1),
               .roundconvert(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0003[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(0),.divoutput(1),
               .roundconvert(0),.synthesize(0))
  cmp1 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(constsynth0004[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0004[42 : 1]),
            .ccsat(synth0004[43]),.cczip(synth0004[44]),.ccnan(synth0004[45]));

  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(0),.multoutput(0),.divoutput(1),
               .roundconvert(0),.synthesize(0))
  cmp2 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(constsynth0005[42 : 1]),
            .aasat(0),.aazip(0),.aanan(0),
            .bb(constsynth0005[42 : 1]),
            .bbsat(0),.bbzip(0),.bbnan(0),
            .cc(synth0005[42 : 1]),
            .ccsat(synth0005[43]),.cczip(synth0005[44]),.ccnan(synth0005[45]));

)");
}

}  // namespace

}  // namespace xfc::test
