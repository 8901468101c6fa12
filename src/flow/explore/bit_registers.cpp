#include "flow/explore/bit_registers.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace xfc::flow {

namespace {

using bit_id = std::uint32_t;

constexpr bit_id zero = 0;
constexpr bit_id one = 1;
constexpr bit_id no_bit = 0xFFFFFFFF;

// What Yosys makes of a chain of registers for Xilinx 7: from the third one on a look-up table of up to 32.
constexpr std::int32_t shortest_shift_register = 3;
constexpr std::int32_t registers_in_a_table = 32;
// Of a number unpacked, beside the bits of its IEEE format or of its integer: the hidden one and three flags.
constexpr std::int32_t bits_of_unpacking = 4;
// The adder of integers takes its carry from one half to the other through a register.
constexpr std::int32_t half_of_sum = 16;
constexpr std::int32_t integer_width = 32;

enum class bit_kind : std::uint8_t {
    constant,
    given,      ///< an input of the design, or a component's output that no shift register takes in
    component,  ///< a component's output register, which is counted with the component
    wire,       ///< a carry between two bits of a sum; no register
    copy,       ///< a register without logic in front of it
    inverted,   ///< a register behind an inverter
    logic_and,  ///< from here on registers behind a look-up table
    logic_or,
    logic_xor,
    choice,  ///< the first bit where the third one is 1, else the second
    sum,
};

struct bit_node {
    bit_kind kind = bit_kind::constant;
    std::array<bit_id, 3> inputs = {no_bit, no_bit, no_bit};

    friend bool operator==(const bit_node&, const bit_node&) = default;
};

struct hash_of_bit {
    std::size_t operator()(const bit_node& node) const {
        std::uint64_t hash = static_cast<std::uint64_t>(node.kind);
        for (const bit_id input : node.inputs) {
            hash = (hash ^ input) * 0x9E3779B97F4A7C15ULL;
            hash ^= hash >> 29U;
        }
        return hash;
    }
};

/// A register that Yosys sets or resets instead of choosing a constant; a shift register has neither.
bool is_reset_by_choice(const bit_node& node) {
    return node.kind == bit_kind::choice && std::min(node.inputs[0], node.inputs[1]) <= one;
}

bool is_register(bit_kind kind) { return kind == bit_kind::component || kind >= bit_kind::copy; }

/// Bits, each driven by earlier ones; equal ones are made once.
class bit_netlist {
public:
    bit_netlist() : bits_(2), copies_(2, no_bit) {}

    bit_id make(bit_node node) {
        bits_.push_back(node);
        copies_.push_back(no_bit);
        return static_cast<bit_id>(bits_.size() - 1);
    }

    bit_id copy(bit_id bit) {
        if (bit <= one) {
            return bit;
        }
        if (copies_[bit] == no_bit) {
            const bit_id made = make({bit_kind::copy, {bit, no_bit, no_bit}});
            copies_[bit] = made;
        }
        return copies_[bit];
    }

    bit_id copy(bit_id bit, std::int32_t cycles) {
        for (; cycles > 0 && bit > one; --cycles) {
            bit = copy(bit);
        }
        return bit;
    }

    bit_id invert(bit_id bit) { return bit <= one ? one - bit : once({bit_kind::inverted, {bit, no_bit, no_bit}}); }

    /// The component's generic `bitoperation`: 0 and, 1 or, 2 exclusive or.
    bit_id bitwise(std::int32_t kind, bit_id a, bit_id b) {
        if (a > b) {
            std::swap(a, b);  // a is the known one, if one is
        }
        if (kind == 2) {
            return a == b ? zero : a == zero ? copy(b) : a == one ? invert(b) : once({bit_kind::logic_xor, {a, b}});
        }
        const bit_id neutral = kind == 0 ? one : zero;
        if (a == b || a == neutral) {
            return copy(b);
        }
        return a == one - neutral ? a : once({kind == 0 ? bit_kind::logic_and : bit_kind::logic_or, {a, b}});
    }

    bit_id choose(bit_id a, bit_id b, bit_id condition) {
        if (condition <= one || a == b) {
            return copy(condition == zero ? b : a);
        }
        return once({bit_kind::choice, {a, b, condition}});
    }

    /// The sum of three bits, in a register, and the carry, on a wire.
    std::pair<bit_id, bit_id> add(bit_id a, bit_id b, bit_id carry) {
        std::array<bit_id, 3> inputs = {a, b, carry};
        std::sort(inputs.begin(), inputs.end());
        if (inputs[1] <= one) {  // two are known
            const bool differ = inputs[0] != inputs[1];
            return {differ ? invert(inputs[2]) : copy(inputs[2]), differ ? inputs[2] : inputs[0]};
        }
        return {once({bit_kind::sum, inputs}), once({bit_kind::wire, inputs})};
    }

    void read_elsewhere(bit_id bit) { roots_.push_back(bit); }

    bit_counts counts(const family_row& family) const {
        const std::vector<std::uint32_t> readers = readers_of_bits();
        // A register's successor in a shift register: the copy that alone reads it.
        std::vector<bool> follows(bits_.size(), false);
        bit_counts sum;
        std::unordered_set<bit_id> conditions;  // of those that are reset
        const bool free_inverters =
            std::any_of(family.cells.begin(), family.cells.end(), [](const cell_row& cell) { return cell.each == 0; });
        for (bit_id bit = one + 1; bit < bits_.size(); ++bit) {
            const bit_kind kind = bits_[bit].kind;
            if (readers[bit] == 0 || !is_register(kind)) {
                continue;
            }
            sum.flip_flops += kind == bit_kind::component ? 0 : 1;
            if (family.resets_to_choose && is_reset_by_choice(bits_[bit])) {
                conditions.insert(bits_[bit].inputs[2]);
            } else {
                sum.look_up_tables +=
                    kind > bit_kind::inverted || (kind == bit_kind::inverted && !free_inverters) ? 1 : 0;
            }
            if (!family.shift_registers || follows[bit] || is_reset_by_choice(bits_[bit])) {
                continue;
            }
            std::int32_t length = 1;
            for (bit_id last = bit; readers[last] == 1 && copies_[last] != no_bit && readers[copies_[last]] > 0;) {
                last = copies_[last];
                follows[last] = true;
                ++length;
            }
            if (length >= shortest_shift_register) {
                sum.flip_flops -= length;
                sum.look_up_tables += (length + registers_in_a_table - 1) / registers_in_a_table;
            }
        }
        sum.look_up_tables += static_cast<std::int64_t>(conditions.size());
        return sum;
    }

private:
    bit_id once(const bit_node& node) {
        const auto [found, added] = made_.try_emplace(node, 0);
        if (added) {
            found->second = make(node);
        }
        return found->second;
    }

    /// By bit: how many read it that are themselves read.
    [[nodiscard]] std::vector<std::uint32_t> readers_of_bits() const {
        std::vector<std::uint32_t> readers(bits_.size(), 0);
        for (const bit_id root : roots_) {
            ++readers[root];
        }
        for (std::size_t bit = bits_.size(); bit-- > 0;) {
            for (const bit_id input : bits_[bit].inputs) {
                if (input != no_bit && readers[bit] > 0) {
                    ++readers[input];
                }
            }
        }
        return readers;
    }

    std::vector<bit_node> bits_;
    std::vector<bit_id> copies_;  ///< by bit
    std::unordered_map<bit_node, bit_id, hash_of_bit> made_;
    std::vector<bit_id> roots_;
};

class bit_follower {
public:
    bit_follower(const design& made, const schedule& times) : made_(made), times_(times), buses_(made.size()) {}

    bit_counts run(const family_row& family) {
        for (node_id id = 0; id < made_.size(); ++id) {
            buses_[id] = made_[id].kind == node_kind::constant ? constant(id)
                         : is_counted_by_bits(made_, id)       ? counted(id)
                                                               : driven(id);
        }
        for (const node_id output : made_.outputs) {
            for (const bit_id bit : bus_at(output, times_.latency)) {
                net_.read_elsewhere(bit);
            }
        }
        bit_counts counts = net_.counts(family);
        for (std::vector<bit_id>& bus : buses_) {
            std::sort(bus.begin(), bus.end());
            const auto unknown = std::upper_bound(bus.begin(), bus.end(), one);
            counts.unknown.push_back(static_cast<std::int32_t>(bus.end() - unknown));
            counts.different.push_back(static_cast<std::int32_t>(std::unique(unknown, bus.end()) - unknown));
        }
        return counts;
    }

private:
    /// A bus in a later cycle than it is ready in.
    std::vector<bit_id> bus_at(node_id id, std::int32_t cycle) {
        std::vector<bit_id> bus = buses_[id];
        if (made_[id].kind != node_kind::constant) {
            for (bit_id& bit : bus) {
                bit = net_.copy(bit, cycle - ready_time(made_, times_, id));
            }
        }
        return bus;
    }

    std::vector<bit_id> operand(node_id id, std::size_t place) {
        return bus_at(made_[id].operands.at(place), times_.start[id]);
    }

    [[nodiscard]] std::vector<bit_id> constant(node_id id) const {
        std::vector<bit_id> bus;
        bus.reserve(static_cast<std::size_t>(made_.width_of(id)));
        for (std::int32_t place = 0; place < made_.width_of(id); ++place) {
            bus.push_back(bit(made_[id].bits, place) ? one : zero);
        }
        return bus;
    }

    /// A port, or a component that reads all of its operands.
    std::vector<bit_id> driven(node_id id) {
        const design_node& node = made_[id];
        for (std::size_t place = 0; place < node.operand_span().size(); ++place) {
            for (const bit_id bit : operand(id, place)) {
                net_.read_elsewhere(bit);
            }
        }
        std::vector<bit_id> bus(static_cast<std::size_t>(made_.width_of(id)), zero);
        const bit_kind kind = node.latency() > 0 && !is_cleared(id) ? bit_kind::component : bit_kind::given;
        for (std::size_t place = 0; place < bus.size() && std::cmp_less(place, known_width(id)); ++place) {
            bus[place] = net_.make({kind, {}});
        }
        return bus;
    }

    /// Whether the last register is one that Yosys clears for zeros or infinities.
    [[nodiscard]] bool is_cleared(node_id id) const {
        const design_node& node = made_[id];
        switch (row_of(node.component).operation) {
            case component_operation::extreme:
            case component_operation::round_to_integer:
            case component_operation::scale:
            case component_operation::square_root:
                return true;
            case component_operation::convert:
                return node.code == coding::single_ieee && made_[node.operands[0]].code != coding::integer;
            default:
                return false;
        }
    }

    /// Of a number from a narrower format no more bits are different than that one has, and the unpacking adds.
    [[nodiscard]] std::int32_t known_width(node_id id) const {
        const design_node& node = made_[id];
        const std::int32_t width = made_.width_of(id);
        if (node.kind != node_kind::instance || row_of(node.component).operation != component_operation::convert) {
            return width;
        }
        const coding from = made_[node.operands[0]].code;
        const bool unpacks = (from == coding::single_ieee || from == coding::double_ieee) &&
                             layout_of(node.code, made_.options.mantissa).sat != 0;
        return unpacks ? std::min(width, made_.width_of(node.operands[0]) + bits_of_unpacking) : width;
    }

    std::vector<bit_id> counted(node_id id) {
        const std::vector<bit_id> a = operand(id, 0);
        const std::vector<bit_id> b = operand(id, 1);
        std::vector<bit_id> result(static_cast<std::size_t>(made_.width_of(id)), zero);
        switch (row_of(made_[id].component).operation) {
            case component_operation::add_or_subtract:
                return sum(a, b, made_[id].subtract);
            case component_operation::shift:
                return shifted(id, a);
            case component_operation::select: {
                const bit_id condition = operand(id, 2).front();
                for (std::size_t place = 0; place < result.size(); ++place) {
                    result[place] = net_.choose(a[place], b[place], condition);
                }
                return result;
            }
            default:
                for (std::size_t place = 0; place < result.size(); ++place) {
                    result[place] = net_.bitwise(made_[id].generics().bitoperation, a[place], b[place]);
                }
                return result;
        }
    }

    std::vector<bit_id> shifted(node_id id, std::vector<bit_id> bus) {
        const auto by =
            static_cast<std::ptrdiff_t>(static_cast<std::uint64_t>(made_[made_[id].operands[1]].bits) % integer_width);
        const std::int32_t direction = made_[id].generics().direction;  // 0 left, 1 right with the sign, 2 with zeros
        const bit_id entering = direction == 1 ? bus.back() : zero;
        if (direction == 0) {
            std::rotate(bus.begin(), bus.end() - by, bus.end());
            std::fill(bus.begin(), bus.begin() + by, zero);
        } else {
            std::rotate(bus.begin(), bus.begin() + by, bus.end());
            std::fill(bus.end() - by, bus.end(), entering);
        }
        for (bit_id& bit : bus) {
            bit = net_.copy(bit, made_[id].latency());
        }
        return bus;
    }

    /// The three stages of the adder of integers: complement, lower half, upper half.
    std::vector<bit_id> sum(std::vector<bit_id> a, std::vector<bit_id> b, bool subtract) {
        for (std::size_t place = 0; place < a.size(); ++place) {
            a[place] = net_.copy(a[place]);
            b[place] = subtract ? net_.invert(b[place]) : net_.copy(b[place]);
        }
        std::vector<bit_id> result(a.size(), zero);
        bit_id carry = subtract ? one : zero;
        for (std::size_t place = 0; place < half_of_sum; ++place) {
            std::tie(result[place], carry) = net_.add(a[place], b[place], carry);
            result[place] = net_.copy(result[place]);
        }
        carry = net_.copy(carry);
        for (std::size_t place = half_of_sum; place < result.size(); ++place) {
            std::tie(result[place], carry) = net_.add(net_.copy(a[place]), net_.copy(b[place]), carry);
        }
        return result;
    }

    const design& made_;
    const schedule& times_;
    std::vector<std::vector<bit_id>> buses_;  ///< by node, when it is ready
    bit_netlist net_;
};

}  // namespace

bool is_counted_by_bits(const design& made, node_id id) {
    const design_node& node = made[id];
    if (node.kind != node_kind::instance) {
        return false;
    }
    switch (row_of(node.component).operation) {
        case component_operation::select:
        case component_operation::bitwise:
            return true;
        case component_operation::shift:
            return made[node.operands[1]].kind == node_kind::constant;
        case component_operation::add_or_subtract:
            return node.code == coding::integer;
        default:
            return false;
    }
}

bit_counts count_bits(const design& made, const schedule& times, const family_row& family) {
    return bit_follower(made, times).run(family);
}

}  // namespace xfc::flow
