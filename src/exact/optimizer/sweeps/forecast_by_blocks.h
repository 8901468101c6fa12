#pragma once

#include <optional>

#include "exact/optimizer/sweeps/sweep_forecast.h"

namespace xfc {

/// Makes all sweeps, many at a time for each node; takes the product of nodes and sweeps, with a small factor. Nothing
/// comes back when a time leaves 32 bits.
[[nodiscard]] std::optional<sweep_forecast> forecast_by_blocks();

}  // namespace xfc
