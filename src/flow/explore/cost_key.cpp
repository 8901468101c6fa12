#include "flow/explore/cost_key.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <sstream>
#include <tuple>

namespace xfc::flow {

namespace {

constexpr std::string_view any_text = "any";
constexpr std::string_view constant_text = "constant";
constexpr std::string_view same_text = "same";
constexpr std::string_view minus_text = "minus";
constexpr std::string_view beside_text = "beside";

/// Conversions that deliver a number of fewer bits than its form has, so that readers shrink.
bool narrows(const design& made, node_id id) {
    const design_node& node = made[id];
    if (node.kind != node_kind::instance || row_of(node.component).operation != component_operation::convert) {
        return false;
    }
    switch (made[node.operands[0]].code) {
        case coding::single_ieee:
        case coding::double_ieee:
        case coding::integer:
            return row_of(node.code).form == bus_form::xfloat || row_of(node.code).form == bus_form::ydouble ||
                   row_of(node.code).form == bus_form::ydouble_multiplier;
        default:
            return false;
    }
}

operand_class class_of(const design& made, const design_node& reader, std::size_t place) {
    if (place >= reader.operand_span().size()) {
        return {};
    }
    const node_id operand = reader.operands.at(place);
    const design_node& driver = made[operand];
    if (driver.kind == node_kind::constant) {
        const bit_range mantissa = layout_of(driver.code, made.options.mantissa).mantissa;
        const std::int32_t digits = mantissa.high == 0
                                        ? rows_of_product(driver.bits, made.width_of(operand))
                                        : rows_of_product(field(driver.bits, mantissa), mantissa.width());
        operand_class constant{.kind = operand_kind::constant};
        constant.digits = digits == 0 || counts_digits(reader.component) ? digits : operand_class::uncounted;
        return constant;
    }
    if (place == 1 && operand == reader.operands[0]) {
        return {.kind = operand_kind::same};
    }
    return narrows(made, operand) ? operand_class{.kind = operand_kind::converted, .from = driver.component}
                                  : operand_class{.kind = operand_kind::any};
}

const component_row* row_named(std::string_view name) {
    const auto all = all_components();
    const auto found = std::find_if(all.begin(), all.end(), [&](const component_row& row) { return row.name == name; });
    return found == all.end() ? nullptr : &*found;
}

bool read_number(std::string_view text, std::int32_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

/// "mantissa=32"; false when the component has no such generic.
bool read_generic(std::string_view word, const component_row& row, component_generics& generics) {
    const std::size_t equals = word.find('=');
    std::int32_t value = 0;
    if (equals == std::string_view::npos || !read_number(word.substr(equals + 1), value)) {
        return false;
    }
    for (const generic_row& generic : row.generics) {
        if (generic.name == word.substr(0, equals)) {
            if (generic.flag == generic_row::no_flag) {
                generics.*generic.field = value;
            } else if (value == 1) {
                generics.*generic.field = generic.flag;
            }
            return true;
        }
    }
    return false;
}

bool read_operand(std::string_view word, operand_class& operand) {
    if (word == any_text) {
        operand.kind = operand_kind::any;
    } else if (word == same_text) {
        operand.kind = operand_kind::same;
    } else if (word.substr(0, constant_text.size()) == constant_text) {
        operand.kind = operand_kind::constant;
        word.remove_prefix(constant_text.size());
        return word.empty() || (word[0] == ':' && read_number(word.substr(1), operand.digits));
    } else if (const component_row* row = row_named(word)) {
        operand = {.kind = operand_kind::converted, .from = row->id};
    } else {
        return false;
    }
    return true;
}

std::string text_of(const operand_class& operand) {
    switch (operand.kind) {
        case operand_kind::any:
            return std::string(any_text);
        case operand_kind::same:
            return std::string(same_text);
        case operand_kind::constant:
            return std::string(constant_text) +
                   (operand.digits == operand_class::uncounted ? "" : ":" + std::to_string(operand.digits));
        case operand_kind::converted:
            return std::string(row_of(operand.from).name);
        case operand_kind::none:
            break;
    }
    return {};
}

}  // namespace

bool counts_digits(component_id component) { return row_of(component).operation == component_operation::multiply; }

std::int32_t rows_of_product(bus_bits number, std::int32_t width) {
    std::vector<std::int32_t> digits;
    std::int32_t carry = 0;
    for (std::int32_t place = 0; place < width; place += 2) {
        const auto pair = static_cast<std::int32_t>(slice(number, std::min(place + 1, width - 1), place)) + carry;
        digits.push_back(pair > 2 ? pair - 4 : pair);
        carry = pair > 2 ? 1 : 0;
    }
    // Each stretch that two parts make, by its digits.
    std::set<std::vector<std::int32_t>> sums;
    const auto is_zero = [](const std::vector<std::int32_t>& part) {
        return std::all_of(part.begin(), part.end(), [](std::int32_t digit) { return digit == 0; });
    };
    std::vector<std::vector<std::int32_t>> parts;
    parts.reserve(digits.size());
    for (const std::int32_t digit : digits) {
        parts.push_back({digit});
    }
    while (parts.size() > 1) {
        std::vector<std::vector<std::int32_t>> joined;
        for (std::size_t place = 0; place < parts.size(); place += 2) {
            joined.push_back(parts[place]);
            if (place + 1 < parts.size()) {
                joined.back().insert(joined.back().end(), parts[place + 1].begin(), parts[place + 1].end());
                if (!is_zero(parts[place]) && !is_zero(parts[place + 1])) {
                    sums.insert(joined.back());
                }
            }
        }
        parts = std::move(joined);
    }
    return is_zero(parts.front()) ? 0 : 1 + static_cast<std::int32_t>(sums.size());
}

cost_key key_of(const design& made, node_id id) {
    const design_node& node = made[id];
    cost_key key{.component = node.component, .subtract = node.subtract};
    for (const generic_row& generic : row_of(node.component).generics) {
        const std::int32_t value = node.generics().*generic.field;
        key.generics.*generic.field = generic.capped ? std::min(value, generic.high) : value;
    }
    for (std::size_t place = 0; place < most_operands; ++place) {
        key.operands.at(place) = class_of(made, node, place);
    }
    return key;
}

std::vector<cost_key> keys_of(const design& made, const schedule& times) {
    std::vector<cost_key> keys(made.size());
    std::set<std::tuple<component_id, std::int32_t, node_id, node_id>> seen;
    for (node_id id = 0; id < made.size(); ++id) {
        const design_node& node = made[id];
        if (node.kind != node_kind::instance) {
            continue;
        }
        keys[id] = key_of(made, id);
        const component_operation operation = row_of(node.component).operation;
        if (operation == component_operation::extreme || operation == component_operation::add_or_subtract) {
            keys[id].beside_opposite =
                !seen.emplace(node.component, times.start[id], node.operands[0], node.operands[1]).second;
        }
    }
    return keys;
}

cost_key without_operands(cost_key key) {
    key.subtract = false;
    key.beside_opposite = false;
    for (operand_class& operand : key.operands) {
        operand = {.kind = operand.kind == operand_kind::none ? operand_kind::none : operand_kind::any};
    }
    return key;
}

std::string text_of(const cost_key& key) {
    const component_row& row = row_of(key.component);
    std::string text(row.name);
    for (const generic_row& generic : row.generics) {
        text += " " + std::string(generic.name) + "=" + std::to_string(generic_value(generic, key.generics));
    }
    text += " |";
    for (const operand_class& operand : key.operands) {
        text += operand.kind == operand_kind::none ? "" : " " + text_of(operand);
    }
    for (const auto& [holds, word] : {std::pair{key.subtract, minus_text}, {key.beside_opposite, beside_text}}) {
        text.append(holds ? " " : "").append(holds ? word : "");
    }
    return text;
}

std::optional<cost_key> key_of_text(std::string_view text) {
    std::istringstream words{std::string(text)};
    std::string word;
    words >> word;
    const component_row* row = row_named(word);
    if (row == nullptr) {
        return std::nullopt;
    }
    cost_key key{.component = row->id};
    while (words >> word && word != "|") {
        if (!read_generic(word, *row, key.generics)) {
            return std::nullopt;
        }
    }
    for (std::size_t place = 0; words >> word;) {
        if (word == minus_text) {
            key.subtract = true;
        } else if (word == beside_text) {
            key.beside_opposite = true;
        } else if (place == most_operands || !read_operand(word, key.operands.at(place++))) {
            return std::nullopt;
        }
    }
    return key;
}

}  // namespace xfc::flow
