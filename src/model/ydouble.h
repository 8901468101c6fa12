#pragma once

#include "model/xfloat.h"

// What the models of several components share: the double-precision internal form, and the common parts that normalize
// a mantissa and make an IEEE number of it.
//
//   adder form                   sign, 4 guard bits, hidden one, 52 fraction bits, 6 low bits    two's complement
//   multiplier and divider form  sign, hidden one, 52 fraction bits                              sign and magnitude

namespace xfc {

inline constexpr std::int32_t double_fraction_bits = 52;
inline constexpr std::int32_t double_bias = 1023;
inline constexpr std::int32_t double_exponent_of_infinity = 2047;
inline constexpr std::int32_t ydouble_low_bits = 6;
/// Exponents from here on have their four high bits set: what is delivered with one of them is infinite.
inline constexpr std::int32_t ydouble_overflow = 7680;
/// A double's exponent field less a single's of the same value.
inline constexpr std::int32_t bias_difference = double_bias - single_bias;

/// Fields of an IEEE form.
struct ieee_shape {
    std::int32_t exponent_bits;
    std::int32_t fraction_bits;
    [[nodiscard]] constexpr std::int32_t infinity() const { return (1 << static_cast<unsigned>(exponent_bits)) - 1; }
};
inline constexpr ieee_shape single_shape{.exponent_bits = 8, .fraction_bits = single_fraction_bits};
inline constexpr ieee_shape double_shape{.exponent_bits = 11, .fraction_bits = double_fraction_bits};

/// An IEEE number taken apart; exponent field 0 is zero, subnormal or not.
struct unpacked_ieee {
    bool sign;
    std::int32_t exponent;
    bus_bits fraction;
    bus_flags flags;
};
constexpr unpacked_ieee unpack(bus_bits bus, const ieee_shape& shape) {
    const bus_bits fraction = bus & low_ones(shape.fraction_bits);
    const auto exponent =
        static_cast<std::int32_t>(slice(bus, shape.fraction_bits + shape.exponent_bits - 1, shape.fraction_bits));
    const bool ones = exponent == shape.infinity();
    return {.sign = bit(bus, shape.fraction_bits + shape.exponent_bits),
            .exponent = exponent,
            .fraction = fraction,
            .flags = {.sat = ones && fraction == 0, .zip = exponent == 0, .nan = ones && fraction != 0}};
}

/// An IEEE number from its parts, nan before sat before zip; an exponent out of range is zero or infinite.
constexpr bus_bits pack(bool sign, std::int32_t exponent, bus_bits fraction, bus_flags flags, const ieee_shape& shape) {
    const bus_bits signed_zero = bus_bits{sign} << static_cast<unsigned>(shape.exponent_bits + shape.fraction_bits);
    const bus_bits infinity = static_cast<bus_bits>(shape.infinity()) << static_cast<unsigned>(shape.fraction_bits);
    if (flags.nan) {
        return infinity | (bus_bits{1} << static_cast<unsigned>(shape.fraction_bits - 1));
    }
    if (!flags.sat && (flags.zip || exponent <= 0)) {
        return signed_zero;
    }
    if (flags.sat || exponent >= shape.infinity()) {
        return signed_zero | infinity;
    }
    return signed_zero | (static_cast<bus_bits>(exponent) << static_cast<unsigned>(shape.fraction_bits)) |
           (fraction & low_ones(shape.fraction_bits));
}

/// The common part xfc_normalize: at least one copy of `fill` is put behind the value, which makes whole bytes, and the
/// highest 1 is brought to the front. A value of nothing but zeros counts all bits but the last.
struct normalized {
    bus_bits normal;
    std::int32_t width;  ///< bits of `normal`
    std::int32_t zeros;  ///< bits that were shifted out
};
constexpr normalized normalize(bus_bits value, std::int32_t width, bool fill) {
    const std::int32_t padded = 8 * (width / 8 + 1);
    const std::int32_t padding = padded - width;
    const bus_bits filled = (value << static_cast<unsigned>(padding)) | (fill ? low_ones(padding) : 0);

    // bytes
    std::int32_t bytes = 0;
    while (bytes < padded / 8 - 1 && slice(filled, padded - 8 * bytes - 1, padded - 8 * bytes - 8) == 0) {
        ++bytes;
    }

    // coarse
    const bus_bits coarse = shift_left(filled, padded, 8 * bytes, fill);

    // bits
    const std::int32_t bits = leading_zeros(slice(coarse, padded - 1, padded - 7), 7);

    // fine
    return {.normal = shift_left(coarse, padded, bits, fill), .width = padded, .zeros = 8 * bytes + bits};
}

/// The common part xfc_to_ieee: a two's complement mantissa and an exponent as an IEEE number, nearest even. A mantissa
/// of 0100... (behind the sign) has the exponent `exponent` + `adjust`.
constexpr bus_bits to_ieee(bus_bits mantissa, std::int32_t mantissa_bits, std::int32_t exponent, std::int32_t adjust,
                           bus_flags flags, const ieee_shape& shape) {
    // complement: ones' complement of a negative mantissa, one low unit short of its magnitude
    const bool sign = bit(mantissa, mantissa_bits - 1);
    const std::int32_t magnitude_bits = mantissa_bits - 1;
    const bus_bits magnitude = (sign ? ~mantissa : mantissa) & low_ones(magnitude_bits);

    // bytes, coarse, bits, fine
    const normalized found = normalize(magnitude, magnitude_bits, sign);

    // decide: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
    const std::int32_t extension = std::max(1, shape.fraction_bits + 3 - found.width);
    const std::int32_t dropped_bits = found.width + extension - 1 - shape.fraction_bits;
    const bus_bits extended =
        (found.normal << static_cast<unsigned>(extension)) | (sign ? low_ones(extension) : bus_bits{0});
    const bool up = rounds_up(bit(extended, dropped_bits), extended & low_ones(dropped_bits), dropped_bits, sign);
    const std::int32_t leading = exponent + adjust - found.zeros;
    flags.zip = flags.zip || !bit(found.normal, found.width - 1);

    // round and carry: the fraction carries into the exponent
    const bus_bits fraction =
        slice(extended, dropped_bits + shape.fraction_bits - 1, dropped_bits) + static_cast<bus_bits>(up);
    const std::int32_t rounded =
        leading + static_cast<std::int32_t>(fraction >> static_cast<unsigned>(shape.fraction_bits));

    // range and pack
    return pack(sign, rounded, fraction, flags, shape);
}

}  // namespace xfc
