#include <algorithm>

#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    constexpr bus_form form = bus_form::single_float;
    const exact_value before = value_of(operands.aa, form, operand_coding::plain, 0);
    if (before.is != exact_value::kind::number) {
        return {.met = result == ieee_special(before.is, before.negative, form)};
    }
    mpfr_number exact(128);
    set_exactly(exact, before);
    // More is out of range for every number, and for MPFR too.
    const auto scale = std::clamp(static_cast<long>(sign_extended(operands.bb, 32)), -20000L, 20000L);
    mpfr_mul_2si(exact, exact, scale, MPFR_RNDN);
    return {.met = result == nearest_ieee(exact, before.negative, form)};
}

}  // namespace

extern const contract fp_ldexp;
const contract fp_ldexp{.promise = "exact, infinite when too large, zero below the normal numbers", .check = check};

}  // namespace xfc::proof::promises
