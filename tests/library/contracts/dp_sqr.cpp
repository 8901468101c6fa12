#include "roots_and_quotients.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_square_root(operands.aa, result, bus_form::double_float);
}

}  // namespace

extern const contract dp_sqr;
const contract dp_sqr{.promise = "the nearest root; ulp", .check = check};

}  // namespace xfc::proof::promises
