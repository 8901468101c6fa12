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

/// An arrival among those of its list.
struct listed_arrival {
    std::int32_t lag;
    std::int32_t last;
    std::int32_t next;  // index of the next arrival of the same list, or `nothing`
};

/// For each element the lists' neighbourhood at the distance of a period.
struct list_period {
    std::vector<std::int32_t> earlier;  // the element a period further down the list, or `nothing`
    std::vector<std::int32_t> later;    // the element a period further up the longest branch, or `nothing`
    std::vector<std::int32_t> cycles;   // of the raises of one period from this element on
    std::vector<std::int32_t> run_end;  // the last element down the list up to which `cycles` stays the same
};

class depth_profile {
public:
    explicit depth_profile(const sweep_lists& raises)
        : raises_(raises),
          first_arrival_(static_cast<std::size_t>(raises.count()), nothing),
          straight_(static_cast<std::size_t>(raises.count()), 1) {
        for (std::int32_t raise = 1; raise < raises.count(); ++raise) {
            if (raises.next_of(raise) == raise - 1) {
                straight_[index(raise)] = straight_[index(raise - 1)] + 1;
            }
        }
    }

    void add_arrival(std::int32_t raise, std::int32_t lag, std::int32_t last) {
        const std::int32_t same = find_arrival(raise, lag);
        if (same != nothing) {
            arrivals_[index(same)].last = std::max(arrivals_[index(same)].last, last);
            return;
        }
        arrivals_.push_back({lag, last, first_arrival_[index(raise)]});
        first_arrival_[index(raise)] = static_cast<std::int32_t>(arrivals_.size()) - 1;
    }

    /// Depths after the sweeps 1 to `sweeps`, none below `least`.
    std::vector<std::int32_t> depths(std::int32_t sweeps, std::int32_t least) {
        // One element more in front: sweeps count from 1.
        depths_.assign(index(sweeps) + 1, least);
        find_longest_branches();
        move_arrivals_of_twigs();
        choose_period();
        for (std::int32_t raise = 0; raise < raises_.count(); ++raise) {
            for (std::int32_t at = first_arrival_[index(raise)]; at != nothing; at = arrivals_[index(at)].next) {
                take_in(raise, arrivals_[index(at)]);
            }
        }
        for (std::size_t sweep = 1; sweep < depths_.size(); ++sweep) {
            depths_[sweep] = std::max(depths_[sweep], depths_[sweep - 1]);
        }
        depths_.erase(depths_.begin());
        return std::move(depths_);
    }

private:
    static constexpr std::int32_t longest_period = 16;  // elements
    static constexpr std::int32_t longest_twig = 8;     // elements

    static std::size_t index(std::int32_t number) { return static_cast<std::size_t>(number); }

    [[nodiscard]] std::int32_t find_arrival(std::int32_t raise, std::int32_t lag) const {
        std::int32_t at = first_arrival_[index(raise)];
        while (at != nothing && arrivals_[index(at)].lag != lag) {
            at = arrivals_[index(at)].next;
        }
        return at;
    }

    void raise_depth(std::int32_t sweep, std::int32_t depth) {
        depths_[index(sweep)] = std::max(depths_[index(sweep)], depth);
    }

    /// Takes in `last` less the totals of `count` elements from `raise` on, the first of them after `sweep`.
    void take_in_elements(std::int32_t last, std::int32_t raise, std::int32_t sweep, std::int32_t count) {
        while (count > 0) {
            const std::int32_t together = std::min(count, straight_[index(raise)]);
            const std::int32_t* totals = raises_.totals() + (raise - together + 1);
            std::int32_t* reached = &depths_[index(sweep)];
            for (std::int32_t place = 0; place < together; ++place) {
                reached[place] = std::max(reached[place], last - totals[together - 1 - place]);
            }
            raise = raises_.next_of(raise - together + 1);
            sweep += together;
            count -= together;
        }
    }

    /// For each element, of the lists that go on from it the longest.
    void find_longest_branches() {
        const std::size_t count = index(raises_.count());
        branch_length_.assign(count, 1);
        longest_branch_.assign(count, nothing);
        for (std::int32_t raise = raises_.count() - 1; raise >= 0; --raise) {
            const std::int32_t next = raises_.next_of(raise);
            if (next != nothing && branch_length_[index(next)] <= branch_length_[index(raise)]) {
                branch_length_[index(next)] = branch_length_[index(raise)] + 1;
                longest_branch_[index(next)] = raise;
            }
        }
    }

    /// Arrivals of short side branches become arrivals of the list that the branch leaves, so that they can be compared
    /// with those of other branches of that list.
    void move_arrivals_of_twigs() {
        std::vector<bool> on_twig(index(raises_.count()));
        for (std::int32_t raise = 0; raise < raises_.count(); ++raise) {
            const std::int32_t next = raises_.next_of(raise);
            on_twig[index(raise)] =
                next != nothing && (on_twig[index(next)] || (longest_branch_[index(next)] != raise &&
                                                             branch_length_[index(raise)] <= longest_twig));
        }
        for (std::int32_t raise = raises_.count() - 1; raise >= 0; --raise) {
            if (!on_twig[index(raise)]) {
                continue;
            }
            const std::int32_t next = raises_.next_of(raise);
            for (std::int32_t at = first_arrival_[index(raise)]; at != nothing; at = arrivals_[index(at)].next) {
                const listed_arrival moved = arrivals_[index(at)];
                if (moved.lag > 0) {
                    raise_depth(moved.lag, moved.last - raises_.total_of(raise));
                }
                add_arrival(next, moved.lag + 1, moved.last);
            }
            first_arrival_[index(raise)] = nothing;
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
        for (std::int32_t raise = 0; raise < raises_.count(); ++raise) {
            std::int32_t& earlier = tried.earlier[index(raise)];
            std::int32_t& later = tried.later[index(raise)];
            earlier = earlier == nothing ? nothing : raises_.next_of(earlier);
            later = later == nothing ? nothing : longest_branch_[index(later)];
            tried.cycles[index(raise)] = raises_.total_of(raise) - raises_.total_of(earlier);
            const std::int32_t next = raises_.next_of(raise);
            const bool goes_on = next != nothing && tried.cycles[index(next)] == tried.cycles[index(raise)];
            tried.run_end[index(raise)] = goes_on ? tried.run_end[index(next)] : raise;
            breaks += (goes_on ? 0U : 1U) + arrivals_without_partner(raise, later);
        }
        return breaks;
    }

    /// Arrivals of the list that have no like among those of the later one.
    [[nodiscard]] std::size_t arrivals_without_partner(std::int32_t raise, std::int32_t later) const {
        std::size_t count = 0;
        for (std::int32_t at = first_arrival_[index(raise)]; at != nothing && later != nothing;
             at = arrivals_[index(at)].next) {
            count += find_arrival(later, arrivals_[index(at)].lag) == nothing ? 1U : 0U;
        }
        return count;
    }

    void take_in(std::int32_t raise, const listed_arrival& late) {
        const std::int32_t later = period_.later.empty() ? nothing : period_.later[index(raise)];
        const std::int32_t partner = later == nothing ? nothing : find_arrival(later, late.lag);
        const std::int32_t first = late.lag == 0 ? raises_.next_of(raise) : raise;
        const std::int32_t first_sweep = std::max(late.lag, 1);
        if (partner == nothing) {
            take_in_elements(late.last, first, first_sweep, raises_.length_of(first));
        } else {
            take_in_where_later(late, first, first_sweep, late.lag == 0 ? raises_.next_of(later) : later,
                                arrivals_[index(partner)].last - late.last);
        }
        raise_depth(first_sweep + raises_.length_of(first), late.last);
    }

    /// Takes in an arrival only where the one a period further up, which ends `ahead` cycles later, is earlier: where
    /// more than that is raised within the period.
    void take_in_where_later(const listed_arrival& late, std::int32_t raise, std::int32_t sweep, std::int32_t later,
                             std::int32_t ahead) {
        while (raise != nothing) {
            const std::int32_t end = period_.run_end[index(later)];
            const std::int32_t count =
                std::min(raises_.length_of(later) - raises_.length_of(end) + 1, raises_.length_of(raise));
            if (period_.cycles[index(later)] > ahead) {
                take_in_elements(late.last, raise, sweep, count);
            }
            sweep += count;
            later = raises_.next_of(end);
            raise = later == nothing ? nothing : period_.earlier[index(later)];
        }
    }

    const sweep_lists& raises_;
    std::vector<listed_arrival> arrivals_;
    std::vector<std::int32_t> first_arrival_;   // of each element's list
    std::vector<std::int32_t> straight_;        // elements from this one on whose indices fall by 1
    std::vector<std::int32_t> branch_length_;   // elements of the longest branch from this one up, it included
    std::vector<std::int32_t> longest_branch_;  // the element that this one follows on the longest branch
    list_period period_;
    std::vector<std::int32_t> depths_;
};

}  // namespace

std::vector<std::int32_t> depths_of_sweeps(const sweep_lists& raises, std::span<const arrival> arrivals,
                                           std::int32_t sweeps, std::int32_t least) {
    depth_profile profile(raises);
    for (const arrival& late : arrivals) {
        profile.add_arrival(late.raise, late.lag, late.last);
    }
    return profile.depths(sweeps, least);
}

}  // namespace xfc
