#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const std::int64_t a = static_cast<std::int32_t>(operands.aa);
    const std::int64_t b = static_cast<std::int32_t>(operands.bb);
    const std::int64_t quotient = b != 0 ? a / b : a >= 0 ? -1 : 1;
    const std::int64_t remainder = b != 0 ? a % b : a;
    return {.met = result == static_cast<std::uint32_t>(generics.remainder == 1 ? remainder : quotient)};
}

}  // namespace

extern const contract xfc_divlong;
const contract xfc_divlong{.promise = "C's quotient and remainder; x / 0 is -1 for x >= 0 and else 1, x % 0 is x",
                           .check = check};

}  // namespace xfc::proof::promises
