#pragma once

#include <cstdint>
#include <vector>

namespace xfc {

/// Counts events of sweeps, many at a time where they come at equal distances. Sweeps count from 0.
class sweep_counts {
public:
    /// One event in each of `number` sweeps, `stride` sweeps from one to the next.
    void add(std::int32_t first, std::int32_t stride, std::int32_t number) {
        change(first, stride, 1);
        change(first + stride * number, stride, -1);
    }

    /// The events of each sweep until the last one that has any.
    [[nodiscard]] std::vector<std::int32_t> counts() const;

private:
    void change(std::int32_t sweep, std::int32_t stride, std::int32_t by);

    /// For each stride by how much a sweep's count differs from that of the sweep a stride before.
    std::vector<std::vector<std::int32_t>> changes_;
};

}  // namespace xfc
