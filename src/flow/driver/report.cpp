#include "flow/driver/report.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "flow/passes/schedule.h"

namespace xfc::flow {

namespace {

using json = nlohmann::ordered_json;
using operation_counts = std::map<std::pair<operation, number_format>, std::size_t>;

operation_counts count_operations(const graph& values) {
    operation_counts counts;
    for (const value& one : values.values()) {
        if (one.op != operation::input && one.op != operation::constant) {
            // A comparison works in its operands' format.
            const bool compares = row_of(one.op).operands[0] == operand_rule::alike;
            ++counts[{one.op, compares ? values[one.operands[0]].format : one.format}];
        }
    }
    return counts;
}

void append_ports(std::string& text, std::string_view direction, std::span<const port> ports, std::size_t width) {
    for (const port& one : ports) {
        text += "  ";
        text += direction;
        text += one.name + std::string(width - one.name.size() + 2, ' ');
        const std::string_view format = format_name(one.format);
        text += std::string(format) + std::string(9 - format.size(), ' ') + one.c_type + ' ' + one.c_access + '\n';
    }
}

json ports_json(std::span<const port> ports) {
    json list = json::array();
    for (const port& one : ports) {
        list.push_back({{"name", one.name},
                        {"format", format_name(one.format)},
                        {"bits", format_bits(one.format)},
                        {"c_type", one.c_type},
                        {"c_access", one.c_access}});
    }
    return list;
}

json message_json(const diagnostic& message, const source_map& places) {
    json one = {{"severity", severity_name(message.level)}, {"id", message.name}, {"text", message.text}};
    const source_position position = places.position_of(message.where);
    if (position.line != 0) {
        one["file"] = position.file;
        one["line"] = position.line;
        one["column"] = position.column;
    }
    if (!message.hint.empty()) {
        one["hint"] = message.hint;
    }
    if (!message.additions.empty()) {
        one["notes"] = json::array();
        for (const diagnostic& addition : message.additions) {
            one["notes"].push_back(message_json(addition, places));
        }
    }
    return one;
}

}  // namespace

std::string report_text(const program& what, std::int32_t latency, std::string_view source) {
    std::string text = what.name + " of " + std::string(source);
    text += what.style == top_style::function ? ", a function\n\n" : ", a whole file\n\n";
    std::size_t width = 0;
    for (const auto ports : {what.values.inputs(), what.values.outputs()}) {
        for (const port& one : ports) {
            width = std::max(width, one.name.size());
        }
    }
    append_ports(text, "input   ", what.values.inputs(), width);
    append_ports(text, "output  ", what.values.outputs(), width);
    text += "\n  latency " + counted_cycles(latency) + "\n\n";
    const operation_counts counts = count_operations(what.values);
    for (const auto& [kind, count] : counts) {
        const std::string number = std::to_string(count);
        text += std::string(number.size() < 6 ? 6 - number.size() : 0, ' ') + number + ' ';
        text += std::string(row_of(kind.first).name) + ' ' + std::string(format_name(kind.second)) + '\n';
    }
    if (counts.empty()) {
        text += "  no operations\n";
    }
    return text;
}

json messages_json(const diagnostics& messages, const source_map& places) {
    json list = json::array();
    for (const diagnostic& message : messages.messages()) {
        list.push_back(message_json(message, places));
    }
    return list;
}

std::string report_json(const program* what, std::optional<std::int32_t> latency, const diagnostics& messages,
                        const source_map& places, std::string_view source, const std::vector<std::string>& files) {
    json report = {{"source", source}, {"accepted", what != nullptr}};
    if (what != nullptr) {
        report["name"] = what->name;
        report["style"] = what->style == top_style::function ? "function" : "whole file";
        report["inputs"] = ports_json(what->values.inputs());
        report["outputs"] = ports_json(what->values.outputs());
        report["latency"] = latency.value_or(0);
        report["operations"] = json::array();
        for (const auto& [kind, count] : count_operations(what->values)) {
            report["operations"].push_back(
                {{"operation", row_of(kind.first).name}, {"format", format_name(kind.second)}, {"count", count}});
        }
    }
    if (!files.empty()) {
        report["files"] = files;
    }
    report["messages"] = messages_json(messages, places);
    return report.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
}

}  // namespace xfc::flow
