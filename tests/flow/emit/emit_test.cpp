#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <set>
#include <string>

#include "flow/emit/datapath.h"
#include "flow/emit/files.h"
#include "flow/passes/options.h"
#include "flow/passes/select_components.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

/// A graph as hardware, its values at places of a source text.
struct hardware {
    graph source;
    source_map places;
    design made;
    schedule times;
    std::shared_ptr<const design_names> names;
    datapath text;

    hardware(graph values, std::string_view name, const std::string& program = "") : source(std::move(values)) {
        places.add_file(1, "test.c", program);
        diagnostics messages;
        made = select_components(source, default_library_options(false), messages).value();
        times = balanced_schedule(made);
        names = std::make_shared<const design_names>(names_of(source, name, made, places));
        text = make_datapath(source, made, times, names, places, {"test"});
    }
};

/// A range of the program's text as the graph counts it.
source_range range_of(const std::string& program, const std::string& part) {
    const auto begin = static_cast<std::uint32_t>(program.find(part) + 1);
    return {begin, begin + static_cast<std::uint32_t>(part.size())};
}

TEST(names, of_buses_are_those_of_the_variables_that_they_are_assigned_to) {
    const std::string program = "float outer = a + b;\ny[2] += outer - b;\nreturn a - b;\n";
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const auto make = [&](operation op, value_id left, value_id right, const std::string& part) {
        const std::array operands{left, right};
        return w.made.make(op, number_format::single_float, operands, range_of(program, part));
    };
    const value_id outer = make(operation::add, a, b, "a + b");
    w.output("y_2", make(operation::subtract, outer, b, "outer - b"));
    w.output("result", make(operation::subtract, a, b, "a - b"));
    const hardware h(std::move(w.made), "test", program);
    const std::set<std::string> names(h.names->nodes.begin(), h.names->nodes.end());
    for (const char* wanted : {"a", "b", "outer_x", "y_x", "subtract_line3_x"}) {
        EXPECT_TRUE(names.contains(wanted)) << wanted;
    }
}

TEST(names, are_legal_and_unlike_each_other_whatever_the_case) {
    graph_writer w;
    value_id sum = w.input("Signal");
    for (const char* name : {"signal_x", "SIGNAL", "start_chain", "add_x", "add_x_i", "add_x_d5"}) {
        sum = w.add(sum, w.input(name));
    }
    w.output("out", sum);
    const hardware h(std::move(w.made), "add");
    std::vector<std::string> all{"add", h.text.start_chain};
    for (const bus_text& bus : h.text.inputs) {
        all.emplace_back(bus.name);
    }
    for (const output_text& output : h.text.outputs) {
        all.emplace_back(output.bus.name);
    }
    h.text.for_each_signal([&](const bus_text& bus) { all.emplace_back(bus.name); });
    h.text.for_each_instance([&](const instance_text& instance) { all.emplace_back(instance.label); });
    std::set<std::string> lower;
    for (std::string name : all) {
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
        EXPECT_TRUE(lower.insert(name).second) << name;
    }
}

TEST(library_files, stand_behind_those_that_they_need) {
    for (const language lang : {language::vhdl, language::verilog}) {
        const auto files = files_for({"xfc_alufp1x", "xfc_delay"}, library_folder(), lang);
        ASSERT_TRUE(files.has_value());
        std::vector<std::string> names;
        for (const auto& file : *files) {
            names.push_back(file.path.stem().string());
            EXPECT_FALSE(file.text.empty());
        }
        const auto place = [&](const char* name) {
            return std::find(names.begin(), names.end(), name) - names.begin();
        };
        EXPECT_EQ(names.size(), 6U);
        EXPECT_LT(place("xfc_add_xfloat"), place("xfc_alufp1x"));
        EXPECT_LT(place("xfc_add_internal"), place("xfc_add_xfloat"));
        EXPECT_LT(place("xfc_shift_right"), place("xfc_add_internal"));
        EXPECT_LT(place("xfc_register"), place("xfc_delay"));
    }
    EXPECT_FALSE(files_for({"no_such_component"}, library_folder(), language::vhdl).has_value());
}

TEST(texts, are_the_same_to_the_byte_for_equal_designs) {
    const auto text = [] {
        graph_writer w;
        const value_id a = w.input("a");
        w.output("y", w.add(w.add(a, w.input("b")), w.made.make_single(-0.1F)));
        const hardware h(std::move(w.made), "test");
        std::string all = vhdl_text(h.text) + verilog_text(h.text);
        write_design_json(h.source, h.made, h.times, *h.names, h.places, [&](std::string_view piece) { all += piece; });
        return all;
    };
    EXPECT_EQ(text(), text());
}

TEST(texts, put_constants_of_more_than_32_bits_together) {
    graph_writer w;
    w.output("y", w.add(w.input("a"), w.made.make_single(0.5F)));
    const hardware h(std::move(w.made), "test");
    const std::string text = vhdl_text(h.text);
    EXPECT_EQ(text.find("  constant "), std::string::npos);
    EXPECT_NE(text.find("  signal constant_x : std_logic_vector(45 downto 1);   -- constant XFloat"),
              std::string::npos);
    EXPECT_NE(text.find("  constant_x(45 downto 33) <= \"0000000010000\";\n"
                        "  constant_x(32 downto 1) <= \"00000000000000000000000001111110\";\n"),
              std::string::npos)
        << text;
}

TEST(write_files, says_what_it_cannot_write) {
    diagnostics messages;
    EXPECT_FALSE(write_files("/dev/null/no_folder", {{"a.v", "text"}}, messages));
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].name, "cannot-write");
}

TEST(write_files, leaves_no_half_of_a_file) {
    const auto path = std::filesystem::path(testing::TempDir()) / "xfcflow_half.v";
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 5000;
    const auto was = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    diagnostics messages;
    const bool written = write_files("", {{path, std::string(100000, 'a')}}, messages);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, was);
    EXPECT_FALSE(written);
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_NE(messages.messages()[0].text.find("File too large"), std::string::npos) << messages.messages()[0].text;
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace xfc::flow
