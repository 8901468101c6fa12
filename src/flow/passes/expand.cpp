#include "flow/passes/expand.h"

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
    value_id make(const value& like, operation op, std::initializer_list<value_id> operands) {
        return make_folded(made_, op, like.format, {operands.begin(), operands.size()}, like.where, like.call);
    }

    value_id constant(const value& like, double number) {
        return like.format == number_format::single_float ? made_.make_single(static_cast<float>(number), like.where)
                                                          : made_.make_double(number, like.where);
    }

    /// The operand of a negation, or no value.
    value_id negated(value_id id) const { return made_[id].op == operation::negate ? made_[id].operands[0] : no_value; }

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
            case operation::bit_not:  // -x = ~x + 1
                return make(one, operation::subtract, {made_.make_integer(-1), a});
            case operation::shift_left:
                if (const auto distance = made_.known_integer(b)) {
                    const std::uint32_t factor = 1U << (static_cast<std::uint32_t>(*distance) % 32U);
                    return make(one, operation::multiply, {a, made_.make_integer(static_cast<std::int32_t>(factor))});
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
