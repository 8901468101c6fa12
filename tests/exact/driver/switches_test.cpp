#include "exact/driver/switches.h"

#include <gtest/gtest.h>

#include <array>

#include "exact/driver/workspace.h"
#include "exact/run/compilation.h"

namespace xfc::test {

namespace {

using options = compile_option_record;

struct named_field {
    std::string_view name;
    std::int32_t options::*field;
    std::int32_t standard;
};

constexpr std::array<named_field, 16> fields{{
    {"mantissa", &options::mantissa, 32},
    {"doublespeed", &options::doublespeed, 0},
    {"fittingregisters", &options::fittingregisters, 0},
    {"inputnormalize", &options::inputnormalize, 0},
    {"outputscale", &options::outputscale, 0},
    {"roundconvert", &options::roundconvert, 0},
    {"roundnormalize", &options::roundnormalize, 0},
    {"outputpipe", &options::outputpipe, 1},
    {"normspeed", &options::normspeed, 3},
    {"shiftspeed", &options::shiftspeed, 1},
    {"clustersize", &options::clustersize, 16},
    {"doubleaccuracy", &options::doubleaccuracy, 1},
    {"device", &options::device, 0},
    {"optimization", &options::optimization, 1},
    {"synthesize", &options::synthesize, 0},
    {"verilog", &options::verilog, 0},
}};

struct changed_field {
    std::int32_t options::*field;
    std::int32_t value;
};

/// All fields are at their defaults but these.
void expect_only(const std::vector<changed_field>& changes) {
    for (const named_field& each : fields) {
        std::int32_t expected = each.standard;
        for (const changed_field& change : changes) {
            if (change.field == each.field) {
                expected = change.value;
            }
        }
        EXPECT_EQ(current.options.*each.field, expected) << each.name;
    }
}

/// The small program compiles with these switches and leaves these fields away from their defaults.
void expect_accepted(const std::vector<std::string>& switches, const std::vector<changed_field>& changes) {
    const run_result result = compile({.source = small_program, .switches = switches});
    EXPECT_EQ(result.status, 0) << ::testing::PrintToString(switches) << result.standard_error;
    EXPECT_TRUE(begins_with(result.standard_output, "\nCompiler Version MVTK - May 6 2009\n\n"));
    expect_only(changes);
}

/// The run ends in the argument loop with this text and nothing else.
void expect_refused(const std::vector<std::string>& switches, const std::string& text) {
    const run_result result = compile({.source = small_program, .switches = switches});
    EXPECT_EQ(result.status, 1) << ::testing::PrintToString(switches);
    EXPECT_EQ(result.standard_output, text) << ::testing::PrintToString(switches);
    EXPECT_EQ(result.standard_error, "");
    EXPECT_TRUE(result.files.empty());
}

constexpr const char* mm_text = "mm switch must be 32 or 36";
constexpr const char* ns_text = "ns switch must be 1, 2, or 3";
constexpr const char* xc_text = "xc switch must be between 2 and 16";
constexpr const char* mv_text = "mv must be 0, 1, 2, or 3";
const std::string info_text =
    "Info: Multiplier Post-normalizations are redundant with input normalizations, switch ignored\n";

TEST(switches, without_any_every_field_has_its_default) { expect_accepted({}, {}); }

TEST(switches, each_without_a_value_changes_one_field) {
    expect_accepted({"-ds"}, {{&options::doublespeed, 1}});
    expect_accepted({"-ni"}, {{&options::inputnormalize, 1}});
    expect_accepted({"-no"}, {{&options::outputscale, 1}});
    expect_accepted({"-rc"}, {{&options::roundconvert, 1}});
    expect_accepted({"-rn"}, {{&options::roundnormalize, 1}});
    expect_accepted({"-op"}, {{&options::outputpipe, 0}});
    expect_accepted({"-ps"}, {{&options::shiftspeed, 0}});
    expect_accepted({"-da"}, {{&options::doubleaccuracy, 0}});
    expect_accepted({"-s3"}, {{&options::device, 1}});
    expect_accepted({"-s5"}, {{&options::device, 2}});
    expect_accepted({"-sy"}, {{&options::synthesize, 1}});
    expect_accepted({"-vlg"}, {{&options::verilog, 1}});
}

TEST(switches, a_mantissa_of_32_or_36_is_accepted) {
    expect_accepted({"-mm", "32"}, {});
    expect_accepted({"-mm", "36"}, {{&options::mantissa, 36}});
    for (const std::string value : {"31", "33", "34", "35", "37", "0", "-1", "-32", "-36", "64"}) {
        expect_refused({"-mm", value}, mm_text);
    }
}

TEST(switches, a_norm_speed_of_1_to_3_is_accepted) {
    expect_accepted({"-ns", "1"}, {{&options::normspeed, 1}});
    expect_accepted({"-ns", "2"}, {{&options::normspeed, 2}});
    expect_accepted({"-ns", "3"}, {{&options::normspeed, 3}});
    for (const std::string value : {"0", "4", "-1", "x", "100"}) {
        expect_refused({"-ns", value}, ns_text);
    }
}

TEST(switches, a_cluster_size_of_2_to_16_is_accepted) {
    for (const std::int32_t value : {2, 3, 9, 15, 16}) {
        expect_accepted({"-xc", std::to_string(value)}, {{&options::clustersize, value}});
    }
    for (const std::string value : {"1", "17", "0", "-2", "sixteen", ""}) {
        expect_refused({"-xc", value}, xc_text);
    }
}

TEST(switches, an_optimization_up_to_3_is_accepted) {
    for (const std::int32_t value : {0, 1, 2, 3, -1, -4}) {
        expect_accepted({"-mv", std::to_string(value)}, {{&options::optimization, value}});
    }
    for (const std::string value : {"4", "5", "2147483647"}) {
        expect_refused({"-mv", value}, mv_text);
    }
}

TEST(switches, any_number_of_fitting_registers_is_stored) {
    for (const std::int32_t value : {0, 1, -7, 1000000}) {
        expect_accepted({"-fd", std::to_string(value)}, {{&options::fittingregisters, value}});
    }
}

TEST(switch_values, a_refused_value_was_stored_first) {
    expect_refused({"-mm", "33"}, mm_text);
    expect_only({{&options::mantissa, 33}});
    expect_refused({"-ns", "5"}, ns_text);
    expect_only({{&options::normspeed, 5}});
    expect_refused({"-xc", "17"}, xc_text);
    expect_only({{&options::clustersize, 17}});
    expect_refused({"-mv", "4"}, mv_text);
    expect_only({{&options::optimization, 4}});
}

struct read_value_case {
    std::string text;
    std::int32_t value;
};

TEST(switch_values, are_decimal_numbers_with_what_follows_dropped) {
    const std::vector<read_value_case> cases{
        {"7", 7},     {"+7", 7},    {"-7", -7},  {"  7", 7},  {"\t\n7", 7}, {"007", 7}, {"7junk", 7},
        {"7 8", 7},   {"7.9", 7},   {"0x24", 0}, {"junk", 0}, {"", 0},      {"- 7", 0}, {"--7", 0},
        {"junk7", 0}, {"7,000", 7}, {"7e3", 7},  {"-", 0},    {"+", 0},     {"+-7", 0}, {"-0", 0},
    };
    for (const read_value_case& each : cases) {
        expect_accepted({"-fd", each.text}, {{&options::fittingregisters, each.value}});
    }
}

TEST(switch_values, are_64_bit_numbers_of_which_the_low_32_bits_are_kept) {
    const std::vector<read_value_case> cases{
        {"2147483647", 2147483647},
        {"2147483648", -2147483647 - 1},
        {"-2147483648", -2147483647 - 1},
        {"-2147483649", 2147483647},
        {"4294967295", -1},
        {"4294967296", 0},
        {"4294967303", 7},
        {"-4294967295", 1},
        // The largest and the smallest 64-bit number have the low bits of -1 and of 0.
        {"9223372036854775807", -1},
        {"9223372036854775808", -1},
        {"99999999999999999999", -1},
        {"-9223372036854775808", 0},
        {"-99999999999999999999", 0},
    };
    for (const read_value_case& each : cases) {
        expect_accepted({"-fd", each.text}, {{&options::fittingregisters, each.value}});
    }
}

TEST(switch_values, are_checked_as_they_are_stored) {
    expect_accepted({"-mm", "4294967332"}, {{&options::mantissa, 36}});
    expect_accepted({"-mv", "4294967295"}, {{&options::optimization, -1}});
    expect_accepted({"-mv", "99999999999999999999"}, {{&options::optimization, -1}});
    expect_refused({"-mv", "4294967300"}, mv_text);
    expect_accepted({"-xc", "4294967298"}, {{&options::clustersize, 2}});
    expect_refused({"-xc", "4294967295"}, xc_text);
    expect_refused({"-xc", "99999999999999999999"}, xc_text);
    expect_refused({"-mm", "4294967295"}, mm_text);
    expect_refused({"-ns", "99999999999999999999"}, ns_text);
    expect_accepted({"-ns", "4294967297junk"}, {{&options::normspeed, 1}});
    expect_accepted({"-mm", "36bits"}, {{&options::mantissa, 36}});
    expect_refused({"-mm", "bits36"}, mm_text);
}

TEST(switch_values, a_switch_may_be_taken_as_one) {
    expect_accepted({"-fd", "-ni"}, {});
    expect_accepted({"-mv", "-mm", "36"}, {{&options::optimization, 0}});
    expect_refused({"-xc", "-ds"}, xc_text);
}

TEST(switch_order, no_behind_ni_says_that_it_is_ignored) {
    const run_result result = compile({.source = small_program, .switches = {"-ni", "-no"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(begins_with(result.standard_output, info_text + "\nCompiler Version MVTK - May 6 2009\n\n"));
    expect_only({{&options::inputnormalize, 1}});
}

TEST(switch_order, no_before_ni_sets_both_silently) {
    expect_accepted({"-no", "-ni"}, {{&options::inputnormalize, 1}, {&options::outputscale, 1}});
}

TEST(switch_order, a_second_no_behind_ni_takes_the_first_back) {
    const run_result result = compile({.source = small_program, .switches = {"-no", "-ni", "-no", "-no"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(
        begins_with(result.standard_output, info_text + info_text + "\nCompiler Version MVTK - May 6 2009\n\n"));
    expect_only({{&options::inputnormalize, 1}});
}

TEST(switch_order, the_later_one_wins) {
    expect_accepted({"-s5", "-s3"}, {{&options::device, 1}});
    expect_accepted({"-s3", "-s5"}, {{&options::device, 2}});
    expect_accepted({"-mm", "36", "-mm", "32"}, {});
    expect_accepted({"-ns", "3", "-ns", "1"}, {{&options::normspeed, 1}});
    expect_refused({"-mm", "36", "-xc", "1", "-mv", "4"}, xc_text);
}

TEST(unknown_switches, are_ignored) {
    expect_accepted({"-x", "-dsx", "-DS", "ds", "--ds", "", "-d", "36", "-", "-v", "-vl", "-vlgx", " -ds", "-ds "}, {});
    expect_accepted({"other.c", "-ds", "another.c"}, {{&options::doublespeed, 1}});
}

TEST(source_argument, is_read_as_a_switch_too) {
    EXPECT_EQ(output_name("-ds"), "-ds.vhd");
    expect_only({{&options::doublespeed, 1}});
    EXPECT_EQ(output_name("-vlg"), "-vlg.v");
    expect_only({{&options::verilog, 1}});
    EXPECT_EQ(output_name("-mm", {"36", "-ni"}), "-mm.vhd");
    expect_only({{&options::mantissa, 36}, {&options::inputnormalize, 1}});
}

TEST(value_switches, without_a_value_explain_the_usage) {
    const run_result usage = run_with_arguments({});
    for (const std::string name : {"-mm", "-fd", "-ns", "-xc", "-mv"}) {
        const run_result result = compile({.source = small_program, .switches = {"-ds", name}});
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_EQ(result.standard_output, usage.standard_output) << name;
        EXPECT_EQ(result.standard_error, usage.standard_error) << name;
        EXPECT_TRUE(result.files.empty()) << name;
    }
}

TEST(value_switches, without_a_value_are_met_in_order) {
    const run_result usage = run_with_arguments({});
    const run_result after_info = compile({.source = small_program, .switches = {"-ni", "-no", "-mm"}});
    EXPECT_EQ(after_info.standard_output, info_text + usage.standard_output);
    EXPECT_EQ(after_info.standard_error, usage.standard_error);
    expect_refused({"-mm", "1", "-fd"}, mm_text);
    const run_result unopened = run_with_arguments({"missing.c", "-mm"});
    EXPECT_EQ(unopened.standard_error, "Can't open source program file missing.c\n");
    EXPECT_EQ(unopened.standard_output, "");
}

TEST(value_switches, as_the_source_argument_alone_explain_the_usage) {
    const run_result usage = run_with_arguments({});
    const run_result result = compile({.source = small_program, .source_name = "-mm"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, usage.standard_output);
    EXPECT_EQ(result.standard_error, usage.standard_error);
}

TEST(switch_table, compares_in_the_documented_order) {
    std::vector<std::string> names;
    for (const switch_row& row : switch_table()) {
        names.emplace_back(row.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"-ds", "-mm", "-fd", "-ni", "-no", "-rc", "-rn", "-op", "-ns", "-ps",
                                               "-xc", "-da", "-s3", "-s5", "-mv", "-sy", "-vlg"}));
}

}  // namespace

}  // namespace xfc::test
