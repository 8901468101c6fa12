#include "exact_value.h"
#include "roots_and_quotients.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

/// IEEE: the nearest number, or the one toward zero where none is too large or too small.
verdict check_ieee(mpfr_srcptr exact, bool negative, bool rounds, bus_bits result) {
    mpfr_number expected(rounds ? 320 : 24);
    mpfr_set(expected, exact, MPFR_RNDZ);
    const exact_value found = value_of(result, bus_form::single_float, operand_coding::plain, 0);
    return {.met = result == nearest_ieee(expected, negative, bus_form::single_float),
            .error = found.is == kind::number ? units_between(found, exact, exponent_behind(exact, 23)) : 0};
}

/// Inside: 25 bits, and a 26th that is set unless they are all.
verdict check_internal(mpfr_srcptr exact, bool negative, const exact_value& found, bus_bits exponent_field) {
    mpfr_number truncated(25);
    mpfr_set(truncated, exact, MPFR_RNDZ);
    const long exponent = static_cast<long>(mpfr_get_exp(exact)) - 1;
    if (exponent + 127 <= 0 || exponent + 127 >= 960) {
        return {.met = found.is == (exponent < 0 ? kind::zero : kind::infinity) && found.negative == negative};
    }
    mpfr_number expected(26);
    mpfr_set(expected, truncated, MPFR_RNDN);
    if (mpfr_cmp(truncated, exact) != 0) {
        mpfr_number half(26);
        mpfr_set_si_2exp(half, negative ? -1 : 1, exponent - 25, MPFR_RNDN);
        mpfr_add(expected, expected, half, MPFR_RNDN);
    }
    mpfr_number delivered(128);
    set_exactly(delivered, found);
    const bool normal = exponent_field == static_cast<bus_bits>(exponent + 127);
    return {.met = found.is == kind::number && normal && mpfr_equal_p(delivered, expected) != 0,
            .error = units_between(found, exact, exponent_behind(exact, 25))};
}

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const bus_layout layout = layout_of(bus_form::xfloat, generics.mantissa);
    const auto read = [&](bus_bits bus) {
        return value_of(bus, bus_form::xfloat, operand_coding::sign_magnitude, generics.mantissa);
    };
    const exact_value a = read(operands.aa);
    const exact_value b = read(operands.bb);
    const bool negative = a.negative != b.negative;
    const bool ieee = generics.output_select == 0;
    const operand_coding coding = generics.output_select == 1   ? operand_coding::adder
                                  : generics.output_select == 2 ? operand_coding::multiplier
                                                                : operand_coding::sign_magnitude;
    const exact_value found = value_of(result, bus_form::xfloat, coding, generics.mantissa);
    if (lacks_hidden_one(operands.aa, layout) || lacks_hidden_one(operands.bb, layout)) {
        return {};
    }
    if (a.is != kind::number || b.is != kind::number) {
        const kind expected = special_quotient(a.is, b.is);
        if (ieee) {
            return {.met = result == ieee_special(expected, negative, bus_form::single_float)};
        }
        return {.met = found.is == expected && (expected == kind::nan || found.negative == negative)};
    }
    // A quotient of 35 bits by 35 and a number of 25 bits are not so close that 320 bits do not tell them apart.
    mpfr_number exact(320);
    mpfr_number divisor(128);
    set_exactly(exact, a);
    set_exactly(divisor, b);
    mpfr_div(exact, exact, divisor, MPFR_RNDZ);
    return ieee ? check_ieee(exact, negative, generics.roundconvert == 1, result)
                : check_internal(exact, negative, found, field(result, layout.exponent));
}

}  // namespace

extern const contract xfc_divfp1x;
const contract xfc_divfp1x{
    .aa = operand_coding::sign_magnitude,
    .bb = operand_coding::sign_magnitude,
    .promise = "IEEE: nearest or truncated quotient; inside: 25 bits and sticky; ulp, or units of the sticky bit",
    .check = check};

}  // namespace xfc::proof::promises
