#include "flow/passes/reciprocals.h"

#include <vector>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

bool divides_one(const graph& source, const value& one) {
    return one.op == operation::divide && is_floating(one.format) && source.is_constant(one.operands[0]) &&
           source.double_of(one.operands[0]) == 1.0;
}

}  // namespace

graph use_reciprocals(const graph& source) {
    graph made;
    std::vector<value_id> renumbered(source.size(), no_value);
    for (call_id id = 1; id < source.call_count(); ++id) {
        made.add_call(source.call_at(id));
    }
    for (const port& input : source.inputs()) {
        renumbered[input.value] = made.add_input(input);
    }
    for (value_id id = 0; id < source.size(); ++id) {
        const value& one = source[id];
        if (one.op == operation::input) {
            continue;
        }
        if (one.op == operation::constant) {
            renumbered[id] = made.make_constant(one.format, one.constant_bits(), one.where, one.call);
            continue;
        }
        const auto make = [&](operation op, std::span<const value_id> operands) {
            std::array<value_id, most_operands> known = {};
            for (std::size_t place = 0; place < operands.size(); ++place) {
                known.at(place) = renumbered[operands[place]];
            }
            return make_folded(made, op, one.format, {known.data(), operands.size()}, one.where, one.call);
        };
        if (!divides_one(source, one)) {
            renumbered[id] = make(one.op, one.operand_span());
        } else if (const value& divisor = source[one.operands[1]]; divisor.op == operation::square_root) {
            renumbered[id] = make(operation::inverse_square_root, divisor.operand_span());
        } else {
            renumbered[id] = make(operation::inverse, one.operand_span().subspan(1));
        }
    }
    for (port output : source.outputs()) {
        output.value = renumbered[output.value];
        made.add_output(std::move(output));
    }
    return without_unused(made);
}

}  // namespace xfc::flow
