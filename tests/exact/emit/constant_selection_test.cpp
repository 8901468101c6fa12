#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(constant_selection, without_a_constant_nothing_is_written) {
    start_operands();
    add_instance("xfc_alulong", "+", 2, 32);
    EXPECT_EQ(constants(language::vhdl), "\n");
    EXPECT_EQ(constants(language::verilog), "\n");
}

TEST(constant_selection, the_first_constant_is_chosen_where_there_are_two) {
    start_operands();
    const std::int32_t slot = add_instance("xfc_alulong", "+", 2, 32);
    make_constant(slot, 0, 11);
    make_constant(slot, 1, 22);
    EXPECT_EQ(constants(language::vhdl),
              "\n  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(11,32);  -- Long\n\n");
    EXPECT_EQ(constants(language::verilog), "\n  assign constsynth0003[32 : 1] = 32'd11;  // Long\n\n");
}

TEST(constant_selection, a_second_constant_counts_with_exactly_two_inputs_only) {
    start_operands();
    make_constant(add_instance("xfc_alulong", "+", 3, 32), 1, 22);
    EXPECT_EQ(constants(language::vhdl), "\n");
    EXPECT_EQ(constants(language::verilog), "\n");
}

TEST(constant_selection, a_first_constant_counts_with_any_number_of_inputs) {
    start_operands();
    make_constant(add_instance("", "one", 1, 32), 0, 1);
    make_constant(add_instance("", "three", 3, 32), 0, 3);
    EXPECT_EQ(constants(language::vhdl),
              "\n  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(1,32);  -- Long\n"
              "  constsynth0004(32 DOWNTO 1) <= conv_std_logic_vector(3,32);  -- Long\n\n");
}

TEST(constant_selection, a_removed_node_is_passed_over) {
    start_operands();
    const std::int32_t slot = add_instance("xfc_alulong", "+", 2, 32);
    make_constant(slot, 1, 22);
    attributes_at(slot).is_removed = 1;
    EXPECT_EQ(constants(language::vhdl), "\n");
    EXPECT_EQ(constants(language::verilog), "\n");
}

TEST(constant_selection, a_node_that_nothing_reads_is_passed_over_but_its_constant_signal_is_declared) {
    start_operands();
    const std::int32_t slot = add_instance("xfc_alulong", "+", 2, 32);
    make_constant(slot, 1, 22);
    dfg_output& output = node_at(slot).outputs[0];
    output.first_consumer = {};
    output.last_consumer = nullptr;
    EXPECT_EQ(constants(language::vhdl), "\n");
    EXPECT_EQ(constants(language::verilog), "\n");
    EXPECT_NE(signals(language::vhdl).find("  signal constsynth0003 : "), std::string::npos);
    EXPECT_NE(emit(language::verilog).text.find("] constsynth0003;\n"), std::string::npos);
}

TEST(constant_selection, nodes_are_written_in_slot_order_with_one_empty_line_at_the_end) {
    start_operands();
    const std::int32_t first = add_instance("xfc_mulfp1x", "*", 2, 32);
    attributes_at(first).format = number_format::single_float;
    make_constant(first, 1, 1);
    add_instance("xfc_alulong", "+", 2, 32);
    make_constant(add_instance("xfc_alulong", "+", 2, 32), 1, 22);
    const std::int32_t last = add_instance("xfc_mulfp1x", "*", 2, 32);
    attributes_at(last).format = number_format::single_float;
    make_constant(last, 1, 2);
    EXPECT_EQ(constants(language::vhdl), R"(
  constsynth0003(32 DOWNTO 1) <= conv_std_logic_vector(1065353216,32);  -- IEEE Float
  constsynth0005(32 DOWNTO 1) <= conv_std_logic_vector(22,32);  -- Long
  constsynth0006(32 DOWNTO 1) <= conv_std_logic_vector(1073741824,32);  -- IEEE Float

)");
    EXPECT_EQ(constants(language::verilog), R"(
  assign constsynth0003[32 : 1] = 32'd1065353216;  // IEEE Float
  assign constsynth0005[32 : 1] = 32'd22;  // Long
  assign constsynth0006[32 : 1] = 32'd1073741824;  // IEEE Float

)");
}

TEST(constant_selection, the_log_names_the_sizes_of_both_machine_types) {
    start_operands();
    add_instance("xfc_alulong", "+", 2, 32);
    EXPECT_NE(emit(language::vhdl).log.find("*** VHDL CONSTANTS ***\nunsigned 4\ndouble 8\n*** VHDL NODE"),
              std::string::npos);
    EXPECT_NE(emit(language::verilog).log.find("*** VLG CONSTANTS ***\nunsigned 4\ndouble 8\n*** VLG NODE"),
              std::string::npos);
}

}  // namespace

}  // namespace xfc::test
