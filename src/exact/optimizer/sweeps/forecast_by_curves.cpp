// Tells the sweeps over ready times from the course that every node's ready time takes over them.
//
// Two ways to a value of which one takes fewer sweeps and the other more cycles give curves of a few long stretches:
// first the one way raises the value by its cycles a sweep, then the other one catches up. Their borders differ from
// value to value, so that nothing is shared; but a stretch costs the same whatever its length.

#include "exact/optimizer/sweeps/forecast_by_curves.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/sweeps/drivers_first.h"
#include "exact/optimizer/sweeps/later_operand.h"
#include "exact/optimizer/sweeps/ready_curve.h"
#include "exact/optimizer/sweeps/sweep_counts.h"
#include "exact/run/run_state.h"

namespace xfc {

namespace {

class forecaster {
public:
    forecaster()
        : nodes_(balances_, slots() * steps_a_node + spare_steps),
          depths_(unused_, slots() * steps_a_node + spare_steps),
          curves_(slots()),
          readers_(slots(), 0),
          last_(slots()) {
        depth_.start = depth_.last = max_latency;
    }

    std::optional<sweep_forecast> run() {
        count_readers();
        for (const std::int32_t slot : slots_behind_drivers()) {
            if (!settle(slot)) {
                return std::nullopt;
            }
        }
        sweep_forecast forecast;
        forecast.balances = balances_.counts();
        forecast.balances.push_back(0);
        forecast.depths = depths(forecast.balances.size());
        forecast.ready_times = std::move(last_);
        return forecast;
    }

private:
    static constexpr std::size_t steps_a_node = 1000;
    static constexpr std::size_t spare_steps = 100000;

    static std::size_t slots() { return static_cast<std::size_t>(dfg_used_slots()); }

    void count_readers() {
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            for (std::int32_t port = 0; port < 2; ++port) {
                if (const dfg_source* source = source_of(node_at(slot), port)) {
                    ++readers_[static_cast<std::size_t>(source->node)];
                }
            }
        }
    }

    /// Finds the slot's curve and counts it; false when it cannot be told.
    bool settle(std::int32_t slot) {
        const node_attributes& attributes = attributes_at(slot);
        std::array<operand_curve, 2> operands;
        operand_curve counted;  // Kept: only the second port, if it has a driver, counts for the depth.
        std::int64_t earliest = attributes.ready_time;
        std::int64_t latest = attributes.ready_time;
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source == nullptr) {
                continue;
            }
            const ready_curve& driver = curves_[static_cast<std::size_t>(source->node)];
            counted = {&driver, source->node < slot ? 0 : 1, attributes.latency};
            operands[static_cast<std::size_t>(port)] = counted;
            earliest = std::min(earliest, driver.start + attributes.latency);
            latest = std::max(latest, driver.last + attributes.latency);
        }
        constexpr std::numeric_limits<std::int32_t> cycles;
        if (earliest < cycles.min() || latest > cycles.max() || latest - earliest > cycles.max()) {
            return false;
        }
        last_[static_cast<std::size_t>(slot)] = static_cast<std::int32_t>(latest);
        ready_curve& curve = curves_[static_cast<std::size_t>(slot)];
        curve = nodes_.of(attributes.ready_time, operands[0], operands[1]);
        if (nodes_.exceeded() || !count_for_depth(counted)) {
            return false;
        }
        count_raises(curve);
        drop_drivers(slot);
        return true;
    }

    bool count_for_depth(const operand_curve& counted) {
        if (counted.driver != nullptr && counted.driver->last + counted.latency > depth_.start) {
            depth_ = depths_.of(depth_.start, {&depth_, 0, 0}, counted);
        }
        return !depths_.exceeded();
    }

    void count_raises(const ready_curve& curve) {
        std::int32_t sweep = 0;
        std::size_t raise = 0;
        for (const raise_stretch& stretch : curve.stretches) {
            for (std::int32_t place = 0; place < stretch.period; ++place) {
                if (curve.raises[raise++] != 0) {
                    const std::int32_t number = (stretch.length - place + stretch.period - 1) / stretch.period;
                    balances_.add(sweep + place, number == 1 ? 1 : stretch.period, number);
                }
            }
            sweep += stretch.length;
        }
    }

    /// Drops the curves that no other node reads.
    void drop_drivers(std::int32_t slot) {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && --readers_[static_cast<std::size_t>(source->node)] == 0) {
                curves_[static_cast<std::size_t>(source->node)] = {};
            }
        }
    }

    [[nodiscard]] std::vector<std::int32_t> depths(std::size_t sweeps) const {
        std::vector<std::int32_t> result(sweeps);
        curve_reader reader(&depth_);
        std::int64_t depth = depth_.start;
        for (std::int32_t& each : result) {
            depth += reader.read();
            each = static_cast<std::int32_t>(depth);
        }
        return result;
    }

    sweep_counts balances_;
    sweep_counts unused_;  // no port raises the depth
    later_operand nodes_;
    later_operand depths_;
    std::vector<ready_curve> curves_;    // each slot's, while it has readers
    std::vector<std::int32_t> readers_;  // ports that are still to read each slot's curve
    std::vector<std::int32_t> last_;     // ready time after the last sweep, in cycles
    ready_curve depth_;
};

}  // namespace

std::optional<sweep_forecast> forecast_by_curves() { return forecaster().run(); }

}  // namespace xfc
