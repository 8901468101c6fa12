#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    return {.met = result == (operands.condition ? operands.aa : operands.bb)};
}

}  // namespace

extern const contract xfc_select;
const contract xfc_select{.promise = "the bits of the chosen operand", .check = check};

}  // namespace xfc::proof::promises
