#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// Integers from `low` to `high`, both among them; none where `low` is above `high`.
struct integer_range {
    std::int64_t low;
    std::int64_t high;

    [[nodiscard]] constexpr bool is_empty() const { return low > high; }
    [[nodiscard]] constexpr bool contains(std::int64_t number) const { return low <= number && number <= high; }
};

/// What an integer of 32 bits can be at all.
inline constexpr integer_range all_integers = {-2147483648, 2147483647};

[[nodiscard]] bool is_comparison(operation op);

/// The range of numbers that stand so to a known one: on the left of it or on the right, the comparison holding or not.
/// That a number differs narrows a range at its ends alone.
[[nodiscard]] integer_range narrowed(integer_range range, operation comparison, bool is_left, std::int64_t number,
                                     bool holds);

/// What is in both.
[[nodiscard]] integer_range common(const integer_range& one, const integer_range& other);

/// Whether numbers of two ranges stand so to each other, where that is the same for all of them.
[[nodiscard]] std::optional<bool> decided(operation comparison, const integer_range& left, const integer_range& right);

/// What integers of a graph can be whatever the inputs are, found once for each. No range is too narrow for a value
/// that the program uses; one that it computes and drops, behind a guard, may lie outside.
class integer_ranges {
public:
    explicit integer_ranges(const graph& values) : values_(values) {}

    [[nodiscard]] integer_range of(value_id integer);

    /// Remembers what is known of an integer beyond what its operations tell.
    void learn(value_id integer, const integer_range& range) { ranges_[integer] = common(of(integer), range); }

    using ranges_of_operands = std::function<integer_range(value_id)>;

    /// From ranges of its operands, which may be narrower than `of` gives them, or empty where no run comes.
    [[nodiscard]] integer_range computed(value_id integer, const ranges_of_operands& range_of) const;

    /// A range of the integer where a condition has this truth, as far as it compares the integer with known numbers.
    [[nodiscard]] integer_range narrowed_by(value_id condition, bool holds, value_id integer,
                                            integer_range range) const;

    /// Whether one is the other with its sign bit turned.
    [[nodiscard]] bool is_turned(value_id one, value_id other) const;

private:
    struct fact {
        value_id condition;
        bool holds;
    };
    [[nodiscard]] integer_range of_side(value_id side, std::vector<fact>& facts,
                                        const ranges_of_operands& range_of) const;
    [[nodiscard]] integer_range known(value_id integer) const;

    const graph& values_;
    std::unordered_map<value_id, integer_range> ranges_;
};

}  // namespace xfc::flow
