#pragma once

#include <span>
#include <string_view>

#include "components/component_table.h"
#include "model/component_model.h"

// What a component promises, in words of numbers: each component's contract stands in contracts/NAME.cpp and knows
// nothing of the steps by which model and hardware come to their result.

namespace xfc::proof {

/// How the mantissas of an operand's form are made for the vectors.
enum class operand_coding : std::uint8_t {
    plain,           ///< IEEE, integers, bits: the bus's form says all
    adder,           ///< two's complement with guard bits, not normalized
    multiplier,      ///< two's complement, normalized
    sign_magnitude,  ///< normalized
};

/// Result of a check.
struct verdict {
    bool met = true;
    double error = 0;  ///< in the contract's unit; the largest one is reported with its operands
};

struct contract {
    operand_coding aa = operand_coding::plain;
    operand_coding bb = operand_coding::plain;
    std::string_view promise;  ///< one sentence; what `error` is measured in
    /// Judges one result. Operands that no component delivers are met by any result.
    verdict (*check)(const component_generics&, const component_operands&, bus_bits result);
};

struct contract_row {
    std::string_view name;  ///< of the entity
    const contract* promised;
};

/// The contracts of all components, in the order of their names.
[[nodiscard]] std::span<const contract_row> contracts();

}  // namespace xfc::proof
