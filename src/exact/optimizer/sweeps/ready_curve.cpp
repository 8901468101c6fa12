#include "exact/optimizer/sweeps/ready_curve.h"

#include <algorithm>
#include <utility>

namespace xfc {

namespace {

constexpr std::int32_t no_raise = 0;

}  // namespace

void curve_writer::append(std::int32_t raise) {
    curve_.last += raise;
    if (repeats_) {
        if (raise == newest(left_in_period_ - 1)) {
            raise_stretch& stretch = curve_.stretches.back();
            ++stretch.length;
            left_in_period_ = left_in_period_ == 1 ? stretch.period : left_in_period_ - 1;
            return;
        }
        repeats_ = false;
        curve_.stretches.push_back({0, 0});
    } else if (curve_.stretches.empty()) {
        curve_.stretches.push_back({0, 0});
    }
    curve_.raises.push_back(raise);
    raise_stretch& stretch = curve_.stretches.back();
    stretch.period = ++stretch.length;
    if (stretch.length >= shortest_repetition && stretch.length % longest_period == 0) {
        find_repetition();
    }
}

/// Makes the end of the stretch one of its own when it repeats.
void curve_writer::find_repetition() {
    std::int32_t period = 1;
    std::int32_t same = 0;  // newest raises that are like the one a period before
    for (; period <= longest_period; ++period) {
        for (same = 0; same < shortest_repetition - period && newest(same) == newest(same + period);) {
            ++same;
        }
        if (same == shortest_repetition - period) {
            break;
        }
    }
    if (period > longest_period) {
        return;
    }
    const std::int32_t length = curve_.stretches.back().length;
    while (same + period < length && newest(same) == newest(same + period)) {
        ++same;
    }
    curve_.raises.resize(curve_.raises.size() - static_cast<std::size_t>(same));
    raise_stretch& before = curve_.stretches.back();
    before.length -= same + period;
    before.period = before.length;
    if (before.length == 0) {
        curve_.stretches.pop_back();
    }
    curve_.stretches.push_back({period, same + period});
    repeats_ = true;
    left_in_period_ = period - same % period;
}

void curve_writer::append_repeated(const std::int32_t* block, std::int32_t period, std::int32_t length) {
    // Once a repetition has gone on for both periods, it goes on for ever.
    std::int32_t together = 0;
    std::int32_t place = 0;
    for (; length > 0; --length) {
        if (repeats_ && together >= period + longest_period) {
            break;
        }
        const std::size_t stretches = curve_.stretches.size();
        append(block[place]);
        place = place + 1 == period ? 0 : place + 1;
        together = repeats_ && stretches == curve_.stretches.size() ? together + 1 : 0;
    }
    if (length == 0) {
        return;
    }
    std::int64_t raised = 0;
    for (std::int32_t sweep = 0; sweep < period; ++sweep) {
        raised += block[sweep];
    }
    curve_.last += raised * (length / period);
    for (std::int32_t rest = length % period; rest > 0; --rest) {
        curve_.last += block[place];
        place = place + 1 == period ? 0 : place + 1;
    }
    raise_stretch& stretch = curve_.stretches.back();
    stretch.length += length;
    left_in_period_ = stretch.period - stretch.length % stretch.period;
}

ready_curve curve_writer::finish() {
    const auto is_raise = [](std::int32_t raise) { return raise != no_raise; };
    while (!curve_.stretches.empty()) {
        raise_stretch& stretch = curve_.stretches.back();
        const auto first = curve_.raises.end() - stretch.period;
        if (std::none_of(first, curve_.raises.end(), is_raise)) {
            curve_.raises.erase(first, curve_.raises.end());
            curve_.stretches.pop_back();
        } else if (stretch.period == stretch.length && curve_.raises.back() == no_raise) {
            curve_.raises.pop_back();
            stretch.period = --stretch.length;
        } else {
            break;
        }
    }
    return std::move(curve_);
}

curve_reader::curve_reader(const ready_curve* curve, std::int32_t lag) : curve_(curve), period_start_(&no_raise) {
    left_ = lag;
    if (lag == 0) {
        next_stretch();
    }
}

void curve_reader::next_stretch() {
    place_ = 0;
    if (curve_ == nullptr || stretch_ == curve_->stretches.size()) {
        period_start_ = &no_raise;
        period_ = 1;
        left_ = for_ever;
        ended_ = true;
        return;
    }
    const raise_stretch& next = curve_->stretches[stretch_++];
    period_start_ = &curve_->raises[raise_];
    raise_ += static_cast<std::size_t>(next.period);
    period_ = next.period;
    left_ = next.length;
}

}  // namespace xfc
