#include <cstdlib>

#include "dp_log_table.h"
#include "model/polynomial.h"

namespace xfc::model {

bus_bits dp_log(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t ln_2_bits = 73;  // behind the point
    constexpr bus_bits ln_2 = (bus_bits{0x162} << 64U) | 0xE42FEFA39EF35794;
    constexpr std::int32_t distance_bits = 52;  // of |m - 1|, whose units are 2 ** -53
    constexpr std::int32_t position_bits = 45;  // of the operand in its segment
    constexpr std::int32_t product_bits = 114;  // of |m - 1| times the quotient
    constexpr std::int32_t point_bits = 63;     // of the sum, behind the point
    constexpr std::int32_t sum_bits = 73;
    constexpr std::int32_t window_bits = 13;       // of the sum, that the leading one is in
    constexpr std::int32_t first_exponent = 1032;  // of the sum's highest bit

    // look_up: m from 0.75 to 1.5
    const unpacked_ieee operand = unpack(operands.aa, double_shape);
    const bus_bits fraction = operand.fraction;
    const bool zero = operand.flags.zip;
    const bool infinite = operand.flags.sat || zero;
    const bool below = bit(fraction, 51);
    const std::int32_t power = operand.exponent - 1023 + (below ? 1 : 0);
    const auto whole = static_cast<bus_bits>(std::abs(power));
    const bool whole_negative = power < 0;
    const bool whole_zero = power == 0;
    const bus_bits distance = below ? (bus_bits{1} << 52U) - fraction : slice(fraction, 50, 0) << 1U;
    const bus_bits index = below ? 128 | slice(fraction, 50, 45) : slice(fraction, 50, 44);
    const bus_bits position = below ? slice(fraction, 44, 0) : slice(fraction, 43, 0) << 1U;
    const dp_log_table_row& row = dp_log_table[static_cast<std::size_t>(index)];

    // fourth, third, second, first, level: each with as many bits of the position as its factor has
    const auto step = [&](bus_bits coefficient, bus_bits value, std::int32_t short_bits) {
        return polynomial_step(coefficient, value, slice(position, position_bits - 1, position_bits - short_bits),
                               short_bits);
    };
    const bus_bits fourth = step(row.c4, row.c5, 21);
    const bus_bits third = step(row.c3, fourth, 29);
    const bus_bits second = step(row.c2, third, 37);
    const bus_bits first = step(row.c1, second, position_bits);
    const bus_bits level = step(row.c0, first, position_bits);

    // zeros: only where nothing is added to the product
    const std::int32_t zeros = whole_zero ? leading_zeros(distance, distance_bits) : 0;

    // coarse, fine
    // NOLINTNEXTLINE(readability-suspicious-call-argument): the distance from 1 is what is shifted.
    const bus_bits normal = shift_left(distance, distance_bits, zeros, false);

    // multiply
    const bus_bits part = slice(normal * level, product_bits - 1, product_bits - point_bits);
    const bus_bits whole_part = (whole * ln_2) >> static_cast<unsigned>(ln_2_bits - point_bits);

    // add
    const bool same = whole_zero || whole_negative == below;
    const bus_bits sum = (whole_part + (same ? part : ~part + 1)) & low_ones(sum_bits);

    // count
    const std::int32_t high_zeros = leading_zeros(slice(sum, sum_bits - 1, sum_bits - window_bits), window_bits);

    // shift
    const bus_bits shifted = shift_left(sum, sum_bits, high_zeros, false);
    const std::int32_t leading = first_exponent - high_zeros - zeros;

    // round
    const bus_bits kept = slice(shifted, sum_bits - 2, sum_bits - 1 - double_fraction_bits);
    const bus_bits rounded = ((static_cast<bus_bits>(leading) << static_cast<unsigned>(double_fraction_bits)) | kept) +
                             (bit(shifted, sum_bits - 2 - double_fraction_bits) ? 1 : 0);

    // pack
    const bool zip = whole_zero && distance == 0;
    const bool negative = zero || (!zip && !infinite && (whole_negative || (whole_zero && below)));
    return pack(negative, static_cast<std::int32_t>(rounded >> static_cast<unsigned>(double_fraction_bits)), rounded,
                {.sat = infinite, .zip = zip, .nan = operand.flags.nan || (operand.sign && !zero)}, double_shape);
}

}  // namespace xfc::model
