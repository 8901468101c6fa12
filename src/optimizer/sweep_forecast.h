#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace xfc {

/// The sweeps that are still to come until no ready time changes any more.
struct sweep_forecast {
    std::vector<std::int32_t> balances;     ///< raises in each sweep; the last element, and only it, is 0
    std::vector<std::int32_t> depths;       ///< `max_latency` after each sweep, in cycles
    std::vector<std::int32_t> ready_times;  ///< of every slot after the last sweep, in cycles
};

/// Tells all sweeps to come from the ready times and `max_latency` as they are, in time near linear in nodes and
/// sweeps; changes nothing. Nothing comes back when the raises do not yet follow one another steadily (see the source
/// for what that asks); after more sweeps they may. The graph must have no cycle.
[[nodiscard]] std::optional<sweep_forecast> forecast_sweeps();

}  // namespace xfc
