#include "exact_value.h"
#include "model/ydouble.h"
#include "roots_and_quotients.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

/// IEEE: the nearest number, or the one toward zero where none is too large or too small.
verdict check_ieee(mpfr_srcptr exact, bool negative, bool rounds, bus_bits result) {
    mpfr_number expected(rounds ? 320 : 53);
    mpfr_set(expected, exact, MPFR_RNDZ);
    const exact_value found = value_of(result, bus_form::double_float, operand_coding::plain, 0);
    return {.met = result == nearest_ieee(expected, negative, bus_form::double_float),
            .error = found.is == kind::number
                         ? units_between(found, exact, exponent_behind(exact, double_fraction_bits))
                         : 0};
}

/// Adder form: 55 bits, and a 56th that is set unless they are all. Divider form: the nearest of 53 bits.
verdict check_internal(mpfr_srcptr exact, bool negative, bool adder_form, const exact_value& found,
                       bus_bits exponent_field) {
    constexpr long adder_bits = 55;
    mpfr_number expected(adder_form ? adder_bits + 1 : double_fraction_bits + 1);
    mpfr_number truncated(adder_bits);
    mpfr_set(truncated, exact, MPFR_RNDZ);
    mpfr_set(expected, adder_form ? static_cast<mpfr_srcptr>(truncated) : exact, MPFR_RNDN);
    const long exponent = static_cast<long>(mpfr_get_exp(expected)) - 1;
    if (adder_form && mpfr_cmp(truncated, exact) != 0) {
        mpfr_number half(adder_bits);
        mpfr_set_si_2exp(half, negative ? -1 : 1, exponent - adder_bits, MPFR_RNDN);
        mpfr_add(expected, expected, half, MPFR_RNDN);
    }
    if (exponent + double_bias <= 0 || exponent + double_bias >= ydouble_overflow) {
        return {.met = found.is == (exponent < 0 ? kind::zero : kind::infinity) && found.negative == negative};
    }
    mpfr_number delivered(128);
    set_exactly(delivered, found);
    const bool normal = exponent_field == static_cast<std::uint64_t>(exponent + double_bias);
    return {
        .met = found.is == kind::number && normal && mpfr_equal_p(delivered, expected) != 0,
        .error = units_between(found, exact, exponent_behind(exact, adder_form ? adder_bits : double_fraction_bits))};
}

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const bus_layout layout = layout_of(bus_form::ydouble_multiplier, 0);
    const auto read = [](bus_bits bus) {
        return value_of(bus, bus_form::ydouble_multiplier, operand_coding::sign_magnitude, 0);
    };
    const exact_value a = read(operands.aa);
    const exact_value b = read(operands.bb);
    const bool negative = a.negative != b.negative;
    const bool ieee = generics.output_select == 0;
    const bool adder_form = generics.output_select == 1;
    const bus_form form = adder_form ? bus_form::ydouble : bus_form::ydouble_multiplier;
    const exact_value found =
        value_of(result, form, adder_form ? operand_coding::adder : operand_coding::sign_magnitude, 0);
    if (lacks_hidden_one(operands.aa, layout) || lacks_hidden_one(operands.bb, layout)) {
        return {};
    }
    if (a.is != kind::number || b.is != kind::number) {
        const kind expected = special_quotient(a.is, b.is);
        if (ieee) {
            return {.met = result == ieee_special(expected, negative, bus_form::double_float)};
        }
        return {.met = found.is == expected && (expected == kind::nan || found.negative == negative)};
    }
    // A quotient of 53 bits by 53 and a number of 56 bits are not so close that 320 bits do not tell them apart.
    mpfr_number exact(320);
    mpfr_number divisor(128);
    set_exactly(exact, a);
    set_exactly(divisor, b);
    mpfr_div(exact, exact, divisor, MPFR_RNDZ);
    return ieee ? check_ieee(exact, negative, generics.roundconvert == 1, result)
                : check_internal(exact, negative, adder_form, found, field(result, layout_of(form, 0).exponent));
}

}  // namespace

extern const contract xfc_divfp2x;
const contract xfc_divfp2x{
    .aa = operand_coding::sign_magnitude,
    .bb = operand_coding::sign_magnitude,
    .promise =
        "IEEE: nearest or truncated, in ulp; divider form: nearest; adder form: 55 bits and sticky; in its units",
    .check = check};

}  // namespace xfc::proof::promises
