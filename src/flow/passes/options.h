#pragma once

#include "components/library_options.h"

namespace xfc::flow {

/// What the components of a design are set to. By default quotients, conversions and normalisations round, and
/// normalizers take several cycles, which makes the clock fast; low latency takes the fewest cycles instead: quotients
/// and normalisations are truncated (with a sticky bit), and longer steps have no register inside.
[[nodiscard]] constexpr library_options default_library_options(bool low_latency, std::int32_t mantissa = 32) {
    const std::int32_t thorough = low_latency ? 0 : 1;
    return {.mantissa = mantissa,
            .inputnormalize = thorough,
            .roundconvert = thorough,
            .roundnormalize = thorough,
            .outputpipe = thorough,
            .normspeed = low_latency ? 1 : 3,
            .shiftspeed = thorough};
}

}  // namespace xfc::flow
