// Tells the sweeps over ready times without making them.
//
// In a long chain of dependent values every sweep raises all nodes behind the first ones, so that the sweeps together
// cost the square of the chain's length. But a raise does not change on its way: a node is raised by what raised its
// driver, in the same sweep when the driver has the lower slot, in the sweep after when it has the higher one. The
// raises that await a node are therefore a list that shares its elements with its driver's:
//
//     u: 3 5 4          u -> v, v > u, v = u + latency        v: 3 5 4      (the same list)
//                       u -> w, w < u, w lags by 2 cycles     w: 2 3 5 4    (one element in front of it)
//
// Of two operands the later one counts in each sweep; their lists are merged. The length of a node's list is the number
// of sweeps that still raise it, which gives the balances. Its ready time after some sweeps is the last one less what
// then remains of the list, which gives the depth.

#include "exact/optimizer/sweeps/forecast_by_lists.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "exact/dfg/dfg.h"
#include "exact/optimizer/sweeps/data_order.h"
#include "exact/optimizer/sweeps/depth_profile.h"
#include "exact/optimizer/sweeps/raise_merger.h"
#include "exact/optimizer/sweeps/sweep_lists.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

/// For each sweep, adds up the elements that stand there in lists that nodes have: `nodes` counts them for each list.
/// Takes time in proportion to the lengths of the lists in front of the elements whose `value` is not 0.
template <class element_value>
void add_elements(const sweep_lists& lists, std::vector<std::int32_t> nodes, element_value value,
                  std::vector<std::int32_t>& sums) {
    // Of each list: how many nodes' lists lead to it after how many elements; the last is that of 0 elements.
    std::vector<std::vector<std::int32_t>> leading(nodes.size());
    for (std::int32_t list = lists.count() - 1; list >= 0; --list) {
        std::vector<std::int32_t> here = std::exchange(leading[static_cast<std::size_t>(list)], {});
        here.push_back(nodes[static_cast<std::size_t>(list)]);
        if (const std::int32_t times = value(list); times != 0) {
            for (std::size_t elements = 0; elements < here.size(); ++elements) {
                sums[elements] += times * here[here.size() - 1 - elements];
            }
        }
        const std::int32_t next = lists.next_of(list);
        if (next == empty_list) {
            continue;
        }
        std::vector<std::int32_t>& behind = leading[static_cast<std::size_t>(next)];
        if (behind.size() < here.size()) {
            std::swap(behind, here);
        }
        for (std::size_t elements = 1; elements <= here.size(); ++elements) {
            behind[behind.size() - elements] += here[here.size() - elements];
        }
    }
}

/// Follows all values from their drivers on and lists what still raises them.
class forecaster {
public:
    forecaster()
        : merger_(raises_, second_raises_, static_cast<std::size_t>(dfg_used_slots()) * merges_a_node + spare_merges),
          last_(static_cast<std::size_t>(dfg_used_slots())),
          raises_of_(static_cast<std::size_t>(dfg_used_slots()), empty_list),
          least_depth_(current.max_latency) {}

    std::optional<sweep_forecast> run() {
        for (const std::int32_t slot : slots_behind_drivers()) {
            if (!settle(slot)) {
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
    static constexpr std::size_t merges_a_node = 4;
    static constexpr std::size_t spare_merges = 10000;
    /// Sweeps until a node has caught up with its drivers; in a chain that more sweeps have run over it is 1.
    static constexpr std::int32_t most_sweeps_behind = 64;

    std::int32_t& raises_of(std::int32_t slot) { return raises_of_[static_cast<std::size_t>(slot)]; }
    std::int32_t& last_of(std::int32_t slot) { return last_[static_cast<std::size_t>(slot)]; }

    /// What a port asks of its node: `last` less the total of `raises` once `lag` sweeps have passed, and so on.
    struct operand {
        std::int32_t raises = empty_list;
        std::int32_t lag = 0;  // sweeps
        std::int32_t last =
            std::numeric_limits<std::int32_t>::min();  // cycles; the least when empty_list drives the port
    };

    bool settle(std::int32_t slot) {
        const node_attributes& attributes = attributes_at(slot);
        if (attributes.ready_time < 0 || attributes.latency < 0) {
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
            if (last > std::numeric_limits<std::int32_t>::max()) {
                return false;
            }
            counted = {raises_of(source->node), source->node < slot ? 0 : 1, static_cast<std::int32_t>(last)};
            operands[static_cast<std::size_t>(port)] = counted;
        }
        count_arrival(counted);
        last_of(slot) = std::max({attributes.ready_time, operands[0].last, operands[1].last});
        raises_of(slot) = empty_list;
        return last_of(slot) == attributes.ready_time || list_raises(operands, slot);
    }

    void count_arrival(const operand& counted) {
        if (counted.last <= current.max_latency) {
            return;
        }
        if (counted.raises == empty_list) {
            least_depth_ = std::max(least_depth_, counted.last);
        } else {
            arrivals_.push_back({counted.raises, counted.lag, counted.last});
        }
    }

    /// Gives the slot its list of raises, out of its operands'.
    bool list_raises(std::array<operand, 2> operands, std::int32_t slot) {
        const std::int32_t ready_time = attributes_at(slot).ready_time;
        for (operand& each : operands) {
            if (each.last <= ready_time) {
                each = {};  // It never raises the node.
            }
        }
        // Sweep by sweep, until the operands have passed the node's own time.
        std::array<std::int32_t, most_sweeps_behind> raises{};
        std::array<std::int32_t, most_sweeps_behind> second_raises{};
        std::array<std::int32_t, 2> left{empty_list, empty_list};
        std::int32_t time = ready_time;
        std::int32_t asked = 0;
        std::int32_t sweeps = 0;
        do {
            if (sweeps == most_sweeps_behind) {
                return false;
            }
            std::array<std::int32_t, 2> times{};
            for (std::size_t port = 0; port < 2; ++port) {
                const operand& from = operands[port];
                left[port] = sweeps == 0 ? raises_.skip(from.raises, 1 - from.lag) : raises_.skip(left[port], 1);
                times[port] = from.last - raises_.total_of(left[port]);
            }
            asked = std::max(times[0], times[1]);
            const auto place = static_cast<std::size_t>(sweeps);
            raises[place] = std::max(asked - time, 0);
            second_raises[place] = times[0] > time && times[1] > times[0] ? 1 : 0;
            time = std::max(time, asked);
            ++sweeps;
        } while (asked < ready_time);
        const std::optional<merged_raises> rest = merge_rest(operands, left);
        if (!rest) {
            return false;
        }
        std::int32_t both = rest->second_raises;
        raises_of(slot) = rest->raises;
        for (std::int32_t sweep = sweeps - 1; sweep >= 0; --sweep) {
            raises_of(slot) = raises_.prepend(raises[static_cast<std::size_t>(sweep)], raises_of(slot));
            both = second_raises_.prepend(second_raises[static_cast<std::size_t>(sweep)], both);
        }
        if (both != empty_list) {
            second_raises_of_nodes_.push_back(both);
        }
        return true;
    }

    std::optional<merged_raises> merge_rest(const std::array<operand, 2>& operands,
                                            const std::array<std::int32_t, 2>& left) {
        for (std::size_t port = 0; port < 2; ++port) {
            if (operands[1 - port].last == operand{}.last) {
                return merged_raises{left[port], empty_list};
            }
        }
        return merger_.merge(left[0], left[1], operands[0].last - operands[1].last);
    }

    /// Raises in each sweep to come, and the 0 of the last.
    std::vector<std::int32_t> balances() {
        std::vector<std::int32_t> nodes(static_cast<std::size_t>(raises_.count()));
        std::int32_t longest = 0;
        for (const std::int32_t raises : raises_of_) {
            if (raises != empty_list) {
                ++nodes[static_cast<std::size_t>(raises)];
                longest = std::max(longest, raises_.length_of(raises));
            }
        }
        std::vector<std::int32_t> result(static_cast<std::size_t>(longest) + 1, 0);
        bool every_element_raises = true;
        for (std::int32_t list = 0; list < raises_.count(); ++list) {
            result[static_cast<std::size_t>(raises_.length_of(list)) - 1] += nodes[static_cast<std::size_t>(list)];
            every_element_raises = every_element_raises && raises_.amount_of(list) != 0;
        }
        for (std::size_t sweep = result.size() - 1; sweep > 0; --sweep) {
            result[sweep - 1] += result[sweep];
        }
        if (!every_element_raises) {
            add_elements(
                raises_, std::move(nodes), [this](std::int32_t list) { return raises_.amount_of(list) == 0 ? -1 : 0; },
                result);
        }
        if (!second_raises_of_nodes_.empty()) {
            std::vector<std::int32_t> nodes_raised_twice(static_cast<std::size_t>(second_raises_.count()));
            for (const std::int32_t list : second_raises_of_nodes_) {
                ++nodes_raised_twice[static_cast<std::size_t>(list)];
            }
            add_elements(
                second_raises_, std::move(nodes_raised_twice),
                [this](std::int32_t list) { return second_raises_.amount_of(list); }, result);
        }
        return result;
    }

    sweep_lists raises_;
    sweep_lists second_raises_;
    raise_merger merger_;
    std::vector<std::int32_t> last_;                    // ready time after the last sweep, in cycles
    std::vector<std::int32_t> raises_of_;               // each slot's list
    std::vector<std::int32_t> second_raises_of_nodes_;  // lists of nodes that both ports raise at times
    std::vector<arrival> arrivals_;
    std::int32_t least_depth_;
};

}  // namespace

std::optional<sweep_forecast> forecast_by_lists() { return forecaster().run(); }

}  // namespace xfc
