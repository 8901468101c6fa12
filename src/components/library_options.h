#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace xfc {

/// Settings of a whole design that reach the components as generics; each field bears its generic's name. They choose
/// cycles, sizes and rounding.
struct library_options {
    std::int32_t mantissa = 32;       ///< bits of the internal single-precision mantissa, 32 or 36
    std::int32_t doublespeed = 0;     ///< 1: longer double-precision additions are pipelined
    std::int32_t inputnormalize = 0;  ///< 1: single-precision multipliers get fully normalized operands
    std::int32_t outputscale = 0;     ///< 1: single-precision multipliers normalize their result
    std::int32_t roundconvert = 0;    ///< 1: conversions round
    std::int32_t roundnormalize = 0;  ///< 1: normalizations round
    std::int32_t outputpipe = 1;      ///< 0: no register on simple internal output nodes
    std::int32_t normspeed = 3;       ///< normalizer performance, 1 to 3
    std::int32_t shiftspeed = 1;      ///< 0: no pipeline in large alignment shifts
    std::int32_t doubleaccuracy = 1;  ///< 0: the double-precision multiplier is pruned
    std::int32_t device = 0;          ///< target family, 0 to 2
    std::int32_t optimization = 1;    ///< dot-product optimization, 0 to 3
    std::int32_t synthesize = 0;      ///< 1: the structure that maps well; the same bits and cycles
};

/// `normspeed` for components that offer only levels 1 and 2.
constexpr std::int32_t normspeed_of_two(const library_options& options) { return std::min(options.normspeed, 2); }

/// Everything that the generics of one instance can say.
struct component_generics : library_options {
    std::int32_t output_select = 0;  ///< the form that the result takes; the generic `target`, or the one of
                                     ///< ieeeoutput, xoutput, multoutput and divoutput that is 1
    std::int32_t width = 1;          ///< bits that a delay carries
    std::int32_t delay = 1;          ///< cycles that a delay takes
    std::int32_t divider = 0;        ///< 1: castftoy takes the cycle more that a divider behind it asks for
    std::int32_t relation = 0;       ///< a value of relation_kind
    std::int32_t bitoperation = 0;   ///< 0 and, 1 or, 2 exclusive or
    std::int32_t greatest = 0;       ///< 0: the smaller of two numbers, 1: the larger
    std::int32_t direction = 0;      ///< 0: shift to the left, 1: right with copies of the sign, 2: right with zeros
    std::int32_t remainder = 0;      ///< 0: what a division delivers is the quotient, 1: the remainder
    std::int32_t rounding = 0;       ///< a value of rounding_kind
};

/// What the generic `relation` says of aa and bb. Unordered operands (a nan) are not equal and nothing else.
enum class relation_kind : std::uint8_t { equal, not_equal, less, less_or_equal, greater, greater_or_equal };

/// What the generic `rounding` says of a fraction: down, up, toward zero, to nearest with halves away from zero.
enum class rounding_kind : std::uint8_t { floor, ceil, trunc, round };

/// One generic of a component.
struct generic_row {
    /// Where its value stands in `component_generics`.
    using field_type = std::int32_t component_generics::*;

    static constexpr std::int32_t no_flag = -1;

    std::string_view name;
    field_type field = nullptr;
    std::int32_t low = 0;         ///< least value that the component takes
    std::int32_t high = 1;        ///< greatest value
    bool capped = false;          ///< a greater value of the options means the greatest
    std::int32_t step = 1;        ///< between the values that it takes
    std::int32_t flag = no_flag;  ///< not negative: the generic is 1 where the field has this value, else 0
    bool has_default = false;     ///< the entity gives it the least value when an instance leaves it out
    bool takes_negative = false;  ///< the component takes values below `low` as well; they mean what `low` means
};

/// What the generic is set to.
constexpr std::int32_t generic_value(const generic_row& row, const component_generics& generics) {
    const std::int32_t value = generics.*row.field;
    if (row.flag != generic_row::no_flag) {
        return value == row.flag ? 1 : 0;
    }
    return row.capped ? std::min(value, row.high) : value;
}

}  // namespace xfc
