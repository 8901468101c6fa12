#include "flow/frontend/decisions.h"

#include <algorithm>

namespace xfc::flow {

namespace {

constexpr std::size_t most_nodes = 200000;

}  // namespace

decisions::decisions(const graph& values)
    : values_(values), nodes_{{no_value, never, never}, {no_value, always, always}, {no_value, 2, 2}} {}

decision decisions::make(value_id atom, decision low, decision high) {
    if (low == high) {
        return low;
    }
    const auto [found, is_new] = known_nodes_.try_emplace({atom, low, high}, static_cast<decision>(nodes_.size()));
    if (is_new) {
        nodes_.push_back({atom, low, high});
    }
    return found->second;
}

value_id decisions::top_of(decision condition) const { return nodes_[condition].atom; }

decision decisions::choose(decision condition, decision yes, decision no) {
    if (condition == too_complex || yes == too_complex || no == too_complex || nodes_.size() > most_nodes) {
        return too_complex;
    }
    if (condition == always || yes == no) {
        return yes;
    }
    if (condition == never) {
        return no;
    }
    if (yes == always && no == never) {
        return condition;
    }
    const question asked{condition, yes, no};
    if (const auto known = answers_.find(asked); known != answers_.end()) {
        return known->second;
    }
    value_id top = nodes_[condition].atom;
    for (const decision side : {yes, no}) {
        const value_id atom = nodes_[side].atom;
        top = atom != no_value && atom > top ? atom : top;
    }
    const auto part = [&](decision whole, bool high) {
        const node& one = nodes_[whole];
        return one.atom != top ? whole : high ? one.high : one.low;
    };
    const decision low = choose(part(condition, false), part(yes, false), part(no, false));
    const decision high = choose(part(condition, true), part(yes, true), part(no, true));
    const decision given = low == too_complex || high == too_complex ? too_complex : make(top, low, high);
    answers_.emplace(asked, given);
    return given;
}

decision decisions::of(value_id condition) {
    if (const auto known = of_value_.find(condition); known != of_value_.end()) {
        return known->second;
    }
    const value one = values_[condition];
    decision given = never;
    switch (one.op) {
        case operation::constant:
            given = one.operands[0] != 0 ? always : never;
            break;
        case operation::bit_not:
            given = inverse(of(one.operands[0]));
            break;
        case operation::bit_and:
            given = both(of(one.operands[0]), of(one.operands[1]));
            break;
        case operation::bit_or:
            given = choose(of(one.operands[0]), always, of(one.operands[1]));
            break;
        case operation::bit_xor: {
            const decision right = of(one.operands[1]);
            given = choose(of(one.operands[0]), inverse(right), right);
            break;
        }
        case operation::select:
            given = choose(of(one.operands[0]), of(one.operands[1]), of(one.operands[2]));
            break;
        default:
            given = make(condition, never, always);
            break;
    }
    of_value_.emplace(condition, given);
    return given;
}

}  // namespace xfc::flow
