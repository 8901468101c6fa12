#pragma once

#include <random>
#include <vector>

#include "contract.h"

// Operands that components are tried with: half of them at random, half made to hurt.

namespace xfc::proof {

using random_source = std::mt19937_64;

/// `count` operands for a component whose generics are `generics`. The same seed gives the same operands.
[[nodiscard]] std::vector<component_operands> make_vectors(const component_row& row, const contract& promised,
                                                           const component_generics& generics, std::size_t count,
                                                           std::uint64_t seed);

}  // namespace xfc::proof
