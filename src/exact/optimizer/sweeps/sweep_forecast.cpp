#include "exact/optimizer/sweeps/sweep_forecast.h"

#include "exact/optimizer/sweeps/forecast_by_blocks.h"
#include "exact/optimizer/sweeps/forecast_by_curves.h"
#include "exact/optimizer/sweeps/forecast_by_lists.h"

namespace xfc {

std::optional<sweep_forecast> forecast_sweeps() {
    for (const auto forecast_by : {forecast_by_lists, forecast_by_curves, forecast_by_blocks}) {
        if (std::optional<sweep_forecast> forecast = forecast_by()) {
            return forecast;
        }
    }
    return std::nullopt;
}

}  // namespace xfc
