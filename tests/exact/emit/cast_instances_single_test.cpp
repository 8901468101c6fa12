#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(cast_instances, castftox_with_default_options) {
    start_operands();
    add_instance("xfc_castftox", "cast", 1, 45);
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

TEST(cast_instances, castftox_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castftox", "cast", 1, 49, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftox
  GENERIC MAP (target=>1,roundconvert=>44,mantissa=>36,outputpipe=>46)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castftox # (
.target(1),.roundconvert(44),.mantissa(36),.outputpipe(46))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(cast_instances, castxtof_with_default_options) {
    start_operands();
    add_instance("xfc_castxtof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castxtof
  GENERIC MAP (mantissa=>32,normspeed=>2)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castxtof # (.mantissa(32),.normspeed(2))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(cast_instances, castxtof_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castxtof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castxtof
  GENERIC MAP (mantissa=>36,normspeed=>2)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            cc=>synth0003(32 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castxtof # (.mantissa(36),.normspeed(2))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .cc(synth0003[32 : 1]));

)");
}

TEST(cast_instances, castftoy_with_default_options) {
    start_operands();
    add_instance("castftoy", "cast", 1, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castftoy
  GENERIC MAP (target=>1,roundconvert=>0,mantissa=>32)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castftoy # (.target(1),.roundconvert(0),.mantissa(32))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(cast_instances, castftoy_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("castftoy", "cast", 1, 70);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castftoy
  GENERIC MAP (target=>0,roundconvert=>44,mantissa=>36)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68),cczip=>synth0003(69),ccnan=>synth0003(70));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castftoy # (.target(0),.roundconvert(44),.mantissa(36))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]),.cczip(synth0003[69]),.ccnan(synth0003[70]));

)");
}

TEST(cast_instances, castdtoy_with_default_options) {
    start_operands();
    add_instance("xfc_castdtoy", "cast", 1, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castdtoy
  GENERIC MAP (target=>1,roundconvert=>0,outputpipe=>1,
               doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(77 DOWNTO 1),
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castdtoy # (
.target(1),.roundconvert(0),.outputpipe(1),
               .doublespeed(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[77 : 1]),
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(cast_instances, castdtoy_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castdtoy", "cast", 1, 70);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castdtoy
  GENERIC MAP (target=>0,roundconvert=>44,outputpipe=>46,
               doublespeed=>41,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(67 DOWNTO 1),
            ccsat=>synth0003(68),cczip=>synth0003(69),ccnan=>synth0003(70));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castdtoy # (
.target(0),.roundconvert(44),.outputpipe(46),
               .doublespeed(41),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[67 : 1]),
            .ccsat(synth0003[68]),.cczip(synth0003[69]),.ccnan(synth0003[70]));

)");
}

TEST(cast_instances, castdtox_with_default_options) {
    start_operands();
    add_instance("castdtox", "cast", 1, 45);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castdtox
  GENERIC MAP (target=>0,roundconvert=>0,doublespeed=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castdtox # (
.target(0),.roundconvert(0),.doublespeed(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(cast_instances, castdtox_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("castdtox", "cast", 1, 49, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castdtox
  GENERIC MAP (target=>1,roundconvert=>44,doublespeed=>41)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castdtox # (
.target(1),.roundconvert(44),.doublespeed(41))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(cast_instances, castxtod_with_default_options) {
    start_operands();
    add_instance("castxtod", "cast", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castxtod
  GENERIC MAP (mantissa=>32
roundconvert=>0,doublespeed=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castxtod # (.mantissa(32)
.roundconvert(0),.doublespeed(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(cast_instances, castxtod_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("castxtod", "cast", 1, 64, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castxtod
  GENERIC MAP (mantissa=>36
roundconvert=>44,doublespeed=>41)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castxtod # (.mantissa(36)
.roundconvert(44),.doublespeed(41))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .cc(synth0003[64 : 1]));

)");
}

}  // namespace

}  // namespace xfc::test
