#pragma once

#include <optional>

#include "exact/optimizer/sweeps/sweep_forecast.h"

namespace xfc {

/// Forecasts with lists of raises that nodes share: fast where a value's operands are of equal rank or one of them
/// stays behind the other. Nothing comes back when the merges of operands would take much longer than that, when a node
/// is far behind its drivers, or when a time is negative or leaves 32 bits.
[[nodiscard]] std::optional<sweep_forecast> forecast_by_lists();

}  // namespace xfc
