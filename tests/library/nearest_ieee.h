#pragma once

#include "exact_value.h"

// The promise that conversions to IEEE numbers share.

namespace xfc::proof {

/// Whether `result` is the number of form `to` that is nearest to the operand, to even between two; error in ulp.
inline verdict check_nearest(bus_bits operand, bus_form from, operand_coding coding, std::int32_t mantissa_bits,
                             bus_form to, bus_bits result) {
    const exact_value before = value_of(operand, from, coding, mantissa_bits);
    if (before.is != exact_value::kind::number) {
        return {.met = result == ieee_special(before.is, before.negative, to)};
    }
    mpfr_number exact(128);
    set_exactly(exact, before);
    const exact_value after = value_of(result, to, operand_coding::plain, mantissa_bits);
    const bool in_range = after.is == exact_value::kind::number;
    return {.met = result == nearest_ieee(exact, before.negative, to),
            .error = in_range ? ulps_between(after, exact, to) : 0};
}

}  // namespace xfc::proof
