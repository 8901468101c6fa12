#pragma once

#include <array>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "flow/frontend/decisions.h"
#include "flow/frontend/integer_ranges.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

/// A choice, and what was done to it with constants: what a counter becomes that was set under a condition, and
/// counted.
struct counted_choice {
    struct counting {
        value_id of;        ///< an integer operation
        std::size_t place;  ///< of the choice among its operands; the other one is constant
    };
    static constexpr std::size_t most_steps = 6;  // counting, the wrapping of a narrow integer, an order without signs
    value_id choice = no_value;
    std::size_t step_count = 0;
    std::array<counting, most_steps> steps = {};  ///< last one first

    /// The steps done to a constant.
    value_id on(graph& values, value_id constant) const;
};

/// A value as a choice with few steps behind it, if it is one.
[[nodiscard]] std::optional<counted_choice> counted_choice_of(const graph& values, value_id id);

/// What is known to hold on the way through the program that is being followed, and booleans made with that knowledge.
class conditions {
public:
    conditions(graph& values, integer_ranges& ranges) : values_(values), ranges_(ranges) {}

    /// From here on until the matching `forget`, the condition has this truth.
    void assume(value_id condition, bool truth);
    void forget();

    /// Whether nothing is assumed: what is followed here is followed by every run of the program.
    [[nodiscard]] bool are_empty() const { return starts_.empty(); }

    /// Whether the condition holds here, where that is known.
    [[nodiscard]] std::optional<bool> truth_of(value_id condition) const;

    /// The way that is being followed.
    [[nodiscard]] decision path(decisions& all) const;

    /// The choice without those around it that are known here.
    [[nodiscard]] decision known_choice(const decisions& all, decision what) const;

    /// The value without those selects around it whose choice is known here, steps behind them counted.
    [[nodiscard]] value_id known_choice(value_id id) const;

    /// Whether it is certain here that the integer is not 0, as far as a look at what was learned tells.
    [[nodiscard]] bool differs_from_zero(value_id integer) const;

    value_id both(value_id left, value_id right, source_range where);
    value_id either(value_id left, value_id right, source_range where);
    value_id inverse(value_id condition, source_range where);
    /// condition ? yes : no, as the fewest operations on booleans.
    value_id choose(value_id condition, value_id yes, value_id no, source_range where);
    value_id boolean(bool truth) { return truth ? true_ : false_; }

private:
    bool differs_from_zero(value_id integer, std::unordered_map<value_id, bool>& known) const;
    [[nodiscard]] bool learned_to_differ_from_zero(value_id integer) const;
    void learn(value_id condition, bool truth);
    void learn_range(value_id comparison, bool holds);
    [[nodiscard]] std::vector<value_id> compared_integers(value_id condition) const;
    [[nodiscard]] integer_range range_of(value_id integer, int level = 0) const;
    [[nodiscard]] std::optional<bool> told(value_id condition) const;
    [[nodiscard]] std::optional<bool> decided_here(const value& comparison) const;
    [[nodiscard]] value_id known_side(value_id id) const;
    [[nodiscard]] bool are_inverse(value_id left, value_id right) const;

    graph& values_;
    integer_ranges& ranges_;
    value_id true_ = values_.make_boolean(true);
    value_id false_ = values_.make_boolean(false);
    std::unordered_map<value_id, bool> facts_;
    std::vector<value_id> learned_;    ///< in order
    std::vector<std::size_t> starts_;  ///< of each assumption in `learned_`
    /// Of integers that `learned_` compares with constants, narrower with each of these.
    std::unordered_map<value_id, std::vector<integer_range>> learned_ranges_;
    std::size_t learned_range_count_ = 0;  ///< in all of them
};

}  // namespace xfc::flow
