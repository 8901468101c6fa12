#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const bool a = operands.aa != 0;
    const bool b = operands.bb != 0;
    const bool expected[] = {a && b, a || b, a != b};
    return {.met = result == static_cast<bus_bits>(expected[generics.bitoperation])};
}

}  // namespace

extern const contract xfc_logic;
const contract xfc_logic{.promise = "C's and, or and not equal of bool", .check = check};

}  // namespace xfc::proof::promises
