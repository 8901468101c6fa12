#include "exact/optimizer/sweeps/sweep_counts.h"

#include <algorithm>
#include <cstddef>

namespace xfc {

void sweep_counts::change(std::int32_t sweep, std::int32_t stride, std::int32_t by) {
    const auto row = static_cast<std::size_t>(stride);
    if (changes_.size() <= row) {
        changes_.resize(row + 1);
    }
    std::vector<std::int32_t>& changes = changes_[row];
    const auto place = static_cast<std::size_t>(sweep);
    if (changes.size() <= place) {
        changes.resize(place + 1, 0);
    }
    changes[place] += by;
}

std::vector<std::int32_t> sweep_counts::counts() const {
    std::vector<std::int32_t> sums;
    for (std::size_t stride = 1; stride < changes_.size(); ++stride) {
        std::vector<std::int32_t> events = changes_[stride];
        for (std::size_t sweep = stride; sweep < events.size(); ++sweep) {
            events[sweep] += events[sweep - stride];
        }
        sums.resize(std::max(sums.size(), events.size()), 0);
        for (std::size_t sweep = 0; sweep < events.size(); ++sweep) {
            sums[sweep] += events[sweep];
        }
    }
    while (!sums.empty() && sums.back() == 0) {
        sums.pop_back();
    }
    return sums;
}

}  // namespace xfc
