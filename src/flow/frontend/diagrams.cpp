#include "flow/frontend/diagrams.h"

#include "flow/frontend/comparisons.h"

namespace xfc::flow {

namespace {

constexpr std::size_t most_nodes = 200000;
constexpr int most_visits = 100000;  ///< of nodes, in search of a way that is possible

}  // namespace

diagrams::diagrams(const graph& values, integer_ranges& ranges, atom_order order)
    : values_(values), ranges_(ranges), order_(order) {
    clear();
}

void diagrams::clear() {
    nodes_ = {{no_value, false_diagram, false_diagram}, {no_value, true_diagram, true_diagram}, {no_value, 2, 2}};
    known_nodes_.clear();
    answers_.clear();
    of_value_.clear();
}

bool diagrams::is_used() const { return nodes_.size() > 3; }

diagram diagrams::make(value_id atom, diagram low, diagram high) {
    if (low == high) {
        return low;
    }
    const auto [found, is_new] = known_nodes_.try_emplace({atom, low, high}, static_cast<diagram>(nodes_.size()));
    if (is_new) {
        nodes_.push_back({atom, low, high});
    }
    return found->second;
}

bool diagrams::comes_before(value_id left, value_id right) const {
    if (left == no_value || right == no_value) {
        return right == no_value && left != no_value;
    }
    return order_ == atom_order::last_first ? left > right : left < right;
}

diagram diagrams::choose(diagram condition, diagram yes, diagram no) {
    if (condition == unknown_diagram || yes == unknown_diagram || no == unknown_diagram || nodes_.size() > most_nodes ||
        answers_.size() > most_nodes) {
        return unknown_diagram;
    }
    if (condition == true_diagram || yes == no) {
        return yes;
    }
    if (condition == false_diagram) {
        return no;
    }
    if (yes == true_diagram && no == false_diagram) {
        return condition;
    }
    const question asked{condition, yes, no};
    if (const auto known = answers_.find(asked); known != answers_.end()) {
        return known->second;
    }
    value_id top = nodes_[condition].atom;
    for (const diagram side : {yes, no}) {
        top = comes_before(nodes_[side].atom, top) ? nodes_[side].atom : top;
    }
    const auto part = [&](diagram whole, bool high) {
        const node& one = nodes_[whole];
        return one.atom != top ? whole : high ? one.high : one.low;
    };
    const diagram low = choose(part(condition, false), part(yes, false), part(no, false));
    const diagram high = choose(part(condition, true), part(yes, true), part(no, true));
    const diagram given = low == unknown_diagram || high == unknown_diagram ? unknown_diagram : make(top, low, high);
    answers_.emplace(asked, given);
    return given;
}

diagram diagrams::of(value_id condition) {
    if (const auto known = of_value_.find(condition); known != of_value_.end()) {
        return known->second;
    }
    const value& one = values_[condition];
    diagram given = false_diagram;
    switch (one.op) {
        case operation::constant:
            given = one.operands[0] != 0 ? true_diagram : false_diagram;
            break;
        case operation::bit_not:
            given = inverse(of(one.operands[0]));
            break;
        case operation::bit_and: {
            const diagram left = of(one.operands[0]);
            given = both(left, of(one.operands[1]));
            break;
        }
        case operation::bit_or: {
            const diagram left = of(one.operands[0]);
            given = choose(left, true_diagram, of(one.operands[1]));
            break;
        }
        case operation::bit_xor: {
            const diagram right = of(one.operands[1]);
            given = choose(of(one.operands[0]), inverse(right), right);
            break;
        }
        case operation::select: {
            const diagram yes = of(one.operands[1]);
            const diagram no = of(one.operands[2]);
            given = choose(of(one.operands[0]), yes, no);
            break;
        }
        default:
            given = make(condition, false_diagram, true_diagram);
            break;
    }
    of_value_.emplace(condition, given);
    return given;
}

std::optional<bool> diagrams::is_impossible(diagram condition, value_id zero) const {
    if (condition == unknown_diagram) {
        return std::nullopt;
    }
    comparisons taken(values_, ranges_, zero);
    if (!taken.is_possible()) {
        return true;
    }
    // Every way through the diagram, as far as the comparisons on it agree. A frame is a node whose sides are tried.
    struct frame {
        diagram at;
        int sides_tried;
    };
    std::vector<frame> ways = {{condition, 0}};
    int visits = 0;
    while (!ways.empty()) {
        frame& last = ways.back();
        if (last.at == true_diagram) {
            return false;
        }
        if (last.sides_tried > 0) {
            taken.take_back();
        }
        if (last.at == false_diagram || last.sides_tried == 2) {
            ways.pop_back();
            continue;
        }
        if (++visits > most_visits) {
            return std::nullopt;
        }
        const node& one = nodes_[last.at];
        const bool truth = last.sides_tried++ == 0;
        if (taken.take(one.atom, truth)) {
            ways.push_back({truth ? one.high : one.low, 0});
        }
    }
    return true;
}

}  // namespace xfc::flow
