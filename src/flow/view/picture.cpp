#include "flow/view/picture.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <queue>
#include <set>

namespace xfc::flow {

namespace {

constexpr std::uint32_t no_bar = 0xFFFFFFFF;

bar_kind kind_of(const graph& values, const design_node& node) {
    if (node.kind == node_kind::input) {
        return bar_kind::input;
    }
    switch (row_of(node.component).operation) {
        case component_operation::convert:
            return bar_kind::conversion;
        case component_operation::normalize:
            return bar_kind::normalization;
        case component_operation::add_or_subtract:
        case component_operation::multiply:
        case component_operation::divide:
            break;
        default:
            return values[node.value].format == number_format::integer ? bar_kind::integer : bar_kind::function;
    }
    if (node.code == coding::integer) {
        return bar_kind::integer;
    }
    const component_operation works = row_of(node.component).operation;
    return works == component_operation::add_or_subtract ? bar_kind::sum
           : works == component_operation::multiply      ? bar_kind::product
                                                         : bar_kind::quotient;
}

/// Earliest starts, and the longest way from a start to an output's end, by node in cycles.
struct path_lengths {
    std::vector<std::int32_t> earliest;
    std::vector<std::int32_t> to_output;
    std::int32_t longest = 0;

    explicit path_lengths(const design& made) : earliest(made.size(), 0), to_output(made.size(), unread) {
        for (node_id id = 0; id < made.size(); ++id) {
            for (const node_id operand : made[id].operand_span()) {
                earliest[id] = std::max(earliest[id], earliest[operand] + made[operand].latency());
            }
        }
        for (const node_id output : made.outputs) {
            to_output[output] = made[output].latency();
        }
        for (node_id id = made.size(); id-- > 0;) {
            for (const node_id operand : made[id].operand_span()) {
                to_output[operand] = std::max(to_output[operand], to_output[id] + made[operand].latency());
            }
            longest = std::max(longest, earliest[id] + to_output[id]);
        }
    }

    [[nodiscard]] std::int32_t slack(node_id id) const { return longest - earliest[id] - to_output[id]; }

private:
    static constexpr std::int32_t unread = std::numeric_limits<std::int32_t>::min() / 2;
};

/// The critical path that ends in the first output that is as late as any.
std::vector<node_id> critical_path(const design& made, const path_lengths& lengths) {
    node_id at = no_node;
    const auto ready = [&](node_id id) { return lengths.earliest[id] + made[id].latency(); };
    for (const node_id output : made.outputs) {
        if (at == no_node || ready(output) > ready(at)) {
            at = output;
        }
    }
    std::vector<node_id> path;
    while (at != no_node) {
        path.push_back(at);
        node_id before = no_node;
        for (const node_id operand : made[at].operand_span()) {
            if (made[operand].kind != node_kind::constant && (before == no_node || ready(operand) > ready(before))) {
                before = operand;
            }
        }
        at = before;
    }
    std::reverse(path.begin(), path.end());
    return path;
}

/// Gives every bar a lane. Bars come by rising start, so a lane that has become free stays so until it is given away.
class lane_assignment {
public:
    explicit lane_assignment(std::vector<bar>& bars) : bars_(bars) {}

    std::int32_t run() {
        for (bar& one : bars_) {
            while (!taken_.empty() && taken_.top().first <= one.start) {
                free_.insert(taken_.top().second);
                taken_.pop();
            }
            one.lane = free_.empty() ? lanes_++ : nearest_free(wish_of(one));
            free_.erase(one.lane);
            taken_.emplace(std::max(one.last, one.start + 1), one.lane);
        }
        return lanes_;
    }

private:
    /// The lane of an operand that ends here, else the mean of all.
    [[nodiscard]] std::int32_t wish_of(const bar& one) const {
        std::int64_t sum = 0;
        for (const std::uint32_t operand : one.operands) {
            const std::int32_t lane = bars_[operand].lane;
            if (free_.contains(lane)) {
                return lane;
            }
            sum += lane;
        }
        return one.operands.empty() ? 0
                                    : static_cast<std::int32_t>(sum / static_cast<std::int64_t>(one.operands.size()));
    }

    [[nodiscard]] std::int32_t nearest_free(std::int32_t wish) const {
        const auto above = free_.lower_bound(wish);
        if (above == free_.end()) {
            return *std::prev(above);
        }
        return above == free_.begin() || *above - wish <= wish - *std::prev(above) ? *above : *std::prev(above);
    }

    using taken_lane = std::pair<std::int32_t, std::int32_t>;  ///< the cycle in which it becomes free, the lane

    std::vector<bar>& bars_;
    std::set<std::int32_t> free_;
    std::priority_queue<taken_lane, std::vector<taken_lane>, std::greater<>> taken_;
    std::int32_t lanes_ = 0;
};

}  // namespace

picture picture_of(const graph& values, const design& made, const schedule& times, const design_names& names) {
    picture result{.latency = times.latency};
    const path_lengths lengths(made);

    std::vector<node_id> order;
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind != node_kind::constant) {
            order.push_back(id);
        }
    }
    const auto start_of = [&](node_id id) { return made[id].kind == node_kind::input ? -1 : times.start[id]; };
    std::stable_sort(order.begin(), order.end(), [&](node_id a, node_id b) { return start_of(a) < start_of(b); });

    std::vector<std::uint32_t> bar_of(made.size(), no_bar);
    for (const node_id id : order) {
        bar_of[id] = static_cast<std::uint32_t>(result.bars.size());
        const std::int32_t ready = ready_time(made, times, id);
        result.bars.push_back({.node = id,
                               .kind = kind_of(values, made[id]),
                               .start = start_of(id),
                               .end = ready,
                               .last = ready,
                               .width = made.width_of(id),
                               .slack = std::clamp(lengths.slack(id), 0, times.latency)});
    }
    for (bar& one : result.bars) {
        for (const node_id operand : made[one.node].operand_span()) {
            if (bar_of[operand] != no_bar) {
                one.operands.push_back(bar_of[operand]);
                bar& read = result.bars[bar_of[operand]];
                read.last = std::max(read.last, one.start);
            }
        }
    }
    for (std::size_t place = 0; place < made.outputs.size(); ++place) {
        if (bar_of[made.outputs[place]] != no_bar) {
            bar& driver = result.bars[bar_of[made.outputs[place]]];
            driver.last = times.latency;
            driver.outputs.push_back(names.outputs[place]);
        }
    }
    result.lanes = lane_assignment(result.bars).run();

    for (const node_id id : critical_path(made, lengths)) {
        if (bar_of[id] == no_bar) {
            continue;
        }
        bar& one = result.bars[bar_of[id]];
        one.on_path = true;
        result.path.push_back(bar_of[id]);
        (one.kind == bar_kind::conversion      ? result.conversion
         : one.kind == bar_kind::normalization ? result.normalization
                                               : result.arithmetic) += made[id].latency();
    }
    return result;
}

}  // namespace xfc::flow
