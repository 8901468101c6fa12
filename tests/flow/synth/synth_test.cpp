#include <gtest/gtest.h>

#include "flow/synth/synthesis.h"

namespace xfc::flow {
namespace {

const datapath adder{.name = "adder",
                     .inputs = {{.name = "a", .width = 32}, {.name = "b", .width = 8}},
                     .outputs = {{.bus = {.name = "y", .width = 16}, .driver = "sum"}},
                     .for_each_instance = [](const instance_taker& take) {
                         take({.label = "sum_i", .comment = "a.c:1: a + b", .component = "xfc_alufp1x"});
                         take({.label = "sum_i2", .component = "xfc_castxtof"});
                     }};

std::string statistics(const std::string& cells) { return R"({"design": {"num_cells_by_type": {)" + cells + "}}}"; }

TEST(counts, cells_count_by_what_their_family_makes_of_them) {
    const auto ice40 =
        counts_of(statistics(R"("SB_CARRY": 9, "SB_LUT4": 7, "SB_DFFE": 3, "SB_DFFESR": 2, "SB_MAC16": 1)"),
                  *family_named("ice40"));
    ASSERT_TRUE(ice40.has_value());
    EXPECT_EQ(ice40->look_up_tables, 7);
    EXPECT_EQ(ice40->flip_flops, 5);
    EXPECT_EQ(ice40->multipliers, 1);
    const auto ecp5 =
        counts_of(statistics(R"("CCU2C": 4, "LUT4": 5, "TRELLIS_FF": 6, "MULT18X18D": 2)"), *family_named("ecp5"));
    EXPECT_EQ(ecp5.value().look_up_tables, 13);
    EXPECT_EQ(ecp5.value().multipliers, 2);
    const auto xilinx = counts_of(statistics(R"("CARRY4": 4, "INV": 5, "LUT1": 1, "LUT6": 2, "SRL16E": 3, "FDRE": 6)"),
                                  *family_named("xilinx"));
    EXPECT_EQ(xilinx.value().look_up_tables, 6);
    EXPECT_EQ(xilinx.value().flip_flops, 6);
}

TEST(counts, what_is_no_statistics_gives_none) {
    EXPECT_FALSE(counts_of("", *family_named("ice40")).has_value());
    EXPECT_FALSE(counts_of("{\"design\": 3}", *family_named("ice40")).has_value());
}

/// One part of a path as nextpnr reports it.
std::string part(const std::string& type, double delay, const std::string& from, const std::string& to) {
    return R"({"type": ")" + type + R"(", "delay": )" + std::to_string(delay) + R"(, "from": {"cell": ")" + from +
           R"("}, "to": {"cell": ")" + to + R"("}})";
}

TEST(placement, the_limiting_path_is_told_by_component_and_step) {
    const std::string report =
        R"({"fmax": {"sysclk$SB_IO_IN_$glb_clk": {"achieved": 123.5, "constraint": 150}}, "critical_paths": [
            {"from": "<async>", "to": "posedge sysclk", "path": []},
            {"from": "posedge sysclk", "to": "posedge sysclk", "path": [)" +
        part("clk-to-q", 0.5, "", "design.sum_i.align.d_SB_LUT4_O_LC") + "," +
        part("routing", 1.25, "design.sum_i.align.d_SB_LUT4_O_LC", "design.sum_i2.pack.x_LC") + "," +
        part("logic", 0.25, "", "design.sum_i2.pack.x_LC") + "," + part("setup", 0.5, "", "operands_SB_DFF_Q_1_LC") +
        "]}]}";
    const auto placed = placement_of(report, adder);
    ASSERT_TRUE(placed.has_value());
    EXPECT_EQ(placed->megahertz, 123.5);
    ASSERT_EQ(placed->path.size(), 3U);
    EXPECT_EQ(placed->path[0].component, "xfc_alufp1x");
    EXPECT_EQ(placed->path[0].step, "align");
    EXPECT_EQ(placed->path[0].comment, "a.c:1: a + b");
    EXPECT_EQ(placed->path[0].nanoseconds, 1.75);
    EXPECT_EQ(placed->path[1].instance, "sum_i2");
    EXPECT_EQ(placed->path[1].nanoseconds, 0.25);
    EXPECT_EQ(placed->path[2].instance, "");
}

TEST(placement, a_report_without_a_clock_gives_none) {
    EXPECT_FALSE(placement_of("", adder).has_value());
    EXPECT_FALSE(placement_of(R"({"fmax": {}})", adder).has_value());
}

TEST(scan, every_port_has_its_own_bits_of_the_shift_registers) {
    const std::string text = scan_text(adder);
    for (const char* expected : {"reg [40:1] operands;", "reg [16:1] results;", ".a(operands[32:1])",
                                 ".b(operands[40:33])", ".y(delivered[16:1])", "always @(posedge sysclk)"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
    }
}

}  // namespace
}  // namespace xfc::flow
