#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(integer_instances, adder_and_subtracter_with_default_options) {
    start_operands();
    add_instance("xfc_alulong", "+", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alulong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alulong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b0),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(integer_instances, adder_and_subtracter_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_alulong", "-", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alulong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alulong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b1),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(integer_instances, multiplier_with_default_options) {
    start_operands();
    add_instance("xfc_mullong", "*", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mullong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mullong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(integer_instances, multiplier_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_mullong", "*", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mullong
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mullong
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(single_precision_instances, dot_product_adder_with_default_options) {
    start_operands();
    add_instance("xfc_alufp1_dot", "+", 2, 45);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1_dot
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
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
            .addsub(1'b 0),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(single_precision_instances, dot_product_adder_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_alufp1_dot", "-", 2, 49);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1_dot
  GENERIC MAP (mantissa=>36,shiftspeed=>49,outputpipe=>46)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp1_dot # (.mantissa(36),.shiftspeed(49),.outputpipe(46))
  cmp0  (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(single_precision_instances, adder_and_subtracter_with_default_options) {
    start_operands();
    add_instance("xfc_alufp1x", "+", 2, 45);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1x
  GENERIC MAP (mantissa=>32,shiftspeed=>1,outputpipe=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'0',
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp1x # (.mantissa(32),.shiftspeed(1),.outputpipe(1))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 0),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(single_precision_instances, adder_and_subtracter_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_alufp1x", "-", 2, 49);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_alufp1x
  GENERIC MAP (mantissa=>36,shiftspeed=>49,outputpipe=>46)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            addsub=>'1',
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_alufp1x # (.mantissa(36),.shiftspeed(49),.outputpipe(46))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .addsub(1'b 1),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(single_precision_instances, dot_product_multiplier_with_default_options) {
    start_operands();
    add_instance("xfc_mulfp1_dot", "*", 2, 45);
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

TEST(single_precision_instances, dot_product_multiplier_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_mulfp1_dot", "*", 2, 49);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1_dot
  GENERIC MAP (mantissa=>36,device=>51,optimization=>-52,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1_dot # (.mantissa(36),.device(51),.optimization(-52),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .bb(synth0001[32 : 1]),
            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(single_precision_instances, multiplier_with_default_options) {
    start_operands();
    add_instance("xfc_mulfp1x", "*", 2, 45, 1);
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

)");
}

TEST(single_precision_instances, multiplier_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_mulfp1x", "*", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_mulfp1x
  GENERIC MAP (mantissa=>36,ieeeoutput=>1,xoutput=>0,multoutput=>0,divoutput=>0,
            outputscale=>43,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_mulfp1x # (.mantissa(36),.ieeeoutput(1),.xoutput(0),.multoutput(0),.divoutput(0),
            .outputscale(43),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(single_precision_instances, divider_with_default_options) {
    start_operands();
    add_instance("xfc_divfp1x", "/", 2, 45, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp1x
  GENERIC MAP (mantissa=>32,ieeeoutput=>0,xoutput=>1,multoutput=>0,divoutput=>0,
               roundconvert=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            bb=>synth0001(42 DOWNTO 1),
            bbsat=>synth0001(43),bbzip=>synth0001(44),bbnan=>synth0001(45),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp1x # (.mantissa(32),.ieeeoutput(0),.xoutput(1),.multoutput(0),.divoutput(0),
               .roundconvert(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .bb(synth0001[42 : 1]),
            .bbsat(synth0001[43]),.bbzip(synth0001[44]),.bbnan(synth0001[45]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(single_precision_instances, divider_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_divfp1x", "/", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_divfp1x
  GENERIC MAP (mantissa=>36,ieeeoutput=>1,xoutput=>0,multoutput=>0,divoutput=>0,
               roundconvert=>44,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            bb=>synth0001(46 DOWNTO 1),
            bbsat=>synth0001(47),bbzip=>synth0001(48),bbnan=>synth0001(49),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_divfp1x # (.mantissa(36),.ieeeoutput(1),.xoutput(0),.multoutput(0),.divoutput(0),
               .roundconvert(44),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .bb(synth0001[46 : 1]),
            .bbsat(synth0001[47]),.bbzip(synth0001[48]),.bbnan(synth0001[49]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(single_precision_instances, normalizer_with_default_options) {
    start_operands();
    add_instance("xfc_normfp1x", "norm", 1, 45);
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

TEST(single_precision_instances, normalizer_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_normfp1x", "norm", 1, 49, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_normfp1x
  GENERIC MAP (mantissa=>36,inputnormalize=>1,roundnormalize=>45,
               normspeed=>2,target=>1)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),

            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47), cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_normfp1x # (.mantissa(36),.inputnormalize(1),.roundnormalize(45),
               .normspeed(2),.target(1))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),

            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]), .cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

}  // namespace

}  // namespace xfc::test
