#include "exact/optimizer/optimizer.h"

#include <array>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/pass_checks.h"
#include "exact/run/console.h"

namespace xfc {

#ifdef XFC_VERIFY
void (*after_optimizer_pass)(std::size_t index) = check_behind_pass;
#else
void (*after_optimizer_pass)(std::size_t index) = nullptr;
#endif

namespace {

constexpr std::array<optimizer_pass, 12> pass_table{{
    {"\n*** INITIALIZE OPTIMIZER SCRATCHPAD ***\n", initialize_scratchpad},
    {"*** IDENTIFY NODES ***\n", identify_nodes},
    {"*** INSERT TYPE CONVERSIONS ***\n", insert_type_conversions, pass_effect::refuses_cycles},
    {"*** RENORMALIZE COMPLEX CLUSTERS ***\n", renormalize_complex_clusters},
    // Kept: nothing runs behind this banner, which is part of the log all the same.
    {"*** ALIAS FUNCTIONS ***\n", nullptr},
    {"*** INSERT NORMALIZATIONS ***\n", insert_normalizations},
    {"*** NODE ATTRIBUTES ***\n", assign_node_attributes},
    {"*** MAP FUNCTIONS ***\n", map_functions},
    {"*** BALANCE LATENCIES ***\n", balance_latencies},
    {"*** INSERT DELAYS ***\n", insert_delays, pass_effect::balances_edges},
    {"*** REMOVE REDUNDANT NODES ***\n", remove_redundant_nodes, pass_effect::merges_nodes},
    {"*** ASSIGN REMAINING BUS ATTRIBUTES ***\n", assign_remaining_bus_attributes},
}};

}  // namespace

std::span<const optimizer_pass> optimizer_passes() { return pass_table; }

void optimize_datapath() {
    for (std::size_t index = 0; index < pass_table.size(); ++index) {
        const optimizer_pass& pass = pass_table[index];
        standard_output.append(pass.banner);
        if (pass.run != nullptr) {
            pass.run();
        }
        if (after_optimizer_pass != nullptr) {
            after_optimizer_pass(index);
        }
    }
}

void initialize_scratchpad() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        attributes_at(slot).fanout = dfg_count_consumers(slot);
    }
}

void identify_nodes() {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        dfg_node& node = node_at(slot);
        if (node.attributes.is_internal == 1 && consumers_of(node) == nullptr) {
            node.attributes.is_internal = 0;
        }
    }
}

}  // namespace xfc
