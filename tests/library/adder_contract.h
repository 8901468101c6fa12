#pragma once

#include "contract.h"

namespace xfc::proof {

/// What the adders of either precision promise, on buses of `form`: the exact sum of the operand that leads by its
/// exponent and the other one, rounded to odd in the place of the first one's lowest bit.
[[nodiscard]] verdict check_sum(const component_operands& operands, bus_bits result, bus_form form,
                                std::int32_t mantissa);

inline constexpr const char* sum_promise =
    "the exact sum of the larger and the odd-rounded smaller operand; units of the result's lowest bit";

}  // namespace xfc::proof
