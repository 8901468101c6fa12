#pragma once

#include <algorithm>

#include "exact_value.h"

// The promise that conversions to integers share.

namespace xfc::proof {

/// Whether `result` is the value as an integer of 32 bits, toward zero; out of range the nearest end, nan 0.
inline verdict check_toward_zero(const exact_value& value, bus_bits result) {
    using kind = exact_value::kind;
    constexpr signed_bus_bits highest = INT32_MAX;
    constexpr signed_bus_bits lowest = INT32_MIN;
    signed_bus_bits expected = 0;
    if (value.is == kind::infinity) {
        expected = value.negative ? lowest : highest;
    } else if (value.is == kind::number) {
        mpfr_number exact(128);
        set_exactly(exact, value);
        mpfr_trunc(exact, exact);
        const bool above = mpfr_cmp_si(static_cast<mpfr_srcptr>(exact), INT32_MAX) > 0;
        const bool below = mpfr_cmp_si(static_cast<mpfr_srcptr>(exact), INT32_MIN) < 0;
        expected = above ? highest : below ? lowest : signed_bus_bits{mpfr_get_si(exact, MPFR_RNDZ)};
    }
    return {.met = result == bits_of(expected, 32)};
}

}  // namespace xfc::proof
