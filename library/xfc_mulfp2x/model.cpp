#include "model/ydouble.h"

namespace xfc::model {

namespace {

/// The bits of the output forms, by the selector.
enum : std::int32_t { ieee_output, x_output, mult_output };

constexpr std::int32_t width = double_fraction_bits + 1;  // significand
constexpr std::int32_t product_bits = 2 * width;
constexpr std::int32_t adder_bits = double_fraction_bits + ydouble_low_bits + 2;  // below the copies of the sign

}  // namespace

bus_bits xfc_mulfp2x(const component_generics& generics, const component_operands& operands) {
    const bus_layout layout = layout_of(bus_form::ydouble_multiplier, 0);
    const bool adder_form = generics.output_select == x_output;

    // recode
    const bus_flags a_flags = flags_of(operands.aa, layout);
    const bus_flags b_flags = flags_of(operands.bb, layout);
    const bus_bits a_mantissa = field(operands.aa, layout.mantissa);
    const bus_bits b_mantissa = field(operands.bb, layout.mantissa);
    const auto a_exponent = static_cast<std::int32_t>(field(operands.aa, layout.exponent));
    const auto b_exponent = static_cast<std::int32_t>(field(operands.bb, layout.exponent));
    const bool a_zero = !a_flags.sat && (a_flags.zip || a_exponent == 0);
    const bool b_zero = !b_flags.sat && (b_flags.zip || b_exponent == 0);
    const bool sign = bit(a_mantissa, width) != bit(b_mantissa, width);
    const bool nan = a_flags.nan || b_flags.nan || (a_flags.sat && b_zero) || (a_zero && b_flags.sat);
    const bool sat = !nan && (a_flags.sat || b_flags.sat);
    const bool zip = !nan && !sat && (a_zero || b_zero);

    // twos, pairs, quads, sum
    const bus_bits hidden_one = bus_bits{1} << static_cast<unsigned>(double_fraction_bits);
    const bus_bits product = ((a_mantissa & low_ones(double_fraction_bits)) | hidden_one) *
                             ((b_mantissa & low_ones(double_fraction_bits)) | hidden_one);
    const std::int32_t exponent = a_exponent + b_exponent - double_bias;

    // decide: a product from 2 on is halved, in adder form one whose exponent field would be 0
    const bool halve = adder_form ? exponent == 0 : bit(product, product_bits - 1);
    const std::int32_t kept_bits = adder_form ? adder_bits : double_fraction_bits;
    const std::int32_t dropped_bits = product_bits - (adder_form ? 0 : 2) - kept_bits + (halve ? 1 : 0);
    const bus_bits magnitude = (product >> static_cast<unsigned>(dropped_bits)) & low_ones(kept_bits);
    const bus_bits dropped = product & low_ones(dropped_bits);
    const bool lost = dropped != 0;
    const bus_bits kept =
        adder_form ? ((sign ? ~magnitude : magnitude) & low_ones(kept_bits)) | bus_bits{lost} : magnitude;
    const bool up = adder_form ? sign && !lost : rounds_up(bit(magnitude, 0), dropped, dropped_bits, false);

    // round, carry: what is carried up to 2 has the next exponent
    const bus_bits rounded = kept + static_cast<bus_bits>(up);
    const bool carried = !adder_form && bit(rounded, double_fraction_bits);
    const std::int32_t last_exponent = exponent + (halve ? 1 : 0) + (carried ? 1 : 0);

    // settle
    if (generics.output_select == ieee_output) {
        return pack(sign, last_exponent, rounded, {.sat = sat, .zip = zip, .nan = nan}, double_shape);
    }
    const bool marked = nan || zip || sat;
    const bus_flags flags{.sat = sat || (!marked && last_exponent >= ydouble_overflow),
                          .zip = zip || (!marked && last_exponent <= 0),
                          .nan = nan};
    const bus_bits exponent_field = bits_of(last_exponent, ydouble_exponent_bits);
    if (adder_form) {
        const bus_bits signs = sign ? ~low_ones(adder_bits) & low_ones(ydouble_mantissa_bits) : 0;
        return internal_bus(layout_of(bus_form::ydouble, 0), signs | (rounded & low_ones(adder_bits)), exponent_field,
                            flags);
    }
    const bus_bits sign_bit = bus_bits{sign} << static_cast<unsigned>(width);
    return internal_bus(layout, sign_bit | hidden_one | (rounded & low_ones(double_fraction_bits)), exponent_field,
                        flags);
}

}  // namespace xfc::model
