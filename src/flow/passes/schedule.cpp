#include "flow/passes/schedule.h"

#include <lemon/network_simplex.h>
#include <lemon/smart_graph.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace xfc::flow {

namespace {

bool is_constant(const design& made, node_id id) { return made[id].kind == node_kind::constant; }

std::vector<std::int32_t> soonest_starts(const design& made) {
    std::vector<std::int32_t> start(made.size(), 0);
    for (node_id id = 0; id < made.size(); ++id) {
        for (const node_id operand : made[id].operand_span()) {
            start[id] = std::max(start[id], start[operand] + made[operand].latency());
        }
    }
    return start;
}

/// Tells every reading of a bus, by node and output: the bus and the cycles that it is read behind its being ready.
/// Constants are not read in any cycle.
template <class reading>
void for_each_reading(const design& made, const schedule& times, const reading& tell) {
    const auto read = [&](node_id bus, std::int32_t when) {
        if (!is_constant(made, bus)) {
            tell(bus, when - ready_time(made, times, bus));
        }
    };
    for (node_id id = 0; id < made.size(); ++id) {
        for (const node_id operand : made[id].operand_span()) {
            read(operand, times.start[id]);
        }
    }
    for (const node_id output : made.outputs) {
        read(output, times.latency);
    }
}

std::int64_t bits_of_delays(const design& made, const schedule& times) {
    std::vector<std::int32_t> longest(made.size(), 0);
    for_each_reading(made, times,
                     [&](node_id bus, std::int32_t delay) { longest[bus] = std::max(longest[bus], delay); });
    std::int64_t bits = 0;
    for (node_id id = 0; id < made.size(); ++id) {
        bits += longest[id] == 0 ? 0 : static_cast<std::int64_t>(made.width_of(id)) * longest[id];
    }
    return bits;
}

/// The last cycles in which the nodes can start when the outputs come after `latency` cycles; inputs come in cycle 0.
std::vector<std::int32_t> latest_starts(const design& made, std::int32_t latency) {
    std::vector<std::int32_t> start(made.size());
    for (node_id id = 0; id < made.size(); ++id) {
        start[id] = made[id].kind == node_kind::instance ? latency - made[id].latency() : 0;
    }
    for (node_id id = made.size(); id-- > 0;) {
        for (const node_id operand : made[id].operand_span()) {
            if (made[operand].kind == node_kind::instance) {
                start[operand] = std::min(start[operand], start[id] - made[operand].latency());
            }
        }
    }
    return start;
}

/// The linear program as the flow that is dual to it. Its variables are cycles: one for cycle 0, one for the start of
/// each instance that can start in more than one cycle, and one for the last reader of each bus of which it is not
/// known who that is.
class balancing_flow {
public:
    balancing_flow(const design& made, const std::vector<std::int32_t>& soonest, std::int32_t latency)
        : made_(made), supply_(net_, 0), cost_(net_), zero_(net_.addNode()) {
        const std::vector<std::int32_t> latest = latest_starts(made, latency);
        for (node_id id = 0; id < made.size(); ++id) {
            start_.push_back(
                soonest[id] < latest[id]
                    ? moment{.node = net_.addNode(), .soonest = soonest[id], .latest = latest[id]}
                    : moment{.node = zero_, .after = soonest[id], .soonest = soonest[id], .latest = soonest[id]});
        }
        add_buses({.node = zero_, .after = latency, .soonest = latency, .latest = latency});
    }

    /// The cycle of every node's start.
    std::vector<std::int32_t> solve() {
        std::int64_t most = 0;
        for (net::ArcIt arc(net_); arc != lemon::INVALID; ++arc) {
            most += std::abs(cost_[arc]);
        }
        for (net::NodeIt node(net_); node != lemon::INVALID; ++node) {
            most += std::abs(supply_[node]);
        }
        // No flow and no potential is larger; half as many bytes are faster to look through.
        return most < (1 << 29) ? solve_with<std::int32_t>() : solve_with<std::int64_t>();
    }

private:
    using net = lemon::SmartDigraph;

    template <class number>
    std::vector<std::int32_t> solve_with() {
        using simplex = lemon::NetworkSimplex<net, number, number>;
        simplex solver(net_);
        solver.costMap(cost_).supplyMap(supply_);
        if (solver.run() != simplex::OPTIMAL) {
            throw std::logic_error("a design has no schedule");
        }
        const std::int64_t zero = solver.potential(zero_);
        std::vector<std::int32_t> cycles;
        for (const moment& start : start_) {
            cycles.push_back(static_cast<std::int32_t>(zero - solver.potential(start.node)) + start.after);
        }
        return cycles;
    }

    /// A cycle: so many after that of a variable, and within which bounds.
    struct moment {
        net::Node node;
        std::int32_t after = 0;
        std::int32_t soonest = 0;
        std::int32_t latest = 0;
    };

    /// `later` >= `earlier` + cycles.
    void not_before(const moment& earlier, const moment& later, std::int32_t cycles) {
        if (earlier.node != later.node) {
            cost_[net_.addArc(earlier.node, later.node)] = later.after - earlier.after - cycles;
        }
    }

    void add_buses(const moment& last) {
        // By bus: who reads it.
        std::vector<std::vector<moment>> readers(made_.size());
        const auto read = [&](node_id bus, const moment& reader) {
            if (!is_constant(made_, bus) && (readers[bus].empty() || readers[bus].back().node != reader.node ||
                                             readers[bus].back().after != reader.after)) {
                readers[bus].push_back(reader);
            }
        };
        for (node_id id = 0; id < made_.size(); ++id) {
            for (const node_id operand : made_[id].operand_span()) {
                read(operand, start_[id]);
            }
            if (made_[id].kind == node_kind::instance) {
                add_lower_bound(id);
            }
        }
        for (const node_id output : made_.outputs) {
            read(output, last);
        }
        for (node_id id = 0; id < made_.size(); ++id) {
            if (!readers[id].empty()) {
                add_line(id, readers[id]);
            }
        }
    }

    /// What reads constants alone follows nothing else.
    void add_lower_bound(node_id id) {
        const auto operands = made_[id].operand_span();
        if (std::all_of(operands.begin(), operands.end(),
                        [&](node_id operand) { return is_constant(made_, operand); })) {
            not_before({.node = zero_}, start_[id], 0);
        }
    }

    /// The line costs its width in every cycle from the bus's being ready to its last reader.
    void add_line(node_id bus, const std::vector<moment>& readers) {
        const auto candidate = std::max_element(readers.begin(), readers.end(),
                                                [](const moment& a, const moment& b) { return a.soonest < b.soonest; });
        const bool is_last = std::all_of(readers.begin(), readers.end(), [&](const moment& other) {
            return &other == &*candidate || other.latest <= candidate->soonest;
        });
        const moment end = is_last ? *candidate : moment{.node = net_.addNode()};
        supply_[end.node] -= made_.width_of(bus);
        supply_[start_[bus].node] += made_.width_of(bus);
        for (const moment& reader : readers) {
            not_before(start_[bus], reader, made_[bus].latency());
            if (!is_last) {
                not_before(reader, end, 0);
            }
        }
    }

    const design& made_;
    net net_;
    net::NodeMap<std::int64_t> supply_;
    net::ArcMap<std::int64_t> cost_;
    net::Node zero_;             ///< cycle 0
    std::vector<moment> start_;  ///< by node of the design
};

}  // namespace

std::int32_t least_latency(const design& made) {
    const schedule soonest{.start = soonest_starts(made)};
    std::int32_t latency = 1;
    for (const node_id output : made.outputs) {
        latency = std::max(latency, is_constant(made, output) ? 0 : ready_time(made, soonest, output));
    }
    return latency;
}

schedule balanced_schedule(const design& made) {
    schedule times;
    times.start = soonest_starts(made);
    times.latency = least_latency(made);
    times.register_bits_soonest = bits_of_delays(made, times);
    times.start = balancing_flow(made, times.start, times.latency).solve();
    times.register_bits = bits_of_delays(made, times);
    return times;
}

delay_taps delays_of(const design& made, const schedule& times) {
    std::vector<std::pair<node_id, std::int32_t>> taps;  // bus, cycles
    for_each_reading(made, times, [&](node_id bus, std::int32_t delay) {
        if (delay > 0) {
            taps.emplace_back(bus, delay);
        }
    });
    std::sort(taps.begin(), taps.end());
    taps.erase(std::unique(taps.begin(), taps.end()), taps.end());
    delay_taps delays;
    delays.first.assign(made.size() + 1, 0);
    for (const auto& [bus, cycles] : taps) {
        delays.cycles.push_back(cycles);
        ++delays.first[bus + 1];
    }
    std::partial_sum(delays.first.begin(), delays.first.end(), delays.first.begin());
    return delays;
}

std::vector<std::string> faults_of(const schedule& times, const design& made) {
    std::vector<std::string> faults;
    const auto expect = [&](bool holds, node_id id, const char* otherwise) {
        if (!holds) {
            faults.push_back("node " + std::to_string(id) + " " + otherwise);
        }
    };
    if (times.start.size() != made.size()) {
        return {"the schedule is not of this design"};
    }
    for (node_id id = 0; id < made.size(); ++id) {
        expect(made[id].kind != node_kind::input || times.start[id] == 0, id, "is an input of another cycle than 0");
        expect(times.start[id] >= 0, id, "starts before the inputs are there");
        for (const node_id operand : made[id].operand_span()) {
            expect(is_constant(made, operand) || ready_time(made, times, operand) <= times.start[id], id,
                   "starts before its operand is ready");
        }
    }
    for (const node_id output : made.outputs) {
        expect(is_constant(made, output) || ready_time(made, times, output) <= times.latency, output,
               "is an output and late");
    }
    if (times.register_bits != bits_of_delays(made, times) || times.register_bits > times.register_bits_soonest) {
        faults.emplace_back("the register bits are not the least");
    }
    return faults;
}

}  // namespace xfc::flow
