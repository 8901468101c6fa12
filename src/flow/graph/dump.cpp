#include "flow/graph/dump.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace xfc::flow {

namespace {

template <class number>
std::string shortest_text(number what) {
    if (std::isnan(what)) {
        return "nan";
    }
    if (std::isinf(what)) {
        return what < 0 ? "-inf" : "inf";
    }
    std::array<char, 64> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), what);
    return {text.data(), end.ptr};
}

std::string value_name(value_id id) { return "%" + std::to_string(id); }

}  // namespace

std::string constant_text(const graph& source, value_id id) {
    const value& one = source[id];
    switch (one.format) {
        case number_format::boolean:
            return one.operands[0] != 0 ? "true" : "false";
        case number_format::integer:
            return std::to_string(static_cast<std::int32_t>(one.operands[0]));
        case number_format::single_float:
            return shortest_text(source.single_of(id));
        case number_format::double_float:
            return shortest_text(source.double_of(id));
    }
    return {};
}

std::string dump(const graph& source, const source_map* places) {
    std::string text;
    for (value_id id = 0; id < source.size(); ++id) {
        const value& one = source[id];
        text += value_name(id) + " = ";
        text += row_of(one.op).name;
        text += ' ';
        text += format_name(one.format);
        if (one.op == operation::input) {
            text += ' ' + source.inputs()[one.port()].name;
        } else if (one.op == operation::constant) {
            text += ' ' + constant_text(source, id);
        }
        for (const value_id operand : one.operand_span()) {
            text += ' ' + value_name(operand);
        }
        if (places != nullptr && one.where.is_known()) {
            text += " ; " + places->place_text(one.where);
        }
        text += '\n';
    }
    for (const port& output : source.outputs()) {
        text += "output ";
        text += format_name(output.format);
        text += ' ' + output.name + " = " + value_name(output.value) + '\n';
    }
    return text;
}

}  // namespace xfc::flow
