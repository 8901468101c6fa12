#include "nearest_ieee.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_nearest(operands.aa, bus_form::long_integer, operand_coding::plain, 0, bus_form::double_float, result);
}

}  // namespace

extern const contract xfc_castltod;
const contract xfc_castltod{.aa = operand_coding::plain, .promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
