#include "host_number.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = host_number<float>(operands.aa);
    const auto b = host_number<float>(operands.bb);
    return {.met = result == bus_of(extreme(generics.greatest == 1, a, b))};
}

}  // namespace

extern const contract xfc_extremef;
const contract xfc_extremef{.promise = "C's fmin and fmax; -0 is below +0", .check = check};

}  // namespace xfc::proof::promises
