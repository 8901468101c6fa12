#include "flow/frontend/integer_ranges.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace xfc::flow {

namespace {

/// How deep conditions are looked into, and choices on the sides of choices.
constexpr int most_levels = 6;
constexpr std::size_t most_choices = 3;

/// All integers where an end wrapped.
integer_range unless_wrapped(std::int64_t low, std::int64_t high) {
    return all_integers.contains(low) && all_integers.contains(high) ? integer_range{low, high} : all_integers;
}

/// From the least to the most of four corners.
integer_range between(const std::array<std::int64_t, 4>& corners) {
    const auto [low, high] = std::minmax_element(corners.begin(), corners.end());
    return unless_wrapped(*low, *high);
}

/// The largest number of as many bits as this one, which is not negative, has.
std::int64_t all_ones(std::int64_t number) {
    return static_cast<std::int64_t>((std::uint64_t{1} << std::bit_width(static_cast<std::uint64_t>(number))) - 1);
}

/// Both together; a range of no numbers adds none.
integer_range joined(const integer_range& one, const integer_range& other) {
    return one.is_empty()     ? other
           : other.is_empty() ? one
                              : integer_range{std::min(one.low, other.low), std::max(one.high, other.high)};
}

/// With the sign bit of each turned, as unsigned numbers are put in order.
integer_range turned(const integer_range& range) {
    if (range.low < 0 && range.high >= 0) {
        return all_integers;
    }
    const std::int64_t by = range.low < 0 ? -all_integers.low : all_integers.low;
    return {range.low + by, range.high + by};
}

integer_range of_and(const integer_range& left, const integer_range& right) {
    // A side that is never negative bounds the bits of both.
    if (left.low >= 0 && right.low >= 0) {
        return {0, std::min(left.high, right.high)};
    }
    return left.low >= 0 ? integer_range{0, left.high} : right.low >= 0 ? integer_range{0, right.high} : all_integers;
}

integer_range of_or(const integer_range& left, const integer_range& right, bool exclusive) {
    if (left.low < 0 || right.low < 0) {
        return all_integers;
    }
    return {exclusive ? 0 : std::max(left.low, right.low), all_ones(std::max(left.high, right.high))};
}

/// Toward zero; a divisor of 0 has no quotient.
integer_range of_quotient(const integer_range& dividend, const integer_range& divisor) {
    if (divisor.low <= 0) {
        return all_integers;
    }
    return between({dividend.low / divisor.low, dividend.low / divisor.high, dividend.high / divisor.low,
                    dividend.high / divisor.high});
}

/// The sign of the dividend, and no larger than it, nor as large as the divisor.
integer_range of_remainder(const integer_range& dividend, const integer_range& divisor) {
    const std::int64_t most = std::max<std::int64_t>(std::max(-divisor.low, divisor.high) - 1, 0);
    return {std::min<std::int64_t>(std::max(dividend.low, -most), 0),
            std::max<std::int64_t>(std::min(dividend.high, most), 0)};
}

integer_range of_shift(operation op, const integer_range& number, const integer_range& distance) {
    if (distance.low < 0 || distance.high > 31) {
        return all_integers;
    }
    if (op == operation::shift_left) {
        const std::int64_t least = std::int64_t{1} << distance.low;
        const std::int64_t most = std::int64_t{1} << distance.high;
        return between({number.low * least, number.low * most, number.high * least, number.high * most});
    }
    if (op == operation::shift_right_unsigned && number.low < 0) {
        return distance.low == 0 ? all_integers : integer_range{0, (std::int64_t{1} << (32 - distance.low)) - 1};
    }
    return between({number.low >> distance.low, number.low >> distance.high, number.high >> distance.low,
                    number.high >> distance.high});
}

}  // namespace

bool is_comparison(operation op) {
    return op == operation::equal || op == operation::less || op == operation::less_equal;
}

integer_range narrowed(integer_range range, operation comparison, bool is_left, std::int64_t number, bool holds) {
    if (comparison == operation::equal) {
        if (holds) {
            return {std::max(range.low, number), std::min(range.high, number)};
        }
        range.low += range.low == number ? 1 : 0;
        range.high -= range.high == number ? 1 : 0;
        return range;
    }
    // x < n, x <= n, or one of them turned or inverse: a new end of the range.
    const bool bounds_above = is_left == holds;
    const bool includes = (comparison == operation::less_equal) == holds;
    if (bounds_above) {
        range.high = std::min(range.high, includes ? number : number - 1);
    } else {
        range.low = std::max(range.low, includes ? number : number + 1);
    }
    return range;
}

integer_range common(const integer_range& one, const integer_range& other) {
    return {std::max(one.low, other.low), std::min(one.high, other.high)};
}

std::optional<bool> decided(operation comparison, const integer_range& left, const integer_range& right) {
    if (comparison == operation::equal) {
        if (left.high < right.low || right.high < left.low) {
            return false;
        }
        const bool is_one = left.low == left.high && right.low == right.high;
        return is_one ? std::optional(true) : std::nullopt;
    }
    const bool includes = comparison == operation::less_equal;
    if (left.high < right.low || (includes && left.high == right.low)) {
        return true;
    }
    if (left.low > right.high || (!includes && left.low == right.high)) {
        return false;
    }
    return std::nullopt;
}

integer_range integer_ranges::narrowed_by(value_id condition, bool holds, value_id integer, integer_range range) const {
    struct part {
        value_id condition;
        bool holds;
        int level;
    };
    std::vector<part> parts = {{condition, holds, 0}};
    while (!parts.empty()) {
        const part now = parts.back();
        parts.pop_back();
        const value& one = values_[now.condition];
        if (one.op == operation::bit_not && now.level < most_levels) {
            parts.push_back({one.operands[0], !now.holds, now.level + 1});
        } else if (one.op == (now.holds ? operation::bit_and : operation::bit_or) && now.level < most_levels) {
            parts.push_back({one.operands[0], now.holds, now.level + 1});
            parts.push_back({one.operands[1], now.holds, now.level + 1});
        } else if (is_comparison(one.op) && values_[one.operands[0]].format == number_format::integer) {
            const bool is_left = values_.is_constant(one.operands[1]);
            const auto number = values_.known_integer(one.operands[is_left ? 1 : 0]);
            const value_id compared = one.operands[is_left ? 0 : 1];
            if (number && compared == integer) {
                range = narrowed(range, one.op, is_left, *number, now.holds);
            } else if (number && is_turned(compared, integer)) {
                range = common(range, turned(narrowed(turned(range), one.op, is_left, *number, now.holds)));
            }
        }
    }
    return range;
}

/// Whether one is the other with its sign bit turned.
bool integer_ranges::is_turned(value_id one, value_id other) const {
    const value& made = values_[one];
    return made.op == operation::bit_xor && (made.operands[0] == other || made.operands[1] == other) &&
           values_.known_integer(made.operands[made.operands[0] == other ? 1 : 0]) == all_integers.low;
}

integer_range integer_ranges::known(value_id integer) const {
    if (const auto constant = values_.known_integer(integer)) {
        return {*constant, *constant};
    }
    return ranges_.at(integer);
}

/// What one side of a choice can be where all of these conditions have these truths. Choices on that side are looked
/// into: a number limited on both sides is a choice in a choice.
integer_range integer_ranges::of_side(value_id side, std::vector<fact>& facts,
                                      const ranges_of_operands& range_of) const {
    integer_range range = range_of(side);
    const value& one = values_[side];
    if (one.op == operation::select && facts.size() < most_choices) {
        facts.push_back({one.operands[0], true});
        const integer_range yes = of_side(one.operands[1], facts, range_of);
        facts.back().holds = false;
        const integer_range no = of_side(one.operands[2], facts, range_of);
        facts.pop_back();
        range = common(range, joined(yes, no));
    }
    for (const fact& one_fact : facts) {
        range = narrowed_by(one_fact.condition, one_fact.holds, side, range);
    }
    return range;
}

integer_range integer_ranges::computed(value_id integer, const ranges_of_operands& range_of) const {
    const value& one = values_[integer];
    if (one.op == operation::select) {
        std::vector<fact> facts = {{one.operands[0], true}};
        const integer_range yes = of_side(one.operands[1], facts, range_of);
        facts.back().holds = false;
        return joined(yes, of_side(one.operands[2], facts, range_of));
    }
    std::array<integer_range, 2> in = {all_integers, all_integers};
    for (std::size_t place = 0; place < std::min(one.operand_span().size(), in.size()); ++place) {
        if (values_[one.operands[place]].format == number_format::integer) {
            in.at(place) = range_of(one.operands[place]);
            if (in.at(place).is_empty()) {
                return in.at(place);
            }
        }
    }
    const auto& [left, right] = in;
    switch (one.op) {
        case operation::add:
            return unless_wrapped(left.low + right.low, left.high + right.high);
        case operation::subtract:
            return unless_wrapped(left.low - right.high, left.high - right.low);
        case operation::multiply:
            return between(
                {left.low * right.low, left.low * right.high, left.high * right.low, left.high * right.high});
        case operation::divide:
            return of_quotient(left, right);
        case operation::remainder:
            return of_remainder(left, right);
        case operation::negate:
            return unless_wrapped(-left.high, -left.low);
        case operation::bit_and:
            return of_and(left, right);
        case operation::bit_xor:
            return is_turned(integer, one.operands[0])   ? turned(left)
                   : is_turned(integer, one.operands[1]) ? turned(right)
                                                         : of_or(left, right, true);
        case operation::bit_or:
            return of_or(left, right, false);
        case operation::bit_not:
            return {-1 - left.high, -1 - left.low};
        case operation::shift_left:
        case operation::shift_right:
        case operation::shift_right_unsigned:
            return of_shift(one.op, left, right);
        case operation::convert:
            return values_[one.operands[0]].format == number_format::boolean ? integer_range{0, 1} : all_integers;
        default:
            return all_integers;
    }
}

integer_range integer_ranges::of(value_id integer) {
    // Operands first; a value is looked at again when all of its own are known.
    std::vector<value_id> waiting = {integer};
    while (!waiting.empty()) {
        const value_id last = waiting.back();
        if (values_.is_constant(last) || ranges_.contains(last)) {
            waiting.pop_back();
            continue;
        }
        const value& one = values_[last];
        const std::size_t before = waiting.size();
        for (const value_id operand : one.operand_span()) {
            const bool is_integer = values_[operand].format == number_format::integer;
            if (is_integer && !values_.is_constant(operand) && !ranges_.contains(operand)) {
                waiting.push_back(operand);
            }
        }
        if (waiting.size() == before) {
            ranges_.emplace(last, computed(last, [&](value_id operand) { return known(operand); }));
            waiting.pop_back();
        }
    }
    return known(integer);
}

}  // namespace xfc::flow
