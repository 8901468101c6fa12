// Tells the sweeps over ready times without making them, when each is like the one before.
//
// In a long chain of dependent values every sweep raises all nodes behind the first ones, so that the sweeps together
// cost the square of the chain's length. But a raise does not change on its way: a node that only one driver still
// raises is raised by what raised its driver, in the same sweep when the driver has the lower slot, in the sweep after
// when it has the higher one. The raises that await a node are therefore a list, shared with its driver:
//
//     u: 3 5 4          u -> v, v > u, v = u + latency        v: 3 5 4      (the same list)
//                       u -> w, w < u, w lags by 2 cycles     w: 2 3 5 4    (one element in front of it)
//
// The length of a node's list is the number of sweeps that still raise it, which gives the balances. Its ready time
// after some sweeps is the last one less what then remains of the list, which gives the depth.
//
// Nothing is told while a node has not yet caught up with its driver in a lower slot, or while two drivers raise a node
// in turn; when one of them is always later, the other is left out.

#include "optimizer/sweep_forecast.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/run_state.h"
#include "dfg/dfg.h"
#include "optimizer/depth_profile.h"
#include "optimizer/raise_lists.h"

namespace xfc {

namespace {

/// The greatest number of cycles that some raises in a row come to, for each list and small numbers of raises.
class raise_peaks {
public:
    static constexpr std::int32_t most_raises = 8;

    explicit raise_peaks(const raise_lists& raises) : raises_(raises) {}

    /// Of `number` raises in a row, 0 to `most_raises`, anywhere in the list; the last ones of a list may be fewer.
    std::int32_t peak(std::int32_t raise, std::int32_t number) {
        for (std::int32_t added = static_cast<std::int32_t>(peaks_.size()); added <= raise; ++added) {
            add(added);
        }
        return number == 0 ? 0 : peaks_[static_cast<std::size_t>(raise)][static_cast<std::size_t>(number) - 1];
    }

private:
    using row = std::array<std::int32_t, most_raises>;

    void add(std::int32_t raise) {
        const std::int32_t next = raises_.next_of(raise);
        row peaks = next == nothing ? row{} : peaks_[static_cast<std::size_t>(next)];
        std::int32_t behind = raise;
        for (std::int32_t& greatest : peaks) {
            behind = behind == nothing ? nothing : raises_.next_of(behind);
            greatest = std::max(greatest, raises_.total_of(raise) - raises_.total_of(behind));
        }
        peaks_.push_back(peaks);
    }

    const raise_lists& raises_;
    std::vector<row> peaks_;  // of the lists that have been asked for and all before them
};

/// Follows all values from their drivers on and lists what still raises them.
class forecaster {
public:
    forecaster()
        : last_(static_cast<std::size_t>(dfg_used_slots())),
          raise_(static_cast<std::size_t>(dfg_used_slots()), unknown),
          least_depth_(max_latency) {}

    std::optional<sweep_forecast> run() {
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            if (!follow(slot)) {
                return std::nullopt;
            }
        }
        sweep_forecast forecast;
        forecast.balances = balances();
        forecast.depths =
            depths_of_sweeps(raises_, arrivals_, static_cast<std::int32_t>(forecast.balances.size()), least_depth_);
        forecast.ready_times = std::move(last_);
        return forecast;
    }

private:
    static constexpr std::int32_t unknown = -2;

    std::int32_t& raise_of(std::int32_t slot) { return raise_[static_cast<std::size_t>(slot)]; }
    std::int32_t& last_of(std::int32_t slot) { return last_[static_cast<std::size_t>(slot)]; }

    /// Settles the slot after all that drive it; false when the raises are not steady.
    bool follow(std::int32_t first) {
        if (raise_of(first) != unknown) {
            return true;
        }
        path_.push_back(first);
        while (!path_.empty()) {
            const std::int32_t slot = path_.back();
            const std::int32_t driver = unknown_driver(slot);
            if (driver != no_slot) {
                path_.push_back(driver);
                continue;
            }
            path_.pop_back();
            if (raise_of(slot) == unknown && !settle(slot)) {
                return false;
            }
        }
        return true;
    }

    std::int32_t unknown_driver(std::int32_t slot) {
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source != nullptr && raise_of(source->node) == unknown) {
                return source->node;
            }
        }
        return no_slot;
    }

    /// A port's driver and the time that the node takes from it.
    struct operand {
        std::int32_t driver = no_slot;
        std::int32_t last = 0;     // cycles, after the last sweep
        std::int32_t lag = 0;      // sweeps until the driver's time reaches the node
        bool raises_node = false;  // more than the node's own time
    };

    bool settle(std::int32_t slot) {
        const node_attributes& attributes = attributes_at(slot);
        if (attributes.ready_time < 0) {
            return false;  // so that no difference of two times leaves 32 bits
        }
        std::array<operand, 2> operands;
        operand counted;  // Kept: only the second port, if it has a driver, counts for the depth.
        for (std::int32_t port = 0; port < 2; ++port) {
            const dfg_source* source = source_of(node_at(slot), port);
            if (source == nullptr) {
                continue;
            }
            const std::int64_t last = std::int64_t{last_of(source->node)} + attributes.latency;
            if (last > std::numeric_limits<std::int32_t>::max() || last < std::numeric_limits<std::int32_t>::min()) {
                return false;
            }
            counted = {source->node, static_cast<std::int32_t>(last), source->node < slot ? 0 : 1,
                       last > attributes.ready_time};
            operands[static_cast<std::size_t>(port)] = counted;
        }
        const std::optional<std::int32_t> raising = only_raising_driver(operands, attributes.ready_time);
        if (!raising) {
            return false;
        }
        last_of(slot) = std::max({attributes.ready_time, operands[0].last, operands[1].last});
        raise_of(slot) = nothing;
        if (*raising != no_slot && !hand_down(*raising, slot)) {
            return false;
        }
        count_arrival(slot, counted, *raising);
        return true;
    }

    /// The driver whose port makes all raises of a node, `no_slot` when nothing raises it; nothing when both ports do.
    std::optional<std::int32_t> only_raising_driver(const std::array<operand, 2>& operands, std::int32_t ready_time) {
        const auto& [first, second] = operands;
        if (!first.raises_node || !second.raises_node) {
            return first.raises_node ? first.driver : second.raises_node ? second.driver : no_slot;
        }
        if (first.driver == second.driver || is_never_later(second, first, 0)) {
            return first.driver;
        }
        // The first port comes first in each sweep, so its time must not even reach the one of the sweep before.
        if (time_after(first, 1) <= ready_time && is_never_later(first, second, 1)) {
            return second.driver;
        }
        return std::nullopt;
    }

    /// The time that the operand asks of the node in that sweep, from 1 on.
    std::int32_t time_after(const operand& of, std::int32_t sweep) {
        return of.last - raises_.total_of(skip(raise_of(of.driver), sweep - of.lag));
    }

    /// What is left of a list without its first `number` elements.
    [[nodiscard]] std::int32_t skip(std::int32_t raise, std::int32_t number) const {
        for (; number > 0 && raise != nothing; --number) {
            raise = raises_.next_of(raise);
        }
        return raise;
    }

    /// Whether the earlier operand's time in no sweep exceeds the later one's `sweeps` sweeps before. False also when
    /// that is not seen at once, because the lists of the two do not soon meet.
    bool is_never_later(const operand& earlier, const operand& later, std::int32_t sweeps) {
        constexpr std::int32_t most_steps = 16;
        const std::int64_t ahead = std::int64_t{later.last} - earlier.last;
        std::int32_t left_earlier = skip(raise_of(earlier.driver), 1 + sweeps - earlier.lag);
        std::int32_t left_later = skip(raise_of(later.driver), 1 - later.lag);
        for (std::int32_t step = 0; step < most_steps; ++step) {
            if (raises_.total_of(left_later) - raises_.total_of(left_earlier) > ahead) {
                return false;
            }
            if (left_later == nothing) {
                return ahead >= 0;
            }
            const std::int32_t more = raises_.length_of(left_later) - raises_.length_of(left_earlier);
            if (more <= 0 && -more <= raise_peaks::most_raises && skip(left_earlier, -more) == left_later) {
                return ahead >= 0;
            }
            if (more > 0 && more <= raise_peaks::most_raises && skip(left_later, more) == left_earlier) {
                return peaks_.peak(left_later, more) <= ahead;
            }
            left_earlier = skip(left_earlier, 1);
            left_later = skip(left_later, 1);
        }
        return false;
    }

    /// Gives the slot its list of raises, out of its driver's.
    bool hand_down(std::int32_t driver, std::int32_t slot) {
        const std::int64_t lag = std::int64_t{attributes_at(driver).ready_time} + attributes_at(slot).latency -
                                 attributes_at(slot).ready_time;
        if (driver < slot) {
            raise_of(slot) = raise_of(driver);
            return lag == 0;
        }
        if (lag <= 0) {
            return false;
        }
        raise_of(slot) = raises_.prepend(static_cast<std::int32_t>(lag), raise_of(driver));
        return true;
    }

    void count_arrival(std::int32_t slot, const operand& counted, std::int32_t raising_driver) {
        if (counted.driver == no_slot || counted.last <= max_latency) {
            return;
        }
        if (counted.driver == raising_driver) {
            arrivals_.push_back({raise_of(slot), 0, counted.last});
        } else if (raise_of(counted.driver) != nothing) {
            arrivals_.push_back({raise_of(counted.driver), counted.lag, counted.last});
        } else {
            least_depth_ = std::max(least_depth_, counted.last);
        }
    }

    /// Raises in each sweep to come, and the 0 of the last.
    std::vector<std::int32_t> balances() {
        std::int32_t longest = 0;
        for (const std::int32_t length : raises_.length) {
            longest = std::max(longest, length);
        }
        std::vector<std::int32_t> result(static_cast<std::size_t>(longest) + 1, 0);
        for (const std::int32_t raise : raise_) {
            if (raise != nothing) {
                ++result[static_cast<std::size_t>(raises_.length_of(raise)) - 1];
            }
        }
        for (std::size_t sweep = result.size() - 1; sweep > 0; --sweep) {
            result[sweep - 1] += result[sweep];
        }
        return result;
    }

    raise_lists raises_;
    raise_peaks peaks_{raises_};
    std::vector<std::int32_t> last_;   // ready time after the last sweep, in cycles
    std::vector<std::int32_t> raise_;  // first of each slot's raises
    std::vector<arrival> arrivals_;
    std::vector<std::int32_t> path_;
    std::int32_t least_depth_;
};

}  // namespace

std::optional<sweep_forecast> forecast_sweeps() { return forecaster().run(); }

}  // namespace xfc
