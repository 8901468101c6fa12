#include "toward_zero.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    return check_toward_zero(value_of(operands.aa, bus_form::xfloat, operand_coding::adder, generics.mantissa), result);
}

}  // namespace

extern const contract xfc_castxtol;
const contract xfc_castxtol{
    .aa = operand_coding::adder, .promise = "toward zero; out of range the nearest end, nan 0", .check = check};

}  // namespace xfc::proof::promises
