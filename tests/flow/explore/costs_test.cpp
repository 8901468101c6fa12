#include <gtest/gtest.h>

#include <sstream>

#include "flow/explore/bit_registers.h"
#include "flow/explore/cost_table.h"
#include "flow/explore/estimate.h"
#include "flow/passes/expand.h"
#include "flow/passes/options.h"
#include "flow/passes/select_components.h"
#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

design selected(const graph& source, std::int32_t mantissa = 32) {
    diagnostics messages;
    auto made = select_components(expand_operations(source), default_library_options(false, mantissa), messages);
    EXPECT_TRUE(made.has_value()) << rendered(messages, {});
    return *made;
}

/// The keys of all instances of a component, as text.
std::vector<std::string> keys_of(const design& made, component_id component) {
    std::vector<std::string> keys;
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind == node_kind::instance && made[id].component == component) {
            keys.push_back(text_of(key_of(made, id)));
        }
    }
    return keys;
}

using texts = std::vector<std::string>;

TEST(cost_key, operands_are_told_by_what_drives_them) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id product = w.multiply(a, b);
    w.output("y", w.subtract(w.add(product, a), w.made.make_single(0.25F)));
    const design made = selected(w.made);
    const std::string adder = "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | ";
    EXPECT_EQ(keys_of(made, component_id::alufp1x), (texts{adder + "xfc_castftox any", adder + "any constant minus"}));
    EXPECT_EQ(
        keys_of(made, component_id::mulfp1x),
        texts{"xfc_mulfp1x mantissa=32 ieeeoutput=0 xoutput=1 multoutput=0 divoutput=0 outputscale=0 synthesize=0 | "
              "xfc_castftox xfc_castftox"});
}

TEST(cost_key, a_square_reads_the_same_bus_twice) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    w.output("y", w.multiply(a, a));
    EXPECT_EQ(keys_of(selected(w.made), component_id::mullong), texts{"xfc_mullong | any same"});
}

TEST(cost_key, constants_of_products_count_their_rows) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    w.output("y", w.multiply(a, w.made.make_integer(0x55)));
    w.output("z", w.multiply(a, w.made.make_integer(256)));
    EXPECT_EQ(keys_of(selected(w.made), component_id::mullong),
              (texts{"xfc_mullong | any constant:3", "xfc_mullong | any constant:1"}));
}

TEST(cost_key, a_difference_beside_the_sum_of_the_same_numbers_shares_half_of_it) {
    graph_writer w;
    const value_id a = w.input("a");
    const value_id b = w.input("b");
    const value_id c = w.input("c");
    w.output("sum", w.add(a, b));
    w.output("difference", w.subtract(a, b));
    w.output("other", w.subtract(a, c));
    const design made = selected(w.made);
    schedule times = balanced_schedule(made);
    const auto beside = [&] {
        std::vector<std::string> found;
        for (const cost_key& key : keys_of(made, times)) {
            if (key.component == component_id::alufp1x && key.beside_opposite) {
                found.push_back(text_of(key));
                EXPECT_EQ(text_of(key_of_text(text_of(key)).value()), text_of(key));
            }
        }
        return found;
    };
    EXPECT_EQ(beside(), texts{"xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | xfc_castftox xfc_castftox minus "
                              "beside"});
    // In another cycle nothing is common.
    for (node_id id = 0; id < made.size(); ++id) {
        times.start[id] += made[id].subtract ? 1 : 0;
    }
    EXPECT_EQ(beside(), texts{});
}

TEST(cost_key, constants_are_the_second_operand_of_products) {
    graph_writer w;
    w.output("y", w.multiply(w.made.make_single(0.25F), w.input("a")));
    EXPECT_EQ(keys_of(selected(w.made), component_id::mulfp1x),
              texts{"xfc_mulfp1x mantissa=32 ieeeoutput=1 xoutput=0 multoutput=0 divoutput=0 outputscale=0 "
                    "synthesize=0 | xfc_castftox constant:1"});
}

TEST(cost_key, rows_of_a_product_are_its_digits_but_for_sums_that_are_there) {
    EXPECT_EQ(rows_of_product(0, 32), 0);
    EXPECT_EQ(rows_of_product(0x55, 32), 3);    // 1 1 1 1: 1 1 is added once
    EXPECT_EQ(rows_of_product(0x5511, 32), 5);  // 1 1 1 1 0 1 0 1
    EXPECT_EQ(rows_of_product(0x1B, 32), 3);    // -1 -1 2 0
    EXPECT_EQ(rows_of_product(0x1B1B, 32), 4);
    EXPECT_EQ(rows_of_product(3, 32), 2);           // 4 - 1
    EXPECT_EQ(rows_of_product(0xFFFFFFFF, 32), 1);  // -1: every digit but the lowest takes a carry and is zero
    EXPECT_EQ(rows_of_product(0x80000000, 32), 1);
}

TEST(cost_key, texts_read_back_as_what_they_tell) {
    for (const std::string text :
         {"xfc_alufp1x mantissa=36 shiftspeed=0 outputpipe=1 | xfc_castftox constant:0 minus",
          "xfc_mulfp1x mantissa=32 ieeeoutput=0 xoutput=0 multoutput=1 divoutput=0 outputscale=0 synthesize=0 | any "
          "same",
          "xfc_select width=32 | any constant any", "xfc_mullong | constant:7 any", "fp_exp synthesize=0 | any"}) {
        const auto key = key_of_text(text);
        ASSERT_TRUE(key.has_value()) << text;
        EXPECT_EQ(text_of(*key), text);
    }
}

TEST(cost_key, what_is_no_key_is_refused) {
    for (const std::string text : {"", "xfc_nothing | any", "xfc_alufp1x mantisa=32 | any any", "fp_exp | nothing",
                                   "fp_exp synthesize=x | any", "fp_exp | any any any any"}) {
        EXPECT_FALSE(key_of_text(text).has_value()) << text;
    }
}

const std::string multiplier =
    "xfc_mulfp1x mantissa=32 ieeeoutput=0 xoutput=1 multoutput=0 divoutput=0 outputscale=0 synthesize=0 | ";

cost_table small_table() {
    return cost_table(
        "# Measured by hand.\nkey,family,tables,flip-flops,blocks\n"
        "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | any any,ice40,400,360,0\n"
        "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | xfc_castftox any,ice40,300,270,0\n"
        "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=0 | any any,ice40,380,240,0,138.25\n" +
        multiplier + "any constant:2,ice40,100,50,0\n" + multiplier + "any constant:6,ice40,300,250,2\n" + multiplier +
        "any constant:0,ice40,3,4,0\nnonsense\n");
}

known_cost cost(const std::string& key) {
    return small_table().cost_of(key_of_text(key).value(), *family_named("ice40"));
}

TEST(cost_table, a_measured_key_costs_what_its_row_says) {
    const known_cost found = cost("xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=0 | any any");
    EXPECT_EQ(found.basis, cost_basis::measured);
    EXPECT_EQ(found.look_up_tables, 380);
    EXPECT_EQ(found.flip_flops, 240);
    EXPECT_EQ(small_table().comments(), texts{"Measured by hand."});
}

TEST(cost_table, constants_between_measured_ones_are_interpolated) {
    const known_cost found = cost(multiplier + "any constant:5");
    EXPECT_EQ(found.basis, cost_basis::derived);
    EXPECT_EQ(found.look_up_tables, 250);
    EXPECT_EQ(found.flip_flops, 200);
    EXPECT_EQ(found.multipliers, 1.5);
    // Beyond the last one nothing is made up.
    EXPECT_EQ(cost(multiplier + "any constant:9").look_up_tables, 300);
    EXPECT_EQ(cost(multiplier + "any constant:1").look_up_tables, 100);
}

TEST(cost_table, operands_change_other_generics_by_the_same_factor) {
    const known_cost found = cost("xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=0 | xfc_castftox any");
    EXPECT_EQ(found.basis, cost_basis::derived);
    EXPECT_EQ(found.look_up_tables, 285);  // 380 * 300 / 400
    EXPECT_EQ(found.flip_flops, 180);      // 240 * 270 / 360
}

TEST(cost_table, the_nearest_generics_stand_for_those_that_were_not_measured) {
    const known_cost found = cost("xfc_alufp1x mantissa=36 shiftspeed=0 outputpipe=0 | any any");
    EXPECT_EQ(found.basis, cost_basis::derived);
    EXPECT_EQ(found.look_up_tables, 380);
}

TEST(cost_table, a_clock_is_that_of_the_component_whatever_its_operands) {
    const family_row& ice40 = *family_named("ice40");
    const std::string adder = "xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=";
    EXPECT_EQ(small_table().clock_of(*key_of_text(adder + "0 | any any"), ice40), 138.25);
    EXPECT_EQ(small_table().clock_of(*key_of_text(adder + "0 | xfc_castftox constant minus"), ice40), 138.25);
    EXPECT_EQ(small_table().clock_of(*key_of_text(adder + "1 | any any"), ice40), 0);
}

TEST(cost_table, a_row_that_comes_again_takes_the_place_of_the_first) {
    cost_table table = small_table();
    table.add("xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=0 | any any,ice40,1,2,3");
    const auto key = key_of_text("xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=0 | any any");
    EXPECT_EQ(table.measured(*key, *family_named("ice40"))->multipliers, 3);
    EXPECT_EQ(table.clock_of(*key, *family_named("ice40")), 0);
}

TEST(cost_table, what_nobody_measured_has_no_cost) {
    EXPECT_EQ(cost("fp_exp synthesize=0 | any").basis, cost_basis::not_measured);
    const cost_table table = small_table();
    EXPECT_EQ(table.cost_of(*key_of_text("xfc_alufp1x | any any"), *family_named("ecp5")).basis,
              cost_basis::not_measured);
}

TEST(cost_table, the_program_comes_with_one_that_knows_every_family) {
    const auto adder = key_of_text("xfc_alufp1x mantissa=32 shiftspeed=1 outputpipe=1 | any any");
    for (const family_row& family : family_rows()) {
        const resource_counts* counts = component_costs(family).measured(*adder, family);
        ASSERT_NE(counts, nullptr) << family.name;
        EXPECT_GT(counts->look_up_tables, 100) << family.name;
        EXPECT_GT(counts->flip_flops, 100) << family.name;
        // Its date and its tools.
        EXPECT_EQ(component_costs(family).comments().size(), 2U) << family.name;
    }
}

TEST(cost_table, every_row_that_comes_with_the_program_is_one) {
    for (const family_row& family : family_rows()) {
        std::istringstream lines{std::string(component_costs_text(family))};
        std::size_t rows = 0;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("#") || line.starts_with("key,")) {
                continue;
            }
            const auto key = key_of_text(line.substr(0, line.find(',')));
            ASSERT_TRUE(key.has_value()) << line;
            const std::string written = text_of(*key) + "," + std::string(family.name) + ",";
            EXPECT_EQ(line.substr(0, written.size()), written) << "not as keys are written";
            ++rows;
        }
        EXPECT_GT(rows, 50U) << family.name;
    }
}

/// What is counted of a design whose start times are the best.
bit_counts counted(const graph& source, std::string_view family) {
    const design made = selected(source);
    return count_bits(made, balanced_schedule(made), *family_named(family));
}

TEST(bit_registers, constants_are_followed_through_selections_and_logic) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id index = w.make(operation::select, number_format::integer,
                                  {w.make(operation::less, number_format::boolean, {a, w.made.make_integer(9)}),
                                   w.made.make_integer(3), w.made.make_integer(5)});
    const value_id low = w.make(operation::bit_and, number_format::integer, {a, w.made.make_integer(255)});
    w.output("index", index);
    w.output("shifted", w.make(operation::shift_left, number_format::integer, {low, w.made.make_integer(4)}));
    const design made = selected(w.made);
    const bit_counts counts = count_bits(made, balanced_schedule(made), *family_named("ice40"));
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].component == component_id::select) {
            EXPECT_EQ(counts.unknown[id], 2);  // 3 and 5 differ in two bits
        } else if (made[id].component == component_id::bitlong || made[id].component == component_id::shiftlong) {
            EXPECT_EQ(counts.unknown[id], 8);
        } else if (made[id].kind == node_kind::constant) {
            EXPECT_EQ(counts.unknown[id], 0);
        }
    }
}

TEST(bit_registers, bits_that_nobody_reads_have_none) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id sum = w.make(operation::bit_xor, number_format::integer, {a, w.input("b", number_format::integer)});
    w.output("y", w.make(operation::bit_and, number_format::integer, {sum, w.made.make_integer(15)}));
    const bit_counts counts = counted(w.made, "ice40");
    EXPECT_EQ(counts.flip_flops, 4 + 4);
    EXPECT_EQ(counts.look_up_tables, 4);
}

TEST(bit_registers, a_sign_extended_is_one_bit) {
    graph_writer w;
    const value_id high = w.make(operation::shift_left, number_format::integer,
                                 {w.input("a", number_format::integer), w.made.make_integer(20)});
    w.output("y", w.make(operation::shift_right, number_format::integer, {high, w.made.make_integer(20)}));
    const design made = selected(w.made);
    const bit_counts counts = count_bits(made, balanced_schedule(made), *family_named("ice40"));
    EXPECT_EQ(counts.unknown[made.outputs[0]], 32);
    EXPECT_EQ(counts.different[made.outputs[0]], 12);
    EXPECT_EQ(counts.flip_flops, 4 * 12);  // two shifts of two cycles
    EXPECT_EQ(counts.look_up_tables, 0);
    // A chain of four registers without logic.
    EXPECT_EQ(counted(w.made, "xilinx").look_up_tables, 12);
    EXPECT_EQ(counted(w.made, "xilinx").flip_flops, 0);
}

TEST(bit_registers, equal_registers_are_one) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id b = w.input("b", number_format::integer);
    w.output("sum", w.add(a, b));
    const bit_counts alone = counted(w.made, "ice40");
    EXPECT_EQ(alone.flip_flops,
              64 + 33 + 16 + 16 + 16);  // complement, lower with its carry and the upper halves, upper
    EXPECT_EQ(alone.look_up_tables, 32);
    w.output("difference", w.subtract(a, b));
    const bit_counts both = counted(w.made, "ice40");
    EXPECT_EQ(both.flip_flops, 2 * alone.flip_flops - 32 - 16);   // a's copies are those of the sum
    EXPECT_EQ(both.look_up_tables, 3 * 32);                       // b is inverted
    EXPECT_EQ(counted(w.made, "xilinx").look_up_tables, 2 * 32);  // which is no table there
}

TEST(bit_registers, a_sum_of_short_numbers_is_short) {
    graph_writer w;
    const auto low = [&](const char* name) {
        return w.make(operation::bit_and, number_format::integer,
                      {w.input(name, number_format::integer), w.made.make_integer(255)});
    };
    const value_id a = low("a");
    const value_id b = low("b");
    w.output("y", w.add(a, b));
    const design made = selected(w.made);
    const bit_counts counts = count_bits(made, balanced_schedule(made), *family_named("ice40"));
    EXPECT_EQ(counts.unknown[made.outputs[0]], 9);
    EXPECT_EQ(counts.flip_flops, 16 + 16 + 9 + 9);
}

TEST(bit_registers, a_choice_of_a_constant_is_no_start_of_a_shift_register) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id condition = w.make(operation::less, number_format::boolean, {a, w.made.make_integer(9)});
    const value_id chosen = w.make(operation::select, number_format::integer, {condition, a, w.made.make_integer(0)});
    w.output("y", w.make(operation::shift_left, number_format::integer, {chosen, w.made.make_integer(1)}));
    // The comparison's cycle, the choice, and two registers of the shift, too few for a shift register; the highest bit
    // is shifted out.
    EXPECT_EQ(counted(w.made, "xilinx").flip_flops, 4 * 31);
    EXPECT_EQ(counted(w.made, "xilinx").look_up_tables, 31);
    EXPECT_EQ(counted(w.made, "ice40").look_up_tables, 1);
}

TEST(bit_registers, long_delay_lines_of_xilinx_are_shift_registers) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id b = w.input("b", number_format::integer);
    const std::int32_t cycles = latency_of(component_id::mullong, {});
    ASSERT_EQ(cycles, 3);
    w.output("square", w.multiply(a, a));
    w.output("b_again", b);
    EXPECT_EQ(counted(w.made, "ice40").flip_flops, 3 * 32);
    EXPECT_EQ(counted(w.made, "ice40").look_up_tables, 0);
    EXPECT_EQ(counted(w.made, "xilinx").flip_flops, 0);
    EXPECT_EQ(counted(w.made, "xilinx").look_up_tables, 32);
}

TEST(bit_registers, a_shift_register_takes_in_a_component_s_register_that_nothing_else_reads) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id b = w.input("b", number_format::integer);
    w.output("product", w.multiply(w.multiply(a, a), b));
    w.output("below", w.make(operation::less, number_format::boolean, {a, b}));
    const bit_counts counts = counted(w.made, "xilinx");
    // Of six cycles b is late by three; the comparison has its bit behind one, and its register is counted with it.
    EXPECT_EQ(counts.flip_flops, -1);
    EXPECT_EQ(counts.look_up_tables, 32 + 1);
}

TEST(bit_registers, a_register_that_is_cleared_stays_one) {
    graph_writer w;
    w.output("least", w.make(operation::minimum, number_format::single_float, {w.input("a"), w.input("b")}));
    const value_id c = w.input("c", number_format::integer);
    w.output("cube", w.multiply(w.multiply(c, c), c));
    const bit_counts counts = counted(w.made, "xilinx");
    // The smaller number is four cycles early, c is late by three; neither shift register takes in another register.
    EXPECT_EQ(counts.flip_flops, 0);
    EXPECT_EQ(counts.look_up_tables, 32 + 32);
}

TEST(estimate, a_product_of_short_numbers_has_fewer_columns_or_rows) {
    // As many tables as columns: 32 + 30 + ... + 2.
    const cost_table table("xfc_mullong | any any,ice40,272,0,0\n");
    const auto tables_of_square = [&](operation first, std::int32_t by, operation second) {
        graph_writer w;
        const value_id a = w.input("a", number_format::integer);
        const value_id amount = w.made.make_integer(by);
        const value_id once = w.make(first, number_format::integer, {a, amount});
        const value_id twice = w.make(second, number_format::integer, {once, amount});
        w.output("y", w.multiply(twice, twice));
        const design made = selected(w.made);
        return estimate_of(made, balanced_schedule(made), *family_named("ice40"), table).look_up_tables;
    };
    EXPECT_EQ(tables_of_square(operation::shift_left, 0, operation::shift_right), 272);
    // The sign extended from 12 bits: 13 columns in each of 16 rows, as far as there are so many.
    EXPECT_EQ(tables_of_square(operation::shift_left, 20, operation::shift_right), 10 * 13 + 12 + 10 + 8 + 6 + 4 + 2);
    // 12 bits behind zeros: no more than six rows.
    EXPECT_EQ(tables_of_square(operation::shift_left, 20, operation::shift_right_unsigned), 6 * 13);
}

TEST(estimate, is_the_sum_of_components_delays_and_the_start_chain) {
    graph_writer w;
    const value_id a = w.input("a", number_format::integer);
    const value_id b = w.input("b", number_format::integer);
    w.output("y", w.add(w.multiply(a, b), a));
    const design made = selected(w.made);
    const schedule times = balanced_schedule(made);
    ASSERT_EQ(times.latency, 6);
    const cost_table table("xfc_mullong | any any,ice40,1000,500,3,90.5\nxfc_alulong | any any,ice40,40,90,0,200\n");
    // The sum is counted bit by bit: 32 tables, 145 registers.
    const design_estimate sum = estimate_of(made, times, *family_named("ice40"), table);
    EXPECT_EQ(sum.look_up_tables, 1032);
    EXPECT_EQ(sum.flip_flops, 500 + 145 + 3 * 32 + 6);
    EXPECT_EQ(sum.multipliers, 3);
    EXPECT_EQ(sum.megahertz, 90.5);
    EXPECT_EQ(sum.derived, 0);
    EXPECT_EQ(sum.not_measured, 0);
    const design_estimate unknown = estimate_of(made, times, *family_named("ecp5"), table);
    EXPECT_EQ(unknown.not_measured, 1);
    EXPECT_EQ(unknown.flip_flops, 145 + 3 * 32 + 6);
}

}  // namespace
}  // namespace xfc::flow
