#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::long_integer, operand_coding::plain, 0);
    mpfr_number exact(64);
    set_exactly(exact, before);
    const exact_value after = value_of(result, bus_form::single_float, operand_coding::plain, 0);
    return {.met = result == nearest_ieee(exact, before.negative, bus_form::single_float),
            .error = ulps_between(after, exact, bus_form::single_float)};
}

}  // namespace

extern const contract xfc_castltof;
const contract xfc_castltof{.promise = "the nearest single, to even between two; ulp", .check = check};

}  // namespace xfc::proof::promises
