#include "dp_exp_cubic_table.h"
#include "dp_exp_high_table.h"
#include "dp_exp_low_table.h"
#include "model/polynomial.h"

namespace xfc::model {

bus_bits dp_exp(const component_generics&, const component_operands& operands) {
    constexpr std::int32_t point_bits = 61;   // of the operand as a fixed point, behind the point
    constexpr std::int32_t fixed_bits = 71;   // of its magnitude
    constexpr std::int32_t largest = 1032;    // exponent field of the operands from 512 to 1024
    constexpr std::int32_t top_bits = 13;     // of the fixed point, that choose the whole power; two behind the point
    constexpr bus_bits log2_e = 23637;        // log2(e) / 4 in units of 2 ** -16, truncated
    constexpr bus_bits whole_offset = 44564;  // of 1478 less 1024 log2(e), in units of 2 ** -16, truncated
    constexpr std::int32_t ln_2_bits = 73;    // behind the point
    constexpr bus_bits ln_2 = (bus_bits{0x162} << 64U) | 0xE42FEFA39EF35794;
    constexpr bus_bits offset = 0xF16CC18AA7B0EBA;  // 1478 ln(2) in units of 2 ** -61, without what is before the point
    constexpr std::int32_t segment_bits = 9;
    constexpr std::int32_t rest_bits = point_bits - 2 * segment_bits;
    constexpr std::int32_t short_bits = 26;   // of the rest, for the square
    constexpr std::int32_t mixed_bits = 36;   // of both factors of the mixed product
    constexpr std::int32_t whole_bias = 455;  // whole power, plus 1478, less the exponent field

    // coarse, fine: a zero is shifted out; a negative number is inverted
    const unpacked_ieee operand = unpack(operands.aa, double_shape);
    const bool beyond = operand.exponent > largest;
    const std::int32_t difference = largest - operand.exponent;
    const bool far = operand.flags.zip || (!beyond && difference > 127);
    const std::int32_t distance = far ? 127 : difference & 127;
    const bus_bits significand = (bus_bits{1} << 52U) | operand.fraction;
    const bus_bits shifted = (significand << static_cast<unsigned>(fixed_bits - 53)) >> static_cast<unsigned>(distance);
    const bus_bits fixed = (operand.sign ? ~shifted : shifted) & low_ones(fixed_bits + 1);

    // whole: the whole power of two plus 1478
    const bus_bits top =
        slice(fixed, fixed_bits, fixed_bits + 1 - top_bits) ^ (bus_bits{1} << static_cast<unsigned>(top_bits - 1));
    const bus_bits whole = (top * log2_e + whole_offset) >> 16U;

    // power: its logarithm, modulo 1
    const bus_bits power = slice(whole * ln_2, ln_2_bits - 1, ln_2_bits - point_bits);

    // reduce: what the power leaves of the operand, modulo 1
    const bus_bits reduced = (fixed + offset - power) & low_ones(point_bits);

    // look_up
    const auto high_index = static_cast<std::size_t>(reduced >> static_cast<unsigned>(point_bits - segment_bits));
    const auto low_index = static_cast<std::size_t>(slice(reduced, point_bits - segment_bits - 1, rest_bits));
    const bus_bits rest = slice(reduced, rest_bits - 1, 0);
    const bus_bits high = dp_exp_high_table[high_index].value;
    const bus_bits low = dp_exp_low_table[low_index].value;
    const bus_bits cubic =
        dp_exp_cubic_table[static_cast<std::size_t>(slice(rest, rest_bits - 1, rest_bits - 6))].value;

    // square, small: units of 2 ** -62
    const bus_bits rest_short = slice(rest, rest_bits - 1, rest_bits - short_bits);
    const bus_bits half_square = (rest_short * rest_short) >> 27U;
    const bus_bits small = (rest << 1U) + cubic + half_square;

    // mixed: units of 2 ** -97
    const bus_bits mixed = (slice(small, 44, 45 - mixed_bits) * slice(low, 51, 52 - mixed_bits)) >> 36U;

    // factor: units of 2 ** -61
    const bus_bits factor = (low << 1U) + (small >> 1U) + mixed;

    // rise: units of 2 ** -113
    const bus_bits rise = ((high >> 8U) * factor) >> 53U;

    // add
    const bus_bits sum = high + rise;

    // round
    const bool two = bit(sum, 61);
    const bus_bits fraction = two ? slice(sum, 60, 9) : slice(sum, 59, 8);
    const bus_bits rounded = fraction + (bit(sum, two ? 8 : 7) ? 1 : 0);
    const std::int32_t exponent =
        static_cast<std::int32_t>(whole) - whole_bias + (two ? 1 : 0) + (bit(rounded, 52) ? 1 : 0);

    // pack
    return pack(false, exponent, rounded,
                {.sat = beyond && !operand.sign, .zip = beyond && operand.sign, .nan = operand.flags.nan},
                double_shape);
}

}  // namespace xfc::model
