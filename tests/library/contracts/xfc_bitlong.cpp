#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = static_cast<std::uint32_t>(operands.aa);
    const auto b = static_cast<std::uint32_t>(operands.bb);
    const std::uint32_t expected[] = {a & b, a | b, a ^ b};
    return {.met = result == expected[generics.bitoperation]};
}

}  // namespace

extern const contract xfc_bitlong;
const contract xfc_bitlong{.promise = "C's and, or and exclusive or", .check = check};

}  // namespace xfc::proof::promises
