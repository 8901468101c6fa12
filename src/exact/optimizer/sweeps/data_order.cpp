#include "exact/optimizer/sweeps/data_order.h"

#include <algorithm>
#include <limits>

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
        if (!placed[static_cast<std::size_t>(first)]) {
            path.push_back(first);
        }
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

std::optional<std::vector<std::int32_t>> final_ready_times(std::span<const std::int32_t> order) {
    std::vector<std::int32_t> times(order.size());
    for (const std::int32_t slot : order) {
        const node_attributes& attributes = attributes_at(slot);
        std::int64_t earliest = attributes.ready_time;
        std::int64_t latest = attributes.ready_time;
        for (std::int32_t port = 0; port < 2; ++port) {
            if (const dfg_source* source = source_of(node_at(slot), port)) {
                const std::int64_t latency = attributes.latency;
                earliest = std::min(earliest, latency + attributes_at(source->node).ready_time);
                latest = std::max(latest, latency + times[static_cast<std::size_t>(source->node)]);
            }
        }
        using cycles = std::numeric_limits<std::int32_t>;
        if (earliest < cycles::min() || latest > cycles::max() || latest - earliest > cycles::max()) {
            return std::nullopt;
        }
        times[static_cast<std::size_t>(slot)] = static_cast<std::int32_t>(latest);
    }
    return times;
}

std::int32_t port_counted_for_depth(std::int32_t slot) {
    for (const std::int32_t port : {1, 0}) {
        if (source_of(node_at(slot), port) != nullptr) {
            return port;
        }
    }
    return -1;
}

}  // namespace xfc
