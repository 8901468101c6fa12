#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "exact/optimizer/sweeps/ready_curve.h"
#include "exact/optimizer/sweeps/sweep_counts.h"

namespace xfc {

/// What one port asks of its node, sweep by sweep.
struct operand_curve {
    const ready_curve* driver = nullptr;  ///< null when nothing drives the port
    std::int32_t lag = 0;                 ///< 1 when the node sees the driver's time of the sweep before
    std::int32_t latency = 0;             ///< the node's, in cycles
};

/// Finds the ready times of nodes out of those of their drivers, many sweeps at a time where both repeat.
class later_operand {
public:
    /// `most_steps` bounds the time that all nodes together take.
    later_operand(sweep_counts& second_raises, std::size_t most_steps)
        : second_raises_(second_raises), steps_left_(most_steps) {}

    /// The curve of a node that is ready at `start`, in cycles, before the first sweep. In each sweep first the first
    /// port raises the node to what it asks for, if that is later, then the second one; sweeps in which both do so are
    /// counted among `second_raises`. Not to be used once the bound is exceeded.
    [[nodiscard]] ready_curve of(std::int64_t start, const operand_curve& first, const operand_curve& second);

    [[nodiscard]] bool exceeded() const { return exceeded_; }

private:
    sweep_counts& second_raises_;
    std::size_t steps_left_;
    bool exceeded_ = false;
};

}  // namespace xfc
