#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xfc {

/// Sweeps one behind the other whose raises repeat after `period` of them. Only the raises of the first period are
/// kept; a stretch that does not repeat is its own period.
struct raise_stretch {
    std::int32_t period;  ///< sweeps, 1 to `length`
    std::int32_t length;  ///< sweeps
};

/// A ready time over the sweeps to come: where it begins and by how much each sweep raises it; behind the last stretch
/// it stays.
struct ready_curve {
    std::int64_t start = 0;                ///< before the first of the sweeps, in cycles
    std::int64_t last = 0;                 ///< after all of them, in cycles
    std::vector<std::int32_t> raises;      ///< cycles; the first period of each stretch, one behind the other
    std::vector<raise_stretch> stretches;  ///< does not end in a whole period of raises by 0
};

/// Writes a curve sweep by sweep and finds what repeats after at most `longest_period` sweeps. What it finds depends on
/// the raises alone, so that curves do not fall to pieces as they pass from node to node.
class curve_writer {
public:
    static constexpr std::int32_t longest_period = 16;  // sweeps

    explicit curve_writer(std::int64_t start) { curve_.start = curve_.last = start; }

    void append(std::int32_t raise);
    /// Appends `block`, of `period` raises, over and over until it has stood there for `length` sweeps.
    void append_repeated(const std::int32_t* block, std::int32_t period, std::int32_t length);

    /// The whole curve. The writer is not used any more.
    [[nodiscard]] ready_curve finish();

private:
    /// Sweeps until a stretch is taken to repeat. Two periods: no shorter repetition within a period is mistaken for
    /// one.
    static constexpr std::int32_t shortest_repetition = 2 * longest_period;

    [[nodiscard]] std::int32_t newest(std::int32_t back) const {
        return curve_.raises[curve_.raises.size() - 1 - static_cast<std::size_t>(back)];
    }
    void find_repetition();

    ready_curve curve_;
    bool repeats_ = false;             // the stretch that is being written
    std::int32_t left_in_period_ = 0;  // if it does: sweeps to the end of the period it is in
};

/// Reads the raises of a curve sweep by sweep; behind the curve they are 0 for ever.
class curve_reader {
public:
    /// Before the curve's first sweep the time stays for `lag` sweeps, at most 1. No curve is one without raises.
    explicit curve_reader(const ready_curve* curve, std::int32_t lag = 0);

    [[nodiscard]] bool ended() const { return ended_; }
    /// Sweeps to the end of the present stretch, more than any number of sweeps behind the curve; and after how many of
    /// them its raises repeat.
    [[nodiscard]] std::int32_t left() const { return ended_ ? for_ever : left_; }
    [[nodiscard]] std::int32_t period() const { return period_; }

    std::int32_t read() {
        const std::int32_t raise = period_start_[place_];
        place_ = place_ + 1 == period_ ? 0 : place_ + 1;
        if (--left_ == 0) {
            next_stretch();
        }
        return raise;
    }

    /// Passes over whole periods, no more sweeps than are left.
    void skip(std::int32_t sweeps) {
        left_ -= sweeps;
        if (left_ == 0) {
            next_stretch();
        }
    }

private:
    static constexpr std::int32_t for_ever = std::int32_t{1} << 30;  // sweeps

    void next_stretch();

    const ready_curve* curve_;
    std::size_t stretch_ = 0;  // the next one
    std::size_t raise_ = 0;    // its first raise
    const std::int32_t* period_start_;
    std::int32_t period_ = 1;
    std::int32_t place_ = 0;  // within the period
    std::int32_t left_ = 0;
    bool ended_ = false;
};

}  // namespace xfc
