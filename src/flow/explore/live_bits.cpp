#include "flow/explore/live_bits.h"

#include <algorithm>
#include <bit>

namespace xfc::flow {

namespace {

constexpr std::int32_t followed_bits = 64;  // wider buses are not followed
// Beside the bits of the IEEE format: the hidden one and three flags.
constexpr std::int32_t bits_of_unpacking = 4;

/// The bits of a bus that are known, and what they are where they are.
struct known_bits {
    std::uint64_t known = 0;
    std::uint64_t value = 0;
};

std::uint64_t ones(std::int32_t width) { return static_cast<std::uint64_t>(low_ones(std::min(width, followed_bits))); }

known_bits of_either(known_bits a, known_bits b) {
    const std::uint64_t same = a.known & b.known & ~(a.value ^ b.value);
    return {same, a.value & same};
}

known_bits of_bitwise(std::int32_t kind, known_bits a, known_bits b) {
    const std::uint64_t both = a.known & b.known;
    const std::uint64_t zeros = (a.known & ~a.value) | (b.known & ~b.value);
    const std::uint64_t set = (a.known & a.value) | (b.known & b.value);
    switch (kind) {
        case 0:
            return {both | zeros, a.value & b.value & both};
        case 1:
            return {both | set, set};
        default:
            return {both, (a.value ^ b.value) & both};
    }
}

/// Integers of 32 bits by a known distance.
known_bits of_shift(std::int32_t direction, known_bits a, std::uint64_t distance) {
    const auto by = static_cast<unsigned>(distance % 32);
    const std::uint64_t all = ones(32);
    if (direction == 0) {
        return {((a.known << by) | ((1ULL << by) - 1)) & all, (a.value << by) & all};
    }
    const std::uint64_t entered = all & ~(all >> by);
    const bool sign_known = (a.known >> 31U) != 0;
    const bool sign = (a.value >> 31U) != 0;
    const bool known_in_front = direction == 2 || sign_known;
    const bool ones_in_front = direction == 1 && sign_known && sign;
    return {(a.known >> by) | (known_in_front ? entered : 0), (a.value >> by) | (ones_in_front ? entered : 0)};
}

class bit_follower {
public:
    explicit bit_follower(const design& made) : made_(made), known_(made.size()), wanted_(made.size(), 0) {}

    std::vector<std::int32_t> run() {
        for (node_id id = 0; id < made_.size(); ++id) {
            if (made_.width_of(id) <= followed_bits) {
                known_[id] = known_of(id, made_.width_of(id));
            }
        }
        for (const node_id output : made_.outputs) {
            wanted_[output] = ~std::uint64_t{0};
        }
        for (node_id id = made_.size(); id-- > 0;) {
            for (std::size_t place = 0; place < made_[id].operand_span().size(); ++place) {
                wanted_[made_[id].operands.at(place)] |= wanted_by(id, place);
            }
        }
        std::vector<std::int32_t> live;
        for (node_id id = 0; id < made_.size(); ++id) {
            live.push_back(live_bits_of(id));
        }
        return live;
    }

private:
    [[nodiscard]] std::int32_t live_bits_of(node_id id) const {
        const std::int32_t width = made_.width_of(id);
        if (made_[id].kind == node_kind::constant) {
            return 0;
        }
        const std::int32_t live =
            width <= followed_bits ? std::popcount(wanted_[id] & ~known_[id].known & ones(width)) : width;
        return is_unpacked(id) ? std::min(live, made_.width_of(made_[id].operands[0]) + bits_of_unpacking) : live;
    }

    /// Which bits of an operand its reader does anything with.
    [[nodiscard]] std::uint64_t wanted_by(node_id id, std::size_t place) const {
        const design_node& node = made_[id];
        const std::uint64_t all = ~std::uint64_t{0};
        if (node.kind != node_kind::instance) {
            return 0;
        }
        switch (row_of(node.component).operation) {
            case component_operation::select:
                return place == 2 ? all : wanted_[id];
            case component_operation::bitwise: {
                const known_bits other = known_[node.operands.at(1 - place)];
                const std::uint64_t decided = node.generics.bitoperation == 0   ? other.known & ~other.value
                                              : node.generics.bitoperation == 1 ? other.value
                                                                                : 0;
                return wanted_[id] & ~decided;
            }
            case component_operation::shift: {
                if (place != 0 || made_[node.operands[1]].kind != node_kind::constant) {
                    return all;
                }
                const auto by = static_cast<unsigned>(known_[node.operands[1]].value % 32);
                const std::uint64_t sign = node.generics.direction == 1 ? 1ULL << 31U : 0;
                return node.generics.direction == 0 ? wanted_[id] >> by : (wanted_[id] << by) | sign;
            }
            default:
                return all;
        }
    }

    [[nodiscard]] bool is_unpacked(node_id id) const {
        const design_node& node = made_[id];
        if (node.kind != node_kind::instance || row_of(node.component).operation != component_operation::convert) {
            return false;
        }
        const coding from = made_[node.operands[0]].code;
        return (from == coding::single_ieee || from == coding::double_ieee) && layout_of(node.code, 32).sat != 0;
    }

    [[nodiscard]] known_bits known_of(node_id id, std::int32_t width) const {
        const design_node& node = made_[id];
        if (node.kind == node_kind::constant) {
            return {ones(width), static_cast<std::uint64_t>(node.bits)};
        }
        if (node.kind != node_kind::instance) {
            return {};
        }
        const auto operand = [&](std::size_t place) { return known_[node.operands.at(place)]; };
        switch (row_of(node.component).operation) {
            case component_operation::select:
                return of_either(operand(0), operand(1));
            case component_operation::bitwise:
                return of_bitwise(node.generics.bitoperation, operand(0), operand(1));
            case component_operation::shift:
                return made_[node.operands[1]].kind == node_kind::constant
                           ? of_shift(node.generics.direction, operand(0), operand(1).value)
                           : known_bits{};
            default:
                return {};
        }
    }

    const design& made_;
    std::vector<known_bits> known_;
    std::vector<std::uint64_t> wanted_;  ///< bits that some reader does something with
};

}  // namespace

std::vector<std::int32_t> live_bits(const design& made) { return bit_follower(made).run(); }

}  // namespace xfc::flow
