#include "exact/emit/node_name.h"

#include <gtest/gtest.h>

#include <string>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(node_names, four_digits_of_the_slot) {
    EXPECT_EQ(node_name(0).text(), "synth0000");
    EXPECT_EQ(node_name(7).text(), "synth0007");
    EXPECT_EQ(node_name(9).text(), "synth0009");
    EXPECT_EQ(node_name(10).text(), "synth0010");
    EXPECT_EQ(node_name(99).text(), "synth0099");
    EXPECT_EQ(node_name(100).text(), "synth0100");
    EXPECT_EQ(node_name(999).text(), "synth0999");
    EXPECT_EQ(node_name(1000).text(), "synth1000");
    EXPECT_EQ(node_name(1001).text(), "synth1001");
    EXPECT_EQ(node_name(1234).text(), "synth1234");
    EXPECT_EQ(node_name(9999).text(), "synth9999");
}

TEST(node_names, past_9999_the_thousands_are_one_character_past_the_digits) {
    EXPECT_EQ(node_name(10000).text(), "synth:000");
    EXPECT_EQ(node_name(12345).text(), "synth<345");
    EXPECT_EQ(node_name(80999).text(),
              "synth\x80"
              "999");
    EXPECT_EQ(node_name(207999).text(),
              "synth\xFF"
              "999");
}

TEST(node_names, a_place_of_value_zero_ends_the_name) {
    EXPECT_EQ(node_name(208000).text(), "synth");
    EXPECT_EQ(node_name(208999).text(), "synth");
    EXPECT_EQ(node_name(209001).text(),
              "synth\x01"
              "001");
}

TEST(node_names, the_thousands_wrap_at_256) {
    EXPECT_EQ(node_name(255999).text(), "synth/999");
    EXPECT_EQ(node_name(256000).text(), "synth0000");
    EXPECT_EQ(node_name(256789).text(), "synth0789");
}

TEST(node_names, both_outputs_name_node_10000_with_a_colon) {
    start_operands();
    while (dfg_used_slots() < 10000) {
        add_node("t", 1);
    }
    const std::int32_t slot = add_instance("xfc_alulong", "+", 2, 32);
    ASSERT_EQ(slot, 10000);
    make_constant(slot, 1, 5);
    const std::string vhdl = emit(language::vhdl).text;
    EXPECT_NE(vhdl.find("  signal synth:000 : STD_LOGIC_VECTOR (32 DOWNTO 1);\n"
                        "  signal constsynth:000 : STD_LOGIC_VECTOR (29 DOWNTO 1);\n"),
              std::string::npos);
    EXPECT_NE(vhdl.find("  constsynth:000(32 DOWNTO 1) <= conv_std_logic_vector(5,32);  -- Long\n"), std::string::npos);
    EXPECT_NE(vhdl.find("  y <= synth:000;\n"), std::string::npos);
    EXPECT_NE(vhdl.find("            bb=>constsynth:000(32 DOWNTO 1),\n            cc=>synth:000(32 DOWNTO 1));\n\n"),
              std::string::npos);
    const std::string verilog = emit(language::verilog).text;
    EXPECT_NE(verilog.find("wire [32 : 1] synth:000;\nwire [29 : 1] constsynth:000;\n\n"), std::string::npos);
    EXPECT_NE(verilog.find("  assign constsynth:000[32 : 1] = 32'd5;  // Long\n"), std::string::npos);
    EXPECT_NE(verilog.find("  assign y = synth:000;\n"), std::string::npos);
    EXPECT_NE(verilog.find("            .bb(constsynth:000[32 : 1]),\n            .cc(synth:000[32 : 1]));\n\n"),
              std::string::npos);
}

}  // namespace

}  // namespace xfc::test
