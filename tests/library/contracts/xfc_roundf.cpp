#include "host_number.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    return {.met = result == bus_of(rounded(generics.rounding, host_number<float>(operands.aa)))};
}

}  // namespace

extern const contract xfc_roundf;
const contract xfc_roundf{.promise = "C's floor, ceil, trunc and round", .check = check};

}  // namespace xfc::proof::promises
