// What two operands together do to a node, out of what each of them asks for sweep by sweep: in each sweep the later of
// the two times counts, and the node is raised by what that time gains on the one of the sweep before.

#include "exact/optimizer/sweeps/raise_merger.h"

#include <algorithm>

namespace xfc {

/// Cycles from the operand's time now to the node's last time.
std::int32_t raise_merger::left_of_first(const merge_key& key) const {
    return raises_.total_of(key.first) + std::max(-key.first_ahead, 0);
}
std::int32_t raise_merger::left_of_second(const merge_key& key) const {
    return raises_.total_of(key.second) + std::max(key.first_ahead, 0);
}

std::optional<merged_raises> raise_merger::known(const merge_key& key) const {
    if (key.first == empty_list && key.second == empty_list) {
        return merged_raises{empty_list, empty_list};
    }
    // An operand that stays where it is raises empty_list once the other one has passed it, and one that equals the
    // other up to a delay neither.
    const std::int32_t first = left_of_first(key);
    const std::int32_t second = left_of_second(key);
    if ((key.second == empty_list && first <= second) || (key.first == key.second && key.first_ahead >= 0)) {
        return merged_raises{key.first, empty_list};
    }
    if (key.first == empty_list && second <= first) {
        return merged_raises{key.second, empty_list};
    }
    if (const auto found = merges_.find(key); found != merges_.end()) {
        return found->second;
    }
    return std::nullopt;
}

std::optional<merged_raises> raise_merger::merge(std::int32_t first, std::int32_t second, std::int32_t first_ahead) {
    merge_key key{first, second, first_ahead};
    std::optional<merged_raises> merged = known(key);
    unmerged_.clear();
    while (!merged) {
        if (merges_.size() + unmerged_.size() >= most_merges_) {
            return std::nullopt;
        }
        unmerged_.push_back(key);
        key.first = raises_.skip(key.first, 1);
        key.second = raises_.skip(key.second, 1);
        merged = known(key);
    }
    while (!unmerged_.empty()) {
        const merge_key& now = unmerged_.back();
        const merge_key after{raises_.skip(now.first, 1), raises_.skip(now.second, 1), now.first_ahead};
        const std::int32_t left = std::min(left_of_first(now), left_of_second(now));
        const std::int32_t first_left = left_of_first(after);
        const std::int32_t second_left = left_of_second(after);
        // The first port comes first in each sweep.
        const bool both = first_left < left && second_left < first_left;
        merged = merged_raises{raises_.prepend(left - std::min(first_left, second_left), merged->raises),
                               second_raises_.prepend(both ? 1 : 0, merged->second_raises)};
        merges_.emplace(now, *merged);
        unmerged_.pop_back();
    }
    return merged;
}

}  // namespace xfc
