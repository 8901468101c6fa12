#include "flow/frontend/decisions.h"

#include <algorithm>

namespace xfc::flow {

namespace {

constexpr std::size_t most_choices = 4000000;
constexpr int most_zero_questions = 2000;  ///< about parts of one divisor

}  // namespace

decisions::decisions(const graph& values, integer_ranges& ranges)
    : values_(values),
      choices_{{no_value, never, never}, {no_value, always, always}, {no_value, too_complex, too_complex}},
      drawings_{drawing{diagrams(values, ranges, atom_order::last_first)},
                drawing{diagrams(values, ranges, atom_order::first_first)}} {}

decision decisions::choose(value_id condition, decision yes, decision no) {
    if (yes == no) {
        return yes;
    }
    if (const auto known = values_.known_boolean(condition)) {
        return *known ? yes : no;
    }
    if (choices_.size() > most_choices) {
        return too_complex;
    }
    const choice one{condition, yes, no};
    const auto [found, is_new] = known_choices_.try_emplace(one, static_cast<decision>(choices_.size()));
    if (is_new) {
        choices_.push_back(one);
    }
    return found->second;
}

diagram decisions::draw(drawing& in, decision what) {
    // Choices are made of earlier ones: all that are not drawn yet, by rising number.
    std::vector<decision> wanted = {what};
    for (std::size_t next = 0; next < wanted.size(); ++next) {
        const decision one = wanted[next];
        if (one <= too_complex || !in.of_choice.emplace(one, unknown_diagram).second) {
            continue;
        }
        wanted.push_back(choices_[one].yes);
        wanted.push_back(choices_[one].no);
    }
    const auto drawn = [&](decision one) { return one <= too_complex ? diagram{one} : in.of_choice.at(one); };
    std::erase_if(wanted, [](decision one) { return one <= too_complex; });
    std::sort(wanted.begin(), wanted.end());
    for (const decision one : wanted) {
        if (in.of_choice.at(one) == unknown_diagram) {
            const choice& parts = choices_[one];
            in.of_choice[one] = in.all.choose(in.all.of(parts.condition), drawn(parts.yes), drawn(parts.no));
        }
    }
    return drawn(what);
}

/// Asks in one order of the atoms, then in the other; where diagrams of earlier questions take the room, once more
/// without them. The question gives nothing where there was too much to follow.
template <class question>
std::optional<bool> decisions::answer(const question& ask) {
    for (drawing& in : drawings_) {
        const bool was_used = in.all.is_used();
        std::optional<bool> given = ask(in);
        if (!given) {
            in.all.clear();
            in.of_choice.clear();
            if (was_used) {
                given = ask(in);
            }
        }
        if (given) {
            return given;
        }
    }
    return std::nullopt;
}

std::optional<bool> decisions::follows(decision path, decision what) {
    if (what == too_complex) {
        return std::nullopt;
    }
    if (what < too_complex) {
        return what == always;
    }
    return answer([&](drawing& in) -> std::optional<bool> {
        const diagram set = draw(in, what);
        if (set == true_diagram) {
            return true;
        }
        const diagram rest = in.all.both(draw(in, path), in.all.inverse(set));
        return in.all.is_impossible(rest);
    });
}

/// A divisor and all that was found out about its parts.
struct decisions::zero_question {
    drawing& in;
    std::map<std::pair<diagram, value_id>, bool> known = {};
    bool unclear = false;
};

bool decisions::differs_from_zero(zero_question& question, diagram path, value_id integer) {
    if (path == false_diagram) {
        return true;
    }
    if (const auto constant = values_.known_integer(integer)) {
        return *constant != 0;
    }
    const auto [found, is_new] = question.known.try_emplace({path, integer}, false);
    if (!is_new) {
        return found->second;
    }
    if (question.known.size() > most_zero_questions) {
        question.unclear = true;
        return false;
    }
    const value& one = values_[integer];
    const auto part = [&](diagram way, std::size_t place) {
        return differs_from_zero(question, way, one.operands.at(place));
    };
    diagrams& all = question.in.all;
    bool differs = false;
    switch (one.op) {
        case operation::select: {
            const diagram condition = all.of(one.operands[0]);
            differs = part(all.both(path, condition), 1) && part(all.both(path, all.inverse(condition)), 2);
            break;
        }
        case operation::bit_or:
            differs = part(path, 0) || part(path, 1);
            break;
        case operation::negate:
            differs = part(path, 0);
            break;
        default:
            break;
    }
    if (!differs) {
        const auto impossible = all.is_impossible(path, integer);
        question.unclear = question.unclear || !impossible;
        differs = impossible == true;
    }
    question.known[{path, integer}] = differs;
    return differs;
}

bool decisions::differs_from_zero(decision path, value_id integer) {
    const std::optional<bool> given = answer([&](drawing& in) -> std::optional<bool> {
        zero_question question{in};
        const bool differs = differs_from_zero(question, draw(in, path), integer);
        return differs || !question.unclear ? std::optional(differs) : std::nullopt;
    });
    return given == true;
}

value_id decisions::top_of(decision what) {
    const diagram drawn = draw(drawings_[0], what);
    return drawings_[0].all.top_of(drawn);
}

}  // namespace xfc::flow
