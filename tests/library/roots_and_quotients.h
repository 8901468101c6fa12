#pragma once

#include "exact_value.h"

// Checks that contracts of square roots and quotients share.

namespace xfc::proof {

/// Whether `result` is the root of `operand`, both IEEE buses, rounded to nearest.
[[nodiscard]] verdict check_square_root(bus_bits operand, bus_bits result, bus_form form);

/// Whether `result` is one divided by `operand`, both IEEE buses, rounded to nearest.
[[nodiscard]] verdict check_reciprocal(bus_bits operand, bus_bits result, bus_form form);

/// The quotient when an operand is no number.
[[nodiscard]] exact_value::kind special_quotient(exact_value::kind a, exact_value::kind b);

}  // namespace xfc::proof
