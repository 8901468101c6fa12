#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace xfc {

/// What holds from a pass on, for the checks behind it.
enum class pass_effect : std::uint8_t {
    none,
    refuses_cycles,  ///< the graph is acyclic from now on
    balances_edges,  ///< right behind the pass every operand arrives when it is needed
    merges_nodes,    ///< consumer entries of merged nodes stay behind from now on
};

/// One step of the optimizer.
struct optimizer_pass {
    std::string_view banner;  ///< the line printed before it
    void (*run)();            ///< null when nothing runs
    pass_effect effect = pass_effect::none;
};

/// All steps in order.
[[nodiscard]] std::span<const optimizer_pass> optimizer_passes();

/// Called after every pass with the index of its row; null when nobody listens. Verifying builds check the graph there.
extern void (*after_optimizer_pass)(std::size_t index);

/// Prints each banner and runs its pass, in the order of the table.
void optimize_datapath();

// The passes, in order. Each works on the one graph and prints only what its own comment says.

/// Takes every node's `fanout` from its consumer list.
void initialize_scratchpad();

/// Clears `is_internal` on variables that nothing reads.
void identify_nodes();

/// Puts arithmetic into the internal formats and a conversion on every edge between two formats.
/// Ends the run when a value depends on itself or a format has no code.
void insert_type_conversions();

/// Bounds the number of operands summed without normalization to `clustersize`.
void renormalize_complex_clusters();

/// Puts a normalizer in front of every multiplier and divider that would get an unnormalized operand.
void insert_normalizations();

/// Gives conversions and normalizers their latency, widths and selectors.
void assign_node_attributes();

/// Gives arithmetic and function nodes their component, latency and widths. Prints "dot multiplier" for each
/// single-precision product that stays in IEEE format.
void map_functions();

/// Computes every node's ready time and `max_latency`; prints a line a sweep.
void balance_latencies();

/// Puts a delay on every edge whose operand arrives early and in front of every output that is ready early.
void insert_delays();

/// Merges equal conversions, normalizers and delays of one value; prints a line a merge.
void remove_redundant_nodes();

/// Gives ports, variables and all other nodes without widths their widths. Ends the run when a port's format has no
/// width or a node could not be connected in the output.
void assign_remaining_bus_attributes();

}  // namespace xfc
