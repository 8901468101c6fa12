#pragma once

#include "model/component_model.h"

// The common part xfc_round_ieee, for the models of xfc_roundf and xfc_roundd: an IEEE number without its fraction.

namespace xfc {

/// The number rounded as the generic says; signed zeros, infinities and the quiet nan are their own results.
constexpr bus_bits round_ieee(bus_form form, std::int32_t rounding, bus_bits number) {
    const bus_layout layout = layout_of(form, 0);
    const std::int32_t fraction_bits = layout.mantissa.width();
    const auto unit_shift = static_cast<unsigned>(fraction_bits);
    const bus_bits exponent_ones = low_ones(layout.exponent.width());
    const bus_bits bias = exponent_ones >> 1U;
    const bus_bits sign_bit = bus_bits{1} << static_cast<unsigned>(layout.sign - 1);

    // place: ones in the fraction where it is worth less than 1
    const bus_bits exponent = field(number, layout.exponent);
    const bus_bits fraction = field(number, layout.mantissa);
    const bool negative = (number & sign_bit) != 0;
    const bool below_one = exponent < bias;
    const bool whole = exponent >= bias + static_cast<bus_bits>(fraction_bits);
    const bus_bits mask = below_one ? low_ones(fraction_bits)
                          : whole   ? 0
                                    : low_ones(fraction_bits) >> static_cast<unsigned>(exponent - bias);
    const bool is_nan = exponent == exponent_ones && fraction != 0;

    // cut: below 1 the number becomes 1/2, which one unit makes 1
    const bus_bits kept = below_one ? (bias - 1) << unit_shift : (number & (sign_bit - 1)) & ~mask;
    const bool any = below_one ? exponent != 0 : (fraction & mask) != 0;
    const bool half = below_one ? exponent == bias - 1 : (fraction & mask & ~(mask >> 1U)) != 0;
    bool up = false;
    switch (static_cast<rounding_kind>(rounding)) {
        case rounding_kind::floor:
            up = negative && any;
            break;
        case rounding_kind::ceil:
            up = !negative && any;
            break;
        case rounding_kind::trunc:
            break;
        case rounding_kind::round:
            up = half;
            break;
    }
    const bus_bits unit = ((mask << 1U) | 1) & ~mask;

    // lower, upper
    const bus_bits sum = kept + (up ? unit : 0);
    if (is_nan) {
        return low_ones(layout.exponent.width() + 1) << (unit_shift - 1);
    }
    return (number & sign_bit) | (below_one && !up ? 0 : sum);
}

}  // namespace xfc
