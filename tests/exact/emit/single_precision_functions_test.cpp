#include <gtest/gtest.h>

#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(single_precision_functions, fp_sqr_with_default_options) {
    start_operands();
    add_instance("fp_sqr", "sqr", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_sqr
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_sqr  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_sqr_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_sqr", "sqr", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_sqr
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_sqr  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_invsqr_with_default_options) {
    start_operands();
    add_instance("fp_invsqr", "invsqr", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_invsqr
  GENERIC MAP (synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_invsqr # (
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_invsqr_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_invsqr", "invsqr", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_invsqr
  GENERIC MAP (synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_invsqr # (
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_inv_with_default_options) {
    start_operands();
    add_instance("fp_inv", "inv", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_inv
  GENERIC MAP (synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_inv # (
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_inv_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_inv", "inv", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_inv
  GENERIC MAP (synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_inv # (
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_inv_takes_the_second_input_when_the_first_has_no_source) {
    start_operands();
    const std::int32_t slot = add_instance("fp_inv", "inv", 2, 32);
    make_constant(slot, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_inv
  GENERIC MAP (synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(32),
            exponentin=>synth0001(31 DOWNTO 24),
            mantissain=>synth0001(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_inv # (
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[32]),
            .exponentin(synth0001[31 : 24]),
            .mantissain(synth0001[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_inv_prefers_the_first_input) {
    start_operands();
    add_instance("fp_inv", "inv", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_inv
  GENERIC MAP (synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_inv # (
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_exp_with_default_options) {
    start_operands();
    add_instance("fp_exp", "exp", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_exp
  GENERIC MAP (synthesize=>0)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_exp # (
  .synthesize(0))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_exp_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_exp", "exp", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_exp
  GENERIC MAP (synthesize=>53)
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_exp # (
  .synthesize(53))
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_log_with_default_options) {
    start_operands();
    add_instance("fp_log", "log", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_log
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_log
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_log_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_log", "log", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_log
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_log
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_ldexp_with_default_options) {
    start_operands();
    const std::int32_t slot = add_instance("fp_ldexp", "ldexp", 2, 32);
    make_constant(slot, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(32),
            exponentin=>synth0001(31 DOWNTO 24),
            mantissain=>synth0001(23 DOWNTO 1),
            bb=>constsynth0003(32 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[32]),
            .exponentin(synth0001[31 : 24]),
            .mantissain(synth0001[23 : 1]),
            .bb(constsynth0003[32 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_ldexp_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    const std::int32_t slot = add_instance("fp_ldexp", "ldexp", 2, 32);
    make_constant(slot, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(32),
            exponentin=>synth0001(31 DOWNTO 24),
            mantissain=>synth0001(23 DOWNTO 1),
            bb=>constsynth0003(32 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[32]),
            .exponentin(synth0001[31 : 24]),
            .mantissain(synth0001[23 : 1]),
            .bb(constsynth0003[32 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_ldexp_without_a_constant_takes_value_and_scale_from_the_second_input) {
    start_operands();
    add_instance("fp_ldexp", "ldexp", 2, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_ldexp
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0001(32),
            exponentin=>synth0001(31 DOWNTO 24),
            mantissain=>synth0001(23 DOWNTO 1),
            bb=>synth0001(32 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_ldexp
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0001[32]),
            .exponentin(synth0001[31 : 24]),
            .mantissain(synth0001[23 : 1]),
            .bb(synth0001[32 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_fabs_with_default_options) {
    start_operands();
    add_instance("fp_fabs", "fabs", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_fabs
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_fabs
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_fabs_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_fabs", "fabs", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_fabs
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_fabs
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_neg_with_default_options) {
    start_operands();
    add_instance("fp_neg", "neg", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_neg
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_neg
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

TEST(single_precision_functions, fp_neg_with_every_option_changed) {
    start_operands();
    use_distinct_options();
    add_instance("fp_neg", "neg", 1, 32);
    EXPECT_EQ(instances(language::vhdl), R"(
  lib0: fp_neg
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            signin=>synth0000(32),
            exponentin=>synth0000(31 DOWNTO 24),
            mantissain=>synth0000(23 DOWNTO 1),
            signout=>synth0003(32),
            exponentout=>synth0003(31 DOWNTO 24),
            mantissaout=>synth0003(23 DOWNTO 1));

)");
    EXPECT_EQ(instances(language::verilog), R"(
  fp_neg
  lib0 (.sysclk(sysclk),.reset(reset),.enable(enable),
            .signin(synth0000[32]),
            .exponentin(synth0000[31 : 24]),
            .mantissain(synth0000[23 : 1]),
            .signout(synth0003[32]),
            .exponentout(synth0003[31 : 24]),
            .mantissaout(synth0003[23 : 1]));

)");
}

}  // namespace

}  // namespace xfc::test
