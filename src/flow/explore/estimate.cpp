#include "flow/explore/estimate.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

#include "flow/explore/bit_registers.h"

namespace xfc::flow {

namespace {

constexpr std::int32_t integer_width = 32;

/// How large the product of two integers is: the columns of its rows, one more than a has different bits, and a row for
/// every two bits of b. A row of copies of the sign stays: its digit is told by registers, through which nobody sees.
double columns_of_product(std::int32_t different_of_a, std::int32_t unknown_of_b) {
    std::int32_t columns = 0;
    for (std::int32_t place = 0; place < unknown_of_b; place += 2) {
        columns += std::min(integer_width - place, different_of_a + 1);
    }
    return columns;
}

/// How much of a component is left where bits of its operands are known or equal.
double part_left(const design& made, const bit_counts& bits, node_id id) {
    const design_node& node = made[id];
    const auto part = [&](std::size_t place) {
        const node_id operand = node.operands.at(place);
        return static_cast<double>(bits.different[operand]) / static_cast<double>(made.width_of(operand));
    };
    // A constant's digits are part of the key.
    const auto of_operand = [&](const std::vector<std::int32_t>& counts, std::size_t place) {
        const node_id operand = node.operands.at(place);
        return made[operand].kind == node_kind::constant ? integer_width : counts[operand];
    };
    switch (row_of(node.component).operation) {
        case component_operation::shift:
            return part(0);
        case component_operation::compare:
            return std::max(part(0), part(1));
        case component_operation::multiply:
            return node.code != coding::integer
                       ? 1
                       : columns_of_product(of_operand(bits.different, 0), of_operand(bits.unknown, 1)) /
                             columns_of_product(integer_width, integer_width);
        default:
            return 1;
    }
}

}  // namespace

design_estimate estimate_of(const design& made, const schedule& times, const family_row& family,
                            const cost_table& costs) {
    design_estimate sum;
    double tables = 0;
    double registers = times.latency;  // of the chain from startin to startout
    double blocks = 0;
    // Most instances have one of few keys.
    std::map<std::string, known_cost> known;
    const std::vector<cost_key> keys = keys_of(made, times);
    const bit_counts bits = count_bits(made, times, family);
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind != node_kind::instance) {
            continue;
        }
        const cost_key& key = keys[id];
        const auto [found, added] = known.try_emplace(text_of(key));
        if (added) {
            found->second = costs.cost_of(key, family);
            const double clock = costs.clock_of(key, family);
            sum.megahertz = clock > 0 && (sum.megahertz == 0 || clock < sum.megahertz) ? clock : sum.megahertz;
        }
        if (is_counted_by_bits(made, id)) {
            continue;
        }
        const known_cost& cost = found->second;
        sum.derived += cost.basis == cost_basis::derived ? 1 : 0;
        sum.not_measured += cost.basis == cost_basis::not_measured ? 1 : 0;
        const double part = part_left(made, bits, id);
        tables += part * cost.look_up_tables;
        registers += part * cost.flip_flops;
        blocks += cost.multipliers;
    }
    sum.look_up_tables = std::llround(tables) + bits.look_up_tables;
    sum.flip_flops = std::llround(registers) + bits.flip_flops;
    sum.multipliers = std::llround(blocks);
    return sum;
}

}  // namespace xfc::flow
