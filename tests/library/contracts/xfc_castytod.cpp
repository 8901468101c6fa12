#include "nearest_ieee.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_nearest(operands.aa, bus_form::ydouble, operand_coding::adder, 0, bus_form::double_float, result);
}

}  // namespace

extern const contract xfc_castytod;
const contract xfc_castytod{
    .aa = operand_coding::adder, .promise = "the nearest double, to even between two; ulp", .check = check};

}  // namespace xfc::proof::promises
