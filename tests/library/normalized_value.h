#pragma once

#include <cmath>

#include "exact_value.h"

// The promise of normalizers.

namespace xfc::proof {

/// What a normalizer may deliver.
struct normalizing {
    bus_form from;
    bus_form to;
    operand_coding coding;       ///< of the result
    std::int32_t mantissa_bits;  ///< the generic
    std::int32_t bias;
    std::int32_t overflow;  ///< least exponent that is infinite
    double most;            ///< error allowed in units of the result's lowest bit when normalized
    bool nearest;           ///< an error of just `most` is allowed, and only from an odd neighbour
    bool carries;           ///< rounding may make the next power of two of it, with the next exponent
};

/// Whether the result is the operand's number, normalized: zero below exponent 1, infinite above the range.
inline verdict check_normalized(const normalizing& promise, bus_bits operand, bus_bits result) {
    using kind = exact_value::kind;
    const operand_coding from_coding =
        promise.from == bus_form::double_float ? operand_coding::plain : operand_coding::adder;
    const exact_value before = value_of(operand, promise.from, from_coding, promise.mantissa_bits);
    const exact_value after = value_of(result, promise.to, promise.coding, promise.mantissa_bits);
    if (before.is != kind::number) {
        return {.met = before.is == after.is && (before.is == kind::nan || before.negative == after.negative)};
    }
    mpfr_number exact(128);
    mpfr_number difference(256);
    set_exactly(exact, before);
    set_exactly(difference, after);
    const auto exponent = static_cast<std::int32_t>(mpfr_get_exp(exact)) - 1 + promise.bias;
    const std::int32_t carry = promise.carries ? 1 : 0;
    if (after.is == kind::zero || after.is == kind::infinity) {
        const bool out_of_range = after.is == kind::zero ? exponent < 1 : exponent >= promise.overflow - carry;
        return {.met = out_of_range && before.negative == after.negative};
    }
    const bus_layout layout = layout_of(promise.to, promise.mantissa_bits);
    const std::int32_t width = layout.mantissa.width();
    // Units of the lowest bit behind the hidden one of the exact value.
    const std::int32_t behind = promise.coding == operand_coding::adder ? width - 6 : width - 2;
    mpfr_sub(difference, difference, exact, MPFR_RNDN);
    mpfr_mul_2si(difference, difference, behind + promise.bias - exponent, MPFR_RNDN);
    const double error = std::fabs(mpfr_get_d(difference, MPFR_RNDN));
    const auto magnitude = static_cast<bus_bits>(after.mantissa < 0 ? -after.mantissa : after.mantissa);
    const bool leads = promise.coding == operand_coding::adder || (magnitude >> static_cast<unsigned>(behind)) == 1;
    const bool even = (magnitude & 1U) == 0;
    const bool near =
        promise.nearest ? error < promise.most || (error == promise.most && even) : error < promise.most || error == 0;
    const bool in_range = after.is == kind::number && exponent >= 1 - carry && exponent < promise.overflow;
    return {.met = in_range && after.negative == before.negative && leads && near, .error = error};
}

}  // namespace xfc::proof
