#pragma once

#include <algorithm>

#include "model/component_model.h"

// The common parts xfc_pack_ieee and xfc_scale_ieee, for the models that deliver an IEEE number.

namespace xfc {

/// The number from its exponent (with the format's bias) and its fraction; zero below the normal numbers, infinite
/// above them. nan, then sat, then zip go before the number.
constexpr bus_bits pack_ieee(bus_form form, bool sign, bus_flags flags, std::int32_t exponent, bus_bits fraction) {
    const bus_layout layout = layout_of(form, 0);
    const auto fraction_bits = static_cast<unsigned>(layout.mantissa.width());
    const bus_bits exponent_ones = low_ones(layout.exponent.width());
    const bus_bits signed_zero = bus_bits{sign} << static_cast<unsigned>(layout.sign - 1);
    if (flags.nan) {
        return ((exponent_ones << 1U) | 1) << (fraction_bits - 1);
    }
    if (!flags.sat && (flags.zip || exponent <= 0)) {
        return signed_zero;
    }
    if (flags.sat || exponent >= static_cast<std::int32_t>(exponent_ones)) {
        return signed_zero | (exponent_ones << fraction_bits);
    }
    return signed_zero | (static_cast<bus_bits>(exponent) << fraction_bits) | fraction;
}

/// aa times two to the power bb, a signed integer of 32 bits.
constexpr bus_bits scale_ieee(bus_form form, const component_operands& operands) {
    const bus_layout layout = layout_of(form, 0);
    const std::int32_t limit = 1 << static_cast<unsigned>(layout.exponent.width() + 1);

    // clamp
    const auto scale = static_cast<std::int32_t>(sign_extended(operands.bb, 32));
    const std::int32_t clamped = std::clamp(scale, -limit, limit - 1);
    const bus_bits exponent = field(operands.aa, layout.exponent);
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool ones = exponent == low_ones(layout.exponent.width());
    const bus_flags flags{.sat = ones && fraction == 0, .zip = exponent == 0, .nan = ones && fraction != 0};

    // scale
    return pack_ieee(form, bit(operands.aa, layout.sign - 1), flags, static_cast<std::int32_t>(exponent) + clamped,
                     fraction);
}

}  // namespace xfc
