#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(cast_instances, castxtoy_with_default_options) {
    start_operands();
    add_instance("castxtoy", "cast", 1, 80);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castxtoy
  GENERIC MAP (target=>1,mantissa=>32)
  PORT MAP (aa=>synth0000(42 DOWNTO 1),
            aasat=>synth0000(43),aazip=>synth0000(44),aanan=>synth0000(45),
            cc=>synth0003(77 DOWNTO 1);
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castxtoy # (.target(1),.mantissa(32))
  cmp0 (.aa(synth0000[42 : 1]),
            .aasat(synth0000[43]),.aazip(synth0000[44]),.aanan(synth0000[45]),
            .cc(synth0003[77 : 1]);
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(cast_instances, castxtoy_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("castxtoy", "cast", 1, 80, 1);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: castxtoy
  GENERIC MAP (target=>1,mantissa=>36)
  PORT MAP (aa=>synth0000(46 DOWNTO 1),
            aasat=>synth0000(47),aazip=>synth0000(48),aanan=>synth0000(49),
            cc=>synth0003(77 DOWNTO 1);
            ccsat=>synth0003(78),cczip=>synth0003(79),ccnan=>synth0003(80));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  castxtoy # (.target(1),.mantissa(36))
  cmp0 (.aa(synth0000[46 : 1]),
            .aasat(synth0000[47]),.aazip(synth0000[48]),.aanan(synth0000[49]),
            .cc(synth0003[77 : 1]);
            .ccsat(synth0003[78]),.cczip(synth0003[79]),.ccnan(synth0003[80]));

)");
}

TEST(cast_instances, castytod_with_default_options) {
    start_operands();
    add_instance("xfc_castytod", "cast", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytod
  GENERIC MAP (roundconvert=>0,normspeed=>3,
               doublespeed=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytod # (
.roundconvert(0),.normspeed(3),
.doublespeed(0),.synthesize(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(cast_instances, castytod_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castytod", "cast", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytod
  GENERIC MAP (roundconvert=>44,normspeed=>47,
               doublespeed=>41,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytod # (
.roundconvert(44),.normspeed(47),
.doublespeed(41),.synthesize(53))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(cast_instances, castytof_with_default_options) {
    start_operands();
    add_instance("xfc_castytof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytof
  GENERIC MAP (roundconvert=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(32 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytof # (.roundconvert(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0003[32 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(cast_instances, castytof_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castytof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytof
  GENERIC MAP (roundconvert=>44)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(32 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytof # (.roundconvert(44))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            .cc(synth0003[32 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(cast_instances, castytox_with_default_options) {
    start_operands();
    add_instance("xfc_castytox", "cast", 1, 45);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytox
  GENERIC MAP (roundconvert=>0,mantissa=>32)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(42 DOWNTO 1),
            ccsat=>synth0003(43),cczip=>synth0003(44),ccnan=>synth0003(45));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytox # (.roundconvert(0),.mantissa(32))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            ..cc(synth0003[42 : 1]),
            .ccsat(synth0003[43]),.cczip(synth0003[44]),.ccnan(synth0003[45]));

)");
}

TEST(cast_instances, castytox_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castytox", "cast", 1, 49);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castytox
  GENERIC MAP (roundconvert=>44,mantissa=>36)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(77 DOWNTO 1),
            aasat=>synth0000(78),aazip=>synth0000(79),aanan=>synth0000(80),

            cc=>synth0003(46 DOWNTO 1),
            ccsat=>synth0003(47),cczip=>synth0003(48),ccnan=>synth0003(49));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castytox # (.roundconvert(44),.mantissa(36))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[77 : 1]),
            .aasat(synth0000[78]),.aazip(synth0000[79]),.aanan(synth0000[80]),

            ..cc(synth0003[46 : 1]),
            .ccsat(synth0003[47]),.cczip(synth0003[48]),.ccnan(synth0003[49]));

)");
}

TEST(cast_instances, castdtof_with_default_options) {
    start_operands();
    add_instance("xfc_castdtof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castdtof
  GENERIC MAP (roundconvert=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(42 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castdtof # (.roundconvert(0))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[42 : 1]));

)");
}

TEST(cast_instances, castdtof_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castdtof", "cast", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castdtof
  GENERIC MAP (roundconvert=>44)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(64 DOWNTO 1),
            cc=>synth0003(46 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castdtof # (.roundconvert(44))
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[64 : 1]),
            .cc(synth0003[46 : 1]));

)");
}

TEST(cast_instances, castftod_with_default_options) {
    start_operands();
    add_instance("xfc_castftod", "cast", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftod
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castftod
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[64 : 1]));

)");
}

TEST(cast_instances, castftod_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("xfc_castftod", "cast", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftod
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0003(64 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  xfc_castftod
  cmp0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .aa(synth0000[32 : 1]),
            .cc(synth0003[64 : 1]));

)");
}

}  // namespace

}  // namespace xfc::test
