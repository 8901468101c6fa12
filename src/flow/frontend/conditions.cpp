#include "flow/frontend/conditions.h"

#include <array>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

/// How deep operands are looked at for their ranges.
constexpr int most_levels = 3;

}  // namespace

void conditions::assume(value_id condition, bool truth) {
    starts_.push_back(learned_.size());
    learn(condition, truth);
}

void conditions::learn(value_id condition, bool truth) {
    std::vector<std::pair<value_id, bool>> rest = {{condition, truth}};
    while (!rest.empty()) {
        const auto [id, holds] = rest.back();
        rest.pop_back();
        const value& one = values_[id];
        if (one.op == operation::constant || !facts_.emplace(id, holds).second) {
            continue;  // what is known already is known with all that follows from it
        }
        learned_.push_back(id);
        learn_range(id, holds);
        if (one.op == operation::bit_not) {
            rest.emplace_back(one.operands[0], !holds);
        } else if ((one.op == operation::bit_and && holds) || (one.op == operation::bit_or && !holds)) {
            rest.emplace_back(one.operands[0], holds);
            rest.emplace_back(one.operands[1], holds);
        }
    }
}

void conditions::forget() {
    while (learned_.size() > starts_.back()) {
        const value_id last = learned_.back();
        for (const value_id integer : compared_integers(last)) {
            learned_ranges_.at(integer).pop_back();
            --learned_range_count_;
        }
        facts_.erase(last);
        learned_.pop_back();
    }
    starts_.pop_back();
}

/// The integers that a comparison with a constant is about: itself, and where its sign bit was turned to put unsigned
/// numbers in order, the one before.
std::vector<value_id> conditions::compared_integers(value_id condition) const {
    const value& one = values_[condition];
    if (!is_comparison(one.op) || values_[one.operands[0]].format != number_format::integer) {
        return {};
    }
    const auto [left, right] = std::array{one.operands[0], one.operands[1]};
    if (values_.is_constant(left) == values_.is_constant(right)) {
        return {};
    }
    const value_id compared = values_.is_constant(right) ? left : right;
    std::vector<value_id> integers = {compared};
    for (const value_id before : values_[compared].operand_span()) {
        if (!values_.is_constant(before) && ranges_.is_turned(compared, before)) {
            integers.push_back(before);
        }
    }
    return integers;
}

void conditions::learn_range(value_id comparison, bool holds) {
    for (const value_id integer : compared_integers(comparison)) {
        const integer_range now = ranges_.narrowed_by(comparison, holds, integer, range_of(integer));
        learned_ranges_[integer].push_back(now);
        ++learned_range_count_;
    }
}

/// What the integer can be here: by what was learned about it, or else about what it is made of.
integer_range conditions::range_of(value_id integer, int level) const {
    if (const auto learned = learned_ranges_.find(integer);
        learned != learned_ranges_.end() && !learned->second.empty()) {
        return learned->second.back();
    }
    const integer_range anywhere = ranges_.of(integer);
    if (learned_range_count_ == 0 || level == most_levels || values_.is_constant(integer)) {
        return anywhere;
    }
    return common(anywhere, ranges_.computed(integer, [&](value_id operand) { return range_of(operand, level + 1); }));
}

/// By what was learned about its operands; what their ranges alone decide was never made a comparison.
std::optional<bool> conditions::decided_here(const value& comparison) const {
    if (learned_range_count_ == 0 || values_[comparison.operands[0]].format != number_format::integer) {
        return std::nullopt;
    }
    return decided(comparison.op, range_of(comparison.operands[0]), range_of(comparison.operands[1]));
}

/// What is known of a condition without a look at what it is made of, but for a turned one.
std::optional<bool> conditions::told(value_id condition) const {
    if (const auto known = values_.known_boolean(condition)) {
        return known;
    }
    if (const auto fact = facts_.find(condition); fact != facts_.end()) {
        return fact->second;
    }
    const value& one = values_[condition];
    if (is_comparison(one.op)) {
        return decided_here(one);
    }
    if (one.op == operation::bit_not) {
        const auto inner = told(one.operands[0]);
        return inner ? std::optional(!*inner) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<bool> conditions::truth_of(value_id condition) const {
    if (const auto truth = told(condition)) {
        return truth;
    }
    const value& one = values_[condition];
    if (one.op != operation::bit_and && one.op != operation::bit_or) {
        return std::nullopt;
    }
    const bool decisive = one.op == operation::bit_or;
    int others = 0;
    for (const value_id operand : one.operand_span()) {
        const auto inner = told(operand);
        if (inner == decisive) {
            return decisive;
        }
        others += inner ? 1 : 0;
    }
    return others == 2 ? std::optional(!decisive) : std::nullopt;
}

decision conditions::path(decisions& all) const {
    decision whole = always;
    for (const value_id id : learned_) {
        const bool holds = facts_.at(id);
        whole = all.choose(id, holds ? whole : never, holds ? never : whole);
    }
    return whole;
}

decision conditions::known_choice(const decisions& all, decision what) const {
    while (all.condition_of(what) != no_value) {
        const auto truth = truth_of(all.condition_of(what));
        if (!truth) {
            break;
        }
        what = all.side_of(what, *truth);
    }
    return what;
}

value_id conditions::known_side(value_id id) const {
    while (values_[id].op == operation::select) {
        const auto truth = truth_of(values_[id].operands[0]);
        if (!truth) {
            break;
        }
        id = values_[id].operands[*truth ? 1 : 2];
    }
    return id;
}

value_id conditions::known_choice(value_id id) const {
    id = known_side(id);
    const auto counted = counted_choice_of(values_, id);
    if (!counted) {
        return id;
    }
    const value_id side = known_side(counted->choice);
    return values_.is_constant(side) ? counted->on(values_, side) : id;
}

value_id counted_choice::on(graph& values, value_id constant) const {
    for (std::size_t number = step_count; number > 0; --number) {
        const counting& step = steps.at(number - 1);
        const value made = values[step.of];
        std::array<value_id, 2> operands = {made.operands[0], made.operands[1]};
        operands.at(step.place) = constant;
        constant = make_folded(values, made.op, made.format, operands, made.where);
    }
    return constant;
}

std::optional<counted_choice> counted_choice_of(const graph& values, value_id id) {
    counted_choice found;
    while (values[id].op != operation::select) {
        const value& one = values[id];
        const bool is_step = one.format == number_format::integer && one.operand_span().size() == 2 &&
                             found.step_count < counted_choice::most_steps;
        if (!is_step || values.is_constant(one.operands[0]) == values.is_constant(one.operands[1])) {
            return std::nullopt;
        }
        const std::size_t place = values.is_constant(one.operands[1]) ? 0 : 1;
        found.steps.at(found.step_count++) = {id, place};
        id = one.operands.at(place);
    }
    found.choice = id;
    return found;
}

bool conditions::differs_from_zero(value_id integer) const {
    if (!range_of(integer).contains(0)) {
        return true;
    }
    std::unordered_map<value_id, bool> known;
    return differs_from_zero(integer, known);
}

bool conditions::differs_from_zero(value_id integer, std::unordered_map<value_id, bool>& known) const {
    if (const auto constant = values_.known_integer(integer)) {
        return *constant != 0;
    }
    if (const auto found = known.find(integer); found != known.end()) {
        return found->second;
    }
    const value& one = values_[integer];
    bool differs = learned_to_differ_from_zero(integer);
    switch (one.op) {
        case operation::select:
            differs =
                differs || (differs_from_zero(one.operands[1], known) && differs_from_zero(one.operands[2], known));
            break;
        case operation::bit_or:
            differs = differs || differs_from_zero(one.operands[0], known) || differs_from_zero(one.operands[1], known);
            break;
        case operation::negate:
            differs = differs || differs_from_zero(one.operands[0], known);
            break;
        default:
            break;
    }
    known.emplace(integer, differs);
    return differs;
}

/// Whether a comparison of the integer with a constant, known to hold or to fail here, would come out otherwise of 0.
bool conditions::learned_to_differ_from_zero(value_id integer) const {
    for (const value_id id : learned_) {
        const value& fact = values_[id];
        const bool holds = facts_.at(id);
        const bool compares_it = is_comparison(fact.op) && (fact.operands[0] == integer || fact.operands[1] == integer);
        if (!compares_it) {
            continue;
        }
        // Whether the comparison with 0 in the place of the integer would come out the other way.
        const auto known_operand = [&](value_id operand) {
            return operand == integer ? std::optional(0) : values_.known_integer(operand);
        };
        const auto left = known_operand(fact.operands[0]);
        const auto right = known_operand(fact.operands[1]);
        if (!left || !right) {
            continue;
        }
        const bool with_zero = fact.op == operation::equal  ? *left == *right
                               : fact.op == operation::less ? *left < *right
                                                            : *left <= *right;
        if (with_zero != holds) {
            return true;
        }
    }
    return false;
}

bool conditions::are_inverse(value_id left, value_id right) const {
    const auto is_inverse_of = [&](value_id one, value_id other) {
        return values_[one].op == operation::bit_not && values_[one].operands[0] == other;
    };
    return is_inverse_of(left, right) || is_inverse_of(right, left);
}

value_id conditions::both(value_id left, value_id right, source_range where) {
    if (are_inverse(left, right)) {
        return false_;
    }
    const std::array<value_id, 2> operands = {left, right};
    return make_folded(values_, operation::bit_and, number_format::boolean, operands, where);
}

value_id conditions::either(value_id left, value_id right, source_range where) {
    if (are_inverse(left, right)) {
        return true_;
    }
    const std::array<value_id, 2> operands = {left, right};
    return make_folded(values_, operation::bit_or, number_format::boolean, operands, where);
}

value_id conditions::inverse(value_id condition, source_range where) {
    const std::array<value_id, 1> operands = {condition};
    return make_folded(values_, operation::bit_not, number_format::boolean, operands, where);
}

value_id conditions::choose(value_id condition, value_id yes, value_id no, source_range where) {
    if (yes == no) {
        return yes;
    }
    if (const auto truth = values_.known_boolean(condition)) {
        return *truth ? yes : no;
    }
    if (const auto known = values_.known_boolean(yes)) {
        return *known ? either(condition, no, where) : both(inverse(condition, where), no, where);
    }
    if (const auto known = values_.known_boolean(no)) {
        return *known ? either(inverse(condition, where), yes, where) : both(condition, yes, where);
    }
    const std::array<value_id, 3> operands = {condition, yes, no};
    return make_folded(values_, operation::select, number_format::boolean, operands, where);
}

}  // namespace xfc::flow
