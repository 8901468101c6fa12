#include "flow/explore/points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>

#include "flow/explore/report.h"
#include "flow/explore/results.h"
#include "flow/passes/options.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

std::vector<design_point> all_points(const graph& program, std::vector<std::string_view> fixed = {}) {
    diagnostics messages;
    const auto points =
        points_of(program, {.options = default_library_options(false), .fixed = std::move(fixed)}, messages);
    EXPECT_FALSE(messages.has_errors()) << rendered(messages, {});
    return points;
}

graph sum_of_floats() {
    graph_writer w;
    w.output("y", w.add(w.input("a"), w.input("b")));
    return w.made;
}

TEST(points, of_integers_there_is_one) {
    graph_writer w;
    w.output("y", w.add(w.input("a", number_format::integer), w.input("b", number_format::integer)));
    const auto points = all_points(w.made);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].text, "");
}

TEST(points, begin_with_the_defaults_and_differ_in_their_hardware) {
    const auto points = all_points(sum_of_floats());
    ASSERT_GT(points.size(), 8U);
    EXPECT_EQ(points[0].text, "");
    std::set<std::string> designs;
    std::set<std::string> told;
    for (const design_point& point : points) {
        diagnostics messages;
        const graph program = sum_of_floats();
        EXPECT_TRUE(designs.insert(dump(design_of(program, point, messages)->made, program)).second) << point.text;
        EXPECT_TRUE(told.insert(point.text).second) << point.text;
    }
    EXPECT_TRUE(told.contains("--mantissa 36"));
    EXPECT_TRUE(told.contains("--output-registers off --normalizer-speed 1"));
    // No component of a sum of two looks at these.
    for (const std::string& text : told) {
        EXPECT_EQ(text.find("--normalize-inputs"), std::string::npos);
        EXPECT_EQ(text.find("--normalizer-speed 2"), std::string::npos) << "means what 3 means to this component";
        EXPECT_EQ(text.find("--fast-reciprocal"), std::string::npos);
    }
}

TEST(points, an_option_that_is_given_stays_as_it_is) {
    for (const design_point& point : all_points(sum_of_floats(), {"--output-registers"})) {
        EXPECT_EQ(point.options.outputpipe, 1);
        EXPECT_EQ(point.text.find("--output-registers"), std::string::npos);
    }
}

TEST(points, reciprocals_are_explored_where_a_program_divides_one) {
    graph_writer w;
    w.output("y", w.make(operation::divide, number_format::single_float, {w.made.make_single(1), w.input("x")}));
    const auto points = all_points(w.made);
    EXPECT_TRUE(std::any_of(points.begin(), points.end(), [](const design_point& point) {
        return point.text == "--fast-reciprocal" && point.fast_reciprocal;
    }));
}

point_result result(std::size_t number, std::int32_t latency, std::int64_t tables, double error) {
    return {.number = number,
            .options = "--option " + std::to_string(number),
            .latency = latency,
            .estimate = {.look_up_tables = tables},
            .measured = 10,
            .largest_ulp = error};
}

TEST(results, the_front_has_what_nothing_else_beats) {
    const auto points =
        finished({result(1, 10, 500, 0.5), result(2, 8, 700, 0.5), result(3, 10, 600, 0.5), result(4, 12, 900, 0.25)});
    std::vector<std::size_t> front;
    for (const point_result& point : points) {
        if (point.on_front) {
            front.push_back(point.number);
        }
    }
    EXPECT_EQ(front, (std::vector<std::size_t>{2, 1, 4}));
    EXPECT_EQ(points.size(), 4U);
}

TEST(results, what_came_to_the_same_is_told_once) {
    const auto points = finished({result(2, 10, 500, 0.5), result(1, 10, 500, 0.5)});
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].number, 1U);
    EXPECT_EQ(points[0].same, std::vector<std::string>{"--option 2"});
}

TEST(results, equal_points_do_not_beat_each_other) {
    EXPECT_FALSE(dominates(result(1, 10, 500, 0.5), result(2, 10, 500, 0.5)));
    EXPECT_TRUE(dominates(result(1, 9, 500, 0.5), result(2, 10, 500, 0.5)));
    EXPECT_FALSE(dominates(result(1, 9, 501, 0.5), result(2, 10, 500, 0.5)));
}

TEST(results, files_keep_every_bit_and_are_of_one_exploration) {
    point_result point = result(7, 31, 1234567, 0.1 + 0.2);
    point.median_ulp = 1e-300;
    point.register_bits = 5000000000;
    point.outside = 3;
    const std::string file = result_file(point, "fir, 100 vectors");
    const auto back = result_of_file(file, "fir, 100 vectors");
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(result_file(*back, "fir, 100 vectors"), file);
    EXPECT_EQ(back->largest_ulp, 0.1 + 0.2);
    EXPECT_FALSE(result_of_file(file, "fir, 101 vectors").has_value());
    EXPECT_FALSE(result_of_file(file.substr(0, file.size() / 2), "fir, 100 vectors").has_value());
    EXPECT_FALSE(result_of_file("", "fir, 100 vectors").has_value());
    EXPECT_FALSE(result_of_file("{\"of\": \"fir, 100 vectors\"}", "fir, 100 vectors").has_value());
    EXPECT_FALSE(result_of_file("[]", "fir, 100 vectors").has_value());
}

TEST(results, an_infinite_error_comes_back) {
    const auto back = result_of_file(result_file(result(1, 2, 3, std::numeric_limits<double>::infinity()), ""), "");
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(back->largest_ulp, std::numeric_limits<double>::infinity());
}

TEST(results, a_point_is_measured_by_the_model) {
    const graph program = sum_of_floats();
    const stimulus applied = make_stimulus(program, 200, 1, 1);
    const measuring with{program, applied, *family_named("xilinx"), component_costs(*family_named("xilinx"))};
    const auto points = all_points(program);
    const point_result defaults = measured_point(with, points[0], 1);
    EXPECT_EQ(defaults.latency, 14);  // castftox 2, alufp1x 5, castxtof 7
    EXPECT_EQ(defaults.components, 4);
    EXPECT_GT(defaults.measured, 100U);
    EXPECT_LE(defaults.largest_ulp, 0.5);
    EXPECT_GT(defaults.largest_ulp, 0.1);
    EXPECT_EQ(defaults.outside, 0U);
    EXPECT_EQ(defaults.estimate.not_measured, 0);
    EXPECT_GT(defaults.estimate.look_up_tables, 300);
}

const std::vector<point_result> two = finished({result(1, 10, 500, 0.5), result(2, 8, 700, 0.625)});

exploration_head head_of_two() {
    static const std::vector<std::string> costs = {"Measured some day."};
    return {.design = "fir", .source = "fir.c", .family = family_named("ecp5"), .vectors = 100, .costs = costs};
}

TEST(reports, people_read_a_table) {
    EXPECT_EQ(exploration_text(head_of_two(), two),
              "fir of fir.c for ECP5, 100 vectors: 2 designs of 2 sets of options\n"
              "\n"
              "      cycles   delay bits   tables   flip-flops   blocks   largest ulp   median   options\n"
              "  *        8            0      700            0        0         0.625    0.000   --option 2\n"
              "  *       10            0      500            0        0         0.500    0.000   --option 1\n"
              "\n"
              "  * nothing else is as good in latency, cost (tables and flip-flops, blocks) and largest error\n"
              "  Measured some day.\n");
}

TEST(reports, estimates_say_how_well_they_are_known) {
    std::vector<point_result> points = two;
    points[0].estimate.derived = 2;
    points[1].estimate.not_measured = 1;
    points[1].same = {"--option 3"};
    points[1].estimate.megahertz = 138.3;
    const std::string text = exploration_text(head_of_two(), points);
    EXPECT_NE(text.find("2 designs of 3 sets of options"), std::string::npos) << text;
    EXPECT_NE(text.find(" ~700 "), std::string::npos) << text;
    EXPECT_NE(text.find(" >500 "), std::string::npos) << text;
    EXPECT_NE(text.find("--option 1  (and 1 alike)"), std::string::npos) << text;
    EXPECT_NE(text.find(" <138 "), std::string::npos) << text;
    EXPECT_NE(text.find("  < the slowest component"), std::string::npos) << text;
    EXPECT_NE(text.find("  ~ partly derived"), std::string::npos) << text;
    EXPECT_NE(text.find("  > components that were not measured"), std::string::npos) << text;
}

TEST(reports, programs_read_comma_separated_values) {
    EXPECT_EQ(
        exploration_csv(two),
        "front,latency,register_bits,look_up_tables,flip_flops,multipliers,megahertz,largest_ulp,median_ulp,outside,"
        "components,derived,not_measured,options\n"
        "true,8,0,700,0,0,,0.625,0.0,0,0,0,0,--option 2\n"
        "true,10,0,500,0,0,,0.5,0.0,0,0,0,0,--option 1\n");
}

TEST(reports, json_has_the_same_and_more) {
    const auto all = nlohmann::json::parse(exploration_json(head_of_two(), two));
    EXPECT_EQ(all["design"], "fir");
    EXPECT_EQ(all["family"], "ecp5");
    ASSERT_EQ(all["points"].size(), 2U);
    EXPECT_EQ(all["points"][0]["latency"], 8);
    EXPECT_EQ(all["points"][0]["options"], "--option 2");
    EXPECT_EQ(all["points"][0]["front"], true);
    EXPECT_EQ(all["costs"][0], "Measured some day.");
}

TEST(reports, the_page_needs_nothing_beside_it) {
    exploration_head head = head_of_two();
    head.source = "</script><b>.c";
    const std::string page = exploration_page(head, two);
    EXPECT_EQ(page.find("src="), std::string::npos);
    EXPECT_EQ(page.find("https:"), std::string::npos);
    EXPECT_EQ(page.find("</script><b>"), std::string::npos);
    EXPECT_NE(page.find("--option 2"), std::string::npos);
}

}  // namespace
}  // namespace xfc::flow
