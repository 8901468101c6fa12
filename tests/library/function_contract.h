#pragma once

#include "exact_value.h"

// What the contracts of the elementary functions share: a result within a few tenths of a unit of the exact value.

namespace xfc::proof {

/// Judges the result of a function whose exact value is the finite `exact`; a zero has the sign `negative`. `most` is
/// the largest error promised, in ulp. At the ends of the range, where a result becomes zero or infinite, either
/// neighbour is met when the exact value is as close to the border.
inline verdict within_ulps(mpfr_srcptr exact, bool negative, bus_form form, bus_bits result, double most) {
    if (result == nearest_ieee(exact, negative, form)) {
        const exact_value same = value_of(result, form, operand_coding::plain, 32);
        return {.error = same.is == exact_value::kind::number ? ulps_between(same, exact, form) : 0};
    }
    exact_value delivered = value_of(result, form, operand_coding::plain, 32);
    if (delivered.is == exact_value::kind::nan || delivered.negative != (mpfr_signbit(exact) != 0)) {
        return {.met = false};
    }
    const std::int32_t bias = form == bus_form::single_float ? 127 : 1023;
    const std::int32_t precision = form == bus_form::single_float ? 24 : 53;
    if (delivered.is != exact_value::kind::number) {
        // Judged as the number next to the range: 2 ** (bias + 1), or what is below 2 ** (1 - bias).
        const bool infinite = delivered.is == exact_value::kind::infinity;
        delivered.is = exact_value::kind::number;
        delivered.mantissa = infinite ? 1 : (signed_bus_bits{1} << precision) - 1;
        delivered.exponent = infinite ? bias + 1 : 1 - bias - precision;
        delivered.mantissa = delivered.negative ? -delivered.mantissa : delivered.mantissa;
    }
    const double error = ulps_between(delivered, exact, form);
    return {.met = error <= most, .error = error};
}

}  // namespace xfc::proof
