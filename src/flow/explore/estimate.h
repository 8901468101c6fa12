#pragma once

#include <cstdint>

#include "flow/explore/cost_table.h"
#include "flow/passes/schedule.h"

namespace xfc::flow {

/// What a design is estimated to take of a device.
struct design_estimate {
    std::int64_t look_up_tables = 0;
    std::int64_t flip_flops = 0;
    std::int64_t multipliers = 0;
    double megahertz = 0;           ///< the lowest of the instances' highest clocks; 0: none of them is known
    std::int32_t derived = 0;       ///< instances whose cost is derived from similar ones
    std::int32_t not_measured = 0;  ///< instances whose cost nobody knows; they are not in the sums

    friend bool operator==(const design_estimate&, const design_estimate&) = default;
};

/// The sum over all instances, delay lines and the chain from startin to startout.
[[nodiscard]] design_estimate estimate_of(const design& made, const schedule& times, const family_row& family,
                                          const cost_table& costs);

}  // namespace xfc::flow
