#pragma once

#include <tsl/robin_map.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "exact/optimizer/sweeps/sweep_lists.h"

namespace xfc {

/// What two operands together still do to a node.
struct merged_raises {
    std::int32_t raises;         ///< cycles in each sweep, in the lists of raises
    std::int32_t second_raises;  ///< 1 for each sweep in which both ports raise the node, in lists of their own
};

/// Merges the raises of two operands: the later one counts in each sweep. What is once merged is known from then on;
/// where a chain repeats itself, the lists behind the first few elements have been merged for an earlier value.
class raise_merger {
public:
    /// `most_merges` bounds the time and memory that all merges together take.
    raise_merger(sweep_lists& raises, sweep_lists& second_raises, std::size_t most_merges)
        : raises_(raises), second_raises_(second_raises), most_merges_(most_merges) {}

    /// Two lists of raises, `first` for the first port; `first_ahead` is how many cycles its last time is after the
    /// second one's, negative when it is before. The node has the later of the two times now. Nothing comes back when
    /// the bound is reached.
    std::optional<merged_raises> merge(std::int32_t first, std::int32_t second, std::int32_t first_ahead);

private:
    struct merge_key {
        std::int32_t first;
        std::int32_t second;
        std::int32_t first_ahead;
        bool operator==(const merge_key&) const = default;
    };
    struct merge_hash {
        std::size_t operator()(const merge_key& key) const {
            const auto bits = [](std::int32_t number) { return std::uint64_t{static_cast<std::uint32_t>(number)}; };
            return key_hash()((bits(key.first) << 32U | bits(key.second)) ^
                              static_cast<std::uint64_t>(key_hash()(bits(key.first_ahead))));
        }
    };

    [[nodiscard]] std::int32_t left_of_first(const merge_key& key) const;
    [[nodiscard]] std::int32_t left_of_second(const merge_key& key) const;
    [[nodiscard]] std::optional<merged_raises> known(const merge_key& key) const;

    sweep_lists& raises_;
    sweep_lists& second_raises_;
    std::size_t most_merges_;
    tsl::robin_map<merge_key, merged_raises, merge_hash> merges_;
    std::vector<merge_key> unmerged_;
};

}  // namespace xfc
