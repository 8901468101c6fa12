#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    const auto a = static_cast<std::uint32_t>(operands.aa);
    const auto b = static_cast<std::uint32_t>(operands.bb);
    const std::uint32_t expected = a * b;
    return {.met = result == expected};
}

}  // namespace

extern const contract xfc_mullong;
const contract xfc_mullong{.promise = "as C computes it in unsigned int", .check = check};

}  // namespace xfc::proof::promises
