#include "flow/graph/graph.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <utility>

namespace xfc::flow {

namespace {

constexpr std::size_t first_index_size = 1024;

std::uint32_t hash_of(const value& one) {
    std::uint64_t hash = (static_cast<std::uint64_t>(one.op) << 8U) | static_cast<std::uint64_t>(one.format);
    for (const value_id operand : one.operands) {
        hash = (hash ^ operand) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29U;
    }
    return static_cast<std::uint32_t>(hash >> 16U);
}

bool equal_values(const value& left, const value& right) {
    return left.op == right.op && left.format == right.format && left.operands == right.operands;
}

}  // namespace

graph::graph() : calls_(1) {}

value_id graph::make(operation op, number_format format, std::span<const value_id> operands, source_range where,
                     call_id call) {
    assert(operands.size() == static_cast<std::size_t>(row_of(op).arity()));
    value wanted{.op = op, .format = format, .where = where, .call = call};
    for (std::size_t place = 0; place < operands.size(); ++place) {
        assert(operands[place] < size());
        wanted.operands.at(place) = operands[place];
    }
    if (row_of(op).commutative && wanted.operands[0] > wanted.operands[1]) {
        std::swap(wanted.operands[0], wanted.operands[1]);
    }
    return find_or_append(wanted);
}

value_id graph::make_constant(number_format format, std::uint64_t bits, source_range where, call_id call) {
    value wanted{.op = operation::constant, .format = format, .where = where, .call = call};
    wanted.operands = {static_cast<value_id>(bits), static_cast<value_id>(bits >> 32U), 0};
    return find_or_append(wanted);
}

value_id graph::make_single(float number, source_range where) {
    return make_constant(number_format::single_float, std::bit_cast<std::uint32_t>(number), where);
}

value_id graph::make_double(double number, source_range where) {
    return make_constant(number_format::double_float, std::bit_cast<std::uint64_t>(number), where);
}

value_id graph::add_input(port description) {
    value wanted{.op = operation::input, .format = description.format, .where = description.where};
    wanted.operands[0] = static_cast<value_id>(inputs_.size());
    const value_id id = find_or_append(wanted);
    description.value = id;
    inputs_.push_back(std::move(description));
    return id;
}

void graph::add_output(port description) {
    assert(description.value < size());
    outputs_.push_back(std::move(description));
}

call_id graph::add_call(call description) {
    calls_.push_back(std::move(description));
    return static_cast<call_id>(calls_.size() - 1);
}

value_id graph::find_or_append(const value& wanted) {
    if ((values_.size() + 1) * 4 > index_.size() * 3) {
        build_index(std::max(index_.size() * 2, std::bit_ceil(values_.size() * 2 + first_index_size)));
    }
    const std::size_t mask = index_.size() - 1;
    const std::uint32_t tag = hash_of(wanted);
    std::size_t at = tag & mask;
    for (; index_[at].id != no_value; at = (at + 1) & mask) {
        if (index_[at].tag == tag && equal_values(values_[index_[at].id], wanted)) {
            return index_[at].id;
        }
    }
    index_[at] = {tag, append(wanted)};
    return index_[at].id;
}

value_id graph::append(const value& wanted) {
    values_.push_back(wanted);
    return static_cast<value_id>(values_.size() - 1);
}

void graph::build_index(std::size_t size) {
    index_ = {};  // given back before the next one is taken
    index_.resize(size);
    const std::size_t mask = size - 1;
    for (value_id id = 0; id < this->size(); ++id) {
        const std::uint32_t tag = hash_of(values_[id]);
        std::size_t at = tag & mask;
        while (index_[at].id != no_value) {
            at = (at + 1) & mask;
        }
        index_[at] = {tag, id};
    }
}

std::optional<std::int32_t> graph::known_integer(value_id id) const {
    const value& one = values_[id];
    if (one.op != operation::constant || one.format != number_format::integer) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(one.operands[0]);
}

std::optional<bool> graph::known_boolean(value_id id) const {
    const value& one = values_[id];
    if (one.op != operation::constant || one.format != number_format::boolean) {
        return std::nullopt;
    }
    return one.operands[0] != 0;
}

float graph::single_of(value_id id) const {
    assert(is_constant(id) && values_[id].format == number_format::single_float);
    return std::bit_cast<float>(values_[id].operands[0]);
}

double graph::double_of(value_id id) const {
    assert(is_constant(id) && is_floating(values_[id].format));
    return values_[id].format == number_format::single_float ? static_cast<double>(single_of(id))
                                                             : std::bit_cast<double>(values_[id].constant_bits());
}

std::size_t graph::memory() const { return values_.capacity() * sizeof(value) + index_.capacity() * sizeof(slot); }

std::vector<bool> needed_for(const graph& source, std::span<const port> outputs) {
    std::vector<bool> needed(source.size(), false);
    for (const port& output : outputs) {
        needed[output.value] = true;
    }
    for (value_id id = source.size(); id-- > 0;) {
        if (needed[id]) {
            for (const value_id operand : source[id].operand_span()) {
                needed[operand] = true;
            }
        }
    }
    return needed;
}

// Unequal values stay unequal when they are numbered anew, so nothing is looked for.
graph extracted(const graph& source, std::span<const port> inputs, std::span<const port> outputs) {
    const std::vector<bool> needed = needed_for(source, outputs);
    graph result;
    result.calls_ = source.calls_;
    result.values_.reserve(inputs.size() + static_cast<std::size_t>(std::count(needed.begin(), needed.end(), true)));
    std::vector<value_id> renumbered(source.size(), no_value);
    for (port input : inputs) {
        const value wanted{.op = operation::input,
                           .format = input.format,
                           .operands = {static_cast<value_id>(result.inputs_.size())},
                           .where = input.where};
        input.value = renumbered[input.value] = result.append(wanted);
        result.inputs_.push_back(std::move(input));
    }
    for (value_id id = 0; id < source.size(); ++id) {
        if (!needed[id] || source[id].op == operation::input) {
            continue;
        }
        value copied = source[id];
        const auto count = copied.operand_span().size();
        for (std::size_t place = 0; place < count; ++place) {
            copied.operands.at(place) = renumbered[copied.operands.at(place)];
        }
        if (row_of(copied.op).commutative && copied.operands[0] > copied.operands[1]) {
            std::swap(copied.operands[0], copied.operands[1]);
        }
        renumbered[id] = result.append(copied);
    }
    for (port output : outputs) {
        output.value = renumbered[output.value];
        result.add_output(std::move(output));
    }
    return result;
}

graph without_unused(const graph& source) { return extracted(source, source.inputs(), source.outputs()); }

}  // namespace xfc::flow
