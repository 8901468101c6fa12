#include "exact/dfg/graph_dump.h"

#include <gtest/gtest.h>

#include "exact/dfg/dfg.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(graph_dump, an_empty_graph_has_no_lines) {
    start_graph();
    EXPECT_EQ(dump_graph(), "");
}

TEST(graph_dump, shows_ports_sources_literals_and_consumers) {
    start_graph();
    add_node("a", 1, number_format::single_float);
    const std::int32_t sum = add_node("+", 2, number_format::xfloat, "xfc_alufp1x");
    dfg_connect(0, sum, 1);
    dfg_input& literal = node_at(sum).inputs[0];
    literal.is_constant = 1;
    literal.constant_type = literal_kind::floating;
    literal.constant_value = -2.5;
    literal.width = 45;
    node_at(sum).outputs[0].width = 49;
    attributes_at(sum).latency = 5;
    attributes_at(sum).ready_time = 7;
    EXPECT_EQ(dump_graph(),
              "0 \"a\" Float latency 0 ready 0 widths 0>0 from - to 1.1\n"
              "1 \"+\" XFloat xfc_alufp1x latency 5 ready 7 widths 45,0>49 from FLOAT=-2.500000 0 to\n");
}

TEST(graph_dump, shows_the_marks_of_a_node) {
    start_graph();
    add_node("t", 1);
    attributes_at(0).is_internal = 1;
    attributes_at(0).is_normalized = 1;
    attributes_at(0).is_removed = 1;
    EXPECT_EQ(dump_graph(), "0 \"t\" internal normalized removed latency 0 ready 0 widths 0>0 from - to\n");
}

}  // namespace

}  // namespace xfc::test
