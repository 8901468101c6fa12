#include "flow/passes/expand.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

/// Makes the expanded graph value by value; operands are already those of the new graph.
class expander {
public:
    explicit expander(const graph& source) : source_(source), renumbered_(source.size(), no_value) {}

    graph run() {
        if (std::none_of(source_.values().begin(), source_.values().end(),
                         [](const value& one) { return may_be_expanded(one); })) {
            return without_unused(source_);
        }
        for (call_id id = 1; id < source_.call_count(); ++id) {
            made_.add_call(source_.call_at(id));
        }
        for (const port& input : source_.inputs()) {
            renumbered_[input.value] = made_.add_input(input);
        }
        for (value_id id = 0; id < source_.size(); ++id) {
            const value& one = source_[id];
            if (one.op == operation::constant) {
                renumbered_[id] = made_.make_constant(one.format, one.constant_bits(), one.where, one.call);
            } else if (one.op != operation::input) {
                renumbered_[id] = expanded(one);
            }
        }
        for (port output : source_.outputs()) {
            output.value = renumbered_[output.value];
            made_.add_output(std::move(output));
        }
        return without_unused(made_);
    }

private:
    /// Whether `expanded` may make anything else of the operation than itself, whatever its operands.
    static bool may_be_expanded(const value& one) {
        switch (one.op) {
            case operation::negate:
            case operation::bit_not:
            case operation::whole_power:
            case operation::exponential_2:
            case operation::logarithm_2:
            case operation::logarithm_10:
                return true;
            default:  // what inverts a condition stands in front of other booleans
                return one.format == number_format::boolean &&
                       (one.op == operation::bit_and || one.op == operation::bit_or || one.op == operation::bit_xor);
        }
    }

    value_id make(const value& like, operation op, std::initializer_list<value_id> operands) {
        return make_folded(made_, op, like.format, {operands.begin(), operands.size()}, like.where, like.call);
    }

    value_id constant(const value& like, double number) {
        return like.format == number_format::single_float ? made_.make_single(static_cast<float>(number), like.where)
                                                          : made_.make_double(number, like.where);
    }

    /// The operand of a negation, or no value.
    value_id negated(value_id id) const { return made_[id].op == operation::negate ? made_[id].operands[0] : no_value; }

    /// Whether a comparison of the library says the opposite: where nothing can be unordered.
    bool has_opposite(value_id id) const {
        const value& one = made_[id];
        const bool orders = one.op == operation::less || one.op == operation::less_equal;
        return one.op == operation::equal || (orders && made_[one.operands[0]].format == number_format::integer);
    }

    value_id inverted(const value& like, value_id condition) {
        if (const value_id inner = inverted_by(condition); inner != no_value) {
            return inner;
        }
        return has_opposite(condition) ? make(like, operation::bit_not, {condition})
                                       : make(like, operation::bit_xor, {condition, made_.make_boolean(true)});
    }

    /// The condition that this one inverts, or no value.
    value_id inverted_by(value_id id) const {
        const value& one = made_[id];
        if (one.op == operation::bit_not) {
            return one.operands[0];
        }
        if (one.op == operation::bit_xor && one.format == number_format::boolean) {
            for (const std::size_t place : {0U, 1U}) {
                if (made_.known_boolean(one.operands.at(place)) == true) {
                    return one.operands.at(1 - place);
                }
            }
        }
        return no_value;
    }

    /// Two conditions joined by and, or by or: an inversion costs a cycle, a selection in the place of both does not.
    value_id combined(const value& one, value_id a, value_id b) {
        const auto under_inversion = [&](value_id id) {
            return made_[id].op == operation::bit_xor ? inverted_by(id) : no_value;
        };
        const bool conjunction = one.op == operation::bit_and;
        const value_id not_a = under_inversion(a);
        const value_id not_b = under_inversion(b);
        if (not_a != no_value && not_b != no_value) {
            return inverted(one, make(one, conjunction ? operation::bit_or : operation::bit_and, {not_a, not_b}));
        }
        if (not_a != no_value || not_b != no_value) {
            const value_id decides = not_a != no_value ? not_a : not_b;
            const value_id kept = not_a != no_value ? b : a;
            const value_id decided = made_.make_boolean(!conjunction);
            return conjunction ? make(one, operation::select, {decides, decided, kept})
                               : make(one, operation::select, {decides, kept, decided});
        }
        return make(one, one.op, {a, b});
    }

    value_id expanded(const value& one) {
        std::array<value_id, most_operands> operand = {no_value, no_value, no_value};
        const auto old = one.operand_span();
        for (std::size_t place = 0; place < old.size(); ++place) {
            operand.at(place) = renumbered_[old[place]];
        }
        const value_id a = operand[0];
        const value_id b = operand[1];
        const bool whole = one.format == number_format::integer;
        switch (one.op) {
            case operation::add:
                if (negated(b) != no_value) {
                    return make(one, operation::subtract, {a, negated(b)});
                }
                if (negated(a) != no_value) {
                    return make(one, operation::subtract, {b, negated(a)});
                }
                break;
            case operation::subtract:
                if (negated(b) != no_value) {
                    return make(one, operation::add, {a, negated(b)});
                }
                break;
            case operation::negate:
                if (whole) {
                    return make(one, operation::subtract, {made_.make_integer(0), a});
                }
                break;
            case operation::bit_not:
                return whole ? make(one, operation::bit_xor, {a, made_.make_integer(-1)}) : inverted(one, a);
            case operation::bit_and:
            case operation::bit_or:
                if (!whole) {
                    return combined(one, a, b);
                }
                break;
            case operation::select:
                if (const value_id inner = inverted_by(a); inner != no_value) {
                    return make(one, operation::select, {inner, operand[2], b});
                }
                break;
            case operation::whole_power:
                return power(one, a, *made_.known_integer(b));
            case operation::exponential_2:
                return make(one, operation::exponential,
                            {make(one, operation::multiply, {a, constant(one, std::numbers::ln2)})});
            case operation::logarithm_2:
                return logarithm(one, a, std::numbers::log2e);
            case operation::logarithm_10:
                return logarithm(one, a, std::numbers::log10e);
            default:
                break;
        }
        return make_folded(made_, one.op, one.format, {operand.data(), old.size()}, one.where, one.call);
    }

    value_id logarithm(const value& one, value_id of, double factor) {
        return make(one, operation::multiply, {make(one, operation::logarithm, {of}), constant(one, factor)});
    }

    /// By squaring, from the exponent's lowest bit on.
    value_id power(const value& one, value_id base, std::int32_t exponent) {
        value_id result = no_value;
        value_id square = base;
        for (auto rest = static_cast<std::uint32_t>(std::abs(exponent)); rest != 0; rest >>= 1U) {
            if ((rest & 1U) != 0) {
                result = result == no_value ? square : make(one, operation::multiply, {result, square});
            }
            if (rest > 1) {
                square = make(one, operation::multiply, {square, square});
            }
        }
        const value_id unit = constant(one, 1.0);
        if (result == no_value) {
            return unit;
        }
        return exponent < 0 ? make(one, operation::divide, {unit, result}) : result;
    }

    const graph& source_;
    graph made_;
    std::vector<value_id> renumbered_;
};

}  // namespace

graph expand_operations(const graph& source) { return expander(source).run(); }

}  // namespace xfc::flow
