#include "roots_and_quotients.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_reciprocal(operands.aa, result, bus_form::single_float);
}

}  // namespace

extern const contract fp_inv;
const contract fp_inv{.promise = "the nearest reciprocal; ulp", .check = check};

}  // namespace xfc::proof::promises
