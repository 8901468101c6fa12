#pragma once

#include <array>
#include <bit>
#include <map>
#include <string>
#include <vector>

#include "flow/graph/fold.h"
#include "flow/graph/graph.h"

namespace xfc::flow::test {

/// Numbers by the names of ports. All formats fit into a double.
using port_numbers = std::map<std::string, double>;

inline known_number number_in(number_format format, double number) {
    switch (format) {
        case number_format::single_float:
            return known_single(static_cast<float>(number));
        case number_format::double_float:
            return known_double(number);
        case number_format::boolean:
            return known_boolean_number(number != 0);
        default:
            return known_integer_number(static_cast<std::int32_t>(static_cast<std::int64_t>(number)));
    }
}

inline double number_of(const known_number& number) {
    switch (number.format) {
        case number_format::single_float:
            return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(number.bits)));
        case number_format::double_float:
            return std::bit_cast<double>(number.bits);
        default:
            return static_cast<std::int32_t>(number.bits);
    }
}

/// What the outputs are when the inputs have these numbers; an input that is not named is 0.
inline port_numbers evaluate(const graph& source, const port_numbers& inputs) {
    std::vector<known_number> results(source.size());
    for (value_id id = 0; id < source.size(); ++id) {
        const value& one = source[id];
        if (one.op == operation::input) {
            const auto found = inputs.find(source.inputs()[one.port()].name);
            results[id] = number_in(one.format, found == inputs.end() ? 0.0 : found->second);
        } else if (one.op == operation::constant) {
            results[id] = {one.format, one.constant_bits()};
        } else {
            std::array<known_number, most_operands> operands;
            const auto ids = one.operand_span();
            for (std::size_t place = 0; place < ids.size(); ++place) {
                operands.at(place) = results[ids[place]];
            }
            results[id] = {one.format, compute(one.op, one.format, {operands.data(), ids.size()})};
        }
    }
    port_numbers outputs;
    for (const port& output : source.outputs()) {
        outputs[output.name] = number_of(results[output.value]);
    }
    return outputs;
}

}  // namespace xfc::flow::test
