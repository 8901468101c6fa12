// Tells the sweeps over ready times from the course that every node's ready time takes over them.
//
// Two ways to a value of which one takes fewer sweeps and the other more cycles give curves of a few long stretches:
// first the one way raises the value by its cycles a sweep, then the other one catches up. Their borders differ from
// value to value, so that nothing is shared; but a stretch costs the same whatever its length.

#include "exact/optimizer/sweeps/forecast_by_curves.h"

#include <algorithm>
#include <array>
#include <utility>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/sweeps/data_order.h"
#include "exact/optimizer/sweeps/later_operand.h"
#include "exact/optimizer/sweeps/ready_curve.h"
#include "exact/optimizer/sweeps/sweep_counts.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

class forecaster {
public:
    forecaster()
        : nodes_(balances_, slots() * steps_a_node + spare_steps),
          depths_(unused_, slots() * steps_a_node + spare_steps),
          curves_(slots()),
          readers_(slots(), 0),
          covered_(slots()) {
        depth_.start = depth_.last = current.max_latency;
    }

    std::optional<sweep_forecast> run() {
        const std::vector<std::int32_t> order = slots_behind_drivers();
        std::optional<std::vector<std::int32_t>> final_times = final_ready_times(order);
        if (!final_times) {
            return std::nullopt;
        }
        look_at_readers();
        for (const std::int32_t slot : order) {
            if (!settle(slot)) {
                return std::nullopt;
            }
        }
        sweep_forecast forecast;
        forecast.balances = balances_.counts();
        forecast.balances.push_back(0);
        forecast.depths = depths(forecast.balances.size());
        forecast.ready_times = std::move(*final_times);
        return forecast;
    }

private:
    /// Chains that repeat themselves take 5 to 50.
    static constexpr std::size_t steps_a_node = 128;
    static constexpr std::size_t spare_steps = 10000;

    static std::size_t slots() { return static_cast<std::size_t>(dfg_used_slots()); }

    void look_at_readers() {
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            for (std::int32_t port = 0; port < 2; ++port) {
                if (const dfg_source* source = source_of(node_at(slot), port)) {
                    const auto driver = static_cast<std::size_t>(source->node);
                    ++readers_[driver];
                    covered_[driver] = covered_[driver] || (source->node < slot && attributes_at(slot).latency >= 0 &&
                                                            port == port_counted_for_depth(slot));
                }
            }
        }
    }

    /// Finds the slot's curve and counts it; false when that would take too long.
    bool settle(std::int32_t slot) {
        const node_attributes& attributes = attributes_at(slot);
        std::array<operand_curve, 2> operands;
        for (std::int32_t port = 0; port < 2; ++port) {
            if (const dfg_source* source = source_of(node_at(slot), port)) {
                operands[static_cast<std::size_t>(port)] = {&curves_[static_cast<std::size_t>(source->node)],
                                                            source->node < slot ? 0 : 1, attributes.latency};
            }
        }
        ready_curve& curve = curves_[static_cast<std::size_t>(slot)];
        curve = nodes_.of(attributes.ready_time, operands[0], operands[1]);
        const std::int32_t counted = port_counted_for_depth(slot);
        if (counted >= 0 && !covered_[static_cast<std::size_t>(slot)]) {
            count_for_depth(operands[static_cast<std::size_t>(counted)]);
        }
        if (nodes_.exceeded() || depths_.exceeded()) {
            return false;
        }
        count_raises(curve);
        drop_read_curves(slot);
        return true;
    }

    void count_for_depth(const operand_curve& counted) {
        if (counted.driver->last + counted.latency > depth_.start) {
            depth_ = depths_.of(depth_.start, {&depth_, 0, 0}, counted);
        }
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
    void drop_read_curves(std::int32_t slot) {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && --readers_[static_cast<std::size_t>(source->node)] == 0) {
                curves_[static_cast<std::size_t>(source->node)] = {};
            }
        }
        if (readers_[static_cast<std::size_t>(slot)] == 0) {
            curves_[static_cast<std::size_t>(slot)] = {};
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
    // Whether a reader that sees a slot's time in the same sweep counts for the depth: then the slot itself need not.
    std::vector<bool> covered_;
    ready_curve depth_;
};

}  // namespace

std::optional<sweep_forecast> forecast_by_curves() { return forecaster().run(); }

}  // namespace xfc
