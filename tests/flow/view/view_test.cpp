#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>

#include "flow/passes/options.h"
#include "flow/passes/select_components.h"
#include "flow/support/graphs.h"
#include "flow/view/page.h"

namespace xfc::flow {
namespace {

using nlohmann::json;
using test::graph_writer;

/// A graph on its way to a page.
struct drawn {
    graph values;
    source_map places = {};
    design made = {};
    schedule times = {};
    design_names names = {};
    picture what = {};

    explicit drawn(graph source) : values(std::move(source)) {
        diagnostics messages;
        made = select_components(values, default_library_options(false), messages).value();
        times = balanced_schedule(made);
        names = names_of(values, "drawn", made, places);
        what = picture_of(values, made, times, names);
    }
    [[nodiscard]] view_input input(std::string_view source = "drawn.c") const {
        return {values, made, times, names, places, source};
    }
    [[nodiscard]] const bar& named(std::string_view name) const {
        return *std::find_if(what.bars.begin(), what.bars.end(),
                             [&](const bar& one) { return names.nodes[one.node] == name; });
    }
};

/// (a + b) / c with c also an output, so that it waits.
graph sum_over_c() {
    graph_writer w;
    const value_id c = w.input("c");
    const value_id sum = w.add(w.input("a"), w.input("b"));
    w.output("y", w.make(operation::divide, number_format::single_float, {sum, c}));
    w.output("c_again", c);
    return w.made;
}

graph random_graph(int operations) {
    graph_writer w;
    std::mt19937 random(1);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same graph every time
    std::vector<value_id> values = {w.input("a"), w.input("b"), w.input("c")};
    constexpr operation kinds[] = {operation::add, operation::subtract, operation::multiply, operation::divide};
    for (int index = 0; index < operations; ++index) {
        const auto recent = [&] {
            return values[values.size() - 1 - random() % std::min<std::size_t>(20, values.size())];
        };
        const value_id a = recent();
        values.push_back(w.make(kinds[random() % 4], number_format::single_float, {a, recent()}));
    }
    w.output("y", values.back());
    return w.made;
}

TEST(picture, bars_and_delays_of_one_lane_never_overlap) {
    const drawn all(random_graph(400));
    std::vector<std::int32_t> free_from(static_cast<std::size_t>(all.what.lanes), -1);
    for (const bar& one : all.what.bars) {
        std::int32_t& free = free_from.at(static_cast<std::size_t>(one.lane));
        EXPECT_GE(one.start, free) << all.names.nodes[one.node];
        free = std::max(one.last, one.start + 1);
    }
}

TEST(picture, delays_have_the_schedules_register_bits) {
    const drawn all(random_graph(400));
    std::int64_t bits = 0;
    for (const bar& one : all.what.bars) {
        bits += one.register_bits();
    }
    EXPECT_EQ(bits, all.times.register_bits);
}

TEST(picture, the_critical_path_takes_the_whole_latency_without_a_gap) {
    const drawn all(random_graph(60));
    const picture& what = all.what;
    EXPECT_EQ(what.arithmetic + what.conversion + what.normalization, what.latency);
    ASSERT_FALSE(what.path.empty());
    std::int32_t at = 0;
    for (const std::uint32_t index : what.path) {
        const bar& one = what.bars[index];
        EXPECT_TRUE(one.on_path);
        EXPECT_EQ(one.slack, 0);
        EXPECT_EQ(one.kind == bar_kind::input ? 0 : one.start, at);
        at = one.end;
    }
    EXPECT_EQ(at, what.latency);
}

TEST(picture, tells_kinds_slack_and_outputs) {
    const drawn all(sum_over_c());
    EXPECT_EQ(all.named("c").kind, bar_kind::input);
    EXPECT_EQ(all.named("c").outputs, std::vector<std::string>{"c_again"});
    EXPECT_EQ(all.named("c").last, all.times.latency);
    EXPECT_GT(all.named("c").slack, 0);
    const auto kinds = [&](bar_kind kind) {
        return std::count_if(all.what.bars.begin(), all.what.bars.end(),
                             [&](const bar& one) { return one.kind == kind; });
    };
    EXPECT_EQ(kinds(bar_kind::sum), 1);
    EXPECT_EQ(kinds(bar_kind::quotient), 1);
    EXPECT_EQ(kinds(bar_kind::conversion), 3);
    EXPECT_EQ(kinds(bar_kind::normalization), 1);
}

TEST(page, holds_its_design_and_needs_nothing_beside_it) {
    const drawn all(sum_over_c());
    const std::string page = page_text(all.what, all.input());
    for (const char* outside : {"http://", "https://", "src=", "href=", "@import", "url("}) {
        EXPECT_EQ(page.find(outside), std::string::npos) << outside;
    }
    const std::string open = R"(<script id="data" type="application/json">)";
    const std::size_t begin = page.find(open) + open.size();
    const json data = json::parse(page.substr(begin, page.find("</script>", begin) - begin));
    EXPECT_EQ(data["latency"], all.times.latency);
    EXPECT_EQ(data["bars"].size(), all.what.bars.size());
    EXPECT_EQ(data["outputs"][1]["name"], "c_again");
}

TEST(page, source_text_cannot_end_the_script) {
    drawn all(sum_over_c());
    all.places.add_file(1, "drawn.c", "// </script><script>alert(1)</script>\nfloat y;\n");
    const std::string page = page_text(all.what, all.input());
    EXPECT_EQ(page.find("<script>alert"), std::string::npos);
    EXPECT_NE(page.find("\\u003c/script>\\u003cscript>alert(1)"), std::string::npos);
}

TEST(page, has_less_than_20000_bytes_of_script) {
    const std::string page = page_text(drawn(sum_over_c()).what, drawn(sum_over_c()).input());
    const std::size_t begin = page.rfind("<script>");
    EXPECT_LT(page.rfind("</script>") - begin, 20000U);
}

TEST(svg, has_a_bar_for_every_bus_and_a_line_for_every_delay) {
    const drawn all(sum_over_c());
    const std::string svg = svg_text(all.what, all.input());
    const auto count = [&](const std::string& pattern) {
        const std::regex wanted(pattern);
        return std::distance(std::sregex_iterator(svg.begin(), svg.end(), wanted), std::sregex_iterator());
    };
    const auto delayed =
        std::count_if(all.what.bars.begin(), all.what.bars.end(), [](const bar& one) { return one.last > one.end; });
    EXPECT_EQ(count("class=\"delay\""), delayed);
    EXPECT_EQ(count("<rect "), delayed + static_cast<std::ptrdiff_t>(all.what.bars.size()));
    EXPECT_EQ(count("<rect "), count("</rect>"));
    EXPECT_EQ(count(" path\""), static_cast<std::ptrdiff_t>(all.what.path.size()));
}

TEST(dot, has_an_edge_for_every_operand_and_tells_delays) {
    const drawn all(sum_over_c());
    const std::string dot = dot_text(all.what, all.input());
    std::size_t edges = 0;
    for (std::size_t at = dot.find(" -> "); at != std::string::npos; at = dot.find(" -> ", at + 1)) {
        ++edges;
    }
    std::size_t operands = all.values.outputs().size();
    for (const bar& one : all.what.bars) {
        operands += one.operands.size();
    }
    EXPECT_EQ(edges, operands);
    EXPECT_NE(dot.find("-> \"output c_again\" [label=\"" + std::to_string(all.times.latency) + "\"]"),
              std::string::npos);
}

}  // namespace
}  // namespace xfc::flow
