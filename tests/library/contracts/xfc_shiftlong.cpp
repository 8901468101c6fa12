#include "contract.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const auto a = static_cast<std::uint32_t>(operands.aa);
    const auto distance = static_cast<std::uint32_t>(operands.bb) % 32;
    // Down to the next integer is what copies of the sign mean.
    const std::int64_t power = std::int64_t{1} << distance;
    const auto value = static_cast<std::int64_t>(sign_extended(operands.aa, 32));
    const std::int64_t down = value >= 0 ? value / power : -((-value + power - 1) / power);
    const std::uint32_t expected[] = {a << distance, static_cast<std::uint32_t>(down), a >> distance};
    return {.met = result == expected[generics.direction]};
}

}  // namespace

extern const contract xfc_shiftlong;
const contract xfc_shiftlong{.promise = "C's shifts of int and unsigned int by the low five bits of bb",
                             .check = check};

}  // namespace xfc::proof::promises
