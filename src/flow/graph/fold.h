#pragma once

#include <cstdint>
#include <span>

#include "flow/graph/graph.h"

namespace xfc::flow {

/// A number as bits in its format, as constants hold them.
struct known_number {
    number_format format = number_format::integer;
    std::uint64_t bits = 0;
};

[[nodiscard]] known_number known_integer_number(std::int32_t number);
[[nodiscard]] known_number known_boolean_number(bool truth);
[[nodiscard]] known_number known_single(float number);
[[nodiscard]] known_number known_double(double number);

/// The result of the operation in the result's own arithmetic: floats rounded correctly, halves to even, whatever is no
/// number as the one positive quiet pattern; integers wrapping. Nothing traps: integer division by zero gives 0, shifts
/// count modulo 32. Neither inputs nor constants have a result.
[[nodiscard]] std::uint64_t compute(operation op, number_format result, std::span<const known_number> operands);

/// Base to any exponent, rounded correctly to the format that both have.
[[nodiscard]] known_number power_of(const known_number& base, const known_number& exponent);

/// Like graph::make, but what is known is computed, and operations that leave an operand's bits as they are give the
/// operand: x * 1, x / 1, x - 0, x + -0, select of one value, and the like of integers and booleans. Nothing else
/// changes a bit, so +0 is not left out of a sum: -0 + 0 is +0.
value_id make_folded(graph& target, operation op, number_format format, std::span<const value_id> operands,
                     source_range where = {}, call_id call = 0);

}  // namespace xfc::flow
