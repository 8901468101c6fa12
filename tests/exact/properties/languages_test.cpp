#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "exact/properties/design_reader.h"
#include "exact/properties/program_generator.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

std::size_t count_lines(const std::string& design, std::string_view start) {
    const auto lines = reading::lines_of(design);
    return static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [&](std::string_view line) { return line.starts_with(start); }));
}

/// Compiles the program to both languages; returns the design that both texts describe, empty after a failed run.
std::string common_design(const std::string& source, std::vector<std::string> switches) {
    const run_result vhdl = compile({.source = source, .switches = switches});
    switches.emplace_back("-vlg");
    const run_result verilog = compile({.source = source, .switches = switches});
    EXPECT_EQ(vhdl.status, verilog.status);
    EXPECT_EQ(vhdl.standard_error, verilog.standard_error);
    if (vhdl.status != 0 || verilog.status != 0) {
        return {};
    }
    const std::string design = read_vhdl_design(vhdl.files.at("prog.vhd"));
    EXPECT_EQ(design, read_verilog_design(verilog.files.at("prog.v"))) << source;
    return design;
}

/// Compares the first `count` programs; multiples of 9 take every choice of switches equally often.
void expect_same_designs(program_request request, std::uint64_t count) {
    std::size_t instances = 0;
    std::size_t constants = 0;
    for (request.seed = 1000; request.seed < 1000 + count; ++request.seed) {
        const std::string source = generate_program(request);
        const std::string design = common_design(source, generate_switches(request.seed));
        // Without any instance the readers would have read past everything.
        EXPECT_EQ(count_lines(design, "design prog"), 1U) << source;
        EXPECT_EQ(count_lines(design, "registers "), 1U);
        instances += count_lines(design, "instance ");
        constants += count_lines(design, "constant ");
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "seed " << request.seed << "\n" << source;
            return;
        }
    }
    EXPECT_GT(instances, 5 * count);
    EXPECT_GT(constants, count);
}

TEST(languages, describe_the_same_design_for_a_small_program) {
    const std::string design = common_design("float a, b, y; main() { y = -a * 2.5 + sqrt(b); }\n", {});
    // A literal, a negation, a root, a product and a sum, with conversions behind the inputs of the last two.
    EXPECT_EQ(count_lines(design, "port "), 8U);
    EXPECT_EQ(count_lines(design, "value 2.500000"), 1U);
    EXPECT_EQ(count_lines(design, "constant "), 3U);
    EXPECT_EQ(count_lines(design, "instance lib0 fp_"), 1U);
    EXPECT_EQ(count_lines(design, "instance lib1 fp_"), 1U);
    EXPECT_NE(design.find(" xfc_mulfp1x\n  mantissa=32\n  ieeeoutput=0\n  xoutput=1\n"), std::string::npos) << design;
}

/// Replaces the first `from` in the Verilog text of a small program; returns whether the comparison notices.
bool notices(std::string_view from, std::string_view to) {
    const std::string source = "float a, b, c, y; main() { y = (a + 0.5) * b - c; }\n";
    const std::string vhdl = compile({.source = source}).files.at("prog.vhd");
    std::string verilog = compile({.source = source, .switches = {"-vlg"}}).files.at("prog.v");
    EXPECT_EQ(read_vhdl_design(vhdl), read_verilog_design(verilog));
    const std::size_t at = verilog.find(from);
    if (at == std::string::npos) {
        ADD_FAILURE() << "no " << from;
        return false;
    }
    verilog.replace(at, from.size(), to);
    return read_vhdl_design(vhdl) != read_verilog_design(verilog);
}

TEST(languages, are_compared_in_ranges_numbers_names_and_generics) {
    EXPECT_TRUE(notices("wire [45 : 1]", "wire [44 : 1]"));
    EXPECT_TRUE(notices("input [32 : 1] b", "input [31 : 1] b"));
    EXPECT_TRUE(notices("k <= ", "k <= 1"));
    EXPECT_TRUE(notices("29'd", "29'd1"));
    EXPECT_TRUE(notices("assign synth0001 = b", "assign synth0001 = c"));
    EXPECT_TRUE(notices("xfc_alufp1x", "xfc_alufp2x"));
    EXPECT_TRUE(notices("cmp1", "cmp7"));
    EXPECT_TRUE(notices(".mantissa(32)", ".mantissa(36)"));
    EXPECT_TRUE(notices(".cc(synth0005[42 : 1])", ".cc(synth0005[41 : 1])"));
    EXPECT_TRUE(notices("1'b 1", "1'b 0"));
    EXPECT_TRUE(notices("assign startout = startff[", "assign startout = startff[1"));
}

TEST(languages, describe_the_same_design_for_single_precision_programs) {
    expect_same_designs({.kind = program_kind::single_precision}, 27);
}

TEST(languages, describe_the_same_design_for_double_precision_programs) {
    expect_same_designs({.kind = program_kind::double_precision}, 27);
}

TEST(languages, describe_the_same_design_for_integer_programs) {
    expect_same_designs({.kind = program_kind::integer}, 27);
}

TEST(languages, describe_the_same_design_for_mixed_programs) { expect_same_designs({.kind = program_kind::mixed}, 45); }

}  // namespace

}  // namespace xfc::test
