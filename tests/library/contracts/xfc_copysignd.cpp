#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const std::uint64_t sign = 0x8000000000000000;
    const auto a = static_cast<std::uint64_t>(operands.aa);
    const auto b = static_cast<std::uint64_t>(operands.bb);
    return {.met = result == ((a & sign) == (b & sign) ? a : a ^ sign)};
}

}  // namespace

extern const contract xfc_copysignd;
const contract xfc_copysignd{.promise = "aa with the sign of bb, whatever the other bits", .check = check};

}  // namespace xfc::proof::promises
