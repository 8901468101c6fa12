#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

constexpr std::int32_t first_capacity = 10000;

/// Ports of a node's consumers in order.
std::vector<std::int32_t> consumer_ports(std::int32_t slot) {
    std::vector<std::int32_t> ports;
    for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
        ports.push_back(link->port);
    }
    return ports;
}

using slots = std::vector<std::int32_t>;

// ---- Creation ----

TEST(graph_store, a_new_graph_has_10000_free_slots) {
    start_graph();
    EXPECT_EQ(current.graph.capacity, first_capacity);
    EXPECT_EQ(current.graph.free_head, 0);
    EXPECT_EQ(dfg_used_slots(), 0);
}

TEST(graph_store, nodes_are_handed_out_as_0_1_2) {
    start_graph();
    EXPECT_EQ(dfg_create_node("a", 1, 1), 0);
    EXPECT_EQ(dfg_create_node("b", 1, 1), 1);
    EXPECT_EQ(dfg_create_node("+", 2, 1), 2);
    EXPECT_EQ(current.graph.free_head, 3);
    EXPECT_EQ(dfg_used_slots(), 3);
}

TEST(graph_store, a_new_node_is_empty_but_for_its_name_and_ports) {
    start_graph();
    const dfg_node& node = node_at(dfg_create_node("+", 2, 1));
    EXPECT_EQ(node.name, "+");
    EXPECT_EQ(node.input_count, 2);
    EXPECT_EQ(node.output_count, 1);
    for (std::int32_t port = 0; port < 2; ++port) {
        EXPECT_EQ(node.inputs[port].width, 0);
        EXPECT_EQ(node.inputs[port].is_constant, 0);
        EXPECT_EQ(literal_kind_text(node.inputs[port].constant_type), "");
        EXPECT_EQ(source_of(node, port), nullptr);
    }
    EXPECT_EQ(node.outputs[0].width, 0);
    EXPECT_EQ(consumers_of(node), nullptr);
    const node_attributes& attributes = node.attributes;
    EXPECT_EQ(attributes.component, component_id::wire);
    EXPECT_EQ(format_row(attributes.format).text, "");
    for (const std::int32_t value :
         {attributes.is_internal, attributes.latency, attributes.ready_time, attributes.is_normalized,
          attributes.cluster_depth, attributes.fanout, attributes.is_removed}) {
        EXPECT_EQ(value, 0);
    }
    EXPECT_EQ(node.bus_modes.tag, "");
}

TEST(graph_store, a_node_without_inputs_has_no_source_and_no_literal) {
    start_graph();
    const dfg_node& node = node_at(dfg_create_node("nothing", 0, 1));
    EXPECT_EQ(node.input_count, 0);
    EXPECT_EQ(source_of(node, 0), nullptr);
    EXPECT_FALSE(has_constant(node, 0));
    EXPECT_FALSE(is_primary_input(node));
}

TEST(graph_store, a_port_that_the_node_does_not_have_has_no_source_and_no_literal) {
    start_graph();
    dfg_create_node("a", 1, 1);
    dfg_connect(0, dfg_create_node("t", 1, 1), 0);
    EXPECT_EQ(source_of(node_at(1), 1), nullptr);
    EXPECT_FALSE(has_constant(node_at(1), 1));
}

TEST(graph_store, two_nodes_do_not_share_their_records) {
    start_graph();
    const std::int32_t first = dfg_create_node("a", 1, 1);
    const std::int32_t second = dfg_create_node("a", 1, 1);
    attributes_at(first).latency = 5;
    node_at(first).inputs[0].width = 32;
    node_at(first).bus_modes.output_select = 2;
    EXPECT_EQ(attributes_at(second).latency, 0);
    EXPECT_EQ(node_at(second).inputs[0].width, 0);
    EXPECT_EQ(node_at(second).bus_modes.output_select, 0);
}

// ---- Growth ----

TEST(graph_store, the_10001st_node_doubles_the_capacity_and_keeps_the_others) {
    start_graph();
    std::vector<std::string> names;
    for (std::int32_t slot = 0; slot <= first_capacity; ++slot) {
        names.push_back("n" + std::to_string(slot));
    }
    for (std::int32_t slot = 0; slot < first_capacity; ++slot) {
        ASSERT_EQ(dfg_create_node(names[static_cast<std::size_t>(slot)], 1, 1), slot);
        attributes_at(slot).latency = slot;
    }
    dfg_connect(17, 9999, 0);
    EXPECT_EQ(current.graph.capacity, first_capacity);
    EXPECT_EQ(current.graph.free_head, no_slot);
    EXPECT_EQ(dfg_used_slots(), first_capacity);

    EXPECT_EQ(dfg_create_node(names.back(), 1, 1), first_capacity);
    EXPECT_EQ(current.graph.capacity, 2 * first_capacity);
    EXPECT_EQ(current.graph.free_head, first_capacity + 1);
    EXPECT_EQ(dfg_used_slots(), first_capacity + 1);
    EXPECT_EQ(dfg_create_node("last", 1, 1), first_capacity + 1);
    for (std::int32_t slot = 0; slot < first_capacity; ++slot) {
        ASSERT_EQ(node_at(slot).name, names[static_cast<std::size_t>(slot)]);
        ASSERT_EQ(attributes_at(slot).latency, slot);
    }
    EXPECT_EQ(driver(9999), 17);
    EXPECT_EQ(consumers(17), slots{9999});
}

TEST(graph_store, the_capacity_doubles_again_at_20000_nodes) {
    start_graph();
    for (std::int32_t slot = 0; slot < 2 * first_capacity; ++slot) {
        dfg_create_node("n", 1, 1);
    }
    EXPECT_EQ(current.graph.capacity, 2 * first_capacity);
    EXPECT_EQ(dfg_create_node("n", 1, 1), 2 * first_capacity);
    EXPECT_EQ(current.graph.capacity, 4 * first_capacity);
}

// ---- Lookup ----

TEST(graph_store, a_lookup_finds_the_lowest_slot_of_a_name) {
    start_graph();
    for (const std::string_view name : {"a", "b", "c", "b"}) {
        dfg_create_node(name, 1, 1);
    }
    EXPECT_EQ(dfg_find_node("a"), 0);
    EXPECT_EQ(dfg_find_node("b"), 1);
    EXPECT_EQ(dfg_find_node("c"), 2);
}

TEST(graph_store, a_name_that_no_node_has_looks_like_slot_0) {
    start_graph();
    EXPECT_EQ(dfg_find_node("a"), 0);
    dfg_create_node("a", 1, 1);
    dfg_create_node("b", 1, 1);
    EXPECT_EQ(dfg_find_node("c"), 0);
    EXPECT_EQ(dfg_find_node("B"), 0);
    EXPECT_EQ(dfg_find_node(""), 0);
}

TEST(graph_store, a_lookup_compares_whole_names) {
    start_graph();
    for (const std::string_view name : {"other", "abc", "ab"}) {
        dfg_create_node(name, 1, 1);
    }
    EXPECT_EQ(dfg_find_node("ab"), 2);
    EXPECT_EQ(dfg_find_node("abc"), 1);
}

TEST(graph_store, a_lookup_finds_operators_and_functions_too) {
    start_graph();
    dfg_create_node("a", 1, 1);
    dfg_create_node("sqrt", 1, 1);
    EXPECT_EQ(dfg_find_node("sqrt"), 1);
}

// ---- Edges ----

TEST(graph_store, consumers_are_kept_in_the_order_of_attachment) {
    start_graph();
    for (int count = 0; count < 4; ++count) {
        dfg_create_node("n", 2, 1);
    }
    dfg_add_consumer(0, 3, 1);
    dfg_add_consumer(0, 1, 0);
    dfg_add_consumer(0, 3, 0);
    EXPECT_EQ(consumers(0), (slots{3, 1, 3}));
    EXPECT_EQ(consumer_ports(0), (slots{1, 0, 0}));
    EXPECT_EQ(dfg_count_consumers(0), 3);
    // The other end of the edges is left alone.
    EXPECT_EQ(driver(3, 1), no_slot);
}

TEST(graph_store, long_consumer_lists_keep_their_order_and_their_links) {
    start_graph();
    dfg_create_node("p", 1, 1);
    dfg_create_node("q", 1, 1);
    constexpr std::int32_t length = 1000;
    slots expected;
    std::vector<const dfg_link*> links;
    for (std::int32_t count = 0; count < length; ++count) {
        const std::int32_t consumer = dfg_create_node("n", 1, 1);
        // Lists that grow side by side do not get in each other's way.
        dfg_add_consumer(count % 3 == 0 ? 1 : 0, consumer, count % 2);
        if (count % 3 != 0) {
            expected.push_back(consumer);
            const dfg_link* last = consumers_of(node_at(0));
            while (last->next != nullptr) {
                last = last->next;
            }
            links.push_back(last);
        }
    }
    EXPECT_EQ(consumers(0), expected);
    EXPECT_EQ(dfg_count_consumers(0) + dfg_count_consumers(1), length);
    for (std::size_t index = 0; index < links.size(); ++index) {
        EXPECT_EQ(links[index]->node, expected[index]);
        EXPECT_EQ(links[index]->port, (expected[index] - 2) % 2);
    }
}

TEST(graph_store, a_node_without_consumers_counts_0) {
    start_graph();
    dfg_create_node("a", 1, 1);
    EXPECT_EQ(dfg_count_consumers(0), 0);
}

TEST(graph_store, a_new_source_replaces_the_old_one) {
    start_graph();
    for (int count = 0; count < 3; ++count) {
        dfg_create_node("n", 2, 1);
    }
    dfg_set_source(2, 1, 0, 0);
    dfg_set_source(2, 1, 1, 0);
    EXPECT_EQ(driver(2, 1), 1);
    EXPECT_EQ(driver(2, 0), no_slot);
    EXPECT_EQ(source_of(node_at(2), 1)->port, 0);
    // No consumer entry is made.
    EXPECT_EQ(dfg_count_consumers(1), 0);
}

TEST(graph_store, connecting_makes_both_ends) {
    start_graph();
    dfg_create_node("a", 1, 1);
    dfg_create_node("+", 2, 1);
    dfg_connect(0, 1, 1);
    EXPECT_EQ(driver(1, 1), 0);
    EXPECT_EQ(consumers(0), slots{1});
    EXPECT_EQ(consumer_ports(0), slots{1});
}

// ---- Splicing ----

/// A producer in slot 0 that feeds three consumers in slots 1 to 3, the second one at its port 1.
void make_three_consumers() {
    start_graph();
    add_node("p", 1, number_format::single_float);
    add_node("x", 1, number_format::single_float);
    add_node("y", 2, number_format::ydouble);
    add_node("z", 1, number_format::long_integer);
    dfg_connect(0, 1, 0);
    dfg_connect(0, 2, 1);
    dfg_connect(0, 3, 0);
    attributes_at(0).fanout = 3;
}

TEST(graph_store, a_spliced_node_takes_the_consumers_place_and_format) {
    make_three_consumers();
    dfg_link& link = *consumers_of(node_at(0))->next;
    const std::int32_t spliced = dfg_splice_node(0, "cast", link, 2, 1);
    EXPECT_EQ(spliced, 4);
    EXPECT_EQ(consumers(0), (slots{1, 4, 3}));
    EXPECT_EQ(consumer_ports(0), (slots{0, 0, 0}));
    EXPECT_EQ(driver(2, 1), 4);
    EXPECT_EQ(source_of(node_at(2), 1)->port, 0);
    EXPECT_EQ(driver(2, 0), no_slot);
    EXPECT_EQ(driver(4), 0);
    EXPECT_EQ(consumers(4), slots{2});
    EXPECT_EQ(consumer_ports(4), slots{1});
}

TEST(graph_store, a_spliced_node_has_the_consumers_format_and_no_other_attribute) {
    make_three_consumers();
    const std::int32_t spliced = dfg_splice_node(0, "norm", *consumers_of(node_at(0))->next, 2, 1);
    const dfg_node& node = node_at(spliced);
    EXPECT_EQ(node.name, "norm");
    EXPECT_EQ(node.input_count, 1);
    EXPECT_EQ(node.output_count, 1);
    EXPECT_EQ(node.attributes.format, number_format::ydouble);
    EXPECT_EQ(row_of(node.attributes.component).name, "");
    EXPECT_EQ(node.attributes.is_normalized, 0);
    EXPECT_EQ(node.attributes.fanout, 0);
    EXPECT_EQ(node.inputs[0].width, 0);
    EXPECT_EQ(attributes_at(0).fanout, 3);
}

TEST(graph_store, every_edge_of_a_producer_can_be_spliced_in_one_walk) {
    make_three_consumers();
    for (dfg_link* link = consumers_of(node_at(0)); link != nullptr; link = link->next) {
        dfg_splice_node(0, "norm", *link, link->node, link->port);
    }
    EXPECT_EQ(consumers(0), (slots{4, 5, 6}));
    EXPECT_EQ(consumers(5), slots{2});
    EXPECT_EQ(driver(3), 6);
}

TEST(graph_store, a_splice_that_needs_more_slots_keeps_its_link_valid) {
    make_three_consumers();
    while (dfg_used_slots() < first_capacity) {
        dfg_create_node("filler", 1, 1);
    }
    const std::int32_t spliced = dfg_splice_node(0, "cast", *consumers_of(node_at(0)), 1, 0);
    EXPECT_EQ(spliced, first_capacity);
    EXPECT_EQ(consumers(0), (slots{first_capacity, 2, 3}));
    EXPECT_EQ(driver(1), first_capacity);
}

TEST(graph_store, splicing_a_stale_edge_rewrites_the_consumers_live_source) {
    start_graph();
    add_node("first", 1);
    add_node("second", 1);
    add_node("t", 1);
    dfg_connect(0, 2, 0);
    dfg_connect(1, 2, 0);
    ASSERT_EQ(driver(2), 1);
    const std::int32_t spliced = dfg_splice_node(0, "cast", *consumers_of(node_at(0)), 2, 0);
    EXPECT_EQ(driver(2), spliced);
    EXPECT_EQ(driver(spliced), 0);
    // The edge from the second producer is stale now.
    EXPECT_EQ(consumers(1), slots{2});
}

// ---- Classes of nodes ----

TEST(graph_store, a_primary_input_has_one_input_without_source_and_literal) {
    start_graph();
    const std::int32_t input = add_node("a", 1);
    const std::int32_t driven = add_node("b", 1);
    const std::int32_t literal = add_node("c", 1);
    const std::int32_t operation = add_node("+", 2);
    dfg_connect(input, driven, 0);
    node_at(literal).inputs[0].is_constant = 1;
    EXPECT_TRUE(is_primary_input(node_at(input)));
    EXPECT_FALSE(is_primary_input(node_at(driven)));
    EXPECT_FALSE(is_primary_input(node_at(literal)));
    EXPECT_FALSE(is_primary_input(node_at(operation)));
    EXPECT_FALSE(is_primary_output(node_at(input)));
    EXPECT_TRUE(is_primary_output(node_at(driven)));
}

TEST(graph_store, clearing_forgets_the_graph) {
    start_graph();
    dfg_create_node("a", 1, 1);
    dfg_create_node("b", 1, 1);
    current = {};
    EXPECT_EQ(current.graph.capacity, 0);
    EXPECT_EQ(dfg_used_slots(), 0);
    dfg_create_graph();
    EXPECT_EQ(dfg_create_node("b", 1, 1), 0);
    EXPECT_EQ(dfg_find_node("b"), 0);
}

}  // namespace

}  // namespace xfc::test
