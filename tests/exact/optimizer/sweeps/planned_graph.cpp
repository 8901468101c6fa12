#include "exact/optimizer/sweeps/planned_graph.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "exact/dfg/dfg.h"
#include "exact/reference/optimizer/reference_passes.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

void build(const planned_graph& plan, const std::vector<std::size_t>& order) {
    start_graph();
    std::vector<std::int32_t> slots(plan.size());
    for (const std::size_t place : order) {
        const planned_node& node = plan[place];
        slots[place] = add_node("n", std::max(1, static_cast<std::int32_t>(node.drivers.size())));
        attributes_at(slots[place]).latency = node.latency;
        attributes_at(slots[place]).ready_time = node.latency;
    }
    for (std::size_t place = 0; place < plan.size(); ++place) {
        if (plan[place].former_driver != no_node) {
            dfg_connect(slots[plan[place].former_driver], slots[place], 0);
        }
        for (std::size_t port = 0; port < plan[place].drivers.size(); ++port) {
            dfg_connect(slots[plan[place].drivers[port]], slots[place], static_cast<std::int32_t>(port));
        }
    }
    current.max_latency = 0;
}

std::vector<std::size_t> slots_as_planned(std::size_t count) {
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0);
    return order;
}

std::vector<std::size_t> slots_against_the_data(std::size_t count) {
    std::vector<std::size_t> order = slots_as_planned(count);
    std::reverse(order.begin(), order.end());
    return order;
}

planned_graph chain(const std::vector<std::int32_t>& latencies) {
    planned_graph plan{{}};
    for (const std::int32_t latency : latencies) {
        plan.push_back({latency, {plan.size() - 1}});
    }
    return plan;
}

sweep_forecast make_sweeps() {
    sweep_forecast made;
    do {
        made.balances.push_back(reference::sweep_ready_times());
        made.depths.push_back(current.max_latency);
    } while (made.balances.back() != 0);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        made.ready_times.push_back(attributes_at(slot).ready_time);
    }
    return made;
}

std::string difference(const sweep_forecast& told, const sweep_forecast& made) {
    const auto compare = [](const std::vector<std::int32_t>& these, const std::vector<std::int32_t>& those,
                            const std::string& what) -> std::string {
        if (these == those) {
            return {};
        }
        if (these.size() != those.size()) {
            return std::to_string(these.size()) + what + " told instead of " + std::to_string(those.size());
        }
        const auto place = std::ranges::mismatch(these, those);
        return what + " " + std::to_string(place.in1 - these.begin()) + ": " + std::to_string(*place.in1) +
               " told instead of " + std::to_string(*place.in2);
    };
    return compare(told.balances, made.balances, " balances") + compare(told.depths, made.depths, " depths") +
           compare(told.ready_times, made.ready_times, " ready times");
}

namespace {

class random_plan {
public:
    explicit random_plan(std::mt19937& random) : random_(random) {}

    /// Chains of operations that read the one before, an early or a late value, and now and then each other.
    planned_graph make() {
        plan_ = {{}, {below(4), {0}}, {below(80), {0}}};
        const std::int32_t chains = 1 + below(3);
        const std::int32_t oddity = below(3) == 0 ? 5 + below(30) : 1000000;  // statements between two odd ones
        for (std::int32_t count = 0; count < chains; ++count) {
            std::vector<std::int32_t> pattern(1 + static_cast<std::size_t>(below(2) * below(5)));
            for (std::int32_t& latency : pattern) {
                latency = 1 + below(9);
            }
            std::size_t value = below(3) == 0 ? any_node() : 0;
            const std::int32_t statements = 1 + below(60);
            const std::int32_t reads_twice = below(10);
            std::size_t before = value;
            for (std::int32_t statement = 0; statement < statements; ++statement) {
                std::size_t other = static_cast<std::size_t>(below(2));
                if (reads_twice == 0) {
                    other = add(2, {value});
                } else if (reads_twice == 1) {
                    other = add(below(3), {before});
                }
                const bool odd = below(oddity) == 0;
                before = value;
                value = add_statement(value, odd ? any_node() : other,
                                      pattern[static_cast<std::size_t>(statement) % pattern.size()], odd);
            }
        }
        return plan_;
    }

private:
    std::int32_t below(std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random_);
    }

    std::size_t add(std::int32_t latency, std::vector<std::size_t> drivers) {
        plan_.push_back({latency, std::move(drivers)});
        return plan_.size() - 1;
    }

    std::size_t any_node() { return static_cast<std::size_t>(below(static_cast<std::int32_t>(plan_.size()))); }

    std::size_t add_statement(std::size_t value, std::size_t other, std::int32_t latency, bool odd) {
        const std::size_t converted = below(4) != 0 ? value : add(2, {value});
        const std::size_t result = below(2) == 0 ? add(latency, {converted, other}) : add(latency, {other, converted});
        if (below(12) == 0) {
            add(below(9), {2, converted});  // an output that waits for the late value
        }
        if (below(12) == 0) {
            std::size_t output = result;  // an output that is reached in some steps
            for (std::int32_t steps = 1 + below(7); steps > 0; --steps) {
                output = add(below(30), {output});
            }
        }
        return add(odd ? below(3) : 0, {result});
    }

    std::mt19937& random_;
    planned_graph plan_;
};

/// Slots as a program gives them (variables first, then operations), in the order of the data, against it, or at
/// random.
std::vector<std::size_t> random_slots(const planned_graph& plan, std::mt19937& random) {
    std::vector<std::size_t> order = slots_as_planned(plan.size());
    switch (std::uniform_int_distribution<int>(0, 4)(random)) {
        case 0:
            return order;
        case 1:
            return slots_against_the_data(plan.size());
        case 2:
            std::shuffle(order.begin(), order.end(), random);
            return order;
        default:
            std::stable_partition(order.begin(), order.end(),
                                  [&plan](std::size_t place) { return plan[place].latency == 0; });
            return order;
    }
}

/// A chain in which each value reads the one before through two ways of some nodes each.
class double_reads {
public:
    explicit double_reads(std::mt19937& random) : random_(random) {}

    planned_slots make(std::int32_t most_values) {
        std::vector<shape> shapes(1 + static_cast<std::size_t>(below(3) == 0 ? below(5) : 0));
        for (shape& each : shapes) {
            each = random_shape();
        }
        const bool skips = below(4) == 0;  // one way leads from the value before the one before
        const std::int32_t oddity = below(3) == 0 ? 5 + below(40) : 1000000;
        result_.plan = {{}};
        add_role(0);
        std::size_t before = 0;
        std::size_t value = 0;
        const std::int32_t values = 1 + below(most_values);
        for (std::int32_t count = 0; count < values; ++count) {
            const std::size_t role = static_cast<std::size_t>(count) % shapes.size();
            const shape odd = below(oddity) == 0 ? random_shape() : shapes[role];
            const std::size_t next =
                add_value(odd, 100 * (1 + static_cast<std::int32_t>(role)), value, skips ? before : value);
            before = value;
            value = next;
        }
        if (below(8) == 0) {
            result_.plan[any_node()].latency = -below(12);
        }
        if (below(8) == 0) {
            leave_former_driver();
        }
        order_slots();
        return std::move(result_);
    }

private:
    struct shape {
        std::vector<std::int32_t> first;
        std::vector<std::int32_t> second;
        std::int32_t operation;
        bool has_variable;
    };

    std::int32_t below(std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random_);
    }
    std::size_t any_node() { return static_cast<std::size_t>(below(static_cast<std::int32_t>(result_.plan.size()))); }

    shape random_shape() {
        shape made{std::vector<std::int32_t>(static_cast<std::size_t>(below(3))),
                   std::vector<std::int32_t>(static_cast<std::size_t>(below(5))), below(12), below(2) == 0};
        for (std::vector<std::int32_t>* way : {&made.first, &made.second}) {
            for (std::int32_t& latency : *way) {
                latency = below(4) == 0 ? below(30) : below(6);
            }
        }
        if (below(2) == 0) {
            std::swap(made.first, made.second);
        }
        return made;
    }

    void add_role(std::int32_t role) { roles_.push_back(role); }

    std::size_t add(std::int32_t latency, std::vector<std::size_t> drivers, std::int32_t role) {
        result_.plan.push_back({latency, std::move(drivers)});
        add_role(role);
        return result_.plan.size() - 1;
    }

    std::size_t add_value(const shape& made, std::int32_t role, std::size_t first, std::size_t second) {
        for (const std::int32_t latency : made.first) {
            first = add(latency, {first}, ++role);
        }
        for (const std::int32_t latency : made.second) {
            second = add(latency, {second}, ++role);
        }
        const std::size_t value = add(made.operation, {first, second}, ++role);
        return made.has_variable ? add(0, {value}, ++role) : value;
    }

    void leave_former_driver() {
        const std::size_t node = any_node();
        if (node > 0) {
            result_.plan[node].former_driver = static_cast<std::size_t>(below(static_cast<std::int32_t>(node)));
        }
    }

    /// Nodes of the same role in their values stand together, each role along the data or against it; or all nodes do.
    void order_slots() {
        result_.order = slots_as_planned(result_.plan.size());
        const bool by_role = below(3) != 0;
        std::vector<std::pair<std::int32_t, std::int32_t>> places(1000);
        for (auto& [group, direction] : places) {
            group = by_role ? below(1000) : 0;
            direction = by_role && below(2) == 0 ? 1 : -1;
        }
        const auto place = [&](std::size_t node) {
            const auto& [group, direction] = places[static_cast<std::size_t>(roles_[node])];
            return std::pair(group, direction * static_cast<std::int32_t>(node));
        };
        std::ranges::sort(result_.order, {}, place);
    }

    std::mt19937& random_;
    planned_slots result_;
    std::vector<std::int32_t> roles_;  // of each node in its value
};

}  // namespace

planned_slots random_chains(std::mt19937& random) {
    planned_slots result;
    result.plan = random_plan(random).make();
    result.order = random_slots(result.plan, random);
    return result;
}

planned_slots random_double_reads(std::mt19937& random, std::int32_t most_values) {
    return double_reads(random).make(most_values);
}

std::vector<std::int32_t> mostly_regular_latencies(std::mt19937& random, std::size_t count) {
    const auto below = [&random](std::int32_t limit) {
        return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(random);
    };
    const std::int32_t period = 1 + below(20);
    std::vector<std::int32_t> latencies(count);
    for (std::size_t place = 0; place < count; ++place) {
        latencies[place] = static_cast<std::int32_t>(place) < period
                               ? 1 + below(9)
                               : latencies[place - static_cast<std::size_t>(period)];
    }
    for (std::int32_t odd = below(5); odd > 0; --odd) {
        latencies[static_cast<std::size_t>(below(static_cast<std::int32_t>(count)))] += below(3);
    }
    return latencies;
}

}  // namespace xfc::test
