// The later of two operands, sweep by sweep. Where the raises of both repeat, one block of sweeps, a common multiple of
// both periods, is gone through; the next blocks are like it until a comparison comes out differently, and when that is
// follows from what each side of the comparison gains in a block:
//
//     first   0 +5 +5 +5 +5 ...      5 a block         node   12 12 12 15 20 25 ...
//     second  9 +3 +0 +0 +0 ...      nothing a block   after 2 more blocks the first port overtakes

#include "exact/optimizer/sweeps/later_operand.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace xfc {

namespace {

/// Whose time a node has: its own, or that of the port that raised it last.
enum holder : std::uint8_t { own_time, first_port, second_port };

/// A comparison of a sweep: the port raises the node when it is ahead by more than 0 cycles.
struct comparison {
    std::int64_t ahead;  // cycles
    holder against;
};

/// Blocks to come in which the comparison comes out as it does now, when the port is ahead by `gain` more in each.
std::int64_t blocks_alike(std::int64_t ahead, std::int64_t gain) {
    if (ahead > 0) {
        return gain < 0 ? (ahead - 1) / -gain : std::numeric_limits<std::int64_t>::max();
    }
    return gain > 0 ? -ahead / gain : std::numeric_limits<std::int64_t>::max();
}

class node_sweeps {
public:
    node_sweeps(std::int64_t start, const operand_curve& first, const operand_curve& second,
                sweep_counts& second_raises)
        : first_(first.driver, first.lag),
          second_(second.driver, second.lag),
          first_time_(time_before(first)),
          second_time_(time_before(second)),
          node_time_(start),
          writer_(start),
          second_raises_(second_raises) {}

    /// False when `steps_left` do not suffice.
    bool run(std::size_t& steps_left) {
        // The first sweep may raise the node even if none raises its drivers.
        std::int32_t left = 1;
        std::int32_t block = 0;
        do {
            const bool repeats = block != 0 && block <= longest_block && left >= 2 * block;
            const std::int32_t steps = repeats ? block : left;
            if (steps_left < static_cast<std::size_t>(steps)) {
                return false;
            }
            steps_left -= static_cast<std::size_t>(steps);
            if (repeats) {
                repeat_block(block, left / block - 1);
            } else {
                make_sweeps(steps);
            }
            left = std::min(first_.left(), second_.left());
            block = std::lcm(first_.period(), second_.period());
        } while (!first_.ended() || !second_.ended());
        return true;
    }

    [[nodiscard]] ready_curve curve() { return writer_.finish(); }

private:
    static constexpr std::int32_t longest_block = 48;  // sweeps

    static std::int64_t time_before(const operand_curve& operand) {
        // Half of the least number, so that differences stay numbers.
        return operand.driver == nullptr ? std::numeric_limits<std::int64_t>::min() / 2
                                         : operand.driver->start + operand.latency;
    }

    struct sweep_result {
        comparison first;
        comparison second;
        std::int32_t raise;  // cycles
        [[nodiscard]] bool both() const { return first.ahead > 0 && second.ahead > 0; }
    };

    sweep_result sweep() {
        first_time_ += first_.read();
        second_time_ += second_.read();
        const std::int64_t before = node_time_;
        sweep_result result{{first_time_ - node_time_, holder_}, {}, 0};
        if (result.first.ahead > 0) {
            node_time_ = first_time_;
            holder_ = first_port;
        }
        result.second = {second_time_ - node_time_, holder_};
        if (result.second.ahead > 0) {
            node_time_ = second_time_;
            holder_ = second_port;
        }
        result.raise = static_cast<std::int32_t>(node_time_ - before);
        ++sweeps_;
        return result;
    }

    void make_sweeps(std::int32_t number) {
        for (; number > 0; --number) {
            const sweep_result result = sweep();
            writer_.append(result.raise);
            if (result.both()) {
                second_raises_.add(sweeps_ - 1, 1, 1);
            }
        }
    }

    /// Makes the sweeps of one block and of all blocks behind it that are like it, `most` at most.
    void repeat_block(std::int32_t block, std::int32_t most) {
        const std::int64_t first_before = first_time_;
        const std::int64_t second_before = second_time_;
        const std::int32_t sweep_before = sweeps_;
        const holder holder_before = holder_;
        std::array<sweep_result, longest_block> results;
        std::array<std::int32_t, longest_block> raises;
        for (std::int32_t place = 0; place < block; ++place) {
            results[static_cast<std::size_t>(place)] = sweep();
            raises[static_cast<std::size_t>(place)] = results[static_cast<std::size_t>(place)].raise;
        }
        const std::array<std::int64_t, 3> gains{0, first_time_ - first_before, second_time_ - second_before};
        std::int64_t more = holder_before == holder_ ? most : 0;
        for (std::int32_t place = 0; place < block && more > 0; ++place) {
            const sweep_result& result = results[static_cast<std::size_t>(place)];
            if (gains[result.first.against] != gains[holder_]) {
                more = 0;  // The node's raises change from block to block while two times that drift apart take turns.
            }
            more = std::min({more, blocks_alike(result.first.ahead, gains[first_port] - gains[result.first.against]),
                             blocks_alike(result.second.ahead, gains[second_port] - gains[result.second.against])});
        }
        const auto blocks = static_cast<std::int32_t>(more);
        for (std::int32_t place = 0; place < block; ++place) {
            if (results[static_cast<std::size_t>(place)].both()) {
                second_raises_.add(sweep_before + place, block, blocks + 1);
            }
        }
        writer_.append_repeated(raises.data(), block, block * (blocks + 1));
        first_.skip(block * blocks);
        second_.skip(block * blocks);
        first_time_ += more * gains[first_port];
        second_time_ += more * gains[second_port];
        node_time_ += more * gains[holder_];
        sweeps_ += block * blocks;
    }

    curve_reader first_;
    curve_reader second_;
    std::int64_t first_time_;  // what the ports ask for now, in cycles
    std::int64_t second_time_;
    std::int64_t node_time_;
    holder holder_ = own_time;
    std::int32_t sweeps_ = 0;  // made
    curve_writer writer_;
    sweep_counts& second_raises_;
};

}  // namespace

ready_curve later_operand::of(std::int64_t start, const operand_curve& first, const operand_curve& second) {
    node_sweeps sweeps(start, first, second, second_raises_);
    exceeded_ = exceeded_ || !sweeps.run(steps_left_);
    return sweeps.curve();
}

}  // namespace xfc
