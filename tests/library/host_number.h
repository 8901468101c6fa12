#pragma once

#include <bit>
#include <cmath>
#include <type_traits>

#include "contract.h"

// The host's own float and double, for contracts that C's operators and functions say best.

namespace xfc::proof {

template <class number>
using bits_of_number = std::conditional_t<sizeof(number) == 4, std::uint32_t, std::uint64_t>;

/// A bus as the host's number; subnormal numbers are zeros.
template <class number>
number host_number(bus_bits bus) {
    const auto value = std::bit_cast<number>(static_cast<bits_of_number<number>>(bus));
    return std::fpclassify(value) == FP_SUBNORMAL ? std::copysign(number{0}, value) : value;
}

/// The bus of a number; every nan is the quiet one.
template <class number>
bus_bits bus_of(number value) {
    constexpr bus_bits quiet_nan = sizeof(number) == 4 ? bus_bits{0x7FC00000} : bus_bits{0x7FF8000000000000};
    return std::isnan(value) ? quiet_nan : bus_bits{std::bit_cast<bits_of_number<number>>(value)};
}

/// Whether C's relation holds.
template <class number>
bool holds(std::int32_t relation, number a, number b) {
    switch (static_cast<relation_kind>(relation)) {
        case relation_kind::equal:
            return a == b;
        case relation_kind::not_equal:
            return a != b;
        case relation_kind::less:
            return a < b;
        case relation_kind::less_or_equal:
            return a <= b;
        case relation_kind::greater:
            return a > b;
        default:
            return a >= b;
    }
}

/// The smaller or larger one of two numbers, the number beside a nan; -0 is smaller than +0.
template <class number>
number extreme(bool greatest, number a, number b) {
    if (std::isnan(a) || std::isnan(b)) {
        return std::isnan(a) ? b : a;
    }
    if (a == b) {
        // The same number, or two zeros.
        return std::signbit(a) != greatest ? a : b;
    }
    return (a < b) != greatest ? a : b;
}

/// C's floor, ceil, trunc or round.
template <class number>
number rounded(std::int32_t rounding, number value) {
    switch (static_cast<rounding_kind>(rounding)) {
        case rounding_kind::floor:
            return std::floor(value);
        case rounding_kind::ceil:
            return std::ceil(value);
        case rounding_kind::trunc:
            return std::trunc(value);
        default:
            return std::round(value);
    }
}

}  // namespace xfc::proof
