#include "flow/explore/estimate.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

#include "flow/explore/live_bits.h"

namespace xfc::flow {

namespace {

// What Yosys makes of a chain of registers for Xilinx 7: from the third one on a look-up table of up to 32.
constexpr std::int32_t shortest_shift_register = 3;  // cycles
constexpr std::int32_t shift_register_cycles = 32;   // of one look-up table

/// How much of a component that works bit by bit is left where bits are known.
double part_left(const design& made, const std::vector<std::int32_t>& live, node_id id) {
    const design_node& node = made[id];
    const auto part = [&](node_id bus) {
        return static_cast<double>(live[bus]) / static_cast<double>(made.width_of(bus));
    };
    switch (row_of(node.component).operation) {
        case component_operation::select:
        case component_operation::bitwise:
            return part(id);
        case component_operation::shift:
            return made[node.operands[1]].kind == node_kind::constant ? part(id) : part(node.operands[0]);
        case component_operation::compare:
            return std::max(part(node.operands[0]), part(node.operands[1]));
        default:
            return 1;
    }
}

/// What is looked up for an instance: of what works bit by bit, the cost with all bits live, of which a part is left.
cost_key counted_key(const design& made, node_id id) {
    const component_operation operation = row_of(made[id].component).operation;
    const bool by_bits = operation == component_operation::select || operation == component_operation::bitwise;
    return by_bits ? without_operands(key_of(made, id)) : key_of(made, id);
}

}  // namespace

delay_cost cost_of_delay(const family_row& family, std::int32_t bits, std::int32_t cycles, bool behind_register) {
    if (!family.shift_registers) {
        return {.flip_flops = std::int64_t{bits} * cycles};
    }
    const std::int32_t length = cycles + (behind_register ? 1 : 0);
    if (length < shortest_shift_register) {
        return {.flip_flops = std::int64_t{bits} * cycles};
    }
    // A register that is taken in was counted with its component.
    return {.look_up_tables = std::int64_t{bits} * ((length + shift_register_cycles - 1) / shift_register_cycles),
            .flip_flops = behind_register ? -std::int64_t{bits} : 0};
}

design_estimate estimate_of(const design& made, const schedule& times, const family_row& family,
                            const cost_table& costs) {
    design_estimate sum;
    double tables = 0;
    double registers = times.latency;  // from startin to startout
    double blocks = 0;
    // Most instances have one of few keys.
    std::map<std::string, known_cost> known;
    const std::vector<std::int32_t> live = live_bits(made);
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind != node_kind::instance) {
            continue;
        }
        const cost_key key = counted_key(made, id);
        const auto [found, added] = known.try_emplace(text_of(key));
        if (added) {
            found->second = costs.cost_of(key, family);
            const double clock = costs.clock_of(key, family);
            sum.megahertz = clock > 0 && (sum.megahertz == 0 || clock < sum.megahertz) ? clock : sum.megahertz;
        }
        const known_cost& cost = found->second;
        sum.derived += cost.basis == cost_basis::derived ? 1 : 0;
        sum.not_measured += cost.basis == cost_basis::not_measured ? 1 : 0;
        const double part = part_left(made, live, id);
        tables += part * cost.look_up_tables;
        registers += part * cost.flip_flops;
        blocks += cost.multipliers;
    }
    const auto delays = delays_of(made, times);
    std::set<node_id> read_at_once(made.outputs.begin(), made.outputs.end());
    for (node_id id = 0; id < made.size(); ++id) {
        for (const node_id operand : made[id].operand_span()) {
            if (ready_time(made, times, operand) == times.start[id]) {
                read_at_once.insert(operand);
            }
        }
    }
    for (node_id id = 0; id < made.size(); ++id) {
        bool lone = made[id].latency() > 0 && !read_at_once.contains(id);
        std::int32_t done = 0;
        for (const std::int32_t tap : delays[id]) {
            const delay_cost cost = cost_of_delay(family, live[id], tap - done, lone);
            tables += static_cast<double>(cost.look_up_tables);
            registers += static_cast<double>(cost.flip_flops);
            done = tap;
            lone = false;
        }
    }
    sum.look_up_tables = std::llround(tables);
    sum.flip_flops = std::llround(registers);
    sum.multipliers = std::llround(blocks);
    return sum;
}

}  // namespace xfc::flow
