#include "toward_zero.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return check_toward_zero(value_of(operands.aa, bus_form::single_float, operand_coding::plain, 0), result);
}

}  // namespace

extern const contract xfc_castftol;
const contract xfc_castftol{
    .aa = operand_coding::plain, .promise = "toward zero; out of range the nearest end, nan 0", .check = check};

}  // namespace xfc::proof::promises
