#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr auto in_none = number_format::none;
constexpr auto in_long = number_format::long_integer;
constexpr auto in_float = number_format::single_float;
constexpr auto in_double = number_format::double_float;
constexpr auto in_xfloat = number_format::xfloat;
constexpr auto in_ydouble = number_format::ydouble;

struct widths {
    std::int32_t input;
    std::int32_t output;
    bool operator==(const widths&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const widths& w) { return stream << w.input << " -> " << w.output; }

widths widths_of(std::int32_t slot) { return {node_at(slot).inputs[0].width, node_at(slot).outputs[0].width}; }

run_result assign() { return catch_output(assign_remaining_bus_attributes); }

void expect_assigned() {
    const run_result result = assign();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "");
}

/// The pass, on its own, prints that message only.
void expect_refused(const std::string& on_standard_error) {
    const run_result result = assign();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, on_standard_error);
}

/// A program passes every phase up to this pass, which prints that message only; there is no output file.
void expect_program_refused(const std::string& source, const std::string& on_standard_error) {
    const run_result result = compile({.source = source});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, on_standard_error);
    EXPECT_TRUE(result.standard_output.ends_with("*** ASSIGN REMAINING BUS ATTRIBUTES ***\n"))
        << result.standard_output;
    EXPECT_TRUE(result.files.empty());
}

// ---- Ports ----

TEST(bus_attributes, an_empty_graph_is_fine) {
    start_graph();
    expect_assigned();
}

TEST(bus_attributes, ports_get_the_width_of_their_declared_type) {
    for (const auto& [format, bits] : {std::pair{in_float, 32}, {in_double, 64}, {in_long, 32}}) {
        start_graph();
        const std::int32_t a = add_node("a", 1, format);
        const std::int32_t y = add_node("y", 1, format);
        dfg_connect(a, y, 0);
        expect_assigned();
        EXPECT_EQ(widths_of(a), (widths{bits, bits}));
        EXPECT_EQ(widths_of(y), (widths{bits, bits}));
    }
}

TEST(bus_attributes, an_output_port_follows_its_type_and_not_its_driver) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_double);
    const std::int32_t y = add_node("y", 1, in_long);
    dfg_connect(a, y, 0);
    expect_assigned();
    EXPECT_EQ(widths_of(a), (widths{64, 64}));
    EXPECT_EQ(widths_of(y), (widths{32, 32}));
}

TEST(bus_attributes, a_port_loses_the_width_that_it_had) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t y = add_node("y", 1, in_float);
    dfg_connect(a, y, 0);
    node_at(a).inputs[0].width = 7;
    node_at(y).outputs[0].width = 8;
    expect_assigned();
    EXPECT_EQ(widths_of(a), (widths{32, 32}));
    EXPECT_EQ(widths_of(y), (widths{32, 32}));
}

TEST(bus_attributes, a_port_of_any_other_format_ends_the_run) {
    for (const number_format format : {in_none, in_xfloat, in_ydouble}) {
        for (const bool wrong_is_input : {true, false}) {
            start_graph();
            const std::int32_t a = add_node("a", 1, wrong_is_input ? format : in_float);
            dfg_connect(a, add_node("y", 1, wrong_is_input ? in_float : format), 0);
            const run_result result = assign();
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.standard_output, "Unsupported I/O Type");
            EXPECT_EQ(result.standard_error, "");
        }
    }
}

TEST(bus_attributes, an_int_variable_is_an_unsupported_port) {
    const run_result result = compile({.source = "int n; float a, y; void main() { y = a; }"});
    EXPECT_EQ(result.status, 1);
    const std::string end = "*** ASSIGN REMAINING BUS ATTRIBUTES ***\nUnsupported I/O Type";
    ASSERT_GE(result.standard_output.size(), end.size());
    EXPECT_EQ(result.standard_output.substr(result.standard_output.size() - end.size()), end);
    EXPECT_EQ(result.standard_error, "");
    EXPECT_TRUE(result.files.empty());
}

TEST(bus_attributes, inner_nodes_of_any_format_are_no_ports) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t t = add_node("t", 1, in_xfloat);
    const std::int32_t constant = add_node("*", 2, in_none, "xfc_mulfp1x");
    const std::int32_t y = add_node("y", 1, in_float);
    dfg_connect(a, t, 0);
    dfg_connect(t, constant, 0);
    node_at(constant).inputs[1].is_constant = 1;
    dfg_connect(constant, y, 0);
    expect_assigned();
    EXPECT_EQ(widths_of(t), (widths{32, 32}));
}

TEST(bus_attributes, a_two_input_node_without_sources_is_no_input_port) {
    start_graph();
    const std::int32_t sum = add_node("+", 2, in_none, "xfc_alufp1x");
    node_at(sum).inputs[0].is_constant = 1;
    node_at(sum).inputs[1].is_constant = 1;
    dfg_connect(sum, add_node("y", 1, in_float), 0);
    expect_assigned();
    EXPECT_EQ(widths_of(sum), (widths{0, 0}));
}

TEST(bus_attributes, a_variable_that_is_neither_assigned_nor_read_is_a_port_on_both_sides) {
    start_graph();
    const std::int32_t unused = add_node("u", 1, in_double);
    expect_assigned();
    EXPECT_EQ(widths_of(unused), (widths{64, 64}));
    EXPECT_EQ(compile({.source = "float a, u, y; void main() { y = a; }"}).status, 0);
}

// ---- Propagation ----

TEST(bus_attributes, a_node_without_widths_takes_its_drivers) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_double);
    const std::int32_t t = add_node("t", 1, in_double);
    dfg_connect(a, t, 0);
    dfg_connect(t, add_node("y", 1, in_double), 0);
    expect_assigned();
    EXPECT_EQ(widths_of(t), (widths{64, 64}));
}

TEST(bus_attributes, one_width_missing_is_enough_to_replace_both) {
    for (const bool input_is_missing : {true, false}) {
        start_graph();
        const std::int32_t driver_node = add_node("+", 2, in_xfloat, "xfc_alufp1x");
        node_at(driver_node).inputs[0].width = 45;
        node_at(driver_node).outputs[0].width = 45;
        node_at(driver_node).inputs[0].is_constant = 1;
        node_at(driver_node).inputs[1].is_constant = 1;
        const std::int32_t cast = add_node("cast", 1, in_ydouble, "castxtoy");
        dfg_connect(driver_node, cast, 0);
        dfg_connect(cast, add_node("y", 1, in_double), 0);
        node_at(cast).inputs[0].width = input_is_missing ? 0 : 77;
        node_at(cast).outputs[0].width = input_is_missing ? 77 : 0;
        expect_assigned();
        EXPECT_EQ(widths_of(cast), (widths{45, 45}));
    }
}

TEST(bus_attributes, nodes_with_both_widths_are_passed_over) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t cast = add_node("cast", 1, in_xfloat, "xfc_castftox");
    node_at(cast).inputs[0].width = 11;
    node_at(cast).outputs[0].width = 12;
    dfg_connect(a, cast, 0);
    dfg_connect(cast, add_node("y", 1, in_float), 0);
    expect_assigned();
    EXPECT_EQ(widths_of(cast), (widths{11, 12}));
}

TEST(bus_attributes, only_the_first_input_gets_a_width_and_only_its_driver_gives_one) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_double);
    const std::int32_t b = add_node("b", 1, in_long);
    const std::int32_t node = add_node("f", 2, in_double);
    dfg_connect(a, node, 0);
    dfg_connect(b, node, 1);
    dfg_connect(node, add_node("y", 1, in_double), 0);
    expect_assigned();
    EXPECT_EQ(widths_of(node), (widths{64, 64}));
    EXPECT_EQ(node_at(node).inputs[1].width, 0);
}

TEST(bus_attributes, a_mapped_node_with_a_constant_first_operand_keeps_unset_widths) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t node = add_node("*", 2, in_none, "xfc_mulfp1x");
    node_at(node).inputs[0].is_constant = 1;
    dfg_connect(a, node, 1);
    dfg_connect(node, add_node("y", 1, in_float), 0);
    expect_assigned();
    EXPECT_EQ(widths_of(node), (widths{0, 0}));
}

TEST(bus_attributes, a_chain_gets_its_width_from_end_to_end_in_either_slot_order) {
    constexpr std::int32_t length = 300;
    for (const bool ascending : {true, false}) {
        start_graph();
        const std::int32_t a = add_node("a", 1, in_double);
        const std::int32_t y = add_node("y", 1, in_double);
        for (std::int32_t count = 0; count < length; ++count) {
            add_node("t", 1, in_none);
        }
        std::int32_t before = a;
        for (std::int32_t count = 0; count < length; ++count) {
            const std::int32_t slot = ascending ? y + 1 + count : y + length - count;
            dfg_connect(before, slot, 0);
            before = slot;
        }
        dfg_connect(before, y, 0);
        expect_assigned();
        for (std::int32_t slot = y + 1; slot <= y + length; ++slot) {
            EXPECT_EQ(widths_of(slot), (widths{64, 64}));
        }
    }
}

TEST(bus_attributes, a_width_reaches_every_branch_of_a_tree) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_long);
    const std::int32_t stem = add_node("t", 1, in_none);
    dfg_connect(a, stem, 0);
    std::vector<std::int32_t> branches;
    for (int count = 0; count < 5; ++count) {
        branches.push_back(add_node("u", 1, in_none));
        dfg_connect(stem, branches.back(), 0);
        dfg_connect(branches.back(), add_node("y", 1, in_double), 0);
    }
    expect_assigned();
    for (const std::int32_t branch : branches) {
        EXPECT_EQ(widths_of(branch), (widths{32, 32}));
    }
}

TEST(bus_attributes, merged_nodes_get_widths_too) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_double);
    const std::int32_t delay = add_node("delay", 1, in_double, "xfc_delay");
    dfg_connect(a, delay, 0);
    dfg_connect(delay, add_node("y", 1, in_double), 0);
    attributes_at(delay).is_removed = 1;
    expect_assigned();
    EXPECT_EQ(widths_of(delay), (widths{64, 64}));
}

TEST(bus_attributes, an_input_that_is_delayed_gets_a_delay_of_its_width) {
    const std::string source = "double a, b, y, z; void main() { y = a * b; z = a; }";
    ASSERT_EQ(optimize_text(source, assign_remaining_bus_attributes).status, 0);
    const std::vector<std::int32_t> delays = slots_with_component("xfc_delay");
    ASSERT_EQ(delays.size(), 1U);
    EXPECT_EQ(widths_of(delays[0]), (widths{64, 64}));
}

TEST(bus_attributes, a_single_to_double_conversion_into_an_adder_gets_the_single_width) {
    const std::string source = "float a, b; double c, y; void main() { y = (a + b) + c; }";
    ASSERT_EQ(optimize_text(source, assign_remaining_bus_attributes).status, 0);
    const std::vector<std::int32_t> casts = slots_with_component("castxtoy");
    ASSERT_EQ(casts.size(), 1U);
    EXPECT_EQ(widths_of(casts[0]), (widths{45, 45}));
}

// ---- Constants that would have to drive a wire ----

TEST(bus_attributes, an_output_that_is_only_a_constant_is_refused) {
    start_graph();
    const std::int32_t y = add_node("y", 1, in_float);
    node_at(y).inputs[0].is_constant = 1;
    expect_refused("y is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, a_variable_that_is_only_a_constant_is_refused) {
    start_graph();
    const std::int32_t t = add_node("t", 1, in_float);
    node_at(t).inputs[0].is_constant = 1;
    dfg_connect(t, add_node("y", 1, in_float), 0);
    expect_refused("t is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, of_several_constants_the_lowest_slot_is_named) {
    start_graph();
    for (const char* name : {"p", "q", "r"}) {
        node_at(add_node(name, 1, in_float)).inputs[0].is_constant = name[0] == 'p' ? 0 : 1;
    }
    expect_refused("q is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, an_unmapped_operator_with_a_constant_first_operand_is_refused) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_long);
    const std::int32_t quotient = add_node("/", 2, in_long);
    node_at(quotient).inputs[0].is_constant = 1;
    dfg_connect(a, quotient, 1);
    dfg_connect(quotient, add_node("y", 1, in_long), 0);
    expect_refused("/ is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, an_output_with_a_component_but_without_a_driver_is_refused_as_a_constant) {
    start_graph();
    const std::int32_t root = add_node("sqrt", 1, in_float, "fp_sqr");
    node_at(root).inputs[0].is_constant = 1;
    expect_refused("sqrt is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, a_merged_constant_is_not_refused) {
    start_graph();
    const std::int32_t t = add_node("t", 1, in_float);
    node_at(t).inputs[0].is_constant = 1;
    dfg_connect(t, add_node("y", 1, in_float), 0);
    attributes_at(t).is_removed = 1;
    expect_assigned();
}

TEST(bus_attributes, programs_that_assign_a_constant_are_refused) {
    expect_program_refused("float y; void main() { y = 2.5; }",
                           "y is only a constant, which cannot drive a variable\n");
    expect_program_refused("long a, t, y; void main() { t = 2; y = t + a; }",
                           "t is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, an_unsupported_port_is_reported_before_a_constant) {
    start_graph();
    node_at(add_node("t", 1, in_float)).inputs[0].is_constant = 1;
    add_node("n", 1, in_none);
    const run_result result = assign();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "Unsupported I/O Type");
    EXPECT_EQ(result.standard_error, "");
}

// ---- Operands without a driver ----

TEST(bus_attributes, a_primary_input_named_like_a_function_has_no_operand) {
    expect_program_refused("float sqrt, y; void main() { y = sqrt; }", "sqrt has an operand without a driver\n");
    // A variable reads its source through input 0, ldexp through input 1.
    expect_program_refused("float a, ldexp, y; void main() { ldexp = a; y = ldexp; }",
                           "ldexp has an operand without a driver\n");
}

TEST(bus_attributes, a_driven_variable_named_like_a_function_is_accepted) {
    EXPECT_EQ(
        optimize_text("float a, sqrt, y; void main() { sqrt = a; y = sqrt; }", assign_remaining_bus_attributes).status,
        0);
    EXPECT_EQ(current.max_latency, 28);
}

TEST(bus_attributes, of_several_missing_operands_the_lowest_slot_is_named) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    for (const char* name : {"p", "q"}) {
        const std::int32_t sum = add_node(name, 2, in_xfloat, "xfc_alufp1x");
        dfg_connect(a, sum, 0);
        dfg_connect(sum, add_node("y", 1, in_float), 0);
    }
    expect_refused("p has an operand without a driver\n");
}

TEST(bus_attributes, constants_are_reported_before_missing_operands_of_lower_slots) {
    start_graph();
    const std::int32_t root = add_node("sqrt", 1, in_float, "fp_sqr");
    dfg_connect(root, add_node("y", 1, in_float), 0);
    node_at(add_node("t", 1, in_float)).inputs[0].is_constant = 1;
    expect_refused("t is only a constant, which cannot drive a variable\n");
}

TEST(bus_attributes, a_merged_node_may_lack_an_operand) {
    start_graph();
    const std::int32_t root = add_node("sqrt", 1, in_float, "fp_sqr");
    dfg_connect(root, add_node("y", 1, in_float), 0);
    attributes_at(root).is_removed = 1;
    expect_assigned();
}

TEST(bus_attributes, a_constant_on_an_operand_that_takes_no_constants_is_refused) {
    start_graph();
    const std::int32_t a = add_node("a", 1, in_float);
    const std::int32_t product = add_node("*", 2, in_float, "xfc_mulfp1_dot");
    dfg_connect(a, product, 0);
    node_at(product).inputs[1].is_constant = 1;
    dfg_connect(product, add_node("y", 1, in_float), 0);
    expect_refused("* has an operand without a driver\n");
}

}  // namespace

}  // namespace xfc::test
