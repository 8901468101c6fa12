#include "exact/reference/optimizer/reference_graph.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/console.h"

namespace xfc::reference {

namespace {

bool have_same_driver(std::int32_t left, std::int32_t right) {
    const dfg_source* left_source = source(left, 0);
    const dfg_source* right_source = source(right, 0);
    return left_source != nullptr && right_source != nullptr && left_source->node == right_source->node;
}

std::string_view first_consumer_name(std::int32_t slot) {
    return first_consumer(slot) == nullptr ? std::string_view{} : name_of(first_consumer(slot)->node);
}

void merge(std::int32_t merged, std::int32_t kept, bool conversion) {
    write_format(standard_output, "  Replace %ld with %ld  ", merged, kept);
    attributes_at(merged).is_removed = 1;
    const std::int32_t consumer = first_consumer(merged)->node;
    const std::int32_t port = first_consumer(merged)->port;
    dfg_set_source(consumer, port, kept, 0);
    if (conversion) {
        write_format(standard_output, "Connect %ld,%ld to %ld  \n", consumer, port, kept);
    } else {
        write_format(standard_output, "Connect %ld to %ld  \n", consumer, kept);
    }
    dfg_add_consumer(kept, consumer, port);
}

/// Calls `action` with every node behind `first`.
template <class function>
void for_each_later_node(std::int32_t first, function action) {
    for_each_node([&](std::int32_t slot) {
        if (slot > first && first_consumer(slot) != nullptr) {
            action(slot);
        }
    });
}

void merge_conversions() {
    for_each_node([](std::int32_t kept) {
        if (name_of(kept) != "cast" || attributes_at(kept).is_removed != 0) {
            return;
        }
        for_each_later_node(kept, [kept](std::int32_t slot) {
            if (component_of(slot) != component_of(kept) || !have_same_driver(slot, kept) ||
                attributes_at(slot).is_removed != 0) {
                return;
            }
            const std::string_view format = format_of(kept);
            const bool internal = format == "XFloat" || format == "YDouble";
            const bool ieee = format == "Float" || format == "Double";
            const bool alike =
                first_consumer(kept) != nullptr && first_consumer_name(kept) == first_consumer_name(slot);
            if (ieee || (internal && alike)) {
                merge(slot, kept, true);
            }
        });
    });
}

void merge_normalizers() {
    for_each_node([](std::int32_t kept) {
        const std::string_view component = component_of(kept).substr(0, 19);
        if ((component != "xfc_normfp1x" && component != "xfc_normfp2x") || attributes_at(kept).is_removed != 0) {
            return;
        }
        for_each_later_node(kept, [kept](std::int32_t slot) {
            if (component_of(slot) == component_of(kept) && have_same_driver(slot, kept) &&
                node_at(slot).bus_modes.output_select == node_at(kept).bus_modes.output_select &&
                attributes_at(kept).is_removed == 0) {
                merge(slot, kept, false);
            }
        });
    });
}

void merge_delays() {
    for_each_node([](std::int32_t kept) {
        if (name_of(kept) != "delay" || attributes_at(kept).is_removed != 0) {
            return;
        }
        for_each_later_node(kept, [kept](std::int32_t slot) {
            if (name_of(slot) == "delay" && have_same_driver(slot, kept) &&
                attributes_at(slot).latency == attributes_at(kept).latency &&
                node_at(slot).outputs[0].width == node_at(kept).outputs[0].width &&
                attributes_at(slot).is_removed == 0) {
                merge(slot, kept, false);
            }
        });
    });
}

}  // namespace

void remove_redundant_nodes() {
    merge_conversions();
    merge_normalizers();
    merge_delays();
}

void assign_remaining_bus_attributes() {
    for_each_node([](std::int32_t slot) {
        if (!is_input(slot) && first_consumer(slot) != nullptr) {
            return;
        }
        const std::string_view format = format_of(slot);
        if (format != "Float" && format != "Double" && format != "Long") {
            fail(message_id::unsupported_io_type);
        }
        const std::int32_t width = format == "Double" ? 64 : 32;
        node_at(slot).inputs[0].width = width;
        node_at(slot).outputs[0].width = width;
    });
    bool changed = false;
    do {
        changed = false;
        for_each_node([&changed](std::int32_t slot) {
            dfg_node& node = node_at(slot);
            if ((node.inputs[0].width != 0 && node.outputs[0].width != 0) || source(slot, 0) == nullptr) {
                return;
            }
            const std::int32_t width = node_at(source(slot, 0)->node).outputs[0].width;
            if (width != 0) {
                node.inputs[0].width = width;
                node.outputs[0].width = width;
                changed = true;
            }
        });
    } while (changed);
}

}  // namespace xfc::reference
