#include "fp_exp_table.h"
#include "model/xfloat.h"

namespace xfc::model {

bus_bits fp_exp(const component_generics&, const component_operands& operands) {
    constexpr bus_bits log2_e = 0xB8AA3B296;  // log2(e) in units of 2 ** -35
    constexpr std::int32_t product_bits = 60;
    constexpr std::int32_t fixed_bits = 36;  // 8 before and 28 behind the point
    constexpr std::int32_t point_bits = 28;
    constexpr std::int32_t position_bits = 21;  // of the operand in its segment
    constexpr std::int32_t short_bits = 12;     // of these for the curve
    constexpr std::int32_t level_bits = 27;     // behind the point

    // scale
    const bus_layout layout = layout_of(bus_form::single_float, 32);
    const bool sign = bit(operands.aa, layout.sign - 1);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool zero = exponent == 0;
    const bool nan = exponent == single_exponent_of_infinity && fraction != 0;
    const bool beyond = exponent > 133;  // |x| from 128 on
    const bus_bits product = ((bus_bits{1} << 23U) | fraction) * log2_e;

    // coarse, fine: to 133 as the exponent, a zero is shifted out; a negative number is inverted, one unit below as the
    // truncated positive one
    const std::int32_t difference = 133 - exponent;
    const bool far = difference > 63 || zero;
    const std::int32_t distance = far ? 63 : difference & 63;
    const bus_bits high = slice(product, product_bits - 1, product_bits - fixed_bits);
    const bus_bits shifted = distance >= fixed_bits ? 0 : high >> static_cast<unsigned>(distance);
    const bus_bits fixed = sign ? ~shifted & low_ones(fixed_bits) : shifted;

    // look_up
    const bus_bits whole = slice(fixed, fixed_bits - 1, point_bits);
    const fp_exp_table_row& row = fp_exp_table[static_cast<std::size_t>(slice(fixed, point_bits - 1, position_bits))];
    const bus_bits position = slice(fixed, position_bits - 1, 0);

    // bend
    const bus_bits bend = (row.curve * slice(position, position_bits - 1, position_bits - short_bits)) >> short_bits;

    // slope
    const bus_bits slope = row.slope + bend;

    // rise
    const bus_bits rise = (slope * position) >> position_bits;

    // settle: the value is 1 more, rounded by truncation
    const bus_bits level = row.level + rise;
    const bool two = bit(level, level_bits);
    const bus_bits result = slice(level, level_bits - 1, level_bits - single_fraction_bits);
    const std::int32_t result_exponent = static_cast<std::int32_t>(whole) - (sign ? 256 : 0) + 127 + (two ? 1 : 0);

    // pack
    const bool sat = !sign && (beyond || result_exponent >= single_exponent_of_infinity);
    const bool zip = sign && (beyond || result_exponent <= 0);
    return nan   ? quiet_single_nan
           : sat ? bus_bits{single_exponent_of_infinity} << 23U
           : zip ? 0
                 : (static_cast<bus_bits>(result_exponent) << 23U) | result;
}

}  // namespace xfc::model
