#pragma once

#include <cstdint>

#include "exact/dfg/dfg.h"
#include "exact/run/compile_options.h"

namespace xfc {

/// Width of a bus as the latency tables name it.
enum class bus_width : std::uint8_t { unchanged, bits_32, bits_64, bits_70, bits_80, xfloat };

/// The width in bits; `xfloat` follows the mantissa option. Not for `unchanged`.
[[nodiscard]] inline std::int32_t bits_of(bus_width width) {
    switch (width) {
        case bus_width::bits_32:
            return 32;
        case bus_width::bits_64:
            return 64;
        case bus_width::bits_70:
            return 70;
        case bus_width::bits_80:
            return 80;
        default:
            return compile_options.mantissa + 13;
    }
}

inline void set_width(std::int32_t& field, bus_width width) {
    if (width != bus_width::unchanged) {
        field = bits_of(width);
    }
}

/// Sets a component's latency, with which the node's ready time starts.
inline void set_latency(node_attributes& attributes, std::int32_t cycles) {
    attributes.latency = cycles;
    attributes.ready_time = cycles;
}

}  // namespace xfc
