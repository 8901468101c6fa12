#pragma once

#include <cstdint>
#include <vector>

#include "flow/passes/design.h"

namespace xfc::flow {

/// Finds nodes again by what they are: numbers of nodes by hash, in open addressing. Whoever asks tells nodes apart.
class node_index {
public:
    /// The node of this hash for which `is_same` holds; else the one that `make` makes, which is kept.
    template <class same_node, class new_node>
    node_id find_or_make(std::uint64_t hash, const same_node& is_same, const new_node& make) {
        if ((count_ + 1) * 4 > slots_.size() * 3) {
            grow();
        }
        const auto tag = static_cast<std::uint32_t>(hash >> 32U);
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = tag & mask;
        for (; slots_[at].node != no_node; at = (at + 1) & mask) {
            if (slots_[at].tag == tag && is_same(slots_[at].node)) {
                return slots_[at].node;
            }
        }
        ++count_;
        return (slots_[at] = {tag, make()}).node;
    }

private:
    struct slot {
        std::uint32_t tag = 0;
        node_id node = no_node;
    };

    void grow() {
        std::vector<slot> larger(slots_.size() * 2);
        const std::size_t mask = larger.size() - 1;
        for (const slot& one : slots_) {
            if (one.node != no_node) {
                std::size_t at = one.tag & mask;
                while (larger[at].node != no_node) {
                    at = (at + 1) & mask;
                }
                larger[at] = one;
            }
        }
        slots_ = std::move(larger);
    }

    std::vector<slot> slots_ = std::vector<slot>(256);  ///< a power of two, at most 3/4 full
    std::size_t count_ = 0;
};

/// Mixes one more number into a hash, whose high half is the good one.
constexpr std::uint64_t mixed(std::uint64_t hash, std::uint64_t number) {
    hash = (hash ^ number) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 29U);
}

}  // namespace xfc::flow
