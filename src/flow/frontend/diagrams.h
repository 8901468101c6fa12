#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "flow/frontend/integer_ranges.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

/// A condition in a form in which equal ones are the same: 0 never holds, 1 always holds.
using diagram = std::uint32_t;

inline constexpr diagram false_diagram = 0;
inline constexpr diagram true_diagram = 1;
inline constexpr diagram unknown_diagram = 2;  ///< too many conditions to follow

/// Which atom decides first. Flags gathered round by round want the last one on top, loops that are left early, whose
/// rounds stand inside each other, the first one: the other order takes the square of the rounds.
enum class atom_order : std::uint8_t { last_first, first_first };

/// Conditions over booleans of the graph as ordered binary decision diagrams.
class diagrams {
public:
    diagrams(const graph& values, integer_ranges& ranges, atom_order order);

    /// The diagram of a boolean, whose atoms are what is not made of booleans by and, or, xor, not, select.
    diagram of(value_id condition);

    diagram choose(diagram condition, diagram yes, diagram no);
    diagram both(diagram left, diagram right) { return choose(left, right, false_diagram); }
    diagram inverse(diagram condition) { return choose(condition, false_diagram, true_diagram); }

    /// Whether no values of the operands of its comparisons let the condition hold, with an integer that is taken for 0
    /// if there is one. Nothing when that takes too long to find out.
    [[nodiscard]] std::optional<bool> is_impossible(diagram condition, value_id zero = no_value) const;

    /// The atom that decides first; no_value for a constant.
    [[nodiscard]] value_id top_of(diagram condition) const { return nodes_[condition].atom; }

    /// Whether some of the room for nodes is taken.
    [[nodiscard]] bool is_used() const;
    /// Forgets all diagrams.
    void clear();

private:
    struct node {
        value_id atom;
        diagram low;
        diagram high;
        auto operator<=>(const node&) const = default;  // NOLINT(modernize-use-nullptr): the 0 is the compiler's
    };
    struct question {
        diagram condition;
        diagram yes;
        diagram no;
        auto operator<=>(const question&) const = default;  // NOLINT(modernize-use-nullptr): likewise
    };

    diagram make(value_id atom, diagram low, diagram high);
    [[nodiscard]] bool comes_before(value_id left, value_id right) const;

    const graph& values_;
    integer_ranges& ranges_;
    atom_order order_;
    std::vector<node> nodes_;
    std::map<node, diagram> known_nodes_;
    std::map<question, diagram> answers_;
    std::unordered_map<value_id, diagram> of_value_;
};

}  // namespace xfc::flow
