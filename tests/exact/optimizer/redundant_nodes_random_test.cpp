#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "exact/optimizer/optimizer.h"
#include "exact/support/compile.h"

// Merging keeps nodes in classes. Here it is held against the plain version, which compares every pair of nodes.

namespace xfc::test {

namespace {

std::int32_t driver_of(std::int32_t slot) { return driver(slot, 0); }

std::string_view first_consumer_name(std::int32_t slot) { return node_at(consumers(slot)[0]).name; }

bool may_be_merged(std::int32_t kept, std::int32_t merged) {
    return driver_of(kept) != no_slot && driver_of(kept) == driver_of(merged) && !consumers(merged).empty();
}

std::string merge_plainly_into(std::int32_t kept, std::int32_t merged, bool prints_port) {
    attributes_at(merged).is_removed = 1;
    const dfg_link consumer = *consumers_of(node_at(merged));
    dfg_set_source(consumer.node, consumer.port, kept, 0);
    dfg_add_consumer(kept, consumer.node, consumer.port);
    const std::string port = prints_port ? "," + std::to_string(consumer.port) : "";
    return "  Replace " + std::to_string(merged) + " with " + std::to_string(kept) + "  Connect " +
           std::to_string(consumer.node) + port + " to " + std::to_string(kept) + "  \n";
}

std::string merge_plainly() {
    std::string text;
    const std::int32_t count = dfg_used_slots();
    for (std::int32_t a = 0; a < count; ++a) {
        if (node_at(a).name != "cast" || attributes_at(a).is_removed != 0) {
            continue;
        }
        for (std::int32_t b = a + 1; b < count; ++b) {
            const number_format format = attributes_at(a).format;
            const bool internal = format == number_format::xfloat || format == number_format::ydouble;
            const bool ieee = format == number_format::single_float || format == number_format::double_float;
            if (attributes_at(b).component == attributes_at(a).component && may_be_merged(a, b) &&
                attributes_at(b).is_removed == 0 &&
                (ieee || (internal && !consumers(a).empty() && first_consumer_name(a) == first_consumer_name(b)))) {
                text += merge_plainly_into(a, b, true);
            }
        }
    }
    for (std::int32_t a = 0; a < count; ++a) {
        const std::string_view component = component_name(a);
        if (component != "xfc_normfp1x" && component != "xfc_normfp2x") {
            continue;
        }
        for (std::int32_t b = a + 1; b < count; ++b) {
            if (attributes_at(a).is_removed == 0 && attributes_at(b).component == attributes_at(a).component &&
                may_be_merged(a, b) && node_at(a).bus_modes.output_select == node_at(b).bus_modes.output_select) {
                text += merge_plainly_into(a, b, false);
            }
        }
    }
    for (std::int32_t a = 0; a < count; ++a) {
        if (node_at(a).name != "delay" || attributes_at(a).is_removed != 0) {
            continue;
        }
        for (std::int32_t b = a + 1; b < count; ++b) {
            if (node_at(b).name == "delay" && may_be_merged(a, b) && attributes_at(b).is_removed == 0 &&
                attributes_at(a).latency == attributes_at(b).latency &&
                node_at(a).outputs[0].width == node_at(b).outputs[0].width) {
                text += merge_plainly_into(a, b, false);
            }
        }
    }
    return text;
}

/// A graph of few kinds, so that many nodes are equal; the same number gives the same graph.
void build_random_graph(std::uint32_t number) {
    std::mt19937 random(number);
    const auto below = [&random](std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
    };
    struct kind {
        std::string_view name;
        number_format format;
        std::string_view component;
    };
    const std::vector<kind> kinds{
        {"cast", number_format::xfloat, "xfc_castftox"},
        {"cast", number_format::single_float, "xfc_castxtof"},
        {"cast", number_format::long_integer, "xfc_castftol"},
        {"norm", number_format::xfloat, "xfc_normfp1x"},
        {"norm", number_format::ydouble, "xfc_normfp2x"},
        {"delay", number_format::xfloat, "xfc_delay"},
        {"t", number_format::single_float, ""},
        {"cast", number_format::single_float, ""},
    };
    start_graph();
    const std::int32_t count = 5 + below(45);
    for (std::int32_t slot = 0; slot < count; ++slot) {
        if (below(4) == 0) {
            add_node(below(2) == 0 ? "+" : "*", 2, number_format::xfloat);
            continue;
        }
        // Every second graph holds normalizers only, which can be merged more than once.
        const kind& chosen = kinds[static_cast<std::size_t>(number % 2 == 0 ? below(8) : 3)];
        add_node(chosen.name, 1, chosen.format, chosen.component);
        attributes_at(slot).latency = 1 + below(2);
        node_at(slot).outputs[0].width = below(6) == 0 ? 32 : 45;
        node_at(slot).bus_modes.output_select = below(5) == 0 ? 1 : 0;
    }
    // Drivers are mostly two low slots, some stand in any other; an order of levels keeps the graph without cycles.
    std::vector<std::int32_t> levels;
    for (std::int32_t slot = 0; slot < count; ++slot) {
        levels.push_back(slot < 2 ? 0 : 1 + below(4));
    }
    for (std::int32_t slot = 0; slot < count; ++slot) {
        for (std::int32_t port = 0; port < node_at(slot).input_count; ++port) {
            for (int tries = 0; tries < 6; ++tries) {
                const std::int32_t producer = below(below(3) == 0 ? count : 2);
                if (levels[static_cast<std::size_t>(producer)] < levels[static_cast<std::size_t>(slot)]) {
                    dfg_connect(producer, slot, port);
                    // Now and then a second try makes the first edge stale.
                    const bool may_be_assigned_twice = node_at(slot).name == "t" || node_at(slot).input_count == 2;
                    if (!may_be_assigned_twice || below(8) != 0) {
                        break;
                    }
                }
            }
        }
    }
}

TEST(redundant_nodes_random, merges_and_lines_are_those_of_the_plain_version) {
    std::size_t merges = 0;
    std::size_t merged_twice = 0;
    for (std::uint32_t number = 1; number <= 1500; ++number) {
        build_random_graph(number);
        const std::string lines = catch_output(remove_redundant_nodes).standard_output;
        std::vector<std::vector<std::int32_t>> merged;
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            merged.push_back(consumers(slot));
            merged.back().push_back(attributes_at(slot).is_removed);
            merged.back().push_back(driver(slot, 0));
            merged.back().push_back(driver(slot, 1));
        }
        build_random_graph(number);
        const std::string plain_lines = merge_plainly();
        ASSERT_EQ(lines, plain_lines) << "graph " << number;
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            std::vector<std::int32_t> plain = consumers(slot);
            plain.push_back(attributes_at(slot).is_removed);
            plain.push_back(driver(slot, 0));
            plain.push_back(driver(slot, 1));
            ASSERT_EQ(merged[static_cast<std::size_t>(slot)], plain) << "graph " << number << " slot " << slot;
        }
        const auto printed = static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
        std::size_t removed = 0;
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            removed += static_cast<std::size_t>(attributes_at(slot).is_removed);
        }
        merges += printed;
        merged_twice += printed - removed;
    }
    EXPECT_GT(merges, 2000U) << "the graphs hold too little to merge";
    EXPECT_GT(merged_twice, 10U) << "no normalizer is merged twice";
}

}  // namespace

}  // namespace xfc::test
