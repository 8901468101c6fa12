#include "nearest_ieee.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_nearest(operands.aa, bus_form::ydouble, operand_coding::adder, 0, bus_form::single_float, result);
}

}  // namespace

extern const contract xfc_castytof;
const contract xfc_castytof{
    .aa = operand_coding::adder, .promise = "the nearest single, to even between two; ulp", .check = check};

}  // namespace xfc::proof::promises
