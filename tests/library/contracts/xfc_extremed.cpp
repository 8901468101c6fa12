#include "host_number.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = host_number<double>(operands.aa);
    const auto b = host_number<double>(operands.bb);
    return {.met = result == bus_of(extreme(generics.greatest == 1, a, b))};
}

}  // namespace

extern const contract xfc_extremed;
const contract xfc_extremed{.promise = "C's fmin and fmax; -0 is below +0", .check = check};

}  // namespace xfc::proof::promises
