#include "flow/simulate/error_bound.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xfc::flow {

namespace {

constexpr long double anything = std::numeric_limits<long double>::infinity();

/// Half a unit in the last place, relative to the number; the bounds below are multiples of it.
long double half_unit(number_format format) { return format == number_format::single_float ? 0x1p-24L : 0x1p-53L; }

/// The lowest bit of an adder's bus relative to 2^exponent.
long double low_unit(number_format format, std::int32_t mantissa) {
    return format == number_format::single_float ? std::ldexp(1.0L, 6 - mantissa) : 0x1p-58L;
}

bool is_open(const bounded_number& one) { return !(one.bound.radius < anything); }

/// Whether zero, or the other sign, is possible.
bool may_change_sign(const bounded_number& one) {
    return std::isfinite(one.number) && one.bound.radius > 0 && std::fabs(one.number) <= one.bound.radius;
}

/// What the operands' errors make of the result's, without the operation's own. Numbers are finite here.
long double carried(operation op, const bounded_number& result, std::span<const bounded_number> in) {
    const long double a = in[0].number;
    const long double of_a = in[0].bound.radius;
    const long double b = in.size() > 1 ? in[1].number : 0.0L;
    const long double of_b = in.size() > 1 ? in[1].bound.radius : 0.0L;
    const long double size = std::fabs(result.number);
    switch (op) {
        case operation::add:
        case operation::subtract:
            return of_a + of_b;
        case operation::multiply:
            return std::fabs(a) * of_b + std::fabs(b) * of_a + of_a * of_b;
        case operation::divide:
            if (std::fabs(b) <= of_b || (b == 0 && !in[1].bound.sign_is_known)) {
                return anything;
            }
            return b == 0 ? 0.0L : (of_a + size * of_b) / (std::fabs(b) - of_b);
        case operation::inverse:
            if (std::fabs(a) <= of_a || (a == 0 && !in[0].bound.sign_is_known)) {
                return anything;
            }
            return a == 0 ? 0.0L : size * of_a / (std::fabs(a) - of_a);
        case operation::square_root:
            return of_a == 0 ? 0.0L : a - of_a < 0 ? anything : of_a / std::sqrt(a);
        case operation::inverse_square_root:
            return of_a == 0                                             ? 0.0L
                   : a <= of_a || (a == 0 && !in[0].bound.sign_is_known) ? anything
                                                                         : of_a / ((a - of_a) * std::sqrt(a - of_a));
        case operation::exponential:
            return size * std::expm1(of_a);
        case operation::exponential_2:  // by way of exp(x ln 2), whose product and constant are rounded
            return size * std::expm1(of_a + std::fabs(a) * 4 * half_unit(result.format));
        case operation::logarithm:
        case operation::logarithm_2:
        case operation::logarithm_10:  // the factors are at most log2(e) < 1.5
            return of_a == 0 ? 0.0L : a <= of_a ? anything : -1.5L * std::log1p(-of_a / a);
        case operation::scale:
            return of_b > 0 ? anything : of_a == 0 ? 0.0L : std::ldexp(of_a, static_cast<int>(b));
        case operation::whole_power: {
            if (of_a == 0) {
                return a == 0 && !in[0].bound.sign_is_known ? anything : 0.0L;
            }
            if (std::fabs(a) <= of_a) {
                return b > 0 ? std::pow(std::fabs(a) + of_a, b) : anything;
            }
            const long double relative = of_a / (std::fabs(a) - (b < 0 ? of_a : 0));
            return size * std::expm1(std::fabs(b) * std::log1p(relative));
        }
        default:
            return anything;
    }
}

/// What the operation itself adds: multiples of half a unit, from the components' promises with some room.
long double own(operation op, const bounded_number& result, std::span<const bounded_number> in, long double scale,
                std::int32_t mantissa) {
    const long double half = half_unit(result.format) * std::fabs(result.number);
    const long double low = low_unit(result.format, mantissa);
    switch (op) {
        case operation::add:
        case operation::subtract:
            return half + 2 * low * scale;
        case operation::multiply:
            return half + 4 * low * std::fabs(result.number) + half / 16;
        case operation::exponential_2:
        case operation::logarithm_2:
        case operation::logarithm_10:
            return 6 * half;
        case operation::whole_power:
            return (std::fabs(in[1].number) + 2) * 3 * half;
        case operation::scale:
            return 0;
        default:  // quotients and functions: within one unit
            return 2 * half;
    }
}

/// A negative power passes through the positive one, which must not leave the range.
bool way_leaves_range(operation op, const bounded_number& result, std::span<const bounded_number> in) {
    if (op != operation::whole_power || in[1].number >= 0 || in[0].number == 0) {
        return false;
    }
    const long double size = std::pow(std::fabs(in[0].number), -in[1].number);
    return size > largest_finite(result.format) || size < smallest_normal(result.format);
}

/// Numbers stay in their format's range or are marked; too small ones may be zero.
void look_at_range(const bounded_number& result, value_bound& bound) {
    if (!is_floating(result.format) || std::isnan(result.number)) {
        return;
    }
    const long double size = std::fabs(result.number);
    if (std::isfinite(size) && size + bound.radius > largest_finite(result.format)) {
        bound.out_of_range = true;
    }
    const bool is_zero = result.exact_zero && bound.radius == 0;
    if (!is_zero && size - bound.radius < smallest_normal(result.format)) {
        bound.out_of_range = bound.out_of_range || size < smallest_normal(result.format);
        bound.radius += smallest_normal(result.format);
    }
}

/// The range of whole numbers that a floating one within its radius may become.
value_bound whole_bound(operation op, const bounded_number& result, const bounded_number& from, value_bound bound) {
    const auto whole = [&](long double number) {
        const long double rounded = op == operation::floor     ? std::floor(number)
                                    : op == operation::ceiling ? std::ceil(number)
                                    : op == operation::round   ? std::round(number)
                                                               : std::trunc(number);
        return result.format == number_format::integer ? std::clamp(rounded, -0x1p31L, 0x1p31L - 1) : rounded;
    };
    if (!std::isfinite(from.number)) {
        bound.radius = from.bound.radius == 0 ? 0 : anything;
    } else {
        const long double low = whole(from.number - from.bound.radius);
        const long double high = whole(from.number + from.bound.radius);
        bound.radius = std::max(high - result.number, result.number - low);
        bound.undecided = bound.undecided || low != high;
    }
    return bound;
}

/// Integers: exact, or a range that must not wrap.
value_bound integer_bound(operation op, const bounded_number& result, std::span<const bounded_number> in,
                          value_bound bound) {
    const bool all_known =
        std::all_of(in.begin(), in.end(), [](const bounded_number& one) { return one.bound.radius == 0; });
    if (all_known) {
        return bound;
    }
    const bool carries = op == operation::add || op == operation::subtract || op == operation::multiply;
    bound.radius = carries ? carried(op, result, in) : anything;
    long double unwrapped = 0;
    if (carries) {
        const long double a = in[0].number;
        const long double b = in[1].number;
        unwrapped = op == operation::add ? a + b : op == operation::subtract ? a - b : a * b;
    }
    if (std::isnan(bound.radius) || unwrapped - bound.radius < -0x1p31L || unwrapped + bound.radius >= 0x1p31L) {
        bound.radius = anything;
    }
    return bound;
}

value_bound comparison_bound(std::span<const bounded_number> in, value_bound bound) {
    const long double room = in[0].bound.radius + in[1].bound.radius;
    const bool any_nan = std::isnan(in[0].number) || std::isnan(in[1].number);
    const long double distance = std::fabs(in[0].number - in[1].number);
    const bool known = room == 0 || (room < anything && (any_nan || distance > room));
    bound.radius = known ? 0 : anything;
    bound.undecided = bound.undecided || !known;
    return bound;
}

value_bound choice_bound(const bounded_number& result, std::span<const bounded_number> in, value_bound bound) {
    if (in[0].bound.radius == 0) {
        const bounded_number& taken = in[0].number != 0 ? in[1] : in[2];
        bound = taken.bound;
        bound.range_before = bound.range_before || in[0].bound.range_before;
        bound.subnormal = bound.subnormal || in[0].bound.subnormal;
        bound.undecided = bound.undecided || in[0].bound.undecided;
        return bound;
    }
    bound.undecided = true;
    bound.scale = std::max(in[1].bound.scale, in[2].bound.scale);
    if (result.format == number_format::boolean) {
        bound.radius = anything;
        return bound;
    }
    const long double distance = std::fabs(in[1].number - in[2].number);
    bound.radius = std::isfinite(distance) ? distance + std::max(in[1].bound.radius, in[2].bound.radius) : anything;
    return bound;
}

/// Results or operands that are infinite or no number: known as long as no operand's sign or class is open.
value_bound special_bound(std::span<const bounded_number> in, value_bound bound) {
    const bool open = std::any_of(in.begin(), in.end(), [](const bounded_number& one) {
        return is_open(one) || may_change_sign(one) || (one.exact_zero && !one.bound.sign_is_known);
    });
    bound.radius = open ? anything : 0;
    return bound;
}

}  // namespace

long double smallest_normal(number_format format) {
    return format == number_format::single_float ? 0x1p-126L : 0x1p-1022L;
}

long double largest_finite(number_format format) {
    return format == number_format::single_float ? static_cast<long double>(std::numeric_limits<float>::max())
                                                 : static_cast<long double>(std::numeric_limits<double>::max());
}

value_bound bound_of_input(const bounded_number& input) {
    value_bound bound{.scale = std::fabs(input.number), .sign_is_known = true};
    const bool subnormal = is_floating(input.format) && std::fabs(input.number) < smallest_normal(input.format);
    bound.subnormal = subnormal && !input.exact_zero;
    bound.radius = subnormal ? std::fabs(input.number) : 0;
    return bound;
}

value_bound bound_of(operation op, const bounded_number& result, std::span<const bounded_number> in,
                     std::int32_t mantissa) {
    value_bound bound{.scale = std::fabs(result.number)};
    bool open = false;
    bool special = !std::isfinite(result.number);
    for (const bounded_number& one : in) {
        bound.range_before = bound.range_before || one.bound.range_before || one.bound.out_of_range;
        bound.subnormal = bound.subnormal || one.bound.subnormal;
        bound.undecided = bound.undecided || one.bound.undecided;
        open = open || is_open(one);
        special = special || !std::isfinite(one.number);
    }
    const bool from_floating = is_floating(in[0].format);
    switch (op) {
        case operation::select:
            return choice_bound(result, in, bound);
        case operation::less:
        case operation::less_equal:
        case operation::equal:
            return comparison_bound(in, bound);
        case operation::negate:
        case operation::absolute:
            if (is_floating(result.format)) {
                bound = in[0].bound;
                bound.sign_is_known = bound.sign_is_known || op == operation::absolute;
                return bound;
            }
            break;
        case operation::minimum:
        case operation::maximum:
            bound.radius = std::max(in[0].bound.radius, in[1].bound.radius);
            bound.scale = std::max(in[0].bound.scale, in[1].bound.scale);
            return bound;
        case operation::copy_sign:
            bound.radius = in[0].bound.radius;
            // What is no number has a sign too, but nobody says which.
            if (may_change_sign(in[1]) || is_open(in[1]) || std::isnan(in[1].number) ||
                (in[1].exact_zero && !in[1].bound.sign_is_known)) {
                bound.radius += 2 * std::fabs(in[0].number);
                bound.undecided = true;
                return bound;
            }
            bound.sign_is_known = true;
            return bound;
        case operation::floor:
        case operation::ceiling:
        case operation::truncate:
        case operation::round:
            return whole_bound(op, result, in[0], bound);
        case operation::convert:
            if (result.format == number_format::integer && from_floating) {
                return whole_bound(op, result, in[0], bound);
            }
            bound.radius = in[0].bound.radius;
            if (std::isfinite(result.number) && is_floating(result.format)) {
                bound.radius += half_unit(result.format) * (std::fabs(result.number) + bound.radius);
                bound.scale = std::max(bound.scale, from_floating ? in[0].bound.scale : 0.0L);
                bound.sign_is_known = in[0].bound.sign_is_known;
                look_at_range(result, bound);
            }
            return bound;
        default:
            break;
    }
    if (!is_floating(result.format)) {
        return integer_bound(op, result, in, bound);
    }
    if (op == operation::add || op == operation::subtract) {
        bound.scale = std::max({bound.scale, in[0].bound.scale, in[1].bound.scale});
    }
    if (open) {
        bound.radius = anything;
    } else if (special) {
        bound = special_bound(in, bound);
    } else {
        bound.radius = carried(op, result, in);
        bound.radius += own(op, result, in, bound.scale, mantissa);
        bound.radius *= 1 + 0x1p-16L;  // what products of errors and the long doubles themselves leave out
        if (way_leaves_range(op, result, in)) {
            bound.range_before = true;
            bound.radius = anything;
        }
        look_at_range(result, bound);
    }
    if (std::isnan(bound.radius)) {
        bound.radius = anything;
    }
    const bool of_signs = op == operation::multiply || op == operation::divide || op == operation::inverse ||
                          op == operation::square_root || op == operation::scale;
    bound.sign_is_known = of_signs && std::all_of(in.begin(), in.end(), [](const bounded_number& one) {
                              return one.bound.sign_is_known || !is_floating(one.format);
                          });
    return bound;
}

}  // namespace xfc::flow
