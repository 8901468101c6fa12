#include <cstdlib>

#include "fp_log_table.h"
#include "model/xfloat.h"

namespace xfc::model {

bus_bits fp_log(const component_generics&, const component_operands& operands) {
    constexpr bus_bits ln_2 = 0xB17217F8;       // ln(2) in units of 2 ** -32
    constexpr std::int32_t distance_bits = 23;  // of |m - 1|, units of 2 ** -24
    constexpr std::int32_t position_bits = 16;  // of the operand in its segment
    constexpr std::int32_t short_bits = 12;     // of these for the curve
    constexpr std::int32_t product_bits = 52;   // of |m - 1| times the quotient
    constexpr std::int32_t part_bits = 32;      // of these that are kept, units of 2 ** -32
    constexpr std::int32_t sum_bits = 39;       // units of 2 ** -32
    constexpr std::int32_t window_bits = 10;    // of these that the leading one is in

    // unpack: m from 0.75 to 1.5
    const bus_layout layout = layout_of(bus_form::single_float, 32);
    const bool sign = bit(operands.aa, layout.sign - 1);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool zero = exponent == 0;
    const bool top = exponent == single_exponent_of_infinity;
    const bool nan = (top && fraction != 0) || (sign && !zero);
    const bool infinite = top || zero;
    const bool below = bit(fraction, 22);
    const std::int32_t power = exponent - 127 + (below ? 1 : 0);
    const auto whole = static_cast<bus_bits>(std::abs(power));
    const bool whole_negative = power < 0;
    const bool whole_zero = power == 0;
    const bus_bits distance = below ? (bus_bits{1} << 23U) - fraction : slice(fraction, 21, 0) << 1U;
    const bus_bits index = below ? 128 | slice(fraction, 21, 16) : slice(fraction, 21, 15);
    const bus_bits position = below ? slice(fraction, 15, 0) : slice(fraction, 14, 0) << 1U;

    // look_up
    const fp_log_table_row& row = fp_log_table[static_cast<std::size_t>(index)];

    // bend
    const bus_bits slope =
        row.slope - ((row.curve * slice(position, position_bits - 1, position_bits - short_bits)) >> short_bits);

    // fall
    const bus_bits level = row.level - ((slope * position) >> position_bits);

    // zeros: only where nothing is added to the product
    const std::int32_t zeros = whole_zero ? leading_zeros(distance, distance_bits) : 0;

    // coarse, fine
    // NOLINTNEXTLINE(readability-suspicious-call-argument): the distance from 1 is what is shifted.
    const bus_bits normal = shift_left(distance, distance_bits, zeros, false);

    // multiply
    const bus_bits product = normal * level;
    const bus_bits part = slice(product, product_bits - 1, product_bits - part_bits);

    // add
    const bool same = whole_zero || whole_negative == below;
    const bus_bits sum = (whole * ln_2 + (same ? part : ~part + 1)) & low_ones(sum_bits);

    // count
    const std::int32_t high_zeros = leading_zeros(slice(sum, sum_bits - 1, sum_bits - window_bits), window_bits);

    // shift
    const bus_bits shifted = shift_left(sum, sum_bits, high_zeros, false);
    const std::int32_t leading = 133 - high_zeros - zeros;

    // round
    const bus_bits kept = slice(shifted, sum_bits - 2, sum_bits - 1 - single_fraction_bits);
    const bus_bits rounded =
        ((static_cast<bus_bits>(leading) << 23U) | kept) + (bit(shifted, sum_bits - 2 - single_fraction_bits) ? 1 : 0);

    // pack
    const bool zip = whole_zero && distance == 0;
    const bool negative = zero || (!zip && !infinite && (whole_negative || (whole_zero && below)));
    const bus_bits sign_bit = bus_bits{negative} << 31U;
    return nan        ? quiet_single_nan
           : infinite ? sign_bit | (bus_bits{single_exponent_of_infinity} << 23U)
           : zip      ? 0
                      : sign_bit | rounded;
}

}  // namespace xfc::model
