#pragma once

#include <string>

namespace xfc {

/// What a graph may be expected to hold, besides what always holds.
struct graph_expectations {
    bool every_consumer_agrees = false;  ///< each consumer entry is the consumer's source too; not with variables
                                         ///< assigned twice, nor after merging
    bool acyclic = false;
    bool balanced = false;  ///< `verify_schedule` finds nothing
};

/// Checks the graph's links: slots and ports in range, every source link answered by a consumer entry of the producer,
/// and what `expected` adds. Returns the first violation as a sentence, empty when there is none.
[[nodiscard]] std::string verify_graph(const graph_expectations& expected);

/// Checks the schedule behind the delays: every operand arrives in the cycle in which its consumer needs it, and every
/// output of the datapath is ready at `max_latency`. Returns the first violation, empty when there is none.
[[nodiscard]] std::string verify_schedule();

/// Whether every consumer entry is its consumer's source and stands there once, as it is right after translation
/// unless a variable was assigned twice.
[[nodiscard]] bool consumers_agree();

}  // namespace xfc
