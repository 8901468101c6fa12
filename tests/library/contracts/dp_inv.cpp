#include "function_contract.h"

namespace xfc::proof::promises {

namespace {

using kind = exact_value::kind;

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const bus_form form = bus_form::double_float;
    const exact_value x = value_of(operands.aa, form, operand_coding::plain, 32);
    if (x.is != kind::number) {
        const kind expected = x.is == kind::zero ? kind::infinity : x.is == kind::infinity ? kind::zero : kind::nan;
        return {.met = result == ieee_special(expected, x.negative, form)};
    }
    mpfr_number exact(160);
    set_exactly(exact, x);
    mpfr_ui_div(exact, 1, exact, MPFR_RNDN);
    return within_ulps(exact, x.negative, form, result, 0.52);
}

}  // namespace

extern const contract dp_inv;
const contract dp_inv{.promise = "the reciprocal within 0.52 ulp", .check = check};

}  // namespace xfc::proof::promises
