#include "flow/passes/select_components.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

#include "flow/passes/constants.h"

namespace xfc::flow {

namespace {

/// A set of codings, one bit each.
using coding_set = std::uint32_t;

constexpr coding_set set_of(coding what) { return 1U << static_cast<unsigned>(what); }

/// The component of an operation in a format of its result.
struct selection_row {
    operation op;
    number_format format;
    component_id component;
};

constexpr selection_row selections[] = {
    {operation::add, number_format::integer, component_id::alulong},
    {operation::subtract, number_format::integer, component_id::alulong},
    {operation::multiply, number_format::integer, component_id::mullong},

    {operation::add, number_format::single_float, component_id::alufp1x},
    {operation::subtract, number_format::single_float, component_id::alufp1x},
    {operation::multiply, number_format::single_float, component_id::mulfp1x},
    {operation::divide, number_format::single_float, component_id::divfp1x},
    {operation::square_root, number_format::single_float, component_id::fp_sqr},
    {operation::inverse, number_format::single_float, component_id::fp_inv},
    {operation::inverse_square_root, number_format::single_float, component_id::fp_invsqr},
    {operation::exponential, number_format::single_float, component_id::fp_exp},
    {operation::logarithm, number_format::single_float, component_id::fp_log},
    {operation::scale, number_format::single_float, component_id::fp_ldexp},
    {operation::absolute, number_format::single_float, component_id::fp_fabs},
    {operation::negate, number_format::single_float, component_id::fp_neg},

    {operation::add, number_format::double_float, component_id::alufp2x},
    {operation::subtract, number_format::double_float, component_id::alufp2x},
    {operation::multiply, number_format::double_float, component_id::mulfp2x},
    {operation::divide, number_format::double_float, component_id::divfp2x},
    {operation::square_root, number_format::double_float, component_id::dp_sqr},
    {operation::inverse, number_format::double_float, component_id::dp_inv},
    {operation::inverse_square_root, number_format::double_float, component_id::dp_invsqr},
    {operation::exponential, number_format::double_float, component_id::dp_exp},
    {operation::logarithm, number_format::double_float, component_id::dp_log},
    {operation::scale, number_format::double_float, component_id::dp_ldexp},
    {operation::absolute, number_format::double_float, component_id::dp_fabs},
    {operation::negate, number_format::double_float, component_id::dp_neg},
};

/// The component of an operation; `wire` for none.
component_id component_for(operation op, number_format format) {
    const auto* found = std::find_if(std::begin(selections), std::end(selections),
                                     [&](const selection_row& row) { return row.op == op && row.format == format; });
    return found == std::end(selections) ? component_id::wire : found->component;
}

constexpr coding ieee_coding(number_format format) {
    switch (format) {
        case number_format::single_float:
            return coding::single_ieee;
        case number_format::double_float:
            return coding::double_ieee;
        default:
            return coding::integer;
    }
}

bool has_selector(component_id component) {
    const port_shape shape = row_of(component).cc;
    return shape == port_shape::single_by_selector || shape == port_shape::double_by_selector;
}

class component_selection {
public:
    component_selection(const graph& source, const library_options& options, diagnostics& messages)
        : source_(source), messages_(messages), asked_(source.size(), 0), native_(source.size(), no_node) {
        made_.options = options;
    }

    std::optional<design> run() {
        collect_demands();
        if (refused_) {
            return std::nullopt;
        }
        make_inputs();
        for (value_id id = 0; id < source_.size(); ++id) {
            make_native(id);
        }
        for (const port& output : source_.outputs()) {
            made_.outputs.push_back(provided(output.value, ieee_coding(output.format)));
        }
        return refused_ ? std::nullopt : std::optional(std::move(made_));
    }

private:
    // ---- What is asked for, from the outputs to the inputs ----

    void collect_demands() {
        for (const port& output : source_.outputs()) {
            ask(output.value, ieee_coding(output.format));
        }
        for (value_id id = source_.size(); id-- > 0;) {
            const value& one = source_[id];
            if (asked_[id] == 0 || one.op == operation::input || one.op == operation::constant) {
                continue;
            }
            if (one.op == operation::convert) {
                collect_demands_of_conversion(id);
                continue;
            }
            const component_id component = component_for(one.op, one.format);
            if (component == component_id::wire) {
                refuse(one);
                continue;
            }
            for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
                ask(one.operands.at(place), operand_coding(component, place));
            }
        }
    }

    void collect_demands_of_conversion(value_id id) {
        const value& one = source_[id];
        if (source_[one.operands[0]].format == number_format::boolean || one.format == number_format::boolean) {
            refuse(one);
            return;
        }
        for (int code = 0; code < coding_count; ++code) {
            if ((asked_[id] & (1U << static_cast<unsigned>(code))) != 0) {
                ask(one.operands[0], origin_of(one, static_cast<coding>(code)));
            }
        }
    }

    void ask(value_id id, coding code) { asked_[id] |= set_of(code); }

    /// Sums, products and quotients have a form inside, which keeps more bits than the IEEE one.
    bool stays_inside(value_id id) const {
        const operation op = source_[id].op;
        return is_floating(source_[id].format) && (op == operation::add || op == operation::subtract ||
                                                   op == operation::multiply || op == operation::divide);
    }

    /// In which coding a conversion reads its operand when its result is asked for in `code`. A single that becomes a
    /// double inside comes from the inside if it can; whatever becomes a single or an integer is rounded first, as C
    /// has it.
    coding origin_of(const value& conversion, coding code) const {
        const value& operand = source_[conversion.operands[0]];
        const value_id id = conversion.operands[0];
        if (operand.format == number_format::single_float &&
            (code == coding::y_adder || code == coding::y_multiplier)) {
            return stays_inside(id) ? coding::x_adder : coding::single_ieee;
        }
        const bool is_sum = operand.op == operation::add || operand.op == operation::subtract;
        if (operand.format == number_format::double_float && conversion.format == number_format::single_float &&
            is_sum) {
            return coding::y_adder;
        }
        return ieee_coding(operand.format);
    }

    // ---- What is made ----

    void make_inputs() {
        for (std::uint32_t place = 0; place < source_.inputs().size(); ++place) {
            const port& input = source_.inputs()[place];
            native_[input.value] = append(
                {.kind = node_kind::input, .code = ieee_coding(input.format), .port = place, .value = input.value});
        }
    }

    void make_native(value_id id) {
        const value& one = source_[id];
        if (asked_[id] == 0 || one.op == operation::input || one.op == operation::constant ||
            one.op == operation::convert) {
            return;  // a conversion's result is made in the codings that are asked for
        }
        const component_id component = component_for(one.op, one.format);
        const component_row& row = row_of(component);
        design_node node{.subtract = one.op == operation::subtract, .component = component, .value = id};
        node.generics = generics_of(component, has_selector(component) ? agreed_selector(component, id) : 0);
        node.code = result_coding(component, node.generics);
        for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
            node.operands.at(place) = provided(one.operands.at(place), operand_coding(component, place));
        }
        if (row.operation == component_operation::add_or_subtract && has_guard_bits(node.code)) {
            limit_summands(node);
        } else if (row.operation == component_operation::multiply && has_guard_bits(node.code)) {
            node.summands = made_.options.outputscale == 1 ? 1 : 2;  // a product is below 4, a sum of two below 4 too
        }
        native_[id] = instance(node);
    }

    component_generics generics_of(component_id, std::int32_t selector) const {
        component_generics generics;
        static_cast<library_options&>(generics) = made_.options;
        generics.output_select = selector;
        return generics;
    }

    /// The output that all readers agree upon, else the one in adder form, from which all others are made.
    std::int32_t agreed_selector(component_id component, value_id id) const {
        for (std::int32_t output = 0; output < 4; ++output) {
            if (row_of(component).cc == port_shape::double_by_selector && output == 3) {
                break;
            }
            if (asked_[id] == set_of(result_coding(component, generics_of(component, output)))) {
                return output;
            }
        }
        return 1;
    }

    /// Normalises operands of a sum until it fits into the guard bits, the larger one first.
    void limit_summands(design_node& sum) {
        const auto counts = [&] {
            return std::array{made_[sum.operands[0]].summands, made_[sum.operands[1]].summands};
        };
        while (counts()[0] + counts()[1] > most_summands) {
            const std::size_t larger = counts()[0] >= counts()[1] ? 0 : 1;
            const node_id operand = sum.operands.at(larger);
            const node_id normal = converted(operand, sum.code, made_[operand].value);
            for (node_id& place : sum.operands) {
                place = place == operand ? normal : place;
            }
        }
        sum.summands = counts()[0] + counts()[1];
    }

    /// The node that carries a value in a coding.
    node_id provided(value_id id, coding code) {
        const value& one = source_[id];
        if (one.op == operation::constant) {
            return constant(id, code);
        }
        if (one.op == operation::convert) {
            return provided_by_conversion(id, code);
        }
        const node_id native = native_[id];
        return made_[native].code == code ? native : converted(native, code, id);
    }

    node_id provided_by_conversion(value_id id, coding code) {
        const value& one = source_[id];
        const coding ieee = ieee_coding(one.format);
        const coding origin = origin_of(one, code);
        if (conversion_for(origin, code) != nullptr && (code == ieee || row_of(code).form != bus_form::xfloat)) {
            return converted(provided(one.operands[0], origin), code, id);
        }
        // By way of the IEEE form, which is made even if nobody else reads it.
        return converted(provided_by_conversion(id, ieee), code, id);
    }

    node_id constant(value_id id, coding code) {
        const value& one = source_[id];
        const bus_bits bits = encoded_constant(one.format, one.constant_bits(), code, made_.options.mantissa);
        const auto [found, added] = constants_.try_emplace({id, code}, no_node);
        if (added) {
            found->second = append({.kind = node_kind::constant, .code = code, .bits = bits, .value = id});
        }
        return found->second;
    }

    /// A node's number in another coding, by the one instance that all readers share.
    node_id converted(node_id from, coding code, value_id carries) {
        const conversion_row& row = *conversion_for(made_[from].code, code);
        design_node node{.component = row.component, .operands = {from, no_node}, .value = carries};
        node.generics = generics_of(row.component, row.selector);
        node.code = result_coding(row.component, node.generics);
        // What only puts bits elsewhere leaves a sum as long as it was.
        const bool keeps_guards = row.component == component_id::castxtoy && has_guard_bits(code);
        node.summands = keeps_guards ? made_[from].summands : 1;
        return instance(node);
    }

    /// One instance for equal work.
    node_id instance(const design_node& node) {
        const auto [found, added] = instances_.try_emplace(
            {node.component, node.generics.output_select, node.subtract, node.operands[0], node.operands[1]}, no_node);
        if (added) {
            if (model_named(component_name(node)) == nullptr && lacking_.insert(node.component).second) {
                messages_.report(message_id::component_missing, source_[node.value].where, {component_name(node)});
                refused_ = true;
            }
            found->second = append(node);
        }
        return found->second;
    }

    node_id append(const design_node& node) {
        made_.nodes.push_back(node);
        return made_.size() - 1;
    }

    void refuse(const value& one) {
        // A comparison works in its operands' format.
        const bool compares = row_of(one.op).operands[0] == operand_rule::alike;
        const number_format format = compares ? source_[one.operands[0]].format : one.format;
        messages_.report(message_id::operation_missing, one.where, {row_of(one.op).name, format_name(format)});
        refused_ = true;
    }

    const graph& source_;
    diagnostics& messages_;
    design made_;
    std::vector<coding_set> asked_;  ///< by value
    std::vector<node_id> native_;    ///< what an operation's component delivers, by value
    std::map<std::pair<value_id, coding>, node_id> constants_;
    std::map<std::tuple<component_id, std::int32_t, bool, node_id, node_id>, node_id> instances_;
    std::set<component_id> lacking_;
    bool refused_ = false;
};

}  // namespace

std::optional<design> select_components(const graph& source, const library_options& options, diagnostics& messages) {
    return component_selection(source, options, messages).run();
}

}  // namespace xfc::flow
