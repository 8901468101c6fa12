#include "exact/optimizer/cycle_check.h"

#include <algorithm>
#include <vector>

#include "exact/dfg/dfg.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

/// Strongly connected components along source links (Tarjan's algorithm), with a stack of its own: chains of drivers
/// may be as long as the program.
class cycle_finder {
public:
    cycle_finder() : visits_(static_cast<std::size_t>(dfg_used_slots())) {}

    /// Slots that lie on a cycle, ascending.
    std::vector<std::int32_t> run() {
        for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
            if (visit_of(slot).number == 0) {
                visit_from(slot);
            }
        }
        std::sort(on_cycle_.begin(), on_cycle_.end());
        return std::move(on_cycle_);
    }

private:
    struct visit {
        std::int32_t number = 0;  // order of the first visit, from 1 on; 0: not visited
        std::int32_t lowest = 0;  // lowest number reachable
        std::int32_t next_port = 0;
        bool open = false;  // still waits for its component to be complete
    };

    visit& visit_of(std::int32_t slot) { return visits_[static_cast<std::size_t>(slot)]; }

    void enter(std::int32_t slot) {
        ++counter_;
        visit_of(slot) = {counter_, counter_, 0, true};
        path_.push_back(slot);
        open_.push_back(slot);
    }

    void visit_from(std::int32_t first) {
        enter(first);
        while (!path_.empty()) {
            const std::int32_t slot = path_.back();
            visit& here = visit_of(slot);
            if (here.next_port < node_at(slot).input_count) {
                const dfg_source* source = source_of(node_at(slot), here.next_port++);
                if (source == nullptr) {
                    continue;
                }
                const visit& there = visit_of(source->node);
                if (there.number == 0) {
                    enter(source->node);
                } else if (there.open) {
                    here.lowest = std::min(here.lowest, there.number);
                }
                continue;
            }
            path_.pop_back();
            if (!path_.empty()) {
                visit& below = visit_of(path_.back());
                below.lowest = std::min(below.lowest, here.lowest);
            }
            if (here.lowest == here.number) {
                close_component(slot);
            }
        }
    }

    void close_component(std::int32_t root) {
        const auto first = std::find(open_.rbegin(), open_.rend(), root).base() - 1;
        if (open_.end() - first > 1 || drives_itself(root)) {
            on_cycle_.insert(on_cycle_.end(), first, open_.end());
        }
        for (auto slot = first; slot != open_.end(); ++slot) {
            visit_of(*slot).open = false;
        }
        open_.erase(first, open_.end());
    }

    static bool drives_itself(std::int32_t slot) {
        const dfg_node& node = node_at(slot);
        for (std::int32_t port = 0; port < node.input_count; ++port) {
            const dfg_source* source = source_of(node, port);
            if (source != nullptr && source->node == slot) {
                return true;
            }
        }
        return false;
    }

    std::vector<visit> visits_;
    std::vector<std::int32_t> path_;
    std::vector<std::int32_t> open_;
    std::vector<std::int32_t> on_cycle_;
    std::int32_t counter_ = 0;
};

/// Whether any source chain comes back to its start. Cheaper than naming the nodes of the cycles.
bool has_cycle() {
    enum class visit : std::uint8_t { none, open, done };
    std::vector<visit> visits(static_cast<std::size_t>(dfg_used_slots()), visit::none);
    const auto visit_of = [&visits](std::int32_t slot) -> visit& { return visits[static_cast<std::size_t>(slot)]; };
    struct step {
        std::int32_t slot;
        std::int32_t next_port;
    };
    std::vector<step> path;
    for (std::int32_t first = 0; first < dfg_used_slots(); ++first) {
        if (visit_of(first) != visit::none) {
            continue;
        }
        path.push_back({first, 0});
        visit_of(first) = visit::open;
        while (!path.empty()) {
            auto& [slot, next_port] = path.back();
            const dfg_node& node = node_at(slot);
            if (next_port == node.input_count) {
                visit_of(slot) = visit::done;
                path.pop_back();
                continue;
            }
            const dfg_source* source = source_of(node, next_port++);
            if (source == nullptr || visit_of(source->node) == visit::done) {
                continue;
            }
            if (visit_of(source->node) == visit::open) {
                return true;
            }
            visit_of(source->node) = visit::open;
            path.push_back({source->node, 0});
        }
    }
    return false;
}

}  // namespace

void require_acyclic_graph() {
    if (!has_cycle()) {
        return;
    }
    const std::vector<std::int32_t> on_cycle = cycle_finder().run();
    // Variables have the lowest slots, so the lowest slot is a variable's if any variable lies on a cycle.
    fail(message_id::cyclic_value, node_at(on_cycle.front()).name);
}

}  // namespace xfc
