#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_mulfp1_dot(const component_generics& generics, const component_operands& operands) {
    const std::int32_t width = generics.mantissa;
    const bus_layout single = layout_of(bus_form::single_float, width);
    const bus_layout layout = layout_of(bus_form::xfloat, width);
    constexpr std::int32_t significand_bits = single_fraction_bits + 1;
    constexpr std::int32_t factor_bits = significand_bits + 2;

    // unpack
    const auto flags_and_number = [&](bus_bits bus) {
        const bool ones = field(bus, single.exponent) == single_exponent_of_infinity;
        const bool fraction_is_zero = field(bus, single.mantissa) == 0;
        return bus_flags{
            .sat = ones && fraction_is_zero, .zip = field(bus, single.exponent) == 0, .nan = ones && !fraction_is_zero};
    };
    const auto significand = [&](bus_bits bus) {
        return static_cast<signed_bus_bits>(field(bus, single.mantissa)) + (1 << single_fraction_bits);
    };
    const bus_flags a = flags_and_number(operands.aa);
    const bus_flags b = flags_and_number(operands.bb);
    const bool sign = bit(operands.aa, single.sign - 1) != bit(operands.bb, single.sign - 1);
    const bool nan = a.nan || b.nan || (a.sat && b.zip) || (a.zip && b.sat);
    const bool sat = !nan && (a.sat || b.sat);
    const bool zip = !nan && !sat && (a.zip || b.zip);
    const signed_bus_bits factor = sign ? -significand(operands.bb) : significand(operands.bb);

    // choose, rows
    const std::int32_t exponent = static_cast<std::int32_t>(field(operands.aa, single.exponent)) +
                                  static_cast<std::int32_t>(field(operands.bb, single.exponent)) - single_bias;

    // settle
    const bus_bits product = bits_of(significand(operands.aa) * factor, 2 * factor_bits);
    const bool halve = exponent == 0;
    const shifted_right settled = shift_right(product, 2 * factor_bits, 2 * factor_bits - width + (halve ? 1 : 0));
    const bus_bits mantissa = (settled.value | static_cast<bus_bits>(settled.lost)) & low_ones(width);
    const std::int32_t next_exponent = exponent + (halve ? 1 : 0);
    const bool marked = nan || zip || sat;
    return internal_bus(layout, mantissa, bits_of(next_exponent, xfloat_exponent_bits),
                        {.sat = sat, .zip = zip || (next_exponent < 0 && !marked), .nan = nan});
}

}  // namespace xfc::model
