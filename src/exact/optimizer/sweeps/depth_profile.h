#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "exact/optimizer/sweeps/sweep_lists.h"

namespace xfc {

/// A time that counts for the depth: after sweep `lag` + k it is `last` less the total of what is left of the list
/// when its first k elements are gone, k from 0 on (from 1 on when `lag` is 0; sweeps count from 1).
struct arrival {
    std::int32_t raises;  ///< first element of the list
    std::int32_t lag;     ///< sweeps
    std::int32_t last;    ///< cycles
};

/// The depths in cycles after the sweeps 1 to `sweeps`: the greatest of all arrivals until then, and at least `least`.
/// `sweeps` is more than the elements of the longest list. Takes time near linear in elements, arrivals and sweeps
/// where the lists' amounts repeat after at most 16 elements; the product of elements and sweeps where they do not.
[[nodiscard]] std::vector<std::int32_t> depths_of_sweeps(const sweep_lists& raises, std::span<const arrival> arrivals,
                                                         std::int32_t sweeps, std::int32_t least);

}  // namespace xfc
