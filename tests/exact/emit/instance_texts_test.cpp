#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "components/component_table.h"
#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/emit/expected_instances.h"
#include "exact/emit/text_file.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// All cases of one component, each compared with what the component must look like, together with its text file.
class component_cases {
public:
    explicit component_cases(const expected_instance& row) : row_(row), file_(row.name) {}

    void run() {
        for (const char digit : row_.selectors) {
            const bool adds = row_.has(adder_select) || row_.has(adder_select_with_blank);
            const std::string selector = row_.selectors.size() == 1 ? "" : std::string(", selector ") + digit;
            for (const bool changed : {false, true}) {
                const instance_case built{.node = !adds     ? "op"
                                                  : changed ? "-"
                                                            : "+",
                                          .selector = digit - '0',
                                          .options_changed = changed,
                                          .latency = changed ? 123 : 7};
                add((adds ? "node " + built.node + ", " : "") + (changed ? "every option changed" : "default options") +
                        selector,
                    built, operands_read());
            }
        }
        const std::int32_t any = row_.selectors.size() > 2 ? 2 : 0;
        if (row_.generics.find("normspeed") != std::string_view::npos) {
            add("normspeed 1", {.selector = any, .slowest_normalizer = true}, {});
        }
        if (row_.is_function()) {
            add_function_operands();
        } else if (row_.constants == constants_as::operands) {
            add("constant as aa", {.selector = any, .aa = "constsynth0003"}, {.constant = {true, false}});
            add("constant as bb", {.selector = any, .bb = "constsynth0003"}, {.constant = {false, true}});
            add("constants as both", {.selector = any, .aa = "constsynth0003", .bb = "constsynth0003"},
                {.constant = {true, true}});
        } else if (!row_.has(without_instance)) {
            add("operands marked as constants are read from their drivers", {.selector = any}, {.marked = true});
        }
        file_.compare();
    }

private:
    /// What is on the inputs of the node.
    struct inputs {
        std::int32_t count = 0;  ///< 0: one for each operand
        bool constant[2] = {false, false};
        bool marked = false;  ///< constants all, but with drivers
    };

    /// ldexp has its scale on the first input and its value on the second one.
    [[nodiscard]] bool scales() const { return row_.is_function() && row_.bb != bus::none; }

    [[nodiscard]] inputs operands_read() const { return scales() ? inputs{.constant = {true, false}} : inputs{}; }

    void add_function_operands() {
        if (scales()) {
            add("no constant: value and scale come from the second input", {.aa = "synth0001"}, {});
        } else {
            add("two inputs, the first is read", {}, {.count = 2});
        }
        if (row_.name == "fp_inv") {
            add("constant on the first of two inputs, the second is read", {.aa = "synth0001"},
                {.count = 2, .constant = {true, false}});
        }
    }

    void add(const std::string& heading, instance_case built, const inputs& on) {
        if (scales()) {
            built.aa = "synth0001";
            built.bb = on.constant[0] ? "constsynth0003" : "synth0001";
        }
        start_operands();
        if (built.options_changed) {
            use_distinct_options();
        }
        if (built.slowest_normalizer) {
            use_slowest_normalizer();
        }
        const std::int32_t count = on.count != 0 ? on.count : row_.bb != bus::none ? 2 : 1;
        const std::int32_t slot = add_instance(row_.name, built.node, count, result_width(row_, built), built.selector);
        attributes_at(slot).latency = built.latency;
        for (std::int32_t port = 0; port < count; ++port) {
            if (port < 2 && on.constant[port]) {
                make_constant(slot, port, 0);
            }
            node_at(slot).inputs[port].is_constant |= on.marked ? 1 : 0;
        }
        const std::string vhdl = instances(language::vhdl);
        const std::string verilog = instances(language::verilog);
        EXPECT_EQ(vhdl, expected_text(row_, built, language::vhdl)) << row_.name << ": " << heading;
        EXPECT_EQ(verilog, expected_text(row_, built, language::verilog)) << row_.name << ": " << heading;
        file_.add_case(heading, vhdl, verilog);
    }

    const expected_instance& row_;
    text_file file_;
};

TEST(instance_texts, every_case_of_every_component_is_as_expected_and_as_in_its_text_file) {
    for (const expected_instance& row : expected_instances()) {
        component_cases(row).run();
    }
}

TEST(instance_texts, every_component_is_expected_and_has_a_text_file_and_no_other_file_bears_a_components_name) {
    std::multiset<std::string> expected;
    for (const expected_instance& row : expected_instances()) {
        expected.emplace(row.name);
    }
    std::multiset<std::string> components;
    for (const component_row& row : components_of_xfc()) {
        components.emplace(row.name);
    }
    EXPECT_EQ(expected, components);
    std::multiset<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(text_folder())) {
        EXPECT_EQ(entry.path().extension(), ".txt") << entry.path();
        if (!entry.path().stem().string().ends_with("_constants")) {
            files.insert(entry.path().stem().string());
        }
    }
    EXPECT_EQ(files, components);
}

}  // namespace

}  // namespace xfc::test
