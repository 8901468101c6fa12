#pragma once

#include <cstdint>

#include "components/library_options.h"

// Latency of every component in cycles, from its operands to its result, as a function of its generics.

namespace xfc::latency {

template <std::int32_t cycles>
constexpr std::int32_t always(const component_generics&) {
    return cycles;
}

// ---- Single-precision arithmetic ----

constexpr std::int32_t alufp1(const component_generics& g) { return g.outputpipe + g.shiftspeed + 3; }
constexpr std::int32_t mulfp1_dot(const component_generics& g) {
    return (g.optimization < 3 ? 4 : 3) - (g.device == 2 ? 1 : 0);
}
/// Output 0 is the IEEE one, 1 extended, 2 and 3 for a multiplier and a divider.
constexpr std::int32_t mulfp1x(const component_generics& g) {
    switch (g.output_select) {
        case 0:
            return 5;
        case 1:
            return g.outputscale + 3;
        default:
            return 4;
    }
}
constexpr std::int32_t divfp1x(const component_generics& g) { return g.output_select == 0 ? g.roundconvert + 13 : 13; }
/// Target 0 is a multiplier, 1 a divider, 2 anything else.
constexpr std::int32_t normfp1x(const component_generics& g) {
    const std::int32_t levels = normspeed_of_two(g);
    switch (g.output_select) {
        case 0:
            return g.inputnormalize == 1 ? levels + 2 : 1;
        case 1:
            return levels + 3;
        default:
            return g.roundnormalize + levels + 2;
    }
}

// ---- Double-precision arithmetic ----

constexpr std::int32_t alufp2x(const component_generics& g) { return g.doublespeed + g.shiftspeed + 4; }
/// The extended output's own stage: an output register without rounding, the rounding adder's pipeline with it.
constexpr std::int32_t mulfp2x_output_stage(const component_generics& g) {
    if (g.roundconvert == 0) {
        return g.outputpipe == 1 ? 1 : 0;
    }
    return g.doublespeed == 0 ? 1 : 2;
}
/// Output 0 is the IEEE one, 1 extended, 2 for multipliers and dividers.
constexpr std::int32_t mulfp2x(const component_generics& g) {
    switch (g.output_select) {
        case 0:
            return (g.doublespeed + 1) * g.roundconvert - 2 * g.device + 7;
        case 1:
            return mulfp2x_output_stage(g) + 2 * (3 - g.device);
        default:
            return 7 - 2 * g.device;
    }
}
constexpr std::int32_t divfp2x(const component_generics& g) {
    const std::int32_t family = (2 * g.doublespeed + 1) * g.device;
    switch (g.output_select) {
        case 0:
            return (g.doublespeed + 1) * g.roundconvert - family + 4 * g.doublespeed + 21;
        case 1:
            return (g.roundconvert + 4) * g.doublespeed - family + 20;
        default:
            return 4 * g.doublespeed + 20 - family;
    }
}
constexpr std::int32_t normfp2x(const component_generics& g) {
    return g.doublespeed * g.roundconvert + g.roundnormalize * (g.doublespeed + 1) + g.normspeed + 3;
}

constexpr std::int32_t delay(const component_generics& g) { return g.delay; }

// ---- Conversions ----

/// Target 0 is an adder, 1 a multiplier, 2 a divider.
constexpr std::int32_t castftox(const component_generics& g) { return g.output_select == 2 ? 1 : g.outputpipe + 1; }
constexpr std::int32_t castxtof(const component_generics& g) { return 2 * normspeed_of_two(g) + 3; }
constexpr std::int32_t castftoy(const component_generics& g) { return 2 + g.divider; }
constexpr std::int32_t double_to_internal(const component_generics& g) {
    return g.roundconvert == 0 && g.outputpipe == 0 ? 1 : g.doublespeed * g.roundconvert + 2;
}
/// Target 0 is a multiplier or divider, 1 anything else.
constexpr std::int32_t castdtoy(const component_generics& g) {
    return g.output_select == 0 ? g.outputpipe + 1 : double_to_internal(g);
}
constexpr std::int32_t castdtox(const component_generics& g) { return g.doublespeed * g.roundconvert + 4; }
constexpr std::int32_t castxtod(const component_generics& g) {
    return (g.doublespeed + 1) * g.roundconvert + g.doublespeed + 7;
}
constexpr std::int32_t castytod(const component_generics& g) {
    return (2 * g.doublespeed + 1) * g.roundconvert + g.normspeed + 4;
}
constexpr std::int32_t castytof(const component_generics& g) { return 2 * normspeed_of_two(g) + 5; }
constexpr std::int32_t castltof(const component_generics& g) { return 2 * normspeed_of_two(g) + 3; }
constexpr std::int32_t castltod(const component_generics& g) {
    return (g.doublespeed + 1) * g.roundconvert + g.normspeed + g.doublespeed + 4;
}
constexpr std::int32_t castftol(const component_generics& g) { return normspeed_of_two(g) + 3; }
constexpr std::int32_t castdtol(const component_generics& g) { return double_to_internal(g) + g.normspeed + 1; }
constexpr std::int32_t castxtol(const component_generics& g) { return g.normspeed + 1; }
constexpr std::int32_t castytol(const component_generics& g) { return g.normspeed + 2; }

// ---- Double-precision functions; the single-precision ones take the same cycles always ----

constexpr std::int32_t dp_invsqr(const component_generics& g) {
    return 2 * g.doublespeed + 32 - (g.doublespeed + 1) * g.device;
}
constexpr std::int32_t dp_inv(const component_generics& g) {
    return (g.roundconvert - g.device) * (g.doublespeed + 1) + 2 * g.doublespeed + 20;
}
constexpr std::int32_t dp_exp(const component_generics& g) {
    return (g.roundconvert - 2 * g.device) * (g.doublespeed + 1) + 2 * g.doublespeed + 20;
}
constexpr std::int32_t dp_log(const component_generics& g) {
    return (g.doublespeed + 1) * g.roundconvert + 7 * g.doublespeed + 27;
}

}  // namespace xfc::latency
