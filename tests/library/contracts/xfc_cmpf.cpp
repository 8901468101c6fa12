#include "host_number.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = host_number<float>(operands.aa);
    const auto b = host_number<float>(operands.bb);
    return {.met = result == static_cast<bus_bits>(holds(generics.relation, a, b))};
}

}  // namespace

extern const contract xfc_cmpf;
const contract xfc_cmpf{.promise = "C's relations; zeros are equal, a nan is not equal and nothing else",
                        .check = check};

}  // namespace xfc::proof::promises
