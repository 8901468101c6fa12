#pragma once

#include <tsl/robin_map.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xfc {

/// The list of no elements; also stands where a list ends.
inline constexpr std::int32_t empty_list = -1;

/// Mixes the bits of a 64-bit key, so that keys that differ little do not meet in a hash table.
struct key_hash {
    std::size_t operator()(std::uint64_t key) const {
        // The multiplier is 2^64 divided by the golden ratio.
        key *= 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>(key ^ (key >> 32U));
    }
};

/// Lists of numbers, one for each sweep to come, that share their ends: each element leads to the one for the sweep
/// after, which has the lower index. Equal lists are the same element. A list does not end in zeros.
class sweep_lists {
public:
    /// A list that begins with `amount`, which is at least 0, and goes on with `rest`.
    std::int32_t prepend(std::int32_t amount, std::int32_t rest) {
        if (amount == 0 && rest == empty_list) {
            return empty_list;
        }
        const std::uint64_t key =
            (static_cast<std::uint64_t>(rest) << 32U) | static_cast<std::uint64_t>(static_cast<std::uint32_t>(amount));
        const auto [found, is_new] = known_.try_emplace(key, count());
        if (is_new) {
            total_.push_back(amount + total_of(rest));
            length_.push_back(1 + length_of(rest));
            next_.push_back(rest);
        }
        return found->second;
    }

    /// Elements of all lists.
    [[nodiscard]] std::int32_t count() const { return static_cast<std::int32_t>(next_.size()); }
    /// The list without its first element; it has one.
    [[nodiscard]] std::int32_t next_of(std::int32_t list) const { return next_[static_cast<std::size_t>(list)]; }
    /// The sum of all elements.
    [[nodiscard]] std::int32_t total_of(std::int32_t list) const {
        return list == empty_list ? 0 : total_[static_cast<std::size_t>(list)];
    }
    [[nodiscard]] std::int32_t length_of(std::int32_t list) const {
        return list == empty_list ? 0 : length_[static_cast<std::size_t>(list)];
    }
    /// The first element; there is one.
    [[nodiscard]] std::int32_t amount_of(std::int32_t list) const { return total_of(list) - total_of(next_of(list)); }

    /// The list without its first `number` elements.
    [[nodiscard]] std::int32_t skip(std::int32_t list, std::int32_t number) const {
        for (; number > 0 && list != empty_list; --number) {
            list = next_of(list);
        }
        return list;
    }

    /// The totals of all lists by index, for loops over lists whose indices follow each other.
    [[nodiscard]] const std::int32_t* totals() const { return total_.data(); }

private:
    std::vector<std::int32_t> next_;
    std::vector<std::int32_t> total_;
    std::vector<std::int32_t> length_;
    tsl::robin_map<std::uint64_t, std::int32_t, key_hash> known_;
};

}  // namespace xfc
