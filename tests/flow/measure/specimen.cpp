#include "flow/measure/specimen.h"

#include <algorithm>

#include "flow/passes/constants.h"
#include "flow/passes/options.h"

namespace xfc::flow::test {

namespace {

/// The format in which a constant of a coding is known.
number_format format_of(coding code) {
    switch (row_of(code).form) {
        case bus_form::long_integer:
            return number_format::integer;
        case bus_form::single_float:
        case bus_form::xfloat:
            return number_format::single_float;
        case bus_form::double_float:
        case bus_form::ydouble:
        case bus_form::ydouble_multiplier:
            return number_format::double_float;
        case bus_form::none:
            break;
    }
    return number_format::boolean;
}

/// A number from 1 to 2 whose product in `code` has so many rows; the first that is drawn.
bus_bits constant_with(coding code, std::int32_t digits, std::int32_t mantissa_bits) {
    const number_format format = format_of(code);
    const bool is_integer = format == number_format::integer;
    const std::int32_t fraction = format == number_format::double_float ? 52 : 23;
    const bit_range mantissa = layout_of(code, mantissa_bits).mantissa;
    std::uint64_t state = 20240229;
    for (;;) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        // Digits stand in the high bits, as those of short decimal numbers.
        const std::int32_t kept = std::min(is_integer ? 31 : fraction, std::max(0, digits * 3 - 2));
        const std::uint64_t random = (state >> 8U) & static_cast<std::uint64_t>(low_ones(is_integer ? 31 : fraction));
        const std::uint64_t drawn = is_integer ? random >> static_cast<unsigned>(31 - kept)
                                               : random & ~static_cast<std::uint64_t>(low_ones(fraction - kept));
        const std::uint64_t exponent = format == number_format::double_float ? 1023 : 127;
        const std::uint64_t bits = is_integer ? drawn : (exponent << static_cast<unsigned>(fraction)) | drawn;
        const bus_bits coded = encoded_constant(format, bits, code, mantissa_bits);
        const std::int32_t has =
            is_integer ? rows_of_product(coded, 32) : rows_of_product(field(coded, mantissa), mantissa.width());
        if (has == digits) {
            return coded;
        }
    }
}

/// A constant that is like most: 0.7, a shift by 5, a mask of many bits, true.
bus_bits usual_constant(coding code, component_id reader, std::int32_t mantissa_bits) {
    switch (format_of(code)) {
        case number_format::integer:
            return row_of(reader).operation == component_operation::shift ? 5 : 0x5A3C96;
        case number_format::single_float:
            return encoded_constant(number_format::single_float, 0x3F333333, code, mantissa_bits);
        case number_format::double_float:
            return encoded_constant(number_format::double_float, 0x3FE6666666666666, code, mantissa_bits);
        case number_format::boolean:
            break;
    }
    return 1;
}

class specimen_maker {
public:
    explicit specimen_maker(const cost_key& key) : key_(key) {
        made_.options = default_library_options(false, key.generics.mantissa);
    }

    specimen run(const std::string& name) {
        const component_row& row = row_of(key_.component);
        design_node node{.subtract = key_.subtract, .component = key_.component};
        node.setting = &made_.settings->find_or_make(key_.component, key_.generics);
        for (std::size_t place = 0; place < most_operands; ++place) {
            if (key_.operands.at(place).kind != operand_kind::none) {
                node.operands.at(place) = operand(place, reads(place));
            }
        }
        const bool selects = row.operation == component_operation::select;
        node.code = selects ? reads(0) : result_coding(key_.component, key_.generics);
        if (key_.beside_opposite) {
            add_opposite(node);
        }
        const node_id last = append(node);
        made_.outputs.push_back(last);
        values_.add_output({.name = "y", .format = format_of(node.code), .value = some_value_});
        for (node_id id = 0; id < made_.size(); ++id) {
            times_.start[id] = made_[id].kind == node_kind::input && feeds(id, last) ? conversion_cycles_ : 0;
        }
        times_.start[last] = conversion_cycles_;
        for (node_id id = 0; id < last; ++id) {
            if (key_.beside_opposite && id == made_.outputs.front()) {
                times_.start[id] = conversion_cycles_;
            } else if (made_[id].kind == node_kind::instance) {  // all ready in the same cycle
                const std::int32_t start = conversion_cycles_ - made_[id].latency();
                times_.start[id] = start;
                times_.start[made_[id].operands[0]] = start;
            }
        }
        times_.latency = std::max(1, conversion_cycles_ + made_[last].latency());
        specimen result;
        // A result of no cycles comes with the chain's only one.
        times_.start[last] = times_.latency - made_[last].latency();
        const auto names = std::make_shared<const design_names>(names_of(values_, name, made_, places_));
        text_ = make_datapath(values_, made_, times_, names, places_, {});
        result.drivers = drivers_;
        result.chain = times_.latency;
        return result;
    }

    [[nodiscard]] const datapath& text() const { return text_; }

private:
    /// The instance beside which this one is counted, with an output of its own.
    void add_opposite(design_node node) {
        if (row_of(node.component).operation == component_operation::extreme) {
            component_generics generics = node.generics();
            generics.greatest = 1 - generics.greatest;
            node.setting = &made_.settings->find_or_make(node.component, generics);
        } else {
            node.subtract = !node.subtract;
        }
        const node_id opposite = append(node);
        made_.outputs.push_back(opposite);
        values_.add_output({.name = "opposite", .format = format_of(node.code), .value = some_value_});
        drivers_.push_back(key_of(made_, opposite));
    }

    coding reads(std::size_t place) const {
        if (row_of(key_.component).operation != component_operation::select) {
            return operand_coding(key_.component, place);
        }
        constexpr coding of_widths[] = {coding::boolean, coding::integer, coding::double_ieee};
        const std::int32_t width = key_.generics.width;
        return place == 2 ? coding::boolean : of_widths[width == 1 ? 0 : width == 32 ? 1 : 2];
    }

    bool feeds(node_id id, node_id reader) const {
        const auto operands = made_[reader].operand_span();
        return std::find(operands.begin(), operands.end(), id) != operands.end();
    }

    node_id append(design_node node) {
        node.value = node.kind == node_kind::input ? node.value : some_value_;
        made_.nodes.push_back(node);
        times_.start.push_back(0);
        return made_.size() - 1;
    }

    node_id input(coding code) {
        const auto number = static_cast<std::uint32_t>(values_.inputs().size());
        some_value_ = values_.add_input({.name = "x" + std::to_string(number), .format = format_of(code)});
        return append({.kind = node_kind::input, .code = code, .port = number, .value = some_value_});
    }

    node_id operand(std::size_t place, coding code) {
        const operand_class& wanted = key_.operands.at(place);
        switch (wanted.kind) {
            case operand_kind::constant: {
                const bus_bits bits = wanted.digits == operand_class::uncounted
                                          ? usual_constant(code, key_.component, made_.options.mantissa)
                                      : wanted.digits == 0
                                          ? encoded_constant(format_of(code), 0, code, made_.options.mantissa)
                                          : constant_with(code, wanted.digits, made_.options.mantissa);
                if (values_.inputs().empty()) {
                    some_value_ = values_.add_input({.name = "unread", .format = number_format::boolean});
                    append({.kind = node_kind::input, .code = coding::boolean, .port = 0, .value = some_value_});
                }
                return append({.kind = node_kind::constant, .code = code, .bits = bits});
            }
            case operand_kind::same:
                return 0;
            case operand_kind::converted:
                return converted(wanted.from, code);
            default:
                return input(code);
        }
    }

    node_id converted(component_id by, coding code) {
        design_node node{.component = by};
        node.code = code;
        node.operands[0] = input(operand_coding(by, 0));
        component_generics generics;
        static_cast<library_options&>(generics) = made_.options;
        while (result_coding(by, generics) != code) {
            ++generics.output_select;
        }
        node.setting = &made_.settings->find_or_make(by, generics);
        const node_id id = append(node);
        drivers_.push_back(key_of(made_, id));
        conversion_cycles_ = std::max(conversion_cycles_, made_[id].latency());
        return id;
    }

    const cost_key& key_;
    graph values_;
    design made_;
    schedule times_;
    const source_map places_;
    datapath text_;
    std::vector<cost_key> drivers_;
    value_id some_value_ = no_value;
    std::int32_t conversion_cycles_ = 0;
};

}  // namespace

specimen specimen_of(const cost_key& key, const std::string& name) {
    const auto maker = std::make_shared<specimen_maker>(key);
    specimen result = maker->run(name);
    result.text = {maker, &maker->text()};  // it is told from what the maker has
    return result;
}

}  // namespace xfc::flow::test
