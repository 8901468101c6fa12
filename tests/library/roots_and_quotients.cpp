#include "roots_and_quotients.h"

namespace xfc::proof {

namespace {

using kind = exact_value::kind;

/// More bits than lie between a root or quotient and the nearest number halfway between two.
constexpr mpfr_prec_t enough_bits = 256;

verdict compare_with_nearest(bus_bits result, mpfr_srcptr exact, bool negative, bus_form form) {
    const exact_value found = value_of(result, form, operand_coding::plain, 0);
    return {.met = result == nearest_ieee(exact, negative, form),
            .error = found.is == kind::number ? ulps_between(found, exact, form) : 0};
}

}  // namespace

verdict check_square_root(bus_bits operand, bus_bits result, bus_form form) {
    const exact_value before = value_of(operand, form, operand_coding::plain, 0);
    if (before.is != kind::number) {
        const bool invalid = before.is == kind::infinity && before.negative;
        return {.met = result == ieee_special(invalid ? kind::nan : before.is, before.negative, form)};
    }
    if (before.negative) {
        return {.met = result == ieee_special(kind::nan, false, form)};
    }
    mpfr_number exact(enough_bits);
    set_exactly(exact, before);
    mpfr_sqrt(exact, exact, MPFR_RNDN);
    return compare_with_nearest(result, exact, false, form);
}

verdict check_reciprocal(bus_bits operand, bus_bits result, bus_form form) {
    const exact_value before = value_of(operand, form, operand_coding::plain, 0);
    if (before.is != kind::number) {
        const kind expected = before.is == kind::zero       ? kind::infinity
                              : before.is == kind::infinity ? kind::zero
                                                            : kind::nan;
        return {.met = result == ieee_special(expected, before.negative, form)};
    }
    mpfr_number exact(enough_bits);
    set_exactly(exact, before);
    mpfr_ui_div(exact, 1, exact, MPFR_RNDN);
    return compare_with_nearest(result, exact, before.negative, form);
}

kind special_quotient(kind a, kind b) {
    if (a == kind::nan || b == kind::nan || (a == b && a != kind::number)) {
        return kind::nan;
    }
    return a == kind::infinity || b == kind::zero ? kind::infinity : kind::zero;
}

}  // namespace xfc::proof
