#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(double_precision_functions, dp_sqr_with_default_options) {
    start_operands();
    add_instance("dp_sqr", "sqr", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_sqr
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_sqr
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_sqr_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_sqr", "sqr", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_sqr
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_sqr
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_invsqr_with_default_options) {
    start_operands();
    add_instance("dp_invsqr", "invsqr", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_invsqr
  GENERIC MAP (doubleaccuracy=>1,doublespeed=>0,
               device=>0,synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_invsqr # (
  .doubleaccuracy(1),.doublespeed(0),
  .device(0),.synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_invsqr_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_invsqr", "invsqr", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_invsqr
  GENERIC MAP (doubleaccuracy=>50,doublespeed=>41,
               device=>51,synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_invsqr # (
  .doubleaccuracy(50),.doublespeed(41),
  .device(51),.synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_inv_with_default_options) {
    start_operands();
    add_instance("dp_inv", "inv", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_inv
  GENERIC MAP (roundconvert=>0,doubleaccuracy=>1,
               doublespeed=>0,device=>0,
               synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_inv # (
  .roundconvert(0),.doubleaccuracy(1),
  .doublespeed(0),.device(0),
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_inv_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_inv", "inv", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_inv
  GENERIC MAP (roundconvert=>44,doubleaccuracy=>50,
               doublespeed=>41,device=>51,
               synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_inv # (
  .roundconvert(44),.doubleaccuracy(50),
  .doublespeed(41),.device(51),
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_inv_takes_the_first_input_of_two) {
    start_operands();
    add_instance("dp_inv", "inv", 2, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_inv
  GENERIC MAP (roundconvert=>0,doubleaccuracy=>1,
               doublespeed=>0,device=>0,
               synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_inv # (
  .roundconvert(0),.doubleaccuracy(1),
  .doublespeed(0),.device(0),
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_exp_with_default_options) {
    start_operands();
    add_instance("dp_exp", "exp", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_exp
  GENERIC MAP (roundconvert=>0,doubleaccuracy=>1,
               doublespeed=>0,device=>0,
               synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_exp # (
  .roundconvert(0),.doubleaccuracy(1),
  .doublespeed(0),.device(0),
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_exp_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_exp", "exp", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_exp
  GENERIC MAP (roundconvert=>44,doubleaccuracy=>50,
               doublespeed=>41,device=>51,
               synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_exp # (
  .roundconvert(44),.doubleaccuracy(50),
  .doublespeed(41),.device(51),
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_log_with_default_options) {
    start_operands();
    add_instance("dp_log", "log", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_log
  GENERIC MAP (device=>1,doublespeed=>0,
               synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_log # (
  .device(1),.doublespeed(0),
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_log_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_log", "log", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_log
  GENERIC MAP (device=>50,doublespeed=>41,
               synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_log # (
  .device(50),.doublespeed(41),
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_ldexp_with_default_options) {
    start_operands();
    const std::int32_t slot = add_instance("dp_ldexp", "ldexp", 2, 64);
    make_constant(slot, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(64),
            exponentin=>synth0001(63 DOWNTO 53),
            mantissain=>synth0001(52 DOWNTO 1),
            bb=>constsynth0003(32 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[64]),
            .exponentin(synth0001[63 : 53]),
            .mantissain(synth0001[52 : 1]),
            .bb(constsynth0003[32 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_ldexp_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    const std::int32_t slot = add_instance("dp_ldexp", "ldexp", 2, 64);
    make_constant(slot, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(64),
            exponentin=>synth0001(63 DOWNTO 53),
            mantissain=>synth0001(52 DOWNTO 1),
            bb=>constsynth0003(32 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[64]),
            .exponentin(synth0001[63 : 53]),
            .mantissain(synth0001[52 : 1]),
            .bb(constsynth0003[32 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_ldexp_without_a_constant_takes_value_and_scale_from_the_second_input) {
    start_operands();
    add_instance("dp_ldexp", "ldexp", 2, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(64),
            exponentin=>synth0001(63 DOWNTO 53),
            mantissain=>synth0001(52 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[64]),
            .exponentin(synth0001[63 : 53]),
            .mantissain(synth0001[52 : 1]),
            .bb(synth0001[32 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_fabs_with_default_options) {
    start_operands();
    add_instance("dp_fabs", "fabs", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_fabs
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_fabs
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_fabs_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_fabs", "fabs", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_fabs
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_fabs
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_neg_with_default_options) {
    start_operands();
    add_instance("dp_neg", "neg", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_neg
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_neg
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

TEST(double_precision_functions, dp_neg_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("dp_neg", "neg", 1, 64);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: dp_neg
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(64),
            exponentin=>synth0000(63 DOWNTO 53),
            mantissain=>synth0000(52 DOWNTO 1),
            signout=>synth0003(64),
            exponentout=>synth0003(63 DOWNTO 53),
            mantissaout=>synth0003(52 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  dp_neg
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[64]),
            .exponentin(synth0000[63 : 53]),
            .mantissain(synth0000[52 : 1]),
            .signout(synth0003[64]),
            .exponentout(synth0003[63 : 53]),
            .mantissaout(synth0003[52 : 1]));

)");
}

}  // namespace

}  // namespace xfc::test
