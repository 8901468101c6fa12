#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// A condition in a form in which equal ones are the same: 0 never holds, 1 always holds.
using decision = std::uint32_t;

inline constexpr decision never = 0;
inline constexpr decision always = 1;
inline constexpr decision too_complex = 2;  ///< counted as not certain

/// Conditions over booleans of the graph as ordered binary decision diagrams, so that "set on every way" is found
/// exactly. The largest atom stands on top: a way through the program grows there.
class decisions {
public:
    explicit decisions(const graph& values);

    /// The diagram of a boolean, whose atoms are what is not made of booleans by and, or, xor, not, select.
    decision of(value_id condition);

    decision choose(decision condition, decision yes, decision no);
    decision both(decision left, decision right) { return choose(left, right, never); }
    decision inverse(decision condition) { return choose(condition, never, always); }

    /// Whether `what` holds wherever `path` does.
    bool follows(decision path, decision what) { return both(path, inverse(what)) == never; }

    /// The atom that decides first; no_value for a constant.
    [[nodiscard]] value_id top_of(decision condition) const;

private:
    struct node {
        value_id atom;
        decision low;
        decision high;
        auto operator<=>(const node&) const = default;  // NOLINT(modernize-use-nullptr): the 0 is the compiler's
    };
    struct question {
        decision condition;
        decision yes;
        decision no;
        auto operator<=>(const question&) const = default;  // NOLINT(modernize-use-nullptr): likewise
    };

    decision make(value_id atom, decision low, decision high);

    const graph& values_;
    std::vector<node> nodes_;
    std::map<node, decision> known_nodes_;
    std::map<question, decision> answers_;
    std::unordered_map<value_id, decision> of_value_;
};

}  // namespace xfc::flow
