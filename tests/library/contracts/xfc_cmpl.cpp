#include "host_number.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = static_cast<std::int32_t>(operands.aa);
    const auto b = static_cast<std::int32_t>(operands.bb);
    return {.met = result == static_cast<bus_bits>(holds(generics.relation, a, b))};
}

}  // namespace

extern const contract xfc_cmpl;
const contract xfc_cmpl{.promise = "C's relations of int", .check = check};

}  // namespace xfc::proof::promises
