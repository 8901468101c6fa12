#include "adder_contract.h"

#include <algorithm>
#include <cmath>

#include "exact_value.h"

namespace xfc::proof {

namespace {

using kind = exact_value::kind;

/// `value` rounded to a multiple of 2 ** grid: odd where it is between two of them.
signed_bus_bits rounded_to_odd(const exact_value& value, std::int32_t grid) {
    const std::int32_t drop = grid - value.exponent;
    if (drop <= 0) {
        return value.mantissa * (signed_bus_bits{1} << std::min(-drop, 60));
    }
    if (drop > 100) {
        return value.negative ? -1 : 1;
    }
    const signed_bus_bits step = signed_bus_bits{1} << drop;
    signed_bus_bits down = value.mantissa / step;
    if (down * step == value.mantissa) {
        return down;
    }
    down -= value.negative ? 1 : 0;
    return (down & 1) != 0 ? down : down + 1;
}

/// The sum when an operand is no number.
verdict check_special(const exact_value& a, const exact_value& b, const exact_value& sum) {
    if (a.is == kind::nan || b.is == kind::nan) {
        return {.met = sum.is == kind::nan};
    }
    if (a.is == kind::infinity || b.is == kind::infinity) {
        if (a.is == b.is && a.negative != b.negative) {
            return {.met = sum.is == kind::nan};
        }
        const bool negative = a.is == kind::infinity ? a.negative : b.negative;
        return {.met = sum.is == kind::infinity && sum.negative == negative};
    }
    return {.met = sum.is == kind::zero && sum.negative == (a.negative && b.negative)};
}

/// Whether the bus says zero by its flag or its exponent: such an operand has no exponent to lead with.
bool marked_zero(bus_bits bus, const bus_layout& layout) {
    return flags_of(bus, layout).zip || field(bus, layout.exponent) == 0;
}

}  // namespace

verdict check_sum(const component_operands& operands, bus_bits result, bus_form form, std::int32_t mantissa) {
    const bus_layout layout = layout_of(form, mantissa);
    const std::int32_t width = layout.mantissa.width();
    const std::int32_t exponents = 1 << static_cast<unsigned>(layout.exponent.width());
    // Half of the IEEE format's exponents; behind the hidden one stand all bits but it, the guard bits and the sign.
    const std::int32_t bias = exponents / 8 - 1;
    const std::int32_t places = width - 6;
    const auto read = [&](bus_bits bus) { return value_of(bus, form, operand_coding::adder, mantissa); };
    exact_value a = read(operands.aa);
    exact_value b = read(operands.bb);
    const exact_value sum = read(result);
    const bool a_marked = marked_zero(operands.aa, layout);
    const bool b_marked = marked_zero(operands.bb, layout);
    b.negative = b.negative != operands.addsub;
    b.mantissa = operands.addsub ? -b.mantissa : b.mantissa;
    const bool special = a.is == kind::nan || a.is == kind::infinity || b.is == kind::nan || b.is == kind::infinity;
    if (special || (a_marked && b_marked)) {
        return check_special(a, b, sum);
    }

    // A mantissa of zero leads by its exponent like any other.
    const auto place = [&](bus_bits bus) {
        return static_cast<std::int32_t>(field(bus, layout.exponent)) - bias - places;
    };
    const std::int32_t grid =
        std::max(a_marked ? INT32_MIN : place(operands.aa), b_marked ? INT32_MIN : place(operands.bb));
    const auto on_grid = [&](const exact_value& value) {
        return value.is == kind::zero ? signed_bus_bits{0} : rounded_to_odd(value, grid);
    };
    signed_bus_bits expected = on_grid(a) + on_grid(b);
    std::int32_t exponent = grid;
    const signed_bus_bits limit = signed_bus_bits{1} << (width - 1);
    if (expected >= limit || expected < -limit) {
        // The lost bit makes the lowest one odd.
        const bool odd = (expected & 1) != 0;
        expected = (expected - (odd ? 1 : 0)) / 2;
        expected |= odd ? 1 : 0;
        ++exponent;
    }
    if (exponent + bias + places >= exponents / 16 * 15) {
        return {.met = sum.is == kind::infinity && sum.negative == (expected < 0)};
    }
    if (expected == 0) {
        return {.met = sum.is == kind::zero && !sum.negative};
    }
    // Units of the result lost by rounding to odd, as a measure of what a long chain adds up.
    mpfr_number exact(8600);
    mpfr_number other(128);
    set_exactly(exact, a);
    set_exactly(other, b);
    mpfr_add(exact, exact, other, MPFR_RNDN);
    mpfr_number delivered(128);
    set_exactly(delivered, sum);
    mpfr_sub(exact, delivered, exact, MPFR_RNDN);
    mpfr_mul_2si(exact, exact, -sum.exponent, MPFR_RNDN);
    return {.met = sum.is == kind::number && sum.mantissa == expected && sum.exponent == exponent,
            .error = std::fabs(mpfr_get_d(exact, MPFR_RNDN))};
}

}  // namespace xfc::proof
