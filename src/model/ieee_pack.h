#pragma once

#include "model/component_model.h"

// The common part xfc_pack_ieee, for the models that deliver an IEEE number.

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

}  // namespace xfc
