#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/node_record.h"
#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr auto in_none = number_format::none;
constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

/// The option values that enter the tables.
struct numbers {
    std::int32_t m;
    std::int32_t opt;
    std::int32_t dev;
    std::int32_t os;
    std::int32_t rc;
    std::int32_t ds;
    std::int32_t op;
    std::int32_t ss;
};

std::ostream& operator<<(std::ostream& stream, const numbers& n) {
    return stream << "mantissa " << n.m << " optimization " << n.opt << " device " << n.dev << " outputscale " << n.os
                  << " roundconvert " << n.rc << " doublespeed " << n.ds << " outputpipe " << n.op << " shiftspeed "
                  << n.ss;
}

using formula = std::function<std::int32_t(const numbers&)>;

formula always(std::int32_t value) {
    return [value](const numbers&) { return value; };
}

const formula unchanged;
const formula xfloat_width = [](const numbers& n) { return n.m + 13; };

struct table_row {
    number_format format;
    std::string_view name;
    std::string_view component;
    formula latency;
    formula input_0;
    formula input_1;
    formula output;
    formula output_select;
};

/// Operations that the consumer has no say in.
std::vector<table_row> operation_table() {
    const formula w32 = always(32);
    const formula w64 = always(64);
    const formula w80 = always(80);
    const formula& wx = xfloat_width;
    const formula dot = [](const numbers& n) { return (n.opt < 3 ? 4 : 3) - (n.dev == 2 ? 1 : 0); };
    const formula adder1 = [](const numbers& n) { return n.op + n.ss + 3; };
    const formula adder2 = [](const numbers& n) { return n.ds + n.ss + 4; };
    const formula invsqr = [](const numbers& n) { return 2 * n.ds + 32 - (n.ds + 1) * n.dev; };
    const formula inv = [](const numbers& n) { return (n.rc - n.dev) * (n.ds + 1) + 2 * n.ds + 20; };
    const formula exp = [](const numbers& n) { return (n.rc - 2 * n.dev) * (n.ds + 1) + 2 * n.ds + 20; };
    const formula log = [](const numbers& n) { return (n.ds + 1) * n.rc + 7 * n.ds + 27; };
    return {
        {in_long, "*", "xfc_mullong", always(3), w32, w32, w32, unchanged},
        {in_long, "+", "xfc_alulong", always(3), w32, w32, w32, unchanged},
        {in_long, "-", "xfc_alulong", always(3), w32, w32, w32, unchanged},
        {in_float, "sqrt", "fp_sqr", always(28), w32, unchanged, w32, unchanged},
        {in_float, "invsqr", "fp_invsqr", always(19), w32, unchanged, w32, unchanged},
        {in_float, "inv", "fp_inv", always(14), w32, unchanged, w32, unchanged},
        {in_float, "1/", "fp_inv", always(14), w32, unchanged, w32, unchanged},
        {in_float, "exp", "fp_exp", always(16), w32, unchanged, w32, unchanged},
        {in_float, "log", "fp_log", always(21), w32, unchanged, w32, unchanged},
        {in_float, "ldexp", "fp_ldexp", always(2), w32, w32, w32, unchanged},
        {in_float, "fabs", "fp_fabs", always(1), w32, unchanged, w32, unchanged},
        {in_float, "negate", "fp_neg", always(1), w32, unchanged, w32, unchanged},
        {in_float, "*", "xfc_mulfp1_dot", dot, w32, w32, wx, unchanged},
        {in_xfloat, "+", "xfc_alufp1x", adder1, wx, wx, wx, unchanged},
        {in_xfloat, "-", "xfc_alufp1x", adder1, wx, wx, wx, unchanged},
        {in_double, "sqrt", "dp_sqr", always(57), w64, unchanged, w64, unchanged},
        {in_double, "invsqr", "dp_invsqr", invsqr, w64, unchanged, w64, unchanged},
        {in_double, "inv", "dp_inv", inv, w64, unchanged, w64, unchanged},
        {in_double, "exp", "dp_exp", exp, w64, unchanged, w64, unchanged},
        {in_double, "log", "dp_log", log, w64, unchanged, w64, unchanged},
        {in_double, "ldexp", "dp_ldexp", always(2), w64, unchanged, w64, unchanged},
        {in_double, "fabs", "dp_fabs", always(1), w64, unchanged, w64, unchanged},
        {in_double, "negate", "dp_neg", always(1), w64, unchanged, w64, unchanged},
        {in_ydouble, "+", "xfc_alufp2x", adder2, w80, w80, w80, unchanged},
        {in_ydouble, "-", "xfc_alufp2x", adder2, w80, w80, w80, unchanged},
    };
}

/// The cases of one multiplier or divider, IEEE output first.
struct select_case {
    formula latency;
    formula output;
    std::int32_t output_select;
};

struct select_table {
    number_format format;
    std::string_view name;
    std::string_view component;
    formula input;
    select_case ieee;
    select_case multiplier;
    select_case divider;
    select_case extended;
};

std::vector<select_table> select_tables() {
    const formula& wx = xfloat_width;
    const formula multiplier2x = [](const numbers& n) { return 7 - 2 * n.dev; };
    const formula divider2x = [](const numbers& n) { return 4 * n.ds + 20 - (2 * n.ds + 1) * n.dev; };
    const formula stage = [](const numbers& n) {
        if (n.rc == 0) {
            return n.op == 1 ? 1 : 0;
        }
        return n.ds == 0 ? 1 : 2;
    };
    return {
        {in_xfloat,
         "*",
         "xfc_mulfp1x",
         wx,
         {always(5), always(32), 0},
         {always(4), wx, 2},
         {always(4), wx, 3},
         {[](const numbers& n) { return n.os + 3; }, wx, 1}},
        {in_xfloat,
         "/",
         "xfc_divfp1x",
         wx,
         {[](const numbers& n) { return n.rc + 13; }, always(32), 0},
         {always(13), wx, 2},
         {always(13), wx, 3},
         {always(13), wx, 1}},
        {in_ydouble,
         "*",
         "xfc_mulfp2x",
         always(70),
         {[](const numbers& n) { return (n.ds + 1) * n.rc - 2 * n.dev + 7; }, always(64), 0},
         {multiplier2x, always(70), 2},
         {multiplier2x, always(70), 2},
         {[stage](const numbers& n) { return stage(n) + 2 * (3 - n.dev); }, always(80), 1}},
        {in_ydouble,
         "/",
         "xfc_divfp2x",
         always(70),
         {[](const numbers& n) { return (n.ds + 1) * n.rc - (2 * n.ds + 1) * n.dev + 4 * n.ds + 21; }, always(64), 0},
         {divider2x, always(70), 2},
         {divider2x, always(70), 2},
         {[](const numbers& n) { return (n.rc + 4) * n.ds - (2 * n.ds + 1) * n.dev + 20; }, always(80), 1}},
    };
}

enum class output_case { ieee, multiplier, divider, extended };

struct only_consumer {
    std::string_view name;
    number_format format;
    output_case when_single;  // for an XFloat producer that had exactly one consumer
    output_case when_double;  // for a YDouble producer
};

/// What a first consumer of each name and format makes of a multiplier or divider.
const std::vector<only_consumer> only_consumers{
    {"y", in_float, output_case::ieee, output_case::extended},
    {"cast", in_float, output_case::ieee, output_case::extended},
    {"sqrt", in_float, output_case::ieee, output_case::extended},
    {"*", in_float, output_case::ieee, output_case::multiplier},
    {"/", in_float, output_case::ieee, output_case::multiplier},
    {"y", in_double, output_case::extended, output_case::ieee},
    {"cast", in_double, output_case::extended, output_case::ieee},
    {"*", in_double, output_case::extended, output_case::ieee},
    {"/", in_double, output_case::extended, output_case::ieee},
    {"*", in_xfloat, output_case::multiplier, output_case::multiplier},
    {"/", in_xfloat, output_case::divider, output_case::multiplier},
    {"*", in_ydouble, output_case::extended, output_case::multiplier},
    {"/", in_ydouble, output_case::extended, output_case::multiplier},
    {"*", in_long, output_case::extended, output_case::multiplier},
    {"/", in_long, output_case::extended, output_case::multiplier},
    {"+", in_xfloat, output_case::extended, output_case::extended},
    {"-", in_xfloat, output_case::extended, output_case::extended},
    {"+", in_ydouble, output_case::extended, output_case::extended},
    {"norm", in_xfloat, output_case::extended, output_case::extended},
    {"norm", in_ydouble, output_case::extended, output_case::extended},
    {"cast", in_xfloat, output_case::extended, output_case::extended},
    {"cast", in_ydouble, output_case::extended, output_case::extended},
    {"cast", in_long, output_case::extended, output_case::extended},
    {"t", in_xfloat, output_case::extended, output_case::extended},
    {"t", in_ydouble, output_case::extended, output_case::extended},
    {"**", in_xfloat, output_case::extended, output_case::extended},
    {"1/", in_xfloat, output_case::extended, output_case::extended},
};

struct planted_node {
    std::int32_t slot;
    table_row row;
    std::string where;
};

node_record expected_record(node_record record, const table_row& row, const numbers& n) {
    record.component = row.component;
    record.latency = record.ready_time = row.latency(n);
    const auto put = [&n](std::int32_t& field, const formula& value) {
        if (value) {
            field = value(n);
        }
    };
    put(record.input_widths[0], row.input_0);
    put(record.input_widths[1], row.input_1);
    put(record.output_width, row.output);
    put(record.output_select, row.output_select);
    return record;
}

/// Maps all nodes with the options as they stand.
void expect_rows(const std::vector<planted_node>& planted) {
    const compile_option_record& o = current.options;
    const numbers n{o.mantissa,     o.optimization, o.device,     o.outputscale,
                    o.roundconvert, o.doublespeed,  o.outputpipe, o.shiftspeed};
    std::vector<node_record> expected;
    for (const planted_node& node : planted) {
        expected.push_back(expected_record(put_sentinels(node.slot, ""), node.row, n));
    }
    catch_output(map_functions);
    for (std::size_t index = 0; index < planted.size(); ++index) {
        EXPECT_EQ(record_of(planted[index].slot), expected[index]) << planted[index].where << " with " << n;
    }
}

void expect_rows_for_every_option_value(const std::vector<planted_node>& planted) {
    using options = compile_option_record;
    const std::vector<option_range> ranges{
        {&options::mantissa, {32, 36}},   {&options::optimization, {-1, 0, 1, 2, 3}},
        {&options::device, {0, 1, 2}},    {&options::outputscale, {0, 1}},
        {&options::roundconvert, {0, 1}}, {&options::doublespeed, {0, 1}},
        {&options::outputpipe, {0, 1}},   {&options::shiftspeed, {0, 1}},
    };
    for_each_combination(ranges, [&] { expect_rows(planted); });
}

/// A two-input node with drivers and one consumer.
std::int32_t plant(std::string_view name, number_format format) {
    const std::int32_t slot = add_node(name, 2, format);
    dfg_connect(add_node("a", 1), slot, 0);
    dfg_connect(add_node("b", 1), slot, 1);
    dfg_connect(slot, add_node("y", 1, format), 0);
    return slot;
}

TEST(function_mapping, every_operation_follows_its_row_for_every_option_value) {
    start_graph();
    std::vector<planted_node> planted;
    for (const table_row& row : operation_table()) {
        planted.push_back({plant(row.name, row.format), row, std::string(row.component)});
    }
    expect_rows_for_every_option_value(planted);
}

/// Multipliers and dividers with every consumer. A fanout is the count of consumers before the passes inserted nodes;
/// only 1 lets the consumer decide.
std::vector<planted_node> plant_products(std::initializer_list<std::int32_t> fanouts) {
    start_graph();
    std::vector<planted_node> planted;
    for (const select_table& table : select_tables()) {
        for (const only_consumer& consumer : only_consumers) {
            for (const std::int32_t fanout : fanouts) {
                const std::int32_t slot = add_node(table.name, 2, table.format);
                dfg_connect(slot, add_node(consumer.name, 2, consumer.format), 1);
                attributes_at(slot).fanout = fanout;
                const output_case which = table.format == in_xfloat ? consumer.when_single : consumer.when_double;
                const std::vector<const select_case*> cases{&table.ieee, &table.multiplier, &table.divider,
                                                            &table.extended};
                const select_case& chosen =
                    *cases[static_cast<std::size_t>(fanout == 1 ? which : output_case::extended)];
                planted.push_back({slot,
                                   {table.format, table.name, table.component, chosen.latency, table.input, table.input,
                                    chosen.output, always(chosen.output_select)},
                                   std::string(table.component) + " into " + std::string(consumer.name) + " of " +
                                       std::string(format_row(consumer.format).text) + ", fanout " +
                                       std::to_string(fanout)});
            }
        }
    }
    return planted;
}

TEST(function_mapping, every_multiplier_and_divider_follows_its_only_consumer_for_every_option_value) {
    expect_rows_for_every_option_value(plant_products({1, 2}));
}

TEST(function_mapping, no_count_of_consumers_but_one_lets_the_consumer_decide) {
    expect_rows(plant_products({0, 2, 3}));
}

TEST(function_mapping, latencies_at_the_default_options) {
    struct default_latency {
        std::string_view name;
        number_format format;
        std::string_view component;
        std::int32_t cycles;
    };
    const std::vector<default_latency> table{
        {"*", in_long, "xfc_mullong", 3},    {"+", in_long, "xfc_alulong", 3},  {"*", in_float, "xfc_mulfp1_dot", 4},
        {"+", in_xfloat, "xfc_alufp1x", 5},  {"sqrt", in_double, "dp_sqr", 57}, {"invsqr", in_double, "dp_invsqr", 32},
        {"inv", in_double, "dp_inv", 20},    {"exp", in_double, "dp_exp", 20},  {"log", in_double, "dp_log", 27},
        {"-", in_ydouble, "xfc_alufp2x", 5},
    };
    start_graph();
    for (const default_latency& row : table) {
        const std::int32_t slot = plant(row.name, row.format);
        catch_output(map_functions);
        EXPECT_EQ(component_name(slot), row.component);
        EXPECT_EQ(attributes_at(slot).latency, row.cycles) << row.component;
    }
    struct by_consumer {
        std::string_view name;
        number_format format;
        std::string_view consumer;
        number_format consumer_format;
        std::int32_t cycles;
    };
    const std::vector<by_consumer> selected{
        {"*", in_xfloat, "y", in_float, 5},     {"*", in_xfloat, "*", in_xfloat, 4},
        {"*", in_xfloat, "/", in_xfloat, 4},    {"*", in_xfloat, "+", in_xfloat, 3},
        {"/", in_xfloat, "y", in_float, 13},    {"/", in_xfloat, "*", in_xfloat, 13},
        {"*", in_ydouble, "y", in_double, 7},   {"*", in_ydouble, "*", in_ydouble, 7},
        {"*", in_ydouble, "+", in_ydouble, 7},  {"/", in_ydouble, "y", in_double, 21},
        {"/", in_ydouble, "/", in_ydouble, 20}, {"/", in_ydouble, "+", in_ydouble, 20},
    };
    for (const by_consumer& row : selected) {
        const std::int32_t slot = add_node(row.name, 2, row.format);
        dfg_connect(slot, add_node(row.consumer, 2, row.consumer_format), 0);
        attributes_at(slot).fanout = 1;
        catch_output(map_functions);
        EXPECT_EQ(attributes_at(slot).latency, row.cycles) << row.name << " into " << row.consumer;
    }
}

TEST(function_mapping, an_empty_graph_and_a_graph_without_slots_print_nothing) {
    start_graph();
    EXPECT_EQ(catch_output(map_functions).standard_output, "");
    current.graph = {};
    EXPECT_EQ(catch_output(map_functions).standard_output, "");
}

TEST(function_mapping, names_and_formats_without_a_row_stay_unmapped) {
    start_graph();
    struct unmapped {
        std::string_view name;
        number_format format;
    };
    const std::vector<unmapped> nodes{
        {"1/", in_double},   {"/", in_long},        {"sqrt", in_long},     {"negate", in_long}, {"fabs", in_long},
        {"ldexp", in_long},  {"+", in_float},       {"-", in_float},       {"/", in_float},     {"*", in_double},
        {"+", in_double},    {"/", in_double},      {"sqrt", in_xfloat},   {"exp", in_xfloat},  {"sqrt", in_ydouble},
        {"log", in_ydouble}, {"negate", in_xfloat}, {"1/", in_xfloat},     {"1/", in_ydouble},  {"*", in_none},
        {"+", in_none},      {"sqrt", in_none},     {"Sqrt", in_float},    {"SQRT", in_double}, {"sqrtf", in_float},
        {"sqr", in_float},   {"inv ", in_float},    {"invsqrt", in_float}, {"abs", in_float},   {"neg", in_float},
        {"sin", in_double},  {"cast", in_float},    {"cast", in_xfloat},   {"norm", in_xfloat}, {"norm", in_ydouble},
        {"delay", in_float}, {"x", in_float},       {"y", in_double},      {"n", in_long},      {"++", in_xfloat},
        {"+ ", in_ydouble},  {"**", in_xfloat},     {"%", in_long},        {"<<", in_long},
    };
    std::vector<std::pair<std::int32_t, node_record>> before;
    for (const unmapped& node : nodes) {
        const std::int32_t slot = plant(node.name, node.format);
        attributes_at(slot).fanout = 1;
        before.emplace_back(slot, put_sentinels(slot, "xfc_castltox"));
    }
    EXPECT_EQ(catch_output(map_functions).standard_output, "");
    for (const auto& [slot, record] : before) {
        EXPECT_EQ(record_of(slot), record)
            << node_at(slot).name << " of " << format_row(attributes_at(slot).format).text;
    }
}

TEST(function_mapping, a_double_reciprocal_is_known_by_one_name_only) {
    start_graph();
    const std::int32_t slash = plant("1/", in_double);
    const std::int32_t inverse = plant("inv", in_double);
    const std::int32_t single_slash = plant("1/", in_float);
    map_functions();
    EXPECT_EQ(component_name(slash), "");
    EXPECT_EQ(attributes_at(slash).latency, 0);
    EXPECT_EQ(component_name(inverse), "dp_inv");
    EXPECT_EQ(component_name(single_slash), "fp_inv");
}

TEST(function_mapping, a_function_with_one_input_is_mapped_as_well) {
    start_graph();
    const std::int32_t ldexp = add_node("ldexp", 1, in_float);
    const std::int32_t root = add_node("sqrt", 1, in_double);
    map_functions();
    EXPECT_EQ(component_name(ldexp), "fp_ldexp");
    EXPECT_EQ(node_at(ldexp).inputs[0].width, 32);
    EXPECT_EQ(component_name(root), "dp_sqr");
    EXPECT_EQ(node_at(root).inputs[0].width, 64);
}

// ---- The switches ----

TEST(function_mapping, the_dot_multiplier_is_faster_with_full_optimization_and_on_the_newer_device) {
    struct row {
        std::vector<std::string> switches;
        std::int32_t cycles;
    };
    const std::vector<row> rows{{{}, 4},
                                {{"-mv", "0"}, 4},
                                {{"-mv", "2"}, 4},
                                {{"-mv", "3"}, 3},
                                {{"-s5"}, 3},
                                {{"-mv", "3", "-s5"}, 2},
                                {{"-mv", "3", "-s3"}, 3},
                                {{"-s5", "-s3"}, 4},
                                {{"-s3", "-s5"}, 3}};
    for (const row& r : rows) {
        start_graph();
        set_options(r.switches);
        const std::int32_t slot = plant("*", in_float);
        catch_output(map_functions);
        EXPECT_EQ(attributes_at(slot).latency, r.cycles) << testing::PrintToString(r.switches);
    }
}

TEST(function_mapping, the_double_inverse_root_is_faster_on_the_newer_devices) {
    struct row {
        std::vector<std::string> switches;
        std::int32_t cycles;
    };
    for (const row& r : {row{{}, 32}, row{{"-s5", "-ds"}, 30}, row{{"-s3"}, 31}, row{{"-s5"}, 30}, row{{"-ds"}, 34}}) {
        start_graph();
        set_options(r.switches);
        const std::int32_t slot = plant("invsqr", in_double);
        map_functions();
        EXPECT_EQ(attributes_at(slot).latency, r.cycles) << testing::PrintToString(r.switches);
    }
}

// ---- What is printed ----

TEST(function_mapping, each_dot_multiplier_prints_its_words_without_a_line_end) {
    start_graph();
    plant("*", in_float);
    plant("*", in_xfloat);
    plant("*", in_float);
    const run_result result = catch_output(map_functions);
    EXPECT_EQ(result.standard_output, "dot multiplierdot multiplier");
    EXPECT_EQ(result.standard_error, "");
}

TEST(function_mapping, without_dot_multipliers_nothing_is_printed) {
    const std::string source = "double a, b, y; void main() { y = sqrt(a * b + a) / b; }";
    start_graph();
    for (const table_row& row : operation_table()) {
        if (row.component != "xfc_mulfp1_dot") {
            plant(row.name, row.format);
        }
    }
    EXPECT_EQ(catch_output(map_functions).standard_output, "");
    EXPECT_EQ(compile({.source = source}).standard_output.find("dot multiplier"), std::string::npos);
}

TEST(function_mapping, the_words_stand_in_front_of_the_next_banner) {
    const run_result result = compile({.source = "float a, b, c, y; void main() { y = a * b + c; }"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.standard_output.find("*** MAP FUNCTIONS ***\ndot multiplier*** BALANCE LATENCIES ***\n"),
              std::string::npos);
}

// ---- Names of variables ----

TEST(function_mapping, a_variable_named_like_a_function_is_mapped_by_its_name) {
    ASSERT_EQ(optimize_text("float a, fabs, y; void main() { fabs = a; y = fabs; }", map_functions).status, 0);
    const std::int32_t slot = slot_named("fabs");
    EXPECT_EQ(component_name(slot), "fp_fabs");
    EXPECT_EQ(attributes_at(slot).latency, 1);
    EXPECT_EQ(node_at(slot).inputs[0].width, 32);
    EXPECT_EQ(node_at(slot).outputs[0].width, 32);
}

TEST(function_mapping, a_primary_input_named_like_a_function_is_mapped_by_its_name) {
    ASSERT_EQ(optimize_text("double sqrt, y; void main() { y = sqrt; }", map_functions).status, 0);
    EXPECT_EQ(component_name(slot_named("sqrt")), "dp_sqr");
    EXPECT_EQ(attributes_at(slot_named("sqrt")).ready_time, 57);
}

}  // namespace

}  // namespace xfc::test
