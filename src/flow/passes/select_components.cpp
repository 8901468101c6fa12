#include "flow/passes/select_components.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "flow/passes/constants.h"
#include "flow/passes/node_index.h"

namespace xfc::flow {

namespace {

/// A set of codings, one bit each.
using coding_set = std::uint32_t;

constexpr coding_set set_of(coding what) { return 1U << static_cast<unsigned>(what); }

/// The component of an operation in the format in which it works: a comparison's is that of its operands.
struct selection_row {
    operation op;
    number_format format;
    component_id component;
    /// A generic that tells this operation from others of the component, and its value.
    std::int32_t component_generics::*generic = nullptr;
    std::int32_t value = 0;
};

using g = component_generics;

constexpr std::int32_t number_of(relation_kind relation) { return static_cast<std::int32_t>(relation); }
constexpr std::int32_t number_of(rounding_kind rounding) { return static_cast<std::int32_t>(rounding); }

constexpr selection_row selections[] = {
    {operation::bit_and, number_format::boolean, component_id::logic, &g::bitoperation, 0},
    {operation::bit_or, number_format::boolean, component_id::logic, &g::bitoperation, 1},
    {operation::bit_xor, number_format::boolean, component_id::logic, &g::bitoperation, 2},
    {operation::bit_not, number_format::boolean, component_id::logic, &g::bitoperation, 2},
    {operation::select, number_format::boolean, component_id::select},

    {operation::add, number_format::integer, component_id::alulong},
    {operation::subtract, number_format::integer, component_id::alulong},
    {operation::multiply, number_format::integer, component_id::mullong},
    {operation::divide, number_format::integer, component_id::divlong, &g::remainder, 0},
    {operation::remainder, number_format::integer, component_id::divlong, &g::remainder, 1},
    {operation::bit_and, number_format::integer, component_id::bitlong, &g::bitoperation, 0},
    {operation::bit_or, number_format::integer, component_id::bitlong, &g::bitoperation, 1},
    {operation::bit_xor, number_format::integer, component_id::bitlong, &g::bitoperation, 2},
    {operation::shift_left, number_format::integer, component_id::shiftlong, &g::direction, 0},
    {operation::shift_right, number_format::integer, component_id::shiftlong, &g::direction, 1},
    {operation::shift_right_unsigned, number_format::integer, component_id::shiftlong, &g::direction, 2},
    {operation::equal, number_format::integer, component_id::cmpl, &g::relation, number_of(relation_kind::equal)},
    {operation::less, number_format::integer, component_id::cmpl, &g::relation, number_of(relation_kind::less)},
    {operation::less_equal, number_format::integer, component_id::cmpl, &g::relation,
     number_of(relation_kind::less_or_equal)},
    {operation::select, number_format::integer, component_id::select},

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
    {operation::equal, number_format::single_float, component_id::cmpf, &g::relation, number_of(relation_kind::equal)},
    {operation::less, number_format::single_float, component_id::cmpf, &g::relation, number_of(relation_kind::less)},
    {operation::less_equal, number_format::single_float, component_id::cmpf, &g::relation,
     number_of(relation_kind::less_or_equal)},
    {operation::minimum, number_format::single_float, component_id::extremef, &g::greatest, 0},
    {operation::maximum, number_format::single_float, component_id::extremef, &g::greatest, 1},
    {operation::copy_sign, number_format::single_float, component_id::copysignf},
    {operation::floor, number_format::single_float, component_id::roundf, &g::rounding,
     number_of(rounding_kind::floor)},
    {operation::ceiling, number_format::single_float, component_id::roundf, &g::rounding,
     number_of(rounding_kind::ceil)},
    {operation::truncate, number_format::single_float, component_id::roundf, &g::rounding,
     number_of(rounding_kind::trunc)},
    {operation::round, number_format::single_float, component_id::roundf, &g::rounding,
     number_of(rounding_kind::round)},
    {operation::select, number_format::single_float, component_id::select},

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
    {operation::equal, number_format::double_float, component_id::cmpd, &g::relation, number_of(relation_kind::equal)},
    {operation::less, number_format::double_float, component_id::cmpd, &g::relation, number_of(relation_kind::less)},
    {operation::less_equal, number_format::double_float, component_id::cmpd, &g::relation,
     number_of(relation_kind::less_or_equal)},
    {operation::minimum, number_format::double_float, component_id::extremed, &g::greatest, 0},
    {operation::maximum, number_format::double_float, component_id::extremed, &g::greatest, 1},
    {operation::copy_sign, number_format::double_float, component_id::copysignd},
    {operation::floor, number_format::double_float, component_id::roundd, &g::rounding,
     number_of(rounding_kind::floor)},
    {operation::ceiling, number_format::double_float, component_id::roundd, &g::rounding,
     number_of(rounding_kind::ceil)},
    {operation::truncate, number_format::double_float, component_id::roundd, &g::rounding,
     number_of(rounding_kind::trunc)},
    {operation::round, number_format::double_float, component_id::roundd, &g::rounding,
     number_of(rounding_kind::round)},
    {operation::select, number_format::double_float, component_id::select},
};

/// Rows by operation and format.
using selection_table = std::array<std::array<const selection_row*, number_format_count>, operation_count>;

constexpr selection_table make_selection_table() {
    selection_table table = {};
    for (const selection_row& row : selections) {
        table.at(static_cast<std::size_t>(row.op)).at(static_cast<std::size_t>(row.format)) = &row;
    }
    return table;
}

/// The row of an operation in a format; null for none.
const selection_row* selection_for(operation op, number_format format) {
    static constexpr selection_table table = make_selection_table();
    return table[static_cast<std::size_t>(op)][static_cast<std::size_t>(format)];
}

bool has_selector(component_id component) {
    const port_shape shape = row_of(component).cc;
    return shape == port_shape::single_by_selector || shape == port_shape::double_by_selector;
}

/// The relation that holds where this one does not, for comparisons without unordered operands.
constexpr relation_kind opposite_of(relation_kind relation) {
    using enum relation_kind;
    constexpr relation_kind opposites[] = {not_equal, equal, greater_or_equal, greater, less_or_equal, less};
    return opposites[static_cast<std::size_t>(relation)];
}

/// What makes two instances equal: component and generics, addsub, operands.
bool are_equal_instances(const design_node& one, const design_node& other) {
    return one.setting == other.setting && one.operands == other.operands && one.subtract == other.subtract;
}

std::uint64_t hash_of(const design_node& node) {
    const auto word = [](auto number) { return static_cast<std::uint64_t>(number); };
    const std::uint64_t hash = mixed(word(node.setting->number) * 2 + word(node.subtract), word(node.operands[2]));
    return mixed(hash, (word(node.operands[0]) << 32U) | node.operands[1]);
}

class component_selection {
public:
    component_selection(const graph& source, const library_options& options, diagnostics& messages,
                        component_model (*find_model)(std::string_view))
        : source_(source),
          messages_(messages),
          find_model_(find_model),
          asked_(source.size(), 0),
          native_(source.size(), no_node),
          settings_(all_components().size() + 1),
          looked_for_(all_components().size() + 1, false) {
        made_.options = options;
        made_.nodes.reserve(source.size() + source.size() / 2);
    }

    std::optional<design> run() {
        collect_demands();
        make_inputs();
        for (value_id id = 0; id < source_.size(); ++id) {
            make_native(id);
        }
        for (const port& output : source_.outputs()) {
            made_.outputs.push_back(provided(output.value, plain_coding(output.format)));
        }
        return refused_ ? std::nullopt : std::optional(std::move(made_));
    }

private:
    // ---- What is asked for, from the outputs to the inputs ----

    void collect_demands() {
        for (const port& output : source_.outputs()) {
            ask(output.value, plain_coding(output.format));
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
            for (const asked_operand& operand : work_of(id).operands) {
                if (operand.value != no_value) {
                    ask(operand.value, operand.code);
                }
            }
        }
    }

    // ---- What computes a value ----

    struct asked_operand {
        value_id value = no_value;
        coding code = coding::boolean;
    };

    /// A component, the generic that tells its work from others', and what it reads on aa, bb and as condition.
    struct component_work {
        component_id component;
        std::int32_t component_generics::*generic;
        std::int32_t setting;
        std::array<asked_operand, most_operands> operands;
    };

    /// A comparison works in its operands' format.
    number_format working_format(const value& one) const {
        const bool compares = row_of(one.op).operands[0] == operand_rule::alike;
        return compares ? source_[one.operands[0]].format : one.format;
    }

    component_work work_of(value_id id) const {
        const value& one = source_[id];
        if (one.op == operation::bit_not) {  // expand.h leaves it above comparisons alone
            component_work work = work_of(one.operands[0]);
            work.setting = number_of(opposite_of(static_cast<relation_kind>(work.setting)));
            return work;
        }
        const selection_row* row = selection_for(one.op, working_format(one));
        assert(row != nullptr);
        component_work work{row->component, row->generic, row->value, {}};
        if (one.op == operation::select) {
            const coding code = plain_coding(one.format);
            work.operands = {{{one.operands[1], code}, {one.operands[2], code}, {one.operands[0], coding::boolean}}};
            return work;
        }
        for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
            work.operands.at(place) = {one.operands.at(place), operand_coding(row->component, place)};
        }
        return work;
    }

    // ---- What conversions read ----

    void collect_demands_of_conversion(value_id id) {
        const value& one = source_[id];
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
        return plain_coding(operand.format);
    }

    // ---- What is made ----

    void make_inputs() {
        for (std::uint32_t place = 0; place < source_.inputs().size(); ++place) {
            const port& input = source_.inputs()[place];
            native_[input.value] = append(
                {.kind = node_kind::input, .code = plain_coding(input.format), .port = place, .value = input.value});
        }
    }

    void make_native(value_id id) {
        const value& one = source_[id];
        if (asked_[id] == 0 || one.op == operation::input || one.op == operation::constant ||
            one.op == operation::convert) {
            return;  // a conversion's result is made in the codings that are asked for
        }
        const component_work work = work_of(id);
        const component_row& row = row_of(work.component);
        design_node node{.subtract = one.op == operation::subtract, .component = work.component, .value = id};
        const bool selects = row.operation == component_operation::select;
        const known_setting& chosen = setting_of(
            work.component, has_selector(work.component) ? agreed_selector(work.component, id) : 0,
            selects ? &component_generics::width : work.generic, selects ? format_bits(one.format) : work.setting);
        node.setting = chosen.setting;
        node.code = selects ? plain_coding(one.format) : chosen.code;
        for (std::size_t place = 0; place < work.operands.size(); ++place) {
            const asked_operand& operand = work.operands.at(place);
            node.operands.at(place) = operand.value == no_value ? no_node : provided(operand.value, operand.code);
        }
        if (row.operation == component_operation::multiply) {
            put_constant_last(node);
        }
        if (row.operation == component_operation::add_or_subtract && has_guard_bits(node.code)) {
            limit_summands(node);
        } else if (row.operation == component_operation::multiply && has_guard_bits(node.code)) {
            node.summands = made_.options.outputscale == 1 ? 1 : 2;  // a product is below 4, a sum of two below 4 too
        }
        native_[id] = instance(node);
    }

    /// A product has a row for each digit of its second operand, and none for a zero one of a constant.
    void put_constant_last(design_node& node) const {
        if (made_[node.operands[0]].kind == node_kind::constant) {
            std::swap(node.operands[0], node.operands[1]);
        }
    }

    /// A setting by what chooses it: the output selector, and a generic of the component's own.
    struct known_setting {
        std::int32_t selector;
        std::int32_t own;
        const component_setting* setting;
        coding code;
    };

    const known_setting& setting_of(component_id component, std::int32_t selector,
                                    std::int32_t component_generics::*own_generic = nullptr, std::int32_t own = 0) {
        std::vector<known_setting>& known = settings_[static_cast<std::size_t>(component)];
        for (const known_setting& one : known) {
            if (one.selector == selector && one.own == own) {
                return one;
            }
        }
        component_generics generics = generics_of(selector);
        if (own_generic != nullptr) {
            generics.*own_generic = own;
        }
        return known.emplace_back(known_setting{.selector = selector,
                                                .own = own,
                                                .setting = &made_.settings->find_or_make(component, generics),
                                                .code = result_coding(component, generics)});
    }

    component_generics generics_of(std::int32_t selector) const {
        component_generics generics;
        static_cast<library_options&>(generics) = made_.options;
        generics.output_select = selector;
        return generics;
    }

    /// The output that all readers agree upon, else the one in adder form, from which all others are made.
    std::int32_t agreed_selector(component_id component, value_id id) {
        for (std::int32_t output = 0; output < 4; ++output) {
            if (row_of(component).cc == port_shape::double_by_selector && output == 3) {
                break;
            }
            if (asked_[id] == set_of(setting_of(component, output).code)) {
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
        const coding ieee = plain_coding(one.format);
        const coding origin = origin_of(one, code);
        if (conversion_for(origin, code) != nullptr && (code == ieee || row_of(code).form != bus_form::xfloat)) {
            return converted(provided(one.operands[0], origin), code, id);
        }
        // By way of the IEEE form, which is made even if nobody else reads it.
        return converted(provided_by_conversion(id, ieee), code, id);
    }

    node_id constant(value_id id, coding code) {
        const auto is_same = [&](node_id node) {
            const design_node& one = made_[node];
            return one.kind == node_kind::constant && one.value == id && one.code == code;
        };
        return known_.find_or_make(mixed(mixed(1, id), static_cast<std::uint64_t>(code)), is_same, [&] {
            const value& one = source_[id];
            const bus_bits bits = encoded_constant(one.format, one.constant_bits(), code, made_.options.mantissa);
            return append({.kind = node_kind::constant, .code = code, .bits = bits, .value = id});
        });
    }

    /// A node's number in another coding, by the one instance that all readers share.
    node_id converted(node_id from, coding code, value_id carries) {
        const conversion_row& row = *conversion_for(made_[from].code, code);
        design_node node{.component = row.component, .operands = {from, no_node}, .value = carries};
        const known_setting& chosen = setting_of(row.component, row.selector);
        node.setting = chosen.setting;
        node.code = chosen.code;
        // What only puts bits elsewhere leaves a sum as long as it was.
        const bool keeps_guards = row.component == component_id::castxtoy && has_guard_bits(code);
        node.summands = keeps_guards ? made_[from].summands : 1;
        return instance(node);
    }

    /// One instance for equal work.
    node_id instance(const design_node& node) {
        const auto is_same = [&](node_id known) { return are_equal_instances(made_[known], node); };
        return known_.find_or_make(hash_of(node), is_same, [&] {
            look_for_model(node);
            return append(node);
        });
    }

    /// A library without the component is told once.
    void look_for_model(const design_node& node) {
        const auto place = static_cast<std::size_t>(node.component);
        if (looked_for_[place]) {
            return;
        }
        looked_for_[place] = true;
        if (find_model_(component_name(node)) == nullptr) {
            messages_.report(message_id::component_missing, source_[node.value].where, {component_name(node)});
            refused_ = true;
        }
    }

    node_id append(const design_node& node) {
        made_.nodes.push_back(node);
        return made_.size() - 1;
    }

    const graph& source_;
    diagnostics& messages_;
    component_model (*find_model_)(std::string_view);
    design made_;
    std::vector<coding_set> asked_;                     ///< by value
    std::vector<node_id> native_;                       ///< what an operation's component delivers, by value
    node_index known_;                                  ///< constants and instances
    std::vector<std::vector<known_setting>> settings_;  ///< by component
    std::vector<bool> looked_for_;                      ///< by component
    bool refused_ = false;
};

}  // namespace

std::optional<design> select_components(const graph& source, const library_options& options, diagnostics& messages,
                                        component_model (*find_model)(std::string_view)) {
    return component_selection(source, options, messages, find_model).run();
}

}  // namespace xfc::flow
