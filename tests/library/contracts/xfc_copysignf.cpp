#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const std::uint32_t sign = 0x80000000;
    const auto a = static_cast<std::uint32_t>(operands.aa);
    const auto b = static_cast<std::uint32_t>(operands.bb);
    return {.met = result == ((a & sign) == (b & sign) ? a : a ^ sign)};
}

}  // namespace

extern const contract xfc_copysignf;
const contract xfc_copysignf{.promise = "aa with the sign of bb, whatever the other bits", .check = check};

}  // namespace xfc::proof::promises
