#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xfc {

/// In place of an element: the end of a list.
inline constexpr std::int32_t nothing = -1;

/// What still raises the ready times of nodes, sweep by sweep. All lists are held in one: each element
/// leads to what follows it, which has the lower index.
struct raise_lists {
    std::vector<std::int32_t> next;    ///< the raise in the sweep after, or `nothing`
    std::vector<std::int32_t> total;   ///< cycles: this raise, which is at least 1, and all that follow
    std::vector<std::int32_t> length;  ///< this raise and all that follow

    [[nodiscard]] std::int32_t count() const { return static_cast<std::int32_t>(next.size()); }
    [[nodiscard]] std::int32_t next_of(std::int32_t raise) const { return next[static_cast<std::size_t>(raise)]; }
    [[nodiscard]] std::int32_t total_of(std::int32_t raise) const {
        return raise == nothing ? 0 : total[static_cast<std::size_t>(raise)];
    }
    [[nodiscard]] std::int32_t length_of(std::int32_t raise) const {
        return raise == nothing ? 0 : length[static_cast<std::size_t>(raise)];
    }

    /// A new first element in front of `rest`.
    std::int32_t prepend(std::int32_t cycles, std::int32_t rest) {
        total.push_back(cycles + total_of(rest));
        length.push_back(1 + length_of(rest));
        next.push_back(rest);
        return count() - 1;
    }
};

}  // namespace xfc
