#include "fp_invsqr_table.h"
#include "model/xfloat.h"

namespace xfc::model {

bus_bits fp_invsqr(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t position_bits = 16;  // of the operand in its segment
    constexpr std::int32_t short_bits = 12;     // of these for the curve
    constexpr std::int32_t level_bits = 27;     // behind the point

    // arrive, unpack
    const bus_layout layout = layout_of(bus_form::single_float, 32);
    const bool sign = bit(operands.aa, layout.sign - 1);
    const auto exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool zero = exponent == 0;
    const bool top = exponent == single_exponent_of_infinity;
    const bool nan = (top && fraction != 0) || (sign && !zero);
    const bool sat = zero;
    const bool zip = top;
    const std::int32_t result_exponent = (380 - exponent) >> 1;

    // look_up: even exponents have the even parity's half of the table, whose exponent field is odd
    const bool odd = (exponent & 1) == 0;
    const auto index = static_cast<std::size_t>(slice(fraction, 22, position_bits)) + (odd ? 128U : 0U);
    const fp_invsqr_table_row& row = fp_invsqr_table[index];
    const bus_bits position = slice(fraction, position_bits - 1, 0);

    // bend
    const bus_bits slope =
        row.slope - ((row.curve * slice(position, position_bits - 1, position_bits - short_bits)) >> short_bits);

    // fall: the value is 1 more, rounded by truncation
    const bus_bits level = row.level - ((slope * position) >> position_bits);
    const bool two = bit(level, level_bits);
    const bus_bits result = two ? 0 : slice(level, level_bits - 1, level_bits - single_fraction_bits);
    const bus_bits result_field = static_cast<bus_bits>(result_exponent) + static_cast<bus_bits>(two);

    // pack
    const bus_bits sign_bit = bus_bits{sign} << 31U;
    const bus_bits infinity = bus_bits{single_exponent_of_infinity} << 23U;
    return nan ? quiet_single_nan : sat ? sign_bit | infinity : zip ? 0 : (result_field << 23U) | result;
}

}  // namespace xfc::model
