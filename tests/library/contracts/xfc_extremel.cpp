#include <algorithm>

#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = static_cast<std::int32_t>(operands.aa);
    const auto b = static_cast<std::int32_t>(operands.bb);
    const std::int32_t expected = generics.greatest == 1 ? std::max(a, b) : std::min(a, b);
    return {.met = result == static_cast<std::uint32_t>(expected)};
}

}  // namespace

extern const contract xfc_extremel;
const contract xfc_extremel{.promise = "the smaller or larger integer", .check = check};

}  // namespace xfc::proof::promises
