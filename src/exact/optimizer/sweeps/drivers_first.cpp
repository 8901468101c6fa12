#include "exact/optimizer/sweeps/drivers_first.h"

#include "exact/dfg/dfg.h"

namespace xfc {

std::vector<std::int32_t> slots_behind_drivers() {
    const auto slots = static_cast<std::size_t>(dfg_used_slots());
    std::vector<std::int32_t> order;
    order.reserve(slots);
    std::vector<bool> placed(slots);
    const auto waits_for = [&placed](std::int32_t slot) {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && !placed[static_cast<std::size_t>(source->node)]) {
                return source->node;
            }
        }
        return no_slot;
    };
    std::vector<std::int32_t> path;
    for (std::int32_t first = 0; first < dfg_used_slots(); ++first) {
        path.push_back(first);
        while (!path.empty()) {
            const std::int32_t slot = path.back();
            if (const std::int32_t driver = waits_for(slot); driver != no_slot) {
                path.push_back(driver);
                continue;
            }
            path.pop_back();
            if (!placed[static_cast<std::size_t>(slot)]) {
                placed[static_cast<std::size_t>(slot)] = true;
                order.push_back(slot);
            }
        }
    }
    return order;
}

}  // namespace xfc
