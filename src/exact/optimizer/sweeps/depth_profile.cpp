// The depth after each sweep, out of the times that count for it and the raises that still await them.
//
// Each time is followed down its list, which would cost the square of a chain's length. But where latencies repeat
// along a chain, a later node is ahead by the same time for as long as its list goes on like that of the node one
// period before, and only the rest of the shorter list is followed.

#include "exact/optimizer/sweeps/depth_profile.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace xfc {

namespace {

constexpr std::int32_t no_arrival = -1;

/// An arrival among those of its list.
struct listed_arrival {
    std::int32_t lag;
    std::int32_t last;
    std::int32_t next;  // index of the next arrival of the same list, or `no_arrival`
};

/// For each element the lists' neighbourhood at the distance of a period.
struct list_period {
    std::vector<std::int32_t> earlier;  // the element a period further down the list, or `empty_list`
    std::vector<std::int32_t> later;    // the element a period further up the longest branch, or `empty_list`
    std::vector<std::int32_t> cycles;   // of the raises of one period from this element on
    std::vector<std::int32_t> run_end;  // the last element down the list up to which `cycles` stays the same
};

class depth_profile {
public:
    explicit depth_profile(const sweep_lists& raises)
        : raises_(raises),
          first_arrival_(static_cast<std::size_t>(raises.count()), no_arrival),
          consecutive_(static_cast<std::size_t>(raises.count()), 1) {
        for (std::int32_t element = 1; element < raises.count(); ++element) {
            if (raises.next_of(element) == element - 1) {
                consecutive_[index(element)] = consecutive_[index(element - 1)] + 1;
            }
        }
    }

    void add_arrival(std::int32_t element, std::int32_t lag, std::int32_t last) {
        const std::int32_t same = find_arrival(element, lag);
        if (same != no_arrival) {
            arrivals_[index(same)].last = std::max(arrivals_[index(same)].last, last);
            return;
        }
        arrivals_.push_back({lag, last, first_arrival_[index(element)]});
        first_arrival_[index(element)] = static_cast<std::int32_t>(arrivals_.size()) - 1;
    }

    /// Depths after the sweeps 1 to `sweeps`, none below `least`.
    std::vector<std::int32_t> depths(std::int32_t sweeps, std::int32_t least) {
        // One element more in front: sweeps count from 1.
        depths_.assign(index(sweeps) + 1, least);
        find_longest_branches();
        move_arrivals_off_side_branches();
        choose_period();
        for (std::int32_t element = 0; element < raises_.count(); ++element) {
            for (std::int32_t at = first_arrival_[index(element)]; at != no_arrival; at = arrivals_[index(at)].next) {
                raise_depths_by(element, arrivals_[index(at)]);
            }
        }
        for (std::size_t sweep = 1; sweep < depths_.size(); ++sweep) {
            depths_[sweep] = std::max(depths_[sweep], depths_[sweep - 1]);
        }
        depths_.erase(depths_.begin());
        return std::move(depths_);
    }

private:
    static constexpr std::int32_t longest_period = 16;      // elements
    static constexpr std::int32_t longest_side_branch = 8;  // elements

    static std::size_t index(std::int32_t number) { return static_cast<std::size_t>(number); }

    [[nodiscard]] std::int32_t find_arrival(std::int32_t element, std::int32_t lag) const {
        std::int32_t at = first_arrival_[index(element)];
        while (at != no_arrival && arrivals_[index(at)].lag != lag) {
            at = arrivals_[index(at)].next;
        }
        return at;
    }

    void raise_depth(std::int32_t sweep, std::int32_t depth) {
        depths_[index(sweep)] = std::max(depths_[index(sweep)], depth);
    }

    /// Raises the depths to `last` less the totals of `count` elements from `element` on, the first of them after
    /// `sweep`.
    void raise_depths(std::int32_t last, std::int32_t element, std::int32_t sweep, std::int32_t count) {
        while (count > 0) {
            const std::int32_t together = std::min(count, consecutive_[index(element)]);
            const std::int32_t* totals = raises_.totals() + (element - together + 1);
            std::int32_t* reached = &depths_[index(sweep)];
            for (std::int32_t place = 0; place < together; ++place) {
                reached[place] = std::max(reached[place], last - totals[together - 1 - place]);
            }
            element = raises_.next_of(element - together + 1);
            sweep += together;
            count -= together;
        }
    }

    /// For each element, of the lists that go on from it the longest.
    void find_longest_branches() {
        const std::size_t count = index(raises_.count());
        branch_length_.assign(count, 1);
        longest_branch_.assign(count, empty_list);
        for (std::int32_t element = raises_.count() - 1; element >= 0; --element) {
            const std::int32_t next = raises_.next_of(element);
            if (next != empty_list && branch_length_[index(next)] <= branch_length_[index(element)]) {
                branch_length_[index(next)] = branch_length_[index(element)] + 1;
                longest_branch_[index(next)] = element;
            }
        }
    }

    /// Arrivals of short side branches become arrivals of the list that the branch leaves, so that they can be compared
    /// with those of other branches of that list.
    void move_arrivals_off_side_branches() {
        std::vector<bool> on_side_branch(index(raises_.count()));
        for (std::int32_t element = 0; element < raises_.count(); ++element) {
            const std::int32_t next = raises_.next_of(element);
            on_side_branch[index(element)] =
                next != empty_list &&
                (on_side_branch[index(next)] ||
                 (longest_branch_[index(next)] != element && branch_length_[index(element)] <= longest_side_branch));
        }
        for (std::int32_t element = raises_.count() - 1; element >= 0; --element) {
            if (!on_side_branch[index(element)]) {
                continue;
            }
            const std::int32_t next = raises_.next_of(element);
            for (std::int32_t at = first_arrival_[index(element)]; at != no_arrival; at = arrivals_[index(at)].next) {
                const listed_arrival moved = arrivals_[index(at)];
                if (moved.lag > 0) {
                    raise_depth(moved.lag, moved.last - raises_.total_of(element));
                }
                add_arrival(next, moved.lag + 1, moved.last);
            }
            first_arrival_[index(element)] = no_arrival;
        }
    }

    /// Chooses the number of elements after which amounts and arrivals repeat best, 0 when they do not.
    void choose_period() {
        const std::size_t count = index(raises_.count());
        list_period tried;
        tried.earlier.resize(count);
        std::iota(tried.earlier.begin(), tried.earlier.end(), 0);
        tried.later = tried.earlier;
        std::size_t fewest_breaks = count / 8;
        for (std::int32_t period = 1; period <= longest_period && fewest_breaks > index(period); ++period) {
            const std::size_t breaks = try_next_period(tried);
            if (breaks < fewest_breaks) {
                fewest_breaks = breaks;
                period_ = tried;
            }
        }
    }

    /// Makes the period longer by an element; returns how many elements differ from the one a period away.
    std::size_t try_next_period(list_period& tried) const {
        const std::size_t count = index(raises_.count());
        tried.cycles.resize(count);
        tried.run_end.resize(count);
        std::size_t breaks = 0;
        for (std::int32_t element = 0; element < raises_.count(); ++element) {
            std::int32_t& earlier = tried.earlier[index(element)];
            std::int32_t& later = tried.later[index(element)];
            earlier = earlier == empty_list ? empty_list : raises_.next_of(earlier);
            later = later == empty_list ? empty_list : longest_branch_[index(later)];
            tried.cycles[index(element)] = raises_.total_of(element) - raises_.total_of(earlier);
            const std::int32_t next = raises_.next_of(element);
            const bool goes_on = next != empty_list && tried.cycles[index(next)] == tried.cycles[index(element)];
            tried.run_end[index(element)] = goes_on ? tried.run_end[index(next)] : element;
            breaks += (goes_on ? 0U : 1U) + arrivals_without_partner(element, later);
        }
        return breaks;
    }

    /// Arrivals of the list that have no like among those of the later one.
    [[nodiscard]] std::size_t arrivals_without_partner(std::int32_t element, std::int32_t later) const {
        std::size_t count = 0;
        for (std::int32_t at = first_arrival_[index(element)]; at != no_arrival && later != empty_list;
             at = arrivals_[index(at)].next) {
            count += find_arrival(later, arrivals_[index(at)].lag) == no_arrival ? 1U : 0U;
        }
        return count;
    }

    void raise_depths_by(std::int32_t element, const listed_arrival& arrived) {
        const std::int32_t later = period_.later.empty() ? empty_list : period_.later[index(element)];
        const std::int32_t partner = later == empty_list ? no_arrival : find_arrival(later, arrived.lag);
        const std::int32_t first = arrived.lag == 0 ? raises_.next_of(element) : element;
        const std::int32_t first_sweep = std::max(arrived.lag, 1);
        if (partner == no_arrival) {
            raise_depths(arrived.last, first, first_sweep, raises_.length_of(first));
        } else {
            raise_depths_where_later(arrived, first, first_sweep, arrived.lag == 0 ? raises_.next_of(later) : later,
                                     arrivals_[index(partner)].last - arrived.last);
        }
        raise_depth(first_sweep + raises_.length_of(first), arrived.last);
    }

    /// Raises the depths by an arrival only where the one a period further up, which ends `ahead` cycles later, is
    /// earlier: where more than that is raised within the period.
    void raise_depths_where_later(const listed_arrival& arrived, std::int32_t element, std::int32_t sweep,
                                  std::int32_t later, std::int32_t ahead) {
        while (element != empty_list) {
            const std::int32_t end = period_.run_end[index(later)];
            const std::int32_t count =
                std::min(raises_.length_of(later) - raises_.length_of(end) + 1, raises_.length_of(element));
            if (period_.cycles[index(later)] > ahead) {
                raise_depths(arrived.last, element, sweep, count);
            }
            sweep += count;
            later = raises_.next_of(end);
            element = later == empty_list ? empty_list : period_.earlier[index(later)];
        }
    }

    const sweep_lists& raises_;
    std::vector<listed_arrival> arrivals_;
    std::vector<std::int32_t> first_arrival_;   // of each element's list
    std::vector<std::int32_t> consecutive_;     // elements from this one on whose indices fall by 1
    std::vector<std::int32_t> branch_length_;   // elements of the longest branch from this one up, it included
    std::vector<std::int32_t> longest_branch_;  // the element that this one follows on the longest branch
    list_period period_;
    std::vector<std::int32_t> depths_;
};

}  // namespace

std::vector<std::int32_t> depths_of_sweeps(const sweep_lists& raises, std::span<const arrival> arrivals,
                                           std::int32_t sweeps, std::int32_t least) {
    depth_profile profile(raises);
    for (const arrival& arrived : arrivals) {
        profile.add_arrival(arrived.raises, arrived.lag, arrived.last);
    }
    return profile.depths(sweeps, least);
}

}  // namespace xfc
