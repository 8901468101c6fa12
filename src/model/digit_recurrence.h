#pragma once

#include "model/component_model.h"

// What the models of square roots and quotients share: their digits, and the common part xfc_square_root. `word` is an
// unsigned integer of four bits more than divisor or root; 64 bits are several times as fast as 128.

namespace xfc {

/// A square root on its way: `remainder` is what of the operand's bits looked at so far is more than root squared.
template <class word>
struct root_state {
    word remainder;
    word root;
};
/// The common part xfc_root_digit: the next digit, for which the operand gives the bits `pair`.
template <class word>
constexpr root_state<word> root_digit(root_state<word> state, word pair) {
    const word wide = (state.remainder << 2U) | pair;
    const word subtrahend = (state.root << 2U) | 1;
    const bool digit = wide >= subtrahend;
    return {digit ? wide - subtrahend : wide, (state.root << 1U) | static_cast<word>(digit)};
}

/// A quotient on its way: `remainder` is what the digits so far leave of the dividend, below the divisor.
template <class word>
struct quotient_state {
    word remainder;
    word quotient;
};
/// The common part xfc_divide_digit: the next digit, in base 4.
template <class word>
constexpr quotient_state<word> divide_digit(quotient_state<word> state, word divisor) {
    const word wide = state.remainder << 2U;
    const word digit = wide >= 2 * divisor ? (wide >= 3 * divisor ? 3 : 2) : (wide >= divisor ? 1 : 0);
    return {wide - digit * divisor, (state.quotient << 2U) | digit};
}

/// The common part xfc_square_root: the root of an IEEE number. `word` has twice as many bits as the root.
template <class word>
constexpr bus_bits square_root(bus_bits operand, bus_form form) {
    const bus_layout layout = layout_of(form, 0);
    const std::int32_t fraction_bits = layout.mantissa.width();
    const bus_bits greatest_exponent = low_ones(layout.exponent.width());
    const auto packed = [&](bool sign, bus_bits exponent, bus_bits fraction) {
        return (bus_bits{sign} << static_cast<unsigned>(layout.sign - 1)) |
               (exponent << static_cast<unsigned>(fraction_bits)) | fraction;
    };

    // unpack
    const bool sign = bit(operand, layout.sign - 1);
    const bus_bits exponent = field(operand, layout.exponent);
    const bus_bits fraction = field(operand, layout.mantissa);
    const bool nan = (exponent == greatest_exponent && fraction != 0) || (sign && exponent != 0);
    if (nan) {
        return packed(false, greatest_exponent, bus_bits{1} << static_cast<unsigned>(fraction_bits - 1));
    }
    if (exponent == 0 || exponent == greatest_exponent) {
        return packed(sign, exponent, 0);
    }
    const bus_bits root_exponent = (exponent >> 1U) + (greatest_exponent >> 2U) + (exponent & 1U);

    // first: pairs of bits, of which the highest stands before the point; the highest digit takes 1 off
    const std::int32_t pairs = fraction_bits + 2;
    const word significand = (word{1} << static_cast<unsigned>(fraction_bits)) | static_cast<word>(fraction);
    const bool one_place = (exponent & 1U) == 0;
    const word moved = significand << static_cast<unsigned>(2 * pairs - 2 - fraction_bits + (one_place ? 1 : 0));
    const auto pair_at = [&](std::int32_t pair) -> word { return (moved >> static_cast<unsigned>(2 * pair)) & 3U; };
    root_state<word> state{pair_at(pairs - 1) - 1, 1};

    // digit
    for (std::int32_t pair = pairs - 2; pair >= 0; --pair) {
        state = root_digit(state, pair_at(pair));
    }

    // round, pack
    const bus_bits rounded = (state.root >> 1U) + (state.root & 1U);
    return packed(false, root_exponent, rounded & low_ones(fraction_bits));
}

}  // namespace xfc
