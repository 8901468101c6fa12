#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/emit/expected_instances.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// The label lines of an output, one after the other. In Verilog a label stands before the ports.
std::string labels_in(const std::string& text) {
    std::string found;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end - start);
        if (line.starts_with("  cmp") || line.starts_with("  lib")) {
            found += line.substr(2, line.find_first_of(" (", 2) - 2) + ' ';
        }
        start = end + 1;
    }
    return found;
}

bool has_instance(std::string_view component, bool removed) {
    start_operands();
    const std::int32_t slot = add_instance(component, "op", 2, 45);
    attributes_at(slot).is_removed = removed ? 1 : 0;
    const bool vhdl = instances(language::vhdl) != "\n";
    const bool verilog = instances(language::verilog) != "\n";
    EXPECT_EQ(vhdl, verilog) << component;
    return vhdl;
}

/// Normalizers, delays and conversions.
bool may_be_removed(std::string_view component) {
    return component.find("norm") != std::string_view::npos || component.find("delay") != std::string_view::npos ||
           component.find("cast") != std::string_view::npos;
}

TEST(instance_selection, a_removed_normalizer_delay_or_cast_has_no_instance_but_any_other_component_has_one) {
    for (const expected_instance& row : expected_instances()) {
        if (!row.has(without_instance)) {
            EXPECT_TRUE(has_instance(row.name, false)) << row.name;
            EXPECT_EQ(has_instance(row.name, true), !may_be_removed(row.name)) << row.name;
        }
    }
}

TEST(instance_selection, a_wire_and_a_conversion_from_or_to_an_integer_have_no_instance) {
    EXPECT_FALSE(has_instance("", false));
    for (const expected_instance& row : expected_instances()) {
        EXPECT_TRUE(!row.has(without_instance) || !has_instance(row.name, false)) << row.name;
    }
}

TEST(instance_selection, operators_and_functions_are_counted_apart_and_operators_come_first) {
    start_operands();
    add_instance("fp_sqr", "sqrt", 1, 32);
    add_instance("xfc_castftox", "cast", 1, 45);
    add_instance("dp_log", "log", 1, 64);
    const std::int32_t removed = add_instance("xfc_delay", "delay", 1, 45);
    attributes_at(removed).is_removed = 1;
    add_instance("", "t", 1, 32);
    add_instance("xfc_delay", "delay", 1, 45);
    add_instance("fp_neg", "negate", 1, 32);
    EXPECT_EQ(labels_in(instances(language::vhdl)), "cmp0: cmp1: lib0: lib1: lib2: ");
    // The square root's label stands on its module's line.
    EXPECT_EQ(labels_in(instances(language::verilog)), "cmp0 cmp1 lib1 lib2 ");
    EXPECT_NE(instances(language::verilog).find("\n  fp_sqr  lib0 (.sysclk(sysclk)"), std::string::npos);
}

TEST(instance_selection, only_a_node_named_plus_adds) {
    for (const std::string_view component : {"xfc_alulong", "xfc_alufp1_dot", "xfc_alufp1x", "xfc_alufp2x"}) {
        const bool blank = component.starts_with("xfc_alufp1");
        for (const std::string_view name : {"+", "-", "*", "++", "sum", "cast"}) {
            start_operands();
            add_instance(component, name, 2, 45);
            const std::string digit = name == "+" ? "0" : "1";
            EXPECT_NE(instances(language::vhdl).find("enable,\n            addsub=>'" + digit + "',\n            aa=>"),
                      std::string::npos)
                << component << name;
            EXPECT_NE(instances(language::verilog)
                          .find("(enable),\n            .addsub(1'b" + std::string(blank ? " " : "") + digit +
                                "),\n            .aa("),
                      std::string::npos)
                << component << name;
        }
    }
}

TEST(instance_selection, other_components_have_no_adder_select) {
    for (const std::string_view component : {"xfc_mullong", "xfc_mulfp1_dot", "xfc_mulfp1x", "xfc_mulfp2x"}) {
        start_operands();
        add_instance(component, "+", 2, 45);
        EXPECT_EQ(instances(language::vhdl).find("addsub"), std::string::npos) << component;
        EXPECT_EQ(instances(language::verilog).find("addsub"), std::string::npos) << component;
    }
}

TEST(instance_selection, instances_come_in_slot_order_each_from_its_own_drivers) {
    start_operands();
    const std::int32_t first = add_instance("xfc_castftod", "cast", 1, 64);
    add_instance("xfc_castftod", "cast", 1, 64);
    dfg_set_source(first, 0, 1, 0);
    EXPECT_EQ(instances(language::vhdl), R"(
  cmp0: xfc_castftod
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0001(32 DOWNTO 1),
            cc=>synth0003(64 DOWNTO 1));

  cmp1: xfc_castftod
  PORT MAP (sysclk=>sysclk,reset=>reset,enable=>enable,
            aa=>synth0000(32 DOWNTO 1),
            cc=>synth0004(64 DOWNTO 1));

)");
}

}  // namespace

}  // namespace xfc::test
