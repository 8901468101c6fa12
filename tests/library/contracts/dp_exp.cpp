#include "function_contract.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const bus_form form = bus_form::double_float;
    const exact_value x = value_of(operands.aa, form, operand_coding::plain, 32);
    if (x.is == kind::nan) {
        return {.met = result == ieee_special(kind::nan, false, form)};
    }
    if (x.is == kind::infinity) {
        return {.met = result == ieee_special(x.negative ? kind::zero : kind::infinity, false, form)};
    }
    mpfr_number exact(160);
    set_exactly(exact, x);
    // Far beyond the range the result is the same, and its exponent still one that can be judged.
    if (mpfr_cmp_si(exact, 100000) > 0 || mpfr_cmp_si(exact, -100000) < 0) {
        mpfr_set_si(exact, x.negative ? -100000 : 100000, MPFR_RNDN);
    }
    mpfr_exp(exact, exact, MPFR_RNDN);
    return within_ulps(exact, false, form, result, 0.53);
}

}  // namespace

extern const contract dp_exp;
const contract dp_exp{.promise = "the exponential within 0.53 ulp", .check = check};

}  // namespace xfc::proof::promises
