#pragma once

#include "model/xfloat.h"

namespace xfc {

/// The common part xfc_add_internal, for the adder form that `layout` draws: the steps and what they do stand in its
/// hardware texts. From exponent `overflow` on a sum is infinite.
constexpr bus_bits add_internal(const component_operands& operands, const bus_layout& layout, std::int32_t overflow) {
    const std::int32_t width = layout.mantissa.width();
    const std::int32_t levels = width > 32 ? 6 : 5;
    const bool subtract = operands.addsub;

    // difference
    const bus_flags a_flags = flags_of(operands.aa, layout);
    const bus_flags b_flags = flags_of(operands.bb, layout);
    const auto a_exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const auto b_exponent = static_cast<std::int32_t>(field(operands.bb, layout.exponent));
    const bus_bits a_mantissa = field(operands.aa, layout.mantissa);
    const bus_bits b_mantissa = field(operands.bb, layout.mantissa);
    const bool a_zero = a_flags.zip || a_exponent == 0;
    const bool b_zero = b_flags.zip || b_exponent == 0;
    // A zero never leads another operand; of equal exponents b leads.
    const bool b_leads = a_zero || (!b_zero && a_exponent <= b_exponent);

    // order: a zero is shifted as zero
    const std::int32_t difference = b_leads ? b_exponent - a_exponent : a_exponent - b_exponent;
    const std::int32_t distance = std::min(difference, (1 << static_cast<unsigned>(levels)) - 1);
    const std::int32_t larger_exponent = b_leads ? b_exponent : a_exponent;
    const bus_bits b_complement = subtract ? ~b_mantissa & low_ones(width) : b_mantissa;
    const bus_bits larger = b_leads ? b_complement : a_mantissa;
    const bool smaller_is_zero = b_leads ? a_zero : b_zero;
    const bus_bits smaller = smaller_is_zero ? 0 : b_leads ? a_mantissa : b_mantissa;
    const bool a_sign = bit(a_mantissa, width - 1);
    const bool b_sign = bit(b_mantissa, width - 1) != subtract;
    const bool nan = a_flags.nan || b_flags.nan || (a_flags.sat && b_flags.sat && a_sign != b_sign);
    const bool sat = !nan && (a_flags.sat || b_flags.sat);
    const bool zip = !nan && !sat && a_zero && b_zero;
    const bool mark_sign = a_flags.sat ? a_sign : b_flags.sat ? b_sign : a_sign && b_sign;

    // align
    const shifted_right aligned = smaller_is_zero ? shifted_right{0, false} : shift_right(smaller, width, distance);
    const bus_bits jammed = aligned.value | static_cast<bus_bits>(aligned.lost);
    const bus_bits addend = subtract && !b_leads ? ~jammed & low_ones(width) : jammed;

    // add and carry: lower and upper half of a split sum
    const signed_bus_bits sum = sign_extended(larger, width) + sign_extended(addend, width) + (subtract ? 1 : 0);

    // settle
    const bus_bits sum_bits = bits_of(sum, width + 1);
    const bool halve = bit(sum_bits, width) != bit(sum_bits, width - 1);
    const bus_bits settled = halve ? (sum_bits >> 1U) | (sum_bits & 1U) : sum_bits & low_ones(width);
    const bool marked = nan || zip || sat;
    const bus_bits result =
        marked ? (settled & low_ones(width - 1)) | (bus_bits{mark_sign} << static_cast<unsigned>(width - 1)) : settled;
    const std::int32_t exponent = larger_exponent + (halve ? 1 : 0);
    const bool too_large = exponent >= overflow;
    return internal_bus(layout, result, static_cast<bus_bits>(exponent) & low_ones(layout.exponent.width()),
                        {.sat = sat || (too_large && !nan && !zip), .zip = zip, .nan = nan});
}

}  // namespace xfc
