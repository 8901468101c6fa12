#pragma once

#include <optional>

#include "exact/optimizer/sweeps/sweep_forecast.h"

namespace xfc {

/// Forecasts with each node's own ready curve: fast where the raises of every node repeat over long stretches of
/// sweeps. Nothing comes back when they do not, or when a time leaves 32 bits.
[[nodiscard]] std::optional<sweep_forecast> forecast_by_curves();

}  // namespace xfc
