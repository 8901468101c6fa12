#pragma once

#include <cstdint>
#include <vector>

#include "flow/passes/design.h"

namespace xfc::flow {

/// Bits of each node's bus that synthesis neither knows beforehand nor finds unread, which are those that registers are
/// made for. Constants are followed through selections, logic and shifts by known distances, and these back from what
/// is read of their results; a number that comes from a narrower format has as many bits as that one.
[[nodiscard]] std::vector<std::int32_t> live_bits(const design& made);

}  // namespace xfc::flow
