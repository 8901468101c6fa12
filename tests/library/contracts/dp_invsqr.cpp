#include "function_contract.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const bus_form form = bus_form::double_float;
    const exact_value x = value_of(operands.aa, form, operand_coding::plain, 32);
    if (x.is == kind::zero) {
        return {.met = result == ieee_special(kind::infinity, x.negative, form)};
    }
    if (x.is == kind::nan || x.negative) {
        return {.met = result == ieee_special(kind::nan, false, form)};
    }
    if (x.is == kind::infinity) {
        return {.met = result == ieee_special(kind::zero, false, form)};
    }
    mpfr_number exact(160);
    set_exactly(exact, x);
    mpfr_rec_sqrt(exact, exact, MPFR_RNDN);
    return within_ulps(exact, false, form, result, 0.57);
}

}  // namespace

extern const contract dp_invsqr;
const contract dp_invsqr{.promise = "one over the square root within 0.57 ulp", .check = check};

}  // namespace xfc::proof::promises
