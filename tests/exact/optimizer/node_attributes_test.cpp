#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/node_record.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr auto in_float = number_format::single_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

/// The option values that enter the tables.
struct numbers {
    std::int32_t m;
    std::int32_t rc;
    std::int32_t rn;
    std::int32_t ds;
    std::int32_t op;
    std::int32_t ns;
    std::int32_t ns2;
    std::int32_t ni;
};

std::ostream& operator<<(std::ostream& stream, const numbers& n) {
    return stream << "mantissa " << n.m << " roundconvert " << n.rc << " roundnormalize " << n.rn << " doublespeed "
                  << n.ds << " outputpipe " << n.op << " normspeed " << n.ns << " inputnormalize " << n.ni;
}

using formula = std::function<std::int32_t(const numbers&)>;
using names = std::vector<std::string_view>;

formula always(std::int32_t value) {
    return [value](const numbers&) { return value; };
}

const formula unchanged;

struct table_row {
    std::string_view component;  // what the node holds, or for a normalizer gets
    names first_consumers;
    formula latency;
    formula input;
    formula output;
    formula output_select;
    formula input_select;
};

/// The table of conversions. Names that only resemble an operator are among the others.
std::vector<table_row> conversion_table() {
    const names divider{"/"};
    const names multiplier{"*"};
    const names multiplicative{"/", "*"};
    const names others{"+", "-", "y", "sqrt", "norm", "cast", "**", "//", "*/", "1/"};
    const names any{"/", "*", "+", "-", "y", "norm"};
    const formula xfloat = [](const numbers& n) { return n.m + 13; };
    const formula op1 = [](const numbers& n) { return n.op + 1; };
    const formula b = [](const numbers& n) { return n.rc == 0 && n.op == 0 ? 1 : n.ds * n.rc + 2; };
    const formula dtox = [](const numbers& n) { return n.ds * n.rc + 4; };
    return {
        {"xfc_castftox", divider, always(1), always(32), xfloat, always(2), unchanged},
        {"xfc_castftox", multiplier, op1, always(32), xfloat, always(1), unchanged},
        {"xfc_castftox", others, op1, always(32), xfloat, always(0), unchanged},
        {"castftoy", divider, always(3), always(32), always(70), always(0), unchanged},
        {"castftoy", multiplier, always(2), always(32), always(70), always(0), unchanged},
        {"castftoy", others, always(2), always(32), always(80), always(1), unchanged},
        {"xfc_castdtoy", multiplicative, op1, always(64), always(70), always(0), unchanged},
        {"xfc_castdtoy", others, b, always(32), always(80), always(1), unchanged},
        {"castdtox", divider, dtox, always(64), xfloat, always(2), unchanged},
        {"castdtox", multiplier, dtox, always(64), xfloat, always(1), unchanged},
        {"castdtox", others, dtox, always(64), xfloat, always(0), unchanged},
        {"castxtod", any, [](const numbers& n) { return (n.ds + 1) * n.rc + n.ds + 7; }, xfloat, always(64), unchanged,
         always(1)},
        {"xfc_castxtof", any, [](const numbers& n) { return 2 * n.ns2 + 3; }, xfloat, always(32), unchanged, always(0)},
        {"castxtoy", multiplicative, always(0), xfloat, always(70), always(0), unchanged},
        {"castxtoy", others, always(0), xfloat, unchanged, always(1), unchanged},
        {"xfc_castytod", any, [](const numbers& n) { return (2 * n.ds + 1) * n.rc + n.ns + 4; }, always(80), always(64),
         unchanged, always(0)},
        {"xfc_castytof", any, [](const numbers& n) { return 2 * n.ns2 + 5; }, always(80), always(32), unchanged,
         always(0)},
        {"xfc_castytox", any, always(2), always(80), xfloat, unchanged, unchanged},
        {"xfc_castdtol", any, [b](const numbers& n) { return b(n) + n.ns + 1; }, always(64), always(32), unchanged,
         unchanged},
        {"xfc_castftol", any, [](const numbers& n) { return n.ns2 + 3; }, always(32), always(32), unchanged, unchanged},
        {"xfc_castltod", any, [](const numbers& n) { return (n.ds + 1) * n.rc + n.ns + n.ds + 4; }, always(32),
         always(64), unchanged, unchanged},
        {"xfc_castltof", any, [](const numbers& n) { return 2 * n.ns2 + 3; }, always(32), always(32), unchanged,
         unchanged},
        {"xfc_castltox", any, always(1), always(32), xfloat, unchanged, unchanged},
        {"xfc_castltoy", any, always(1), always(32), always(80), unchanged, unchanged},
        {"xfc_castxtol", any, [](const numbers& n) { return n.ns + 1; }, always(64), always(32), unchanged, unchanged},
        {"xfc_castdtof", any, always(2), always(64), always(32), unchanged, unchanged},
        {"xfc_castftod", any, always(2), always(32), always(64), unchanged, unchanged},
    };
}

/// The normalizers' tables; both components' nodes are named "norm".
std::vector<table_row> normalizer_table() {
    const names others{"+", "-", "y", "sqrt", "norm", "cast", "**", "1/"};
    const formula xfloat = [](const numbers& n) { return n.m + 13; };
    const formula norm2x = [](const numbers& n) { return n.ds * n.rc + n.rn * (n.ds + 1) + n.ns + 3; };
    return {
        {"xfc_normfp1x", {"/"}, [](const numbers& n) { return n.ns2 + 3; }, xfloat, xfloat, always(1), unchanged},
        {"xfc_normfp1x",
         {"*"},
         [](const numbers& n) { return n.ni == 1 ? n.ns2 + 2 : 1; },
         xfloat,
         xfloat,
         always(0),
         unchanged},
        {"xfc_normfp1x", others, [](const numbers& n) { return n.rn + n.ns2 + 2; }, xfloat, xfloat, always(2),
         unchanged},
        {"xfc_normfp2x", {"/", "*"}, norm2x, always(80), always(70), always(0), unchanged},
        {"xfc_normfp2x", others, norm2x, always(80), always(80), always(1), unchanged},
    };
}

/// One node whose row is known.
struct planted_node {
    std::int32_t slot;
    std::string_view component_before;
    std::string_view consumer;
    table_row row;
};

std::int32_t plant(std::string_view name, number_format format, std::string_view component,
                   std::string_view first_consumer) {
    // Two inputs, so that a write to the wrong port shows.
    const std::int32_t slot = add_node(name, 2, format, component);
    dfg_connect(slot, add_node(first_consumer, 2), 1);
    // The second consumer is never looked at.
    dfg_connect(slot, add_node(first_consumer == "/" ? "*" : "/", 2), 0);
    return slot;
}

node_record expected_record(node_record record, const table_row& row, const numbers& n) {
    record.component = row.component;
    if (row.latency) {
        record.latency = record.ready_time = row.latency(n);
    }
    const auto put = [&n](std::int32_t& field, const formula& value) {
        if (value) {
            field = value(n);
        }
    };
    put(record.input_widths[0], row.input);
    put(record.output_width, row.output);
    put(record.output_select, row.output_select);
    put(record.input_select, row.input_select);
    return record;
}

void expect_rows_for_every_option_value(const std::vector<planted_node>& planted) {
    using options = compile_option_record;
    const std::vector<option_range> ranges{
        {&options::mantissa, {32, 36}},     {&options::roundconvert, {0, 1}}, {&options::roundnormalize, {0, 1}},
        {&options::doublespeed, {0, 1}},    {&options::outputpipe, {0, 1}},   {&options::normspeed, {1, 2, 3}},
        {&options::inputnormalize, {0, 1}},
    };
    for_each_combination(ranges, [&] {
        const options& o = current.options;
        const numbers n{o.mantissa,   o.roundconvert, o.roundnormalize,    o.doublespeed,
                        o.outputpipe, o.normspeed,    normspeed_of_two(o), o.inputnormalize};
        std::vector<node_record> expected;
        for (const planted_node& node : planted) {
            expected.push_back(expected_record(put_sentinels(node.slot, node.component_before), node.row, n));
        }
        assign_node_attributes();
        for (std::size_t index = 0; index < planted.size(); ++index) {
            EXPECT_EQ(record_of(planted[index].slot), expected[index])
                << planted[index].row.component << " into " << planted[index].consumer << " with " << n;
        }
    });
}

TEST(node_attributes, every_conversion_follows_its_row_of_the_table_for_every_option_value) {
    start_graph();
    std::vector<planted_node> planted;
    for (const table_row& row : conversion_table()) {
        for (const std::string_view consumer : row.first_consumers) {
            planted.push_back(
                {plant("cast", number_format::none, row.component, consumer), row.component, consumer, row});
        }
    }
    expect_rows_for_every_option_value(planted);
}

TEST(node_attributes, every_normalizer_follows_its_row_of_the_table_for_every_option_value) {
    start_graph();
    std::vector<planted_node> planted;
    for (const table_row& row : normalizer_table()) {
        for (const std::string_view consumer : row.first_consumers) {
            const number_format format = row.component == "xfc_normfp1x" ? in_xfloat : in_ydouble;
            planted.push_back({plant("norm", format, "", consumer), "", consumer, row});
        }
    }
    expect_rows_for_every_option_value(planted);
}

TEST(node_attributes, latencies_at_the_default_options) {
    struct default_latency {
        std::string_view component;
        std::string_view consumer;
        std::int32_t cycles;
    };
    const std::vector<default_latency> table{
        {"xfc_castftox", "+", 2}, {"xfc_castftox", "*", 2}, {"xfc_castftox", "/", 1}, {"castftoy", "+", 2},
        {"castftoy", "*", 2},     {"castftoy", "/", 3},     {"xfc_castdtoy", "+", 2}, {"xfc_castdtoy", "*", 2},
        {"castdtox", "+", 4},     {"castxtod", "y", 7},     {"xfc_castxtof", "y", 7}, {"xfc_castytod", "y", 7},
        {"xfc_castytof", "y", 9}, {"xfc_castytox", "+", 2}, {"xfc_castdtol", "y", 6}, {"xfc_castftol", "y", 5},
        {"xfc_castltod", "y", 7}, {"xfc_castltof", "y", 7}, {"xfc_castltox", "+", 1}, {"xfc_castltoy", "+", 1},
        {"xfc_castxtol", "y", 4}, {"xfc_castdtof", "y", 2}, {"xfc_castftod", "y", 2},
    };
    for (const default_latency& row : table) {
        start_graph();
        const std::int32_t slot = plant("cast", number_format::none, row.component, row.consumer);
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, row.cycles) << row.component << " into " << row.consumer;
    }
    for (const auto& [consumer, cycles] : {std::pair{"+", 4}, {"*", 1}, {"/", 5}}) {
        start_graph();
        const std::int32_t slot = plant("norm", in_xfloat, "", consumer);
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, cycles) << consumer;
    }
    for (const char* consumer : {"+", "*", "/"}) {
        start_graph();
        const std::int32_t slot = plant("norm", in_ydouble, "", consumer);
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, 6) << consumer;
    }
}

TEST(node_attributes, an_empty_graph_and_a_graph_without_slots_are_left_alone) {
    start_graph();
    EXPECT_EQ(catch_output(assign_node_attributes).standard_output, "");
    EXPECT_EQ(dfg_used_slots(), 0);
    current.graph = {};
    EXPECT_EQ(catch_output(assign_node_attributes).standard_output, "");
    EXPECT_EQ(current.graph.capacity, 0);
}

TEST(node_attributes, nodes_that_match_no_row_keep_everything) {
    start_graph();
    struct untouched {
        std::string_view name;
        number_format format;
        std::string_view component;
    };
    const std::vector<untouched> nodes{
        {"+", in_xfloat, ""},
        {"*", in_ydouble, ""},
        {"x", in_float, ""},
        {"cast", number_format::long_integer, "xfc_castytol"},
        {"cast", in_xfloat, ""},
        {"norm", in_float, ""},
        {"norm", number_format::double_float, ""},
        {"norm", number_format::long_integer, ""},
        {"norm", number_format::none, ""},
        {"Norm", in_xfloat, ""},
        {"norms", in_xfloat, ""},
        {"delay", in_xfloat, "xfc_delay"},
        {"y", in_float, "fp_sqr"},
        {"nor", in_ydouble, ""},
    };
    std::vector<std::pair<std::int32_t, node_record>> before;
    for (const untouched& node : nodes) {
        for (const char* consumer : {"*", "/", "+"}) {
            const std::int32_t slot = plant(node.name, node.format, node.component, consumer);
            before.emplace_back(slot, put_sentinels(slot, node.component));
        }
    }
    assign_node_attributes();
    for (const auto& [slot, record] : before) {
        EXPECT_EQ(record_of(slot), record) << node_at(slot).name << " in slot " << slot;
    }
}

TEST(node_attributes, only_conversions_and_normalizers_get_a_latency) {
    // The pass is told by the component of a conversion, whatever the node's name is.
    start_graph();
    const std::int32_t slot = plant("t", in_xfloat, "xfc_castftox", "/");
    const std::int32_t consumer = consumers(slot)[0];
    const node_record consumer_before = put_sentinels(consumer, "");
    assign_node_attributes();
    EXPECT_EQ(attributes_at(slot).latency, 1);
    EXPECT_EQ(record_of(consumer), consumer_before);
}

TEST(node_attributes, a_normalizer_keeps_its_input_selector_and_its_normalized_mark) {
    start_graph();
    const std::int32_t slot = plant("norm", in_ydouble, "", "+");
    node_at(slot).bus_modes.input_select = 7;
    attributes_at(slot).is_normalized = 1;
    attributes_at(slot).fanout = 5;
    assign_node_attributes();
    EXPECT_EQ(node_at(slot).bus_modes.input_select, 7);
    EXPECT_EQ(attributes_at(slot).is_normalized, 1);
    EXPECT_EQ(attributes_at(slot).fanout, 5);
}

// ---- The switches ----

TEST(node_attributes, castftox_into_a_divider_takes_one_cycle_whatever_the_output_pipe) {
    for (const std::vector<std::string>& switches : {std::vector<std::string>{}, {"-op"}}) {
        start_graph();
        set_options(switches);
        const std::int32_t slot = plant("cast", in_xfloat, "xfc_castftox", "/");
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, 1);
        EXPECT_EQ(node_at(slot).bus_modes.output_select, 2);
    }
}

TEST(node_attributes, castdtoy_into_an_adder_depends_on_output_pipe_rounding_and_speed) {
    struct row {
        std::vector<std::string> switches;
        std::int32_t cycles;
    };
    const std::vector<row> rows{{{}, 2},      {{"-op"}, 1},        {{"-rc"}, 2},        {{"-op", "-rc"}, 2},
                                {{"-ds"}, 2}, {{"-op", "-ds"}, 1}, {{"-rc", "-ds"}, 3}, {{"-op", "-rc", "-ds"}, 3}};
    for (const row& r : rows) {
        start_graph();
        set_options(r.switches);
        const std::int32_t slot = plant("cast", in_ydouble, "xfc_castdtoy", "+");
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, r.cycles) << testing::PrintToString(r.switches);
    }
}

TEST(node_attributes, a_normalizer_into_a_multiplier_takes_one_cycle_unless_inputs_are_normalized) {
    struct row {
        std::vector<std::string> switches;
        std::int32_t cycles;
    };
    const std::vector<row> rows{{{}, 1},           {{"-ni"}, 4},        {{"-ni", "-ns", "1"}, 3},
                                {{"-ns", "1"}, 1}, {{"-ni", "-rn"}, 4}, {{"-rn"}, 1}};
    for (const row& r : rows) {
        start_graph();
        set_options(r.switches);
        const std::int32_t slot = plant("norm", in_xfloat, "", "*");
        assign_node_attributes();
        EXPECT_EQ(attributes_at(slot).latency, r.cycles) << testing::PrintToString(r.switches);
    }
}

TEST(node_attributes, the_normalizer_speed_counts_to_three_for_doubles_and_to_two_for_singles) {
    struct row {
        std::vector<std::string> switches;
        std::int32_t ytod;
        std::int32_t xtof;
    };
    // castytod: NS + 4, castxtof: 2 * NS2 + 3
    const std::vector<row> rows{{{}, 7, 7}, {{"-ns", "1"}, 5, 5}, {{"-ns", "2"}, 6, 7}, {{"-ns", "3"}, 7, 7}};
    for (const row& r : rows) {
        start_graph();
        set_options(r.switches);
        const std::int32_t ytod = plant("cast", number_format::double_float, "xfc_castytod", "y");
        const std::int32_t xtof = plant("cast", in_float, "xfc_castxtof", "y");
        assign_node_attributes();
        EXPECT_EQ(attributes_at(ytod).latency, r.ytod) << testing::PrintToString(r.switches);
        EXPECT_EQ(attributes_at(xtof).latency, r.xtof) << testing::PrintToString(r.switches);
    }
}

TEST(node_attributes, a_mantissa_of_36_bits_makes_every_xfloat_bus_49_bits_wide) {
    for (const auto& [switches, width] :
         {std::pair<std::vector<std::string>, std::int32_t>{{}, 45}, {{"-mm", "36"}, 49}}) {
        start_graph();
        set_options(switches);
        const std::int32_t into = plant("cast", in_xfloat, "xfc_castltox", "+");
        const std::int32_t out_of = plant("cast", in_float, "xfc_castxtof", "y");
        const std::int32_t normalizer = plant("norm", in_xfloat, "", "+");
        assign_node_attributes();
        EXPECT_EQ(node_at(into).outputs[0].width, width);
        EXPECT_EQ(node_at(out_of).inputs[0].width, width);
        EXPECT_EQ(node_at(normalizer).inputs[0].width, width);
        EXPECT_EQ(node_at(normalizer).outputs[0].width, width);
    }
}

// ---- The first consumer ----

TEST(node_attributes, the_first_consumer_alone_decides) {
    start_graph();
    const std::int32_t cast = add_node("cast", 1, in_xfloat, "xfc_castftox");
    dfg_connect(cast, add_node("+", 2), 0);
    dfg_connect(cast, add_node("/", 2), 0);
    dfg_connect(cast, add_node("*", 2), 0);
    assign_node_attributes();
    EXPECT_EQ(node_at(cast).bus_modes.output_select, 0);
    EXPECT_EQ(attributes_at(cast).latency, 2);
}

TEST(node_attributes, a_first_consumer_in_a_lower_slot_counts_too) {
    start_graph();
    const std::int32_t divider = add_node("/", 2, in_xfloat);
    const std::int32_t cast = add_node("cast", 1, in_xfloat, "xfc_castftox");
    dfg_connect(cast, divider, 1);
    assign_node_attributes();
    EXPECT_EQ(node_at(cast).bus_modes.output_select, 2);
}

TEST(node_attributes, a_conversion_without_consumers_is_treated_as_if_it_fed_the_last_seen_first_consumer) {
    start_graph();
    const std::int32_t multiplier = add_node("*", 2, in_xfloat);
    const std::int32_t divider = add_node("/", 2, in_xfloat);
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t after_a = add_node("cast", 1, in_xfloat, "xfc_castftox");
    const std::int32_t also_after_a = add_node("norm", 1, in_xfloat);
    const std::int32_t b = add_node("b", 1, in_float);
    const std::int32_t after_b = add_node("cast", 1, in_xfloat, "xfc_castftox");
    const std::int32_t c = add_node("c", 1, in_float);
    const std::int32_t after_c = add_node("norm", 1, in_ydouble);
    dfg_connect(a, divider, 0);
    dfg_connect(a, multiplier, 0);
    dfg_connect(b, multiplier, 1);
    dfg_connect(c, add_node("+", 2, in_xfloat), 0);
    assign_node_attributes();
    EXPECT_EQ(node_at(after_a).bus_modes.output_select, 2);
    EXPECT_EQ(attributes_at(after_a).latency, 1);
    EXPECT_EQ(node_at(also_after_a).bus_modes.output_select, 1);
    EXPECT_EQ(attributes_at(also_after_a).latency, 5);
    EXPECT_EQ(node_at(after_b).bus_modes.output_select, 1);
    EXPECT_EQ(attributes_at(after_b).latency, 2);
    EXPECT_EQ(node_at(after_c).bus_modes.output_select, 1);
    EXPECT_EQ(node_at(after_c).outputs[0].width, 80);
}

TEST(node_attributes, without_any_consumer_before_it_a_conversion_is_treated_as_if_it_fed_slot_0) {
    struct row {
        std::string_view slot_0;
        std::int32_t output_select;
    };
    for (const row& r : {row{"*", 1}, row{"/", 2}, row{"+", 0}, row{"a", 0}}) {
        start_graph();
        ASSERT_EQ(add_node(r.slot_0, 2, in_xfloat), 0);
        const std::int32_t cast = add_node("cast", 1, in_xfloat, "xfc_castftox");
        assign_node_attributes();
        EXPECT_EQ(node_at(cast).bus_modes.output_select, r.output_select) << r.slot_0;
    }
}

TEST(node_attributes, a_later_first_consumer_does_not_reach_back) {
    start_graph();
    ASSERT_EQ(add_node("a", 1, in_float), 0);
    const std::int32_t early = add_node("cast", 1, in_xfloat, "castdtox");
    const std::int32_t b = add_node("b", 1, in_float);
    const std::int32_t divider = add_node("/", 2, in_xfloat);
    dfg_connect(b, divider, 0);
    const std::int32_t late = add_node("cast", 1, in_xfloat, "castdtox");
    assign_node_attributes();
    EXPECT_EQ(node_at(early).bus_modes.output_select, 0);
    EXPECT_EQ(node_at(late).bus_modes.output_select, 2);
}

// ---- In a program ----

TEST(node_attributes, castxtoy_in_a_program_keeps_latency_0_and_into_an_adder_an_unset_output_width) {
    const std::string source = "float a, b; double c, y; void main() { y = (a + b) + c; }";
    ASSERT_EQ(optimize_text(source, assign_node_attributes).status, 0);
    const std::vector<std::int32_t> casts = slots_with_component("castxtoy");
    ASSERT_EQ(casts.size(), 1U);
    EXPECT_EQ(record_of(casts[0]), (node_record{.component = "castxtoy",
                                                .latency = 0,
                                                .ready_time = 0,
                                                .input_widths = {45},
                                                .output_width = 0,
                                                .output_select = 1,
                                                .input_select = 0}));
}

TEST(node_attributes, a_variable_named_norm_that_carries_an_internal_value_is_attributed_as_a_normalizer) {
    // norm feeds the multiplier through the normalizer that stands in front of it, so it feeds no multiplier itself.
    const std::string source = "float a, b, c, norm, y; void main() { norm = a + b; y = norm * c; }";
    ASSERT_EQ(optimize_text(source, assign_node_attributes).status, 0);
    const std::int32_t variable = slot_named("norm", 0);
    EXPECT_EQ(component_name(variable), "xfc_normfp1x");
    EXPECT_EQ(attributes_at(variable).latency, 4);
    EXPECT_EQ(node_at(variable).bus_modes.output_select, 2);
    const std::int32_t inserted = slot_named("norm", 1);
    EXPECT_EQ(driver(inserted), variable);
    EXPECT_EQ(attributes_at(inserted).latency, 1);
    EXPECT_EQ(node_at(inserted).bus_modes.output_select, 0);
}

TEST(node_attributes, a_variable_named_norm_in_an_ieee_format_stays_a_wire) {
    const std::string source = "float a, norm, y; void main() { norm = a; y = norm; }";
    ASSERT_EQ(optimize_text(source, assign_node_attributes).status, 0);
    EXPECT_EQ(component_name(slot_named("norm")), "");
    EXPECT_EQ(attributes_at(slot_named("norm")).latency, 0);
}

}  // namespace

}  // namespace xfc::test
