#include "flow/graph/graph.h"

#include <gtest/gtest.h>

#include <array>

#include "flow/graph/dump.h"
#include "flow/graph/verifier.h"

namespace xfc::flow::test {

namespace {

constexpr auto single = number_format::single_float;
constexpr auto integer = number_format::integer;

value_id make(graph& target, operation op, number_format format, std::initializer_list<value_id> operands) {
    return target.make(op, format, {operands.begin(), operands.size()});
}

TEST(flow_graph, equal_values_are_made_once) {
    graph one;
    const value_id x = one.add_input({.name = "x", .format = single});
    const value_id y = one.add_input({.name = "y", .format = single});
    const value_id sum = make(one, operation::add, single, {x, y});
    EXPECT_EQ(make(one, operation::add, single, {y, x}), sum);
    EXPECT_EQ(make(one, operation::add, single, {x, y}), sum);
    const value_id difference = make(one, operation::subtract, single, {x, y});
    EXPECT_NE(make(one, operation::subtract, single, {y, x}), difference);
    EXPECT_EQ(one.size(), 5U);
}

TEST(flow_graph, constants_are_equal_by_their_bits) {
    graph one;
    EXPECT_EQ(one.make_single(0.5F), one.make_single(0.5F));
    EXPECT_NE(one.make_single(0.0F), one.make_single(-0.0F));
    EXPECT_NE(one.make_single(0.5F), one.make_double(0.5));
    EXPECT_NE(one.make_integer(1), one.make_boolean(true));
    EXPECT_EQ(one.known_integer(one.make_integer(-7)), -7);
    EXPECT_EQ(one.known_boolean(one.make_boolean(true)), true);
    EXPECT_EQ(one.double_of(one.make_single(0.25F)), 0.25);
}

TEST(flow_graph, a_million_values_stay_different_and_small) {
    graph one;
    value_id last = one.add_input({.name = "n", .format = integer});
    for (std::int32_t count = 0; count < 500000; ++count) {
        last = make(one, operation::add, integer, {last, one.make_integer(count)});
    }
    EXPECT_EQ(one.size(), 1000001U);
    EXPECT_LE(one.memory() / one.size(), 48U);
    EXPECT_EQ(one[last].operands[1], one.make_integer(499999));
}

TEST(flow_graph, the_dump_has_a_line_for_every_value_and_output) {
    graph one;
    source_map places;
    places.add_file(1, "a.c", "float y;\n  y = x * 0.1f;\n");
    const value_id x = one.add_input({.name = "x", .format = single});
    const value_id tenth = one.make_single(0.1F);
    const std::array<value_id, 2> operands = {x, tenth};
    const value_id product = one.make(operation::multiply, single, operands, {16, 24});
    one.add_output({.name = "y", .format = single, .value = product});
    EXPECT_EQ(dump(one),
              "%0 = input single x\n"
              "%1 = constant single 0.1\n"
              "%2 = multiply single %0 %1\n"
              "output single y = %2\n");
    EXPECT_EQ(dump(one, &places),
              "%0 = input single x\n"
              "%1 = constant single 0.1\n"
              "%2 = multiply single %0 %1 ; a.c:2:7\n"
              "output single y = %2\n");
    EXPECT_EQ(places.expression_text({16, 24}), "x * 0.1f");
}

TEST(flow_graph, unused_values_go_and_inputs_stay) {
    graph one;
    const value_id x = one.add_input({.name = "x", .format = single});
    const value_id y = one.add_input({.name = "y", .format = single});
    make(one, operation::multiply, single, {x, y});
    const value_id kept = make(one, operation::negate, single, {y});
    one.add_output({.name = "z", .format = single, .value = kept});
    EXPECT_EQ(dump(without_unused(one)),
              "%0 = input single x\n"
              "%1 = input single y\n"
              "%2 = negate single %1\n"
              "output single z = %2\n");
}

TEST(flow_graph, the_verifier_is_content_with_a_graph) {
    graph one;
    const value_id x = one.add_input({.name = "x", .format = single});
    const value_id zero = one.make_single(0);
    const value_id negative = make(one, operation::less, number_format::boolean, {x, zero});
    const value_id chosen = make(one, operation::select, single, {negative, zero, x});
    const value_id number = make(one, operation::convert, integer, {chosen});
    one.add_output({.name = "n", .format = integer, .value = number});
    EXPECT_TRUE(faults_of(one).empty());
}

using faults = std::vector<std::string>;

TEST(flow_graph, the_verifier_names_every_fault) {
    const value constant{.op = operation::constant, .format = integer, .operands = {1, 0, 0}};
    const value later{.op = operation::negate, .format = integer, .operands = {1, 0, 0}};
    EXPECT_EQ(faults_of(std::array{constant, later}, {}, {}),
              (faults{"value 1 (negate) has an operand that is not earlier"}));
    EXPECT_EQ(faults_of(std::array{constant, constant}, {}, {}), (faults{"value 1 (constant) stands twice"}));

    const value wrong{.op = operation::square_root, .format = integer, .operands = {0, 0, 0}};
    EXPECT_EQ(faults_of(std::array{constant, wrong}, {}, {}), (faults{"value 1 (square_root) cannot be integer"}));

    const value mixed{.op = operation::negate, .format = single, .operands = {0, 0, 0}};
    EXPECT_EQ(faults_of(std::array{constant, mixed}, {}, {}), (faults{"value 1 (negate) has a wrong operand 1"}));

    const value lost{.op = operation::input, .format = single};
    EXPECT_EQ(faults_of(std::array{lost}, {}, {}), (faults{"value 0 (input) has no port"}));

    const port output{.name = "y", .format = single, .value = 0};
    EXPECT_EQ(faults_of(std::array{constant}, {}, std::array{output}),
              (faults{"output y differs from its value in format"}));
    const port far{.name = "y", .format = single, .value = 9};
    EXPECT_EQ(faults_of(std::array{constant}, std::array{far}, std::array{far}),
              (faults{"input y drives no value", "output y has no value"}));
}

TEST(flow_graph, every_operation_is_found_by_its_name) {
    for (int index = 0; index < operation_count; ++index) {
        const auto op = static_cast<operation>(index);
        EXPECT_EQ(operation_named(row_of(op).name), op);
    }
    EXPECT_EQ(operation_named("sine"), std::nullopt);
}

}  // namespace

}  // namespace xfc::flow::test
