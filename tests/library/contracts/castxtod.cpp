#include "nearest_ieee.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    return check_nearest(operands.aa, bus_form::xfloat, operand_coding::adder, generics.mantissa,
                         bus_form::double_float, result);
}

}  // namespace

extern const contract castxtod;
const contract castxtod{.aa = operand_coding::adder, .promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
