#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(signals, every_node_has_one_as_wide_as_its_output_inputs_and_outputs_included) {
    start_operands();
    add_instance("xfc_alufp1x", "+", 2, 45);
    add_instance("", "t", 1, 64);
    EXPECT_EQ(signals(language::vhdl), R"(
  signal synth0000 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0001 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0002 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0003 : STD_LOGIC_VECTOR (45 DOWNTO 1);
  signal synth0004 : STD_LOGIC_VECTOR (64 DOWNTO 1);
)");
    EXPECT_EQ(signals(language::verilog), R"(
wire [32 : 1] synth0000;
wire [32 : 1] synth0001;
wire [32 : 1] synth0002;
wire [45 : 1] synth0003;
wire [64 : 1] synth0004;
)");
}

TEST(signals, a_removed_node_has_none_and_no_constant_signal_either) {
    start_operands();
    const std::int32_t slot = add_instance("xfc_alufp1x", "+", 2, 45);
    make_constant(slot, 0);
    attributes_at(slot).is_removed = 1;
    add_instance("xfc_castftox", "cast", 1, 49);
    EXPECT_EQ(signals(language::vhdl), R"(
  signal synth0000 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0001 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0002 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0004 : STD_LOGIC_VECTOR (49 DOWNTO 1);
)");
    EXPECT_EQ(signals(language::verilog), R"(
wire [32 : 1] synth0000;
wire [32 : 1] synth0001;
wire [32 : 1] synth0002;
wire [49 : 1] synth0004;
)");
}

TEST(signals, a_constant_signal_is_three_bits_narrower_than_the_output_but_for_some_components) {
    start_operands();
    make_constant(add_instance("xfc_alufp1x", "+", 2, 45), 0);
    make_constant(add_instance("xfc_divfp2x", "/", 2, 64), 1);
    make_constant(add_instance("xfc_mulfp2x", "*", 2, 64), 1);
    make_constant(add_instance("xfc_mulfp2x", "*", 2, 80), 0);
    make_constant(add_instance("fp_ldexp", "ldexp", 2, 32), 0);
    make_constant(add_instance("dp_ldexp", "ldexp", 2, 64), 0);
    make_constant(add_instance("xfc_alulong", "+", 2, 32), 1);
    make_constant(add_instance("", "t", 1, 70), 0);
    EXPECT_EQ(signals(language::vhdl), R"(
  signal synth0000 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0001 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0002 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0003 : STD_LOGIC_VECTOR (45 DOWNTO 1);
  signal constsynth0003 : STD_LOGIC_VECTOR (42 DOWNTO 1);
  signal synth0004 : STD_LOGIC_VECTOR (64 DOWNTO 1);
  signal constsynth0004 : STD_LOGIC_VECTOR (61 DOWNTO 1);
  signal synth0005 : STD_LOGIC_VECTOR (64 DOWNTO 1);
  signal constsynth0005 : STD_LOGIC_VECTOR (67 DOWNTO 1);
  signal synth0006 : STD_LOGIC_VECTOR (80 DOWNTO 1);
  signal constsynth0006 : STD_LOGIC_VECTOR (67 DOWNTO 1);
  signal synth0007 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal constsynth0007 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0008 : STD_LOGIC_VECTOR (64 DOWNTO 1);
  signal constsynth0008 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0009 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal constsynth0009 : STD_LOGIC_VECTOR (29 DOWNTO 1);
  signal synth0010 : STD_LOGIC_VECTOR (70 DOWNTO 1);
  signal constsynth0010 : STD_LOGIC_VECTOR (67 DOWNTO 1);
)");
    // An empty line follows each constant wire but the multiplier's.
    EXPECT_EQ(signals(language::verilog), R"(
wire [32 : 1] synth0000;
wire [32 : 1] synth0001;
wire [32 : 1] synth0002;
wire [45 : 1] synth0003;
wire [42 : 1] constsynth0003;

wire [64 : 1] synth0004;
wire [61 : 1] constsynth0004;

wire [64 : 1] synth0005;
wire [67 : 1] constsynth0005;
wire [80 : 1] synth0006;
wire [67 : 1] constsynth0006;
wire [32 : 1] synth0007;
wire [32 : 1] constsynth0007;

wire [64 : 1] synth0008;
wire [32 : 1] constsynth0008;

wire [32 : 1] synth0009;
wire [29 : 1] constsynth0009;

wire [70 : 1] synth0010;
wire [67 : 1] constsynth0010;

)");
}

TEST(signals, a_second_constant_of_three_inputs_has_no_constant_signal) {
    start_operands();
    make_constant(add_instance("xfc_alufp1x", "+", 3, 45), 1);
    EXPECT_EQ(signals(language::vhdl), R"(
  signal synth0000 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0001 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0002 : STD_LOGIC_VECTOR (32 DOWNTO 1);
  signal synth0003 : STD_LOGIC_VECTOR (45 DOWNTO 1);
)");
}

}  // namespace

}  // namespace xfc::test
