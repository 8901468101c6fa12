#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

#include "flow/frontend/diagrams.h"
#include "flow/graph/graph.h"

namespace xfc::flow {

/// On which ways through the program something happened: a choice between two others, by number. 0: on none, 1: on
/// every one.
using decision = std::uint32_t;

inline constexpr decision never = 0;
inline constexpr decision always = 1;
inline constexpr decision too_complex = 2;  ///< counted as not certain

/// Choices are only noted down, so that they cost nothing where nobody asks; questions turn them into diagrams, so that
/// "set on every way" is found exactly, as far as conditions do not exclude each other in ways that comparisons.h does
/// not see.
class decisions {
public:
    decisions(const graph& values, integer_ranges& ranges);

    /// What `yes` is where the condition holds, and elsewhere what `no` is.
    decision choose(value_id condition, decision yes, decision no);

    /// The condition that was chosen by last, no_value if none was, and what was chosen.
    [[nodiscard]] value_id condition_of(decision what) const { return choices_[what].condition; }
    [[nodiscard]] decision side_of(decision what, bool truth) const {
        return truth ? choices_[what].yes : choices_[what].no;
    }

    /// Whether `what` happens wherever the path leads; nothing where there are too many conditions to tell.
    std::optional<bool> follows(decision path, decision what);

    /// Whether it is certain on the path that the integer is not 0.
    bool differs_from_zero(decision path, value_id integer);

    /// The atom that decides first; no_value if there is none, or too many to tell.
    [[nodiscard]] value_id top_of(decision what);

private:
    struct choice {
        value_id condition;
        decision yes;
        decision no;
        auto operator<=>(const choice&) const = default;  // NOLINT(modernize-use-nullptr): the 0 is the compiler's
    };
    /// The diagrams of one order, and of choices in it.
    struct drawing {
        diagrams all;
        std::unordered_map<decision, diagram> of_choice = {};
    };
    struct zero_question;

    diagram draw(drawing& in, decision what);
    template <class question>
    std::optional<bool> answer(const question& ask);
    bool differs_from_zero(zero_question& question, diagram path, value_id integer);

    const graph& values_;
    std::vector<choice> choices_;
    std::map<choice, decision> known_choices_;
    std::array<drawing, 2> drawings_;
};

}  // namespace xfc::flow
