#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// What the attribute passes may write on a node, as one comparable value.

namespace xfc::test {

struct node_record {
    std::string component;
    std::int32_t latency = 0;
    std::int32_t ready_time = 0;
    std::vector<std::int32_t> input_widths;
    std::int32_t output_width = 0;
    std::int32_t output_select = 0;
    std::int32_t input_select = 0;

    bool operator==(const node_record&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const node_record& record) {
    stream << '"' << record.component << "\" latency " << record.latency << " ready " << record.ready_time << " inputs";
    for (const std::int32_t width : record.input_widths) {
        stream << ' ' << width;
    }
    return stream << " output " << record.output_width << " output_select " << record.output_select << " input_select "
                  << record.input_select;
}

inline node_record record_of(std::int32_t slot) {
    const dfg_node& node = node_at(slot);
    node_record record{.component = std::string(row_of(node.attributes.component).name),
                       .latency = node.attributes.latency,
                       .ready_time = node.attributes.ready_time,
                       .input_widths = {},
                       .output_width = node.outputs[0].width,
                       .output_select = node.bus_modes.output_select,
                       .input_select = node.bus_modes.input_select};
    for (std::int32_t port = 0; port < node.input_count; ++port) {
        record.input_widths.push_back(node.inputs[port].width);
    }
    return record;
}

/// Gives every field a value that no pass writes, and the node that component; returns what was put in.
inline node_record put_sentinels(std::int32_t slot, std::string_view component) {
    dfg_node& node = node_at(slot);
    node.attributes.component = component_named(component);
    node.attributes.latency = 1001;
    node.attributes.ready_time = 1002;
    for (std::int32_t port = 0; port < node.input_count; ++port) {
        node.inputs[port].width = 1010 + port;
    }
    node.outputs[0].width = 1020;
    node.bus_modes.output_select = 1030;
    node.bus_modes.input_select = 1031;
    return record_of(slot);
}

/// Values that one option takes in a test.
using option_range = std::pair<std::int32_t compile_option_record::*, std::vector<std::int32_t>>;

/// Calls `action` with every combination of the values.
inline void for_each_combination(const std::vector<option_range>& ranges, const std::function<void()>& action,
                                 std::size_t first = 0) {
    if (first == ranges.size()) {
        action();
        return;
    }
    for (const std::int32_t value : ranges[first].second) {
        current.options.*ranges[first].first = value;
        for_each_combination(ranges, action, first + 1);
    }
}

}  // namespace xfc::test
