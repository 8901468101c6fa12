#include "dp_inv_table.h"
#include "model/polynomial.h"

namespace xfc::model {

bus_bits dp_inv(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t position_bits = 25;  // of the operand in its segment, those of 43 that count
    constexpr std::int32_t short_bits = 16;     // of these for the curve
    constexpr std::int32_t level_bits = 34;     // behind the point
    constexpr std::int32_t guess_bits = 32;     // of these that are kept
    constexpr std::int32_t error_bits = 32;     // units of 2 ** -61
    constexpr std::int32_t rise_bits = 31;      // units of 2 ** -60
    constexpr std::int32_t dropped_bits = 7;    // of the result's units of 2 ** -60

    // look_up
    const unpacked_ieee operand = unpack(operands.aa, double_shape);
    const dp_inv_table_row& row = dp_inv_table[static_cast<std::size_t>(slice(operand.fraction, 51, 43))];
    const bus_bits position = slice(operand.fraction, 42, 43 - position_bits);

    // bend, fall
    const bus_bits slope = polynomial_step(row.slope, row.curve, position >> (position_bits - short_bits), short_bits);
    const bus_bits level = polynomial_step(row.level, slope, position, position_bits);
    const bus_bits guess = level >> static_cast<unsigned>(level_bits - guess_bits);

    // residual: units of 2 ** -84
    const bus_bits product = ((bus_bits{1} << 52U) | operand.fraction) * guess;
    const bus_bits error = ~slice(product, 23 + error_bits - 1, 23) & low_ones(error_bits);

    // correct: units of 2 ** -93
    const bus_bits rise = slice(guess * error, 63, 64 - rise_bits);

    // add: half a unit of the result stands where the guess has no bits
    const bus_bits half = bus_bits{1} << static_cast<unsigned>(dropped_bits - 1);
    const bus_bits sum = ((guess << 28U) | half) + rise;
    const bool two = bit(sum, 60);

    // pack
    return pack(operand.sign, 2045 - operand.exponent + (two ? 1 : 0), slice(sum, 58, dropped_bits),
                {.sat = operand.flags.zip, .zip = operand.flags.sat, .nan = operand.flags.nan}, double_shape);
}

}  // namespace xfc::model
