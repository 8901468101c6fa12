#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/emit/emitted.h"
#include "exact/emit/expected_instances.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// Two instances of every component, the second with constants where it takes them.
void build_every_component() {
    start_operands();
    use_distinct_options();
    for (const expected_instance& row : expected_instances()) {
        const std::int32_t select = row.selectors.size() > 2 ? 2 : 0;
        const std::int32_t width = result_width(row, {.selector = select, .options_changed = true});
        attributes_at(add_instance(row.name, "-", 2, width, select)).latency = 6;
        const std::int32_t of_constant = add_instance(row.name, "+", 2, width, select);
        if (row.constants == constants_as::operands || row.bb == bus::word) {
            make_constant(of_constant, 0, -2.5);
        }
    }
}

bool is_word(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

/// A value without its language: ranges and bits as "[7:1]", quotes, blanks and the mark of a Verilog bit left out.
std::string plain_value(std::string_view value) {
    std::string text(value.substr(value.starts_with("1'b") ? 3 : 0));
    if (const std::size_t downto = text.find("DOWNTO"); downto != std::string::npos) {
        text.replace(downto, 6, ":");
    }
    std::erase_if(text, [](char c) { return c == '\'' || c == ' '; });
    std::replace(text.begin(), text.end(), '(', '[');
    std::replace(text.begin(), text.end(), ')', ']');
    return text;
}

/// Every "name value" of the generics and ports in order.
std::vector<std::string> associations(std::string_view text, language in) {
    std::vector<std::string> found;
    const std::string_view mark = in == language::vhdl ? "=>" : ".";
    for (std::size_t at = text.find(mark); at != std::string_view::npos; at = text.find(mark, at + 1)) {
        std::size_t name = in == language::vhdl ? at : at + 1;
        std::size_t name_end = name;
        if (in == language::vhdl) {
            while (is_word(text[name - 1])) {
                --name;
            }
        } else {
            while (is_word(text[name_end])) {
                ++name_end;
            }
        }
        const std::size_t start = in == language::vhdl ? at + 2 : name_end + 1;
        std::size_t end = start;
        for (int depth = 0; depth > 0 || std::string_view(",).;\n").find(text[end]) == std::string_view::npos; ++end) {
            depth += text[end] == '(' ? 1 : text[end] == ')' ? -1 : 0;
        }
        if (name != name_end) {
            found.push_back(std::string(text.substr(name, name_end - name)) + ' ' +
                            plain_value(text.substr(start, end - start)));
        }
    }
    return found;
}

/// The labels "cmp0", "lib0", ... in order.
std::vector<std::string> labels_of(std::string_view text) {
    std::vector<std::string> found;
    for (std::size_t at = text.find("  "); at != std::string_view::npos; at = text.find("  ", at + 1)) {
        const std::string_view rest = text.substr(at + 2);
        if (rest.starts_with("cmp") || rest.starts_with("lib")) {
            found.emplace_back(rest.substr(0, rest.find_first_of(": ")));
        }
    }
    return found;
}

TEST(languages_agree, instances_have_the_same_generics_ports_signals_ranges_and_numbers) {
    build_every_component();
    const std::string vhdl = instances(language::vhdl);
    const std::string verilog = instances(language::verilog);
    const std::vector<std::string> in_vhdl = associations(vhdl, language::vhdl);
    EXPECT_GT(in_vhdl.size(), 900U);
    EXPECT_EQ(in_vhdl, associations(verilog, language::verilog));
    EXPECT_EQ(labels_of(vhdl).size(), 82U);
    EXPECT_EQ(labels_of(vhdl), labels_of(verilog));
}

}  // namespace

}  // namespace xfc::test
