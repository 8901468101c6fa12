#include "flow/frontend/comparisons.h"

#include <algorithm>
#include <array>
#include <limits>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();

/// How deep operands are looked at: choices of choices would take long.
constexpr int most_levels = 6;

// How two numbers can stand to each other, as a set.
constexpr std::uint8_t is_less = 1;
constexpr std::uint8_t is_equal = 2;
constexpr std::uint8_t is_greater = 4;
constexpr std::uint8_t is_unordered = 8;  ///< one is no number

bool is_comparison(operation op) {
    return op == operation::equal || op == operation::less || op == operation::less_equal;
}

bool compares(operation op, std::int64_t left, std::int64_t right) {
    return op == operation::equal ? left == right : op == operation::less ? left < right : left <= right;
}

}  // namespace

comparisons::comparisons(const graph& values, value_id zero) : values_(values), zero_(zero) {
    if (zero_ != no_value) {
        const domain all = range_of(zero_);
        possible_ = all.low <= 0 && all.high >= 0;
    }
}

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

/// What the integer can be whatever the inputs are.
comparisons::domain comparisons::range_of(value_id integer, int level) const {
    domain all = {smallest, largest, {}};
    if (const auto constant = values_.known_integer(integer)) {
        return {*constant, *constant, {}};
    }
    if (level == most_levels) {
        return all;
    }
    const value& one = values_[integer];
    const auto constant = [&](std::size_t place) { return values_.known_integer(one.operands[place]); };
    switch (one.op) {
        case operation::bit_and: {
            // A side that is never negative bounds the bits of both.
            domain given = all;
            for (const value_id operand : one.operand_span()) {
                const domain side = range_of(operand, level + 1);
                if (side.low >= 0) {
                    given = {0, std::min(given.high, side.high), {}};
                }
            }
            return given;
        }
        case operation::remainder: {
            const auto divisor = constant(1);
            if (!divisor || *divisor == 0) {
                return all;
            }
            const std::int64_t most = std::max<std::int64_t>(*divisor, -static_cast<std::int64_t>(*divisor)) - 1;
            return {range_of(one.operands[0], level + 1).low >= 0 ? 0 : -most, most, {}};
        }
        case operation::shift_right: {
            const auto distance = constant(1);
            if (!distance || *distance < 0 || *distance > 31) {
                return all;
            }
            const domain from = range_of(one.operands[0], level + 1);
            return {from.low >> *distance, from.high >> *distance, {}};
        }
        case operation::shift_right_unsigned: {
            const auto distance = constant(1);
            if (!distance || *distance < 1 || *distance > 31) {
                return all;
            }
            return {0, (std::int64_t{1} << (32 - *distance)) - 1, {}};
        }
        case operation::select: {
            const domain yes = range_of(one.operands[1], level + 1);
            const domain no = range_of(one.operands[2], level + 1);
            return {std::min(yes.low, no.low), std::max(yes.high, no.high), {}};
        }
        default:
            return all;
    }
}

/// The integer stands on one side of a comparison with a known number.
bool comparisons::narrow(operation op, value_id integer, bool is_left, std::int64_t number, bool truth) {
    const auto found = domains_.try_emplace(integer, range_of(integer)).first;
    domain& now = found->second;
    changes_.push_back({.integer = integer, .before = now});
    if (op == operation::equal) {
        if (truth) {
            now.low = std::max(now.low, number);
            now.high = std::min(now.high, number);
        } else {
            now.excluded.push_back(number);
        }
    } else {
        // x < n, x <= n, or one of them turned or inverse: a new end of the range.
        const bool bounds_above = is_left == truth;
        const bool includes = (op == operation::less_equal) == truth;
        if (bounds_above) {
            now.high = std::min(now.high, includes ? number : number - 1);
        } else {
            now.low = std::max(now.low, includes ? number : number + 1);
        }
    }
    if (now.high - now.low < static_cast<std::int64_t>(now.excluded.size())) {
        for (std::int64_t number_left = now.low; number_left <= now.high; ++number_left) {
            if (std::find(now.excluded.begin(), now.excluded.end(), number_left) == now.excluded.end()) {
                return true;
            }
        }
        return false;
    }
    return now.low <= now.high;
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
