#include "toward_zero.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_toward_zero(value_of(operands.aa, bus_form::ydouble, operand_coding::adder, 0), result);
}

}  // namespace

extern const contract xfc_castytol;
const contract xfc_castytol{
    .aa = operand_coding::adder, .promise = "toward zero; out of range the nearest end, nan 0", .check = check};

}  // namespace xfc::proof::promises
