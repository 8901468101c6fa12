#pragma once

#include <cstdint>
#include <string>

// The optimizer's passes in their plainest form, each one written down as it is defined, without any bookkeeping that
// saves time. They work on the same graph and print the same lines as the passes of the compiler.

namespace xfc::reference {

/// The name of the lowest-numbered node that can be reached from itself along source links; empty without one.
[[nodiscard]] std::string value_that_depends_on_itself();

void initialize_scratchpad();
void identify_nodes();
void insert_type_conversions();
void renormalize_complex_clusters();
void insert_normalizations();
void balance_latencies();

/// One sweep of `balance_latencies` over all nodes; returns how often a ready time was raised.
std::int32_t sweep_ready_times();

void insert_delays();
void remove_redundant_nodes();

/// The widths only, without the checks that follow them.
void assign_remaining_bus_attributes();

}  // namespace xfc::reference
