#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <vector>

#include "components/component_table.h"
#include "exact/dfg/dfg.h"
#include "exact/dfg/instance_operands.h"
#include "exact/emit/emitted.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

std::string replaced(const std::string& text, const char* pattern, const char* with) {
    return std::regex_replace(text, std::regex(pattern), with);
}

/// Every "name value" of the generics and ports in order, ranges written as in Verilog.
std::vector<std::string> associations(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match) {
        std::string value = replaced((*match)[2].str(), "\\((\\d+) DOWNTO (\\d+)\\)", "[$1 : $2]");
        value = replaced(value, "\\((\\d+)\\)", "[$1]");
        value = replaced(value, "'(\\d)'", "$1");
        value = replaced(value, "1'b ?(\\d)", "$1");
        found.push_back((*match)[1].str() + ' ' + value);
    }
    return found;
}

/// One instance of every component that has one, with both operands driven, then with a constant where accepted.
void build_every_component() {
    start_operands();
    use_distinct_options();
    for (const component_row& row : component_rows::table) {
        if (instance_kind_of(row) == instance_kind::none) {
            continue;
        }
        const std::int32_t slot = add_instance(row.name, "-", 2, 49, 1);
        attributes_at(slot).latency = 6;
        const std::int32_t of_constant = add_instance(row.name, "+", 2, 80, 2);
        make_constant(of_constant, 0, -2.5);
        const bool is_operator = instance_kind_of(row) == instance_kind::operator_instance;
        const instance_operand read =
            is_operator ? operator_operand(node_at(of_constant), 0) : function_scale_operand(node_at(of_constant));
        if (read.from != instance_operand::origin::constant_signal || (!is_operator && row.bb == port_shape::none)) {
            attributes_at(of_constant).component = component_id::wire;
        }
    }
}

TEST(languages_agree, instances_have_the_same_generics_ports_signals_ranges_and_numbers) {
    build_every_component();
    const std::string vhdl = instances(language::vhdl);
    const std::string verilog = instances(language::verilog);
    const std::vector<std::string> in_vhdl =
        associations(vhdl, "(\\w+)=>('[01]'|-?\\w+(?:\\(\\d+(?: DOWNTO \\d+)?\\))?)");
    const std::vector<std::string> in_verilog =
        associations(verilog, "\\.(\\w+)\\((1'b ?[01]|-?\\w+(?:\\[\\d+(?: : \\d+)?\\])?)\\)");
    EXPECT_GT(in_vhdl.size(), 600U);
    EXPECT_EQ(in_vhdl, in_verilog);
    std::multiset<std::string> vhdl_labels;
    std::multiset<std::string> verilog_labels;
    const std::regex label("  ((?:cmp|lib)\\d+)[: ]");
    for (std::sregex_iterator match(vhdl.begin(), vhdl.end(), label); match != std::sregex_iterator(); ++match) {
        vhdl_labels.insert((*match)[1].str());
    }
    for (std::sregex_iterator match(verilog.begin(), verilog.end(), label); match != std::sregex_iterator(); ++match) {
        verilog_labels.insert((*match)[1].str());
    }
    EXPECT_EQ(vhdl_labels.size(), 51U);
    EXPECT_EQ(vhdl_labels, verilog_labels);
}

}  // namespace

}  // namespace xfc::test
