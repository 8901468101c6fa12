#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// The connections of both outputs, from the end of the process or of the constants to the end.
std::string vhdl_tail() {
    const std::string text = emit(language::vhdl).text;
    const std::size_t start = text.find("  END PROCESS;\n\n") + 16;
    return '\n' + text.substr(start, text.find("  startout <= ") - start);
}

std::string verilog_tail() {
    const std::string text = emit(language::verilog).text;
    const std::size_t start = text.find("\n    end\n  end\n\n") + 16;
    return '\n' + text.substr(start, text.find("  assign startout = ") - start);
}

/// A wire from a to y and a chain of two from b to a second output.
void build_wires() {
    start_operands();
    const std::int32_t second_output = add_node("z", 1, number_format::single_float);
    const std::int32_t first = add_node("t", 1, number_format::single_float);
    const std::int32_t second = add_node("u", 1, number_format::single_float);
    for (const std::int32_t slot : {second_output, first, second}) {
        set_widths(slot, 32);
    }
    dfg_connect(0, 2, 0);
    dfg_connect(1, first, 0);
    dfg_connect(first, second, 0);
    dfg_connect(second, second_output, 0);
}

TEST(connections, inputs_wires_and_outputs_come_in_three_groups) {
    build_wires();
    EXPECT_EQ(vhdl_tail(), R"(
  synth0000 <= a;
  synth0001 <= b;

  synth0004 <= synth0001;
  synth0005 <= synth0004;

  y <= synth0000;
  z <= synth0005;

)");
    EXPECT_EQ(verilog_tail(), R"(
  assign synth0000 = a;
  assign synth0001 = b;

  assign synth0004 = synth0001;
  assign synth0005 = synth0004;

  assign y = synth0000;
  assign z = synth0005;

)");
}

TEST(connections, without_a_wire_there_is_no_empty_line_for_the_group) {
    start_operands();
    dfg_connect(0, 2, 0);
    add_node("z", 1, number_format::single_float);
    dfg_connect(1, 3, 0);
    EXPECT_EQ(vhdl_tail(), "\n  synth0000 <= a;\n  synth0001 <= b;\n\n  y <= synth0000;\n  z <= synth0001;\n\n");
    EXPECT_EQ(verilog_tail(),
              "\n  assign synth0000 = a;\n  assign synth0001 = b;\n\n"
              "  assign y = synth0000;\n  assign z = synth0001;\n\n");
}

TEST(connections, a_wire_that_nothing_reads_is_an_output_port_and_no_wire) {
    start_operands();
    dfg_connect(0, 2, 0);
    const std::string text = emit(language::vhdl).text;
    EXPECT_EQ(text.find("  synth0002 <= "), std::string::npos);
    EXPECT_NE(text.find("      y : OUT STD_LOGIC_VECTOR (32 DOWNTO 1)"), std::string::npos);
    EXPECT_NE(text.find("  y <= synth0000;\n"), std::string::npos);
    EXPECT_EQ(emit(language::verilog).text.find("  assign synth0002 = "), std::string::npos);
}

TEST(connections, a_node_with_a_component_is_no_wire) {
    start_operands();
    add_instance("xfc_castltof", "cast", 1, 32);
    EXPECT_EQ(vhdl_tail(), "\n  synth0000 <= a;\n  synth0001 <= b;\n\n  y <= synth0003;\n\n");
}

TEST(connections, a_wire_of_several_inputs_takes_the_first) {
    start_operands();
    add_instance("", "t", 2, 32);
    EXPECT_EQ(vhdl_tail(),
              "\n  synth0000 <= a;\n  synth0001 <= b;\n\n  synth0003 <= synth0000;\n\n  y <= synth0003;\n\n");
}

TEST(connections, an_output_that_a_component_drives_itself_is_named_by_its_own_node_name) {
    start_operands();
    dfg_connect(0, 2, 0);
    const std::int32_t root = add_node("root", 1, number_format::single_float, "fp_sqr");
    set_widths(root, 32);
    dfg_connect(1, root, 0);
    const std::string text = emit(language::vhdl).text;
    EXPECT_NE(text.find("      y : OUT STD_LOGIC_VECTOR (32 DOWNTO 1);\n"
                        "      root : OUT STD_LOGIC_VECTOR (32 DOWNTO 1)\n     );\n"),
              std::string::npos);
    EXPECT_NE(text.find("  y <= synth0000;\n  root <= synth0001;\n\n"), std::string::npos);
}

TEST(connections, a_variable_neither_assigned_nor_read_has_two_port_lines_and_the_input_line_only) {
    start_operands();
    dfg_connect(0, 2, 0);
    const std::string vhdl = emit(language::vhdl).text;
    EXPECT_NE(vhdl.find("      b : IN STD_LOGIC_VECTOR (32 DOWNTO 1);\n"), std::string::npos);
    EXPECT_NE(vhdl.find("      b : OUT STD_LOGIC_VECTOR (32 DOWNTO 1);\n"), std::string::npos);
    EXPECT_EQ(vhdl_tail(), "\n  synth0000 <= a;\n  synth0001 <= b;\n\n  y <= synth0000;\n\n");
    const std::string verilog = emit(language::verilog).text;
    EXPECT_NE(verilog.find("      a,\n      b,\n      startout,\n      b,\n      y\n);\n"), std::string::npos);
    EXPECT_NE(verilog.find("input [32 : 1] b;\n"), std::string::npos);
    EXPECT_NE(verilog.find("output [32 : 1] b;\n"), std::string::npos);
}

TEST(connections, a_constant_on_the_only_input_makes_no_input_port) {
    start_operands();
    dfg_connect(0, 2, 0);
    make_constant(1, 0, 1);
    EXPECT_EQ(emit(language::vhdl).text.find("      b : IN "), std::string::npos);
    EXPECT_EQ(vhdl_tail(), "\n  synth0000 <= a;\n\n  y <= synth0000;\n\n");
}

TEST(connections, a_node_with_two_open_inputs_is_no_input_port) {
    start_operands();
    dfg_connect(0, 2, 0);
    const std::int32_t open = add_node("open", 2, number_format::single_float, "fp_ldexp");
    set_widths(open, 32);
    EXPECT_EQ(emit(language::vhdl).text.find("      open : IN "), std::string::npos);
    EXPECT_NE(emit(language::vhdl).text.find("      open : OUT "), std::string::npos);
}

TEST(connections, the_input_port_takes_the_width_of_the_input_and_the_output_port_that_of_the_output) {
    start_operands();
    dfg_connect(0, 2, 0);
    node_at(0).inputs[0].width = 11;
    node_at(0).outputs[0].width = 12;
    node_at(2).inputs[0].width = 13;
    node_at(2).outputs[0].width = 14;
    const std::string vhdl = emit(language::vhdl).text;
    EXPECT_NE(vhdl.find("      a : IN STD_LOGIC_VECTOR (11 DOWNTO 1);\n"), std::string::npos);
    EXPECT_NE(vhdl.find("      y : OUT STD_LOGIC_VECTOR (14 DOWNTO 1)"), std::string::npos);
    EXPECT_NE(vhdl.find("  signal synth0000 : STD_LOGIC_VECTOR (12 DOWNTO 1);\n"), std::string::npos);
    const std::string verilog = emit(language::verilog).text;
    EXPECT_NE(verilog.find("input [11 : 1] a;\n"), std::string::npos);
    EXPECT_NE(verilog.find("output [14 : 1] y;\n"), std::string::npos);
    EXPECT_NE(verilog.find("wire [12 : 1] synth0000;\n"), std::string::npos);
}

TEST(connections, each_group_logs_the_number_of_every_node) {
    build_wires();
    EXPECT_NE(emit(language::vhdl)
                  .log.find("*** VHDL NODE CONNECTIONS ***\n\nInputs\n012345\nNodes\n012345\nOutputs\n"
                            "012345*** VHDL OPERATORS ***\n"),
              std::string::npos);
    EXPECT_NE(emit(language::verilog)
                  .log.find("*** VLG NODE CONNECTIONS ***\n\nInputs\n012345\nNodes\n012345\nOutputs\n"
                            "012345*** VLG OPERATORS ***\n"),
              std::string::npos);
}

}  // namespace

}  // namespace xfc::test
