#include "dp_invsqr_table.h"
#include "model/polynomial.h"

namespace xfc::model {

bus_bits dp_invsqr(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t position_bits = 25;  // of the operand in its segment, those of 44 that count
    constexpr std::int32_t short_bits = 17;     // of these for the curve
    constexpr std::int32_t level_bits = 34;     // behind the point
    constexpr std::int32_t guess_bits = 32;     // of these that are kept
    constexpr std::int32_t root_bits = 64;      // one before the point
    constexpr std::int32_t error_bits = 32;     // units of 2 ** -59
    constexpr std::int32_t rise_bits = 32;      // units of 2 ** -60
    constexpr std::int32_t dropped_bits = 7;    // of the result's units of 2 ** -60

    // look_up: an even power of two has an odd exponent field
    const unpacked_ieee operand = unpack(operands.aa, double_shape);
    const bool odd = (operand.exponent & 1) == 0;
    const dp_invsqr_table_row& row =
        dp_invsqr_table[static_cast<std::size_t>(slice(operand.fraction, 51, 44)) + (odd ? 256U : 0U)];
    const bus_bits position = slice(operand.fraction, 43, 44 - position_bits);

    // bend, fall
    const bus_bits slope = polynomial_step(row.slope, row.curve, position >> (position_bits - short_bits), short_bits);
    const bus_bits level = polynomial_step(row.level, slope, position, position_bits);
    const bus_bits guess = level >> static_cast<unsigned>(level_bits - guess_bits);

    // root: units of 2 ** -84, of which those from 2 ** -63 on are kept
    const bus_bits root = slice(((bus_bits{1} << 52U) | operand.fraction) * guess, 84, 85 - root_bits);

    // residual: units of 2 ** -95, or half of them where the operand is twice the significand
    const bus_bits product = root * guess;
    const std::int32_t lowest = odd ? 35 : 36;
    const bus_bits error = ~slice(product, lowest + error_bits - 1, lowest) & low_ones(error_bits);

    // correct: units of 2 ** -92
    const bus_bits rise = slice(guess * error, 63, 64 - rise_bits);

    // add: half a unit of the result stands where the guess has no bits
    const bus_bits half = bus_bits{1} << static_cast<unsigned>(dropped_bits - 1);
    const bus_bits sum = ((guess << 28U) | half) + rise;
    const bool two = bit(sum, 60);

    // pack
    const bool zero = operand.flags.zip;
    return pack(operand.sign && zero, ((3068 - operand.exponent) >> 1) + (two ? 1 : 0), slice(sum, 58, dropped_bits),
                {.sat = zero, .zip = operand.flags.sat, .nan = operand.flags.nan || (operand.sign && !zero)},
                double_shape);
}

}  // namespace xfc::model
