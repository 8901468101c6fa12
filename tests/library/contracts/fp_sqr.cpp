#include "roots_and_quotients.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_square_root(operands.aa, result, bus_form::single_float);
}

}  // namespace

extern const contract fp_sqr;
const contract fp_sqr{.promise = "the nearest root; ulp", .check = check};

}  // namespace xfc::proof::promises
