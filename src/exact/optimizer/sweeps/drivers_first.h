#pragma once

#include <cstdint>
#include <vector>

namespace xfc {

/// All slots, each behind those that drive its two ports. The graph must have no cycle.
[[nodiscard]] std::vector<std::int32_t> slots_behind_drivers();

}  // namespace xfc
