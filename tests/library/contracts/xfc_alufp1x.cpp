#include "adder_contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    return check_sum(operands, result, bus_form::xfloat, generics.mantissa);
}

}  // namespace

extern const contract xfc_alufp1x;
const contract xfc_alufp1x{
    .aa = operand_coding::adder, .bb = operand_coding::adder, .promise = sum_promise, .check = check};

}  // namespace xfc::proof::promises
