#include "exact/optimizer/sweeps/sweep_forecast.h"

#include "exact/optimizer/sweeps/forecast_by_curves.h"
#include "exact/optimizer/sweeps/forecast_by_lists.h"

namespace xfc {

std::optional<sweep_forecast> forecast_sweeps() {
    std::optional<sweep_forecast> forecast = forecast_by_lists();
    return forecast ? forecast : forecast_by_curves();
}

}  // namespace xfc
