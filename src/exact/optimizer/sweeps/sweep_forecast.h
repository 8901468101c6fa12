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

/// Tells all sweeps to come from the ready times and `max_latency` as they are; changes nothing. Takes time near linear
/// in nodes and sweeps where a chain repeats itself, at worst a small part of what making the sweeps takes. Nothing
/// comes back when a time leaves 32 bits; after more sweeps it may. The graph must have no cycle.
[[nodiscard]] std::optional<sweep_forecast> forecast_sweeps();

}  // namespace xfc
