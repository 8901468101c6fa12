#include "contract.h"

namespace xfc::proof::promises {

extern const contract xfc_alufp1x;

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    return xfc_alufp1x.check(generics, operands, result);
}

}  // namespace

extern const contract xfc_alufp1_dot;
const contract xfc_alufp1_dot{
    .aa = operand_coding::adder,
    .bb = operand_coding::adder,
    .promise = "the exact sum of the larger and the odd-rounded smaller operand; units of the result's lowest bit",
    .check = check};

}  // namespace xfc::proof::promises
