#include "flow/frontend/comparisons.h"

#include <algorithm>
#include <array>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

/// How deep operands are looked at: choices of choices would take long.
constexpr int most_levels = 6;

// How two numbers can stand to each other, as a set.
constexpr std::uint8_t is_less = 1;
constexpr std::uint8_t is_equal = 2;
constexpr std::uint8_t is_greater = 4;
constexpr std::uint8_t is_unordered = 8;  ///< one is no number

bool compares(operation op, std::int64_t left, std::int64_t right) {
    return op == operation::equal ? left == right : op == operation::less ? left < right : left <= right;
}

}  // namespace

comparisons::comparisons(const graph& values, integer_ranges& ranges, value_id zero)
    : values_(values), ranges_(ranges), zero_(zero), possible_(zero == no_value || ranges.of(zero).contains(0)) {}

/// The integer's number where it follows from the one that is taken for 0.
std::optional<std::int64_t> comparisons::known(value_id integer, int level) const {
    if (integer == zero_) {
        return 0;
    }
    if (const auto constant = values_.known_integer(integer)) {
        return *constant;
    }
    const value& one = values_[integer];
    const bool has_number = one.op != operation::input && one.op != operation::convert && one.op != operation::divide &&
                            one.op != operation::remainder;
    if (zero_ == no_value || level == most_levels || !has_number) {
        return std::nullopt;
    }
    std::array<known_number, most_operands> numbers;
    const auto operands = one.operand_span();
    for (std::size_t place = 0; place < operands.size(); ++place) {
        if (values_[operands[place]].format != number_format::integer) {
            return std::nullopt;
        }
        const auto number = known(operands[place], level + 1);
        if (!number) {
            return std::nullopt;
        }
        numbers.at(place) = known_integer_number(static_cast<std::int32_t>(*number));
    }
    return static_cast<std::int32_t>(compute(one.op, number_format::integer, {numbers.data(), operands.size()}));
}

/// The integer stands on one side of a comparison with a known number.
bool comparisons::narrow(operation op, value_id integer, bool is_left, std::int64_t number, bool truth) {
    const auto found = domains_.try_emplace(integer, domain{ranges_.of(integer), {}}).first;
    auto& [range, excluded] = found->second;
    changes_.push_back({.integer = integer, .before = found->second});
    if (op == operation::equal && !truth) {
        excluded.push_back(number);
    } else {
        range = narrowed(range, op, is_left, number, truth);
    }
    if (range.high - range.low < static_cast<std::int64_t>(excluded.size())) {
        for (std::int64_t number_left = range.low; number_left <= range.high; ++number_left) {
            if (std::find(excluded.begin(), excluded.end(), number_left) == excluded.end()) {
                return true;
            }
        }
        return false;
    }
    return range.low <= range.high;
}

/// Two numbers of which neither is known: only how they stand to each other is remembered.
bool comparisons::relate(operation op, value_id left, value_id right, bool truth) {
    const bool integers = values_[left].format == number_format::integer;
    const bool turned = left > right;
    const pair two = turned ? pair{right, left} : pair{left, right};
    const auto all = static_cast<std::uint8_t>(is_less | is_equal | is_greater | (integers ? 0 : is_unordered));
    std::uint8_t& now = relations_.try_emplace(two, all).first->second;
    changes_.push_back({.two = two, .relation_before = now});
    const std::uint8_t order = op == operation::equal ? 0 : turned ? is_greater : is_less;
    const auto holding = static_cast<std::uint8_t>(order | (op == operation::less ? 0 : is_equal));
    now = static_cast<std::uint8_t>(now & (truth ? holding : ~holding));
    return now != 0;
}

bool comparisons::take(value_id condition, bool truth) {
    const value& one = values_[condition];
    if (!is_comparison(one.op)) {
        changes_.emplace_back();
        return true;
    }
    const value_id left = one.operands[0];
    const value_id right = one.operands[1];
    if (values_[left].format == number_format::integer) {
        const auto known_left = known(left);
        const auto known_right = known(right);
        if (known_left && known_right) {
            changes_.emplace_back();
            return compares(one.op, *known_left, *known_right) == truth;
        }
        if (known_left || known_right) {
            return known_left ? narrow(one.op, right, false, *known_left, truth)
                              : narrow(one.op, left, true, *known_right, truth);
        }
    }
    return relate(one.op, left, right, truth);
}

void comparisons::take_back() {
    change& last = changes_.back();
    if (last.integer != no_value) {
        domains_[last.integer] = std::move(last.before);
    } else if (last.two.first != no_value) {
        relations_[last.two] = last.relation_before;
    }
    changes_.pop_back();
}

}  // namespace xfc::flow
