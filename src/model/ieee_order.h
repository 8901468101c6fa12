#pragma once

#include "model/component_model.h"

// How two IEEE numbers stand to each other: the common parts xfc_ieee_halves and xfc_ieee_below, for the models of
// comparisons and of the extremes. Subnormal numbers are zeros.

namespace xfc {

/// What one look at both halves of the two magnitudes gives.
struct order_marks {
    bool a_negative = false;
    bool b_negative = false;
    bool a_is_nan = false;
    bool b_is_nan = false;
    bool both_are_zero = false;
    bool upper_is_less = false;
    bool upper_is_equal = false;
    bool lower_is_less = false;
    bool lower_is_equal = false;
};

constexpr order_marks ieee_halves(bus_form form, bus_bits a, bus_bits b) {
    const bus_layout layout = layout_of(form, 0);
    const std::int32_t magnitude_bits = layout.sign - 1;
    const std::int32_t lower_bits = (magnitude_bits + 1) / 2;
    const bus_bits exponent_ones = low_ones(layout.exponent.width());
    const auto is_nan = [&](bus_bits bus) {
        return field(bus, layout.exponent) == exponent_ones && field(bus, layout.mantissa) != 0;
    };
    const bus_bits a_upper = slice(a, magnitude_bits - 1, lower_bits);
    const bus_bits b_upper = slice(b, magnitude_bits - 1, lower_bits);
    const bus_bits a_lower = slice(a, lower_bits - 1, 0);
    const bus_bits b_lower = slice(b, lower_bits - 1, 0);
    return {.a_negative = bit(a, layout.sign - 1),
            .b_negative = bit(b, layout.sign - 1),
            .a_is_nan = is_nan(a),
            .b_is_nan = is_nan(b),
            .both_are_zero = field(a, layout.exponent) == 0 && field(b, layout.exponent) == 0,
            .upper_is_less = a_upper < b_upper,
            .upper_is_equal = a_upper == b_upper,
            .lower_is_less = a_lower < b_lower,
            .lower_is_equal = a_lower == b_lower};
}

struct ieee_position {
    bool below = false;  ///< a stands before b when -0 stands before +0
    bool same = false;   ///< a has b's bits
};

/// For two numbers, zeros among them; of two subnormal numbers of one sign either may be below.
constexpr ieee_position ieee_below(const order_marks& marks) {
    const bool less = marks.upper_is_less || (marks.upper_is_equal && marks.lower_is_less);
    const bool equal = marks.upper_is_equal && marks.lower_is_equal;
    const bool greater = !less && !equal;
    const bool signs_differ = marks.a_negative != marks.b_negative;
    return {.below = signs_differ ? marks.a_negative : (marks.a_negative ? greater : less),
            .same = equal && !signs_differ};
}

/// Whether a relation holds between two operands that are unordered, equal, less, or none of these.
constexpr bool relation_holds(std::int32_t relation, bool unordered, bool equal, bool less) {
    switch (static_cast<relation_kind>(relation)) {
        case relation_kind::equal:
            return equal;
        case relation_kind::not_equal:
            return !equal;
        case relation_kind::less:
            return less;
        case relation_kind::less_or_equal:
            return less || equal;
        case relation_kind::greater:
            return !unordered && !less && !equal;
        case relation_kind::greater_or_equal:
            return !unordered && !less;
    }
    return false;
}

/// The steps of xfc_cmpf and xfc_cmpd.
constexpr bus_bits compare_ieee(bus_form form, std::int32_t relation, const component_operands& operands) {
    // halves
    const order_marks marks = ieee_halves(form, operands.aa, operands.bb);

    // relate
    const ieee_position position = ieee_below(marks);
    const bool unordered = marks.a_is_nan || marks.b_is_nan;
    const bool equal = !unordered && (marks.both_are_zero || position.same);
    const bool less = !unordered && !marks.both_are_zero && position.below;
    return static_cast<bus_bits>(relation_holds(relation, unordered, equal, less));
}

/// The steps of xfc_extremef and xfc_extremed.
constexpr bus_bits extreme_ieee(bus_form form, std::int32_t greatest, const component_operands& operands) {
    const bus_layout layout = layout_of(form, 0);

    // halves
    const order_marks marks = ieee_halves(form, operands.aa, operands.bb);

    // choose
    const bool below = ieee_below(marks).below;
    const bool take_a = marks.b_is_nan || (!marks.a_is_nan && below != (greatest == 1));
    const bus_bits chosen = take_a ? operands.aa : operands.bb;
    if (marks.a_is_nan && marks.b_is_nan) {
        return low_ones(layout.exponent.width() + 1) << static_cast<unsigned>(layout.mantissa.high - 1);
    }
    return field(chosen, layout.exponent) == 0 ? chosen & (bus_bits{1} << static_cast<unsigned>(layout.sign - 1))
                                               : chosen;
}

}  // namespace xfc
