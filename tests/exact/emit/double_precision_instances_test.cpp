#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(double_precision_instances, adder_and_subtracter_with_default_options) {
    start_operands();
    add_instance("xfc_alufp2x", "+", 2, 80);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp2x
  GENERIC MAP (shiftspeed=>1,doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),
            bb=>synth0001(77 DOWNTO 1),
            bbsat=>synth0001(78),bbzip=>synth0001(79),bbnan=>synth0001(80),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp2x # (.shiftspeed(1),.doublespeed(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),
            .bb(synth0001[77 : 1]),
            .bbsat(synth0001[78]),.bbzip(synth0001[79]),.bbnan(synth0001[80]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(double_precision_instances, adder_and_subtracter_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_alufp2x", "-", 2, 80);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp2x
  GENERIC MAP (shiftspeed=>49,doublespeed=>41,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),
            bb=>synth0001(77 DOWNTO 1),
            bbsat=>synth0001(78),bbzip=>synth0001(79),bbnan=>synth0001(80),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp2x # (.shiftspeed(49),.doublespeed(41),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b1),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),
            .bb(synth0001[77 : 1]),
            .bbsat(synth0001[78]),.bbzip(synth0001[79]),.bbnan(synth0001[80]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(double_precision_instances, multiplier_with_default_options) {
    start_operands();
    add_instance("xfc_mulfp2x", "*", 2, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,multoutput=>0,
               roundconvert=>0,roundnormalize=>0,doublespeed=>0,
               outputpipe=>1,doubleaccuracy=>1,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp2x # (
.ieeeoutput(0),.xoutput(1),.multoutput(0),
               .roundconvert(0),.roundnormalize(0),.doublespeed(0),
               .outputpipe(1),.doubleaccuracy(1),
               .device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(double_precision_instances, multiplier_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_mulfp2x", "*", 2, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp2x
  GENERIC MAP (ieeeoutput=>1,xoutput=>0,multoutput=>0,
               roundconvert=>44,roundnormalize=>45,doublespeed=>41,
               outputpipe=>46,doubleaccuracy=>50,
               device=>51,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp2x # (
.ieeeoutput(1),.xoutput(0),.multoutput(0),
               .roundconvert(44),.roundnormalize(45),.doublespeed(41),
               .outputpipe(46),.doubleaccuracy(50),
               .device(51),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(double_precision_instances, divider_with_default_options) {
    start_operands();
    add_instance("xfc_divfp2x", "/", 2, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>0,xoutput=>1,divoutput=>0,
               roundconvert=>0,doublespeed=>0,
               doubleaccuracy=>1,device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp2x # (
.ieeeoutput(0),.xoutput(1),.divoutput(0),
               .roundconvert(0),.doublespeed(0),
               .doubleaccuracy(1),.device(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(double_precision_instances, divider_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_divfp2x", "/", 2, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp2x
  GENERIC MAP (ieeeoutput=>1,xoutput=>0,divoutput=>0,
               roundconvert=>44,doublespeed=>41,
               doubleaccuracy=>50,device=>51,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(67 DOWNTO 1),
            aasat=>synth0000(68),aazip=>synth0000(69),aanan=>synth0000(70),
            bb=>synth0001(67 DOWNTO 1),
            bbsat=>synth0001(68),bbzip=>synth0001(69),bbnan=>synth0001(70),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp2x # (
.ieeeoutput(1),.xoutput(0),.divoutput(0),
               .roundconvert(44),.doublespeed(41),
               .doubleaccuracy(50),.device(51),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[67 : 1]),
            .aasat(synth0000[68]),.aazip(synth0000[69]),.aanan(synth0000[70]),
            .bb(synth0001[67 : 1]),
            .bbsat(synth0001[68]),.bbzip(synth0001[69]),.bbnan(synth0001[70]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(double_precision_instances, normalizer_with_default_options) {
    start_operands();
    add_instance("xfc_normfp2x", "norm", 1, 70);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp2x
  GENERIC MAP (roundconvert=>0,roundnormalize=>0,normspeed=>3,
               doublespeed=>0,target=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68), cczip=>synth0003(69),ccnan=>synth0003(70));

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

)");
}

TEST(double_precision_instances, normalizer_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_normfp2x", "norm", 1, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp2x
  GENERIC MAP (roundconvert=>44,roundnormalize=>45,normspeed=>47,
               doublespeed=>41,target=>1,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78), cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_normfp2x # (
.roundconvert(44),.roundnormalize(45),.normspeed(47),
               .doublespeed(41),.target(1),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]), .cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(delay_instances, delay_line_with_default_options) {
    start_operands();
    const std::int32_t slot = add_instance("xfc_delay", "delay", 1, 45);
    attributes_at(slot).latency = 7;
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_delay
  GENERIC MAP (width=>45,delay=>7,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(45 DOWNTO 1),
            cc=>synth0003(45 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_delay # (.width(45),.delay(7),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[45 : 1]),
            .cc(synth0003[45 : 1]));

)");
}

TEST(delay_instances, delay_line_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    const std::int32_t slot = add_instance("xfc_delay", "delay", 1, 80);
    attributes_at(slot).latency = 123;
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_delay
  GENERIC MAP (width=>80,delay=>123,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(80 DOWNTO 1),
            cc=>synth0003(80 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_delay # (.width(80),.delay(123),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[80 : 1]),
            .cc(synth0003[80 : 1]));

)");
}

}  // namespace

}  // namespace xfc::test
