// Unsigned integers of 32 bits. Their bits are those of signed ones, and so are sums, products and logic; what differs
// - order, quotients, conversions to and from floating numbers - is put together of signed operations.

#include <algorithm>
#include <limits>

#include "flow/frontend/executor.h"

namespace xfc::flow {

namespace {

constexpr std::int32_t sign_bit = std::numeric_limits<std::int32_t>::min();
constexpr double two_to_31 = 2147483648.0;

bool holds(clang::BinaryOperatorKind kind, std::uint32_t a, std::uint32_t b) {
    switch (kind) {
        case clang::BO_LT:
            return a < b;
        case clang::BO_GT:
            return a > b;
        case clang::BO_LE:
            return a <= b;
        default:
            return a >= b;
    }
}

bool is_power_of_two(std::uint32_t number) { return number != 0 && (number & (number - 1)) == 0; }

}  // namespace

/// The order of unsigned numbers is that of signed ones whose sign bit is turned.
result executor::order_unsigned(clang::BinaryOperatorKind kind, value_id a, value_id b, const asked_range& where) {
    const auto known_a = values_.known_integer(a);
    const auto known_b = values_.known_integer(b);
    if (known_a && known_b) {
        return number(conditions_.boolean(
            holds(kind, static_cast<std::uint32_t>(*known_a), static_cast<std::uint32_t>(*known_b))));
    }
    // Nothing is below 0: what is asked is whether the other one is 0, if anything.
    const bool zero_a = known_a == 0;
    if (zero_a || known_b == 0) {
        const bool below = (kind == clang::BO_LT || kind == clang::BO_GE) != zero_a;
        const bool equal_holds = kind == clang::BO_LE || kind == clang::BO_GE;
        return below ? number(conditions_.boolean(equal_holds))
                     : compare(equal_holds ? clang::BO_EQ : clang::BO_NE, number_format::integer, a, b, where);
    }
    // Below 1 is 0 alone; so a guard of a division is seen as one.
    const bool one_a = known_a == 1 && (kind == clang::BO_LE || kind == clang::BO_GT);
    const bool one_b = known_b == 1 && (kind == clang::BO_GE || kind == clang::BO_LT);
    if (one_a || one_b) {
        const bool differs = kind == clang::BO_LE || kind == clang::BO_GE;
        return compare(differs ? clang::BO_NE : clang::BO_EQ, number_format::integer, one_a ? b : a,
                       values_.make_integer(0), where);
    }
    if (is_never_negative(a) && is_never_negative(b)) {
        return compare(kind, number_format::integer, a, b, where);
    }
    const auto turned = [&](value_id id) {
        return make(operation::bit_xor, number_format::integer, {id, values_.make_integer(sign_bit)}, where);
    };
    const value_id turned_a = turned(a);
    return compare(kind, number_format::integer, turned_a, turned(b), where);
}

/// The quotient; b differs from zero.
value_id executor::divide_unsigned(value_id a, value_id b, const asked_range& where) {
    const auto integer = [&](operation op, value_id left, value_id right) {
        return make(op, number_format::integer, {left, right}, where);
    };
    const auto known_b = values_.known_integer(b);
    if (const auto known_a = values_.known_integer(a); known_a && known_b) {
        const std::uint32_t quotient = static_cast<std::uint32_t>(*known_a) / static_cast<std::uint32_t>(*known_b);
        return values_.make_integer(static_cast<std::int32_t>(quotient));
    }
    if (is_never_negative(a) && is_never_negative(b)) {
        return integer(operation::divide, a, b);
    }
    const auto if_not_below = [&](value_id left, value_id right) {
        const value_id order = order_unsigned(clang::BO_GE, left, right, where).number;
        return make(operation::select, number_format::integer,
                    {order, values_.make_integer(1), values_.make_integer(0)}, where);
    };
    const value_id one = values_.make_integer(1);
    const value_id half = integer(operation::shift_right_unsigned, a, one);
    if (known_b && *known_b % 2 == 0 && *known_b > 0) {
        return *known_b == 2 ? half : integer(operation::divide, half, values_.make_integer(*known_b / 2));
    }
    if (known_b && *known_b < 0) {  // from 2^31 on
        return if_not_below(a, b);
    }
    // Of b below 2^31: twice the quotient of half the dividend is the quotient, or one less.
    const value_id low = integer(operation::shift_left, integer(operation::divide, half, b), one);
    const value_id rest = integer(operation::subtract, a, integer(operation::multiply, low, b));
    const value_id quotient = integer(operation::add, low, if_not_below(rest, b));
    if (is_never_negative(b)) {
        return quotient;
    }
    const value_id large = make(operation::less, number_format::boolean, {b, values_.make_integer(0)}, where);
    return make(operation::select, number_format::integer, {large, if_not_below(a, b), quotient}, where);
}

value_id executor::remainder_unsigned(value_id a, value_id b, const asked_range& where) {
    const auto known_b = values_.known_integer(b);
    if (known_b && is_power_of_two(static_cast<std::uint32_t>(*known_b))) {
        const std::uint32_t mask = static_cast<std::uint32_t>(*known_b) - 1;
        return make(operation::bit_and, number_format::integer,
                    {a, values_.make_integer(static_cast<std::int32_t>(mask))}, where);
    }
    if (is_never_negative(a) && is_never_negative(b)) {
        return make(operation::remainder, number_format::integer, {a, b}, where);
    }
    const value_id whole = make(operation::multiply, number_format::integer, {divide_unsigned(a, b, where), b}, where);
    const value_id rest = make(operation::subtract, number_format::integer, {a, whole}, where);
    if (const integer_range divisor = integer_ranges_.of(b); divisor.low >= 0) {
        integer_ranges_.learn(rest, {0, std::max<std::int64_t>(divisor.high - 1, 0)});
    }
    return rest;
}

/// Exact in double: the lower bits' number, and 2^31 where the highest bit is set. Single is rounded from that once.
value_id executor::unsigned_to_floating(value_id integer, number_format format, const asked_range& where) {
    if (is_never_negative(integer)) {
        return make(operation::convert, format, {integer}, where);
    }
    const auto in_double = [&](operation op, std::initializer_list<value_id> operands) {
        return make(op, number_format::double_float, operands, where);
    };
    const value_id low =
        make(operation::bit_and, number_format::integer, {integer, values_.make_integer(~sign_bit)}, where);
    const value_id large = make(operation::less, number_format::boolean, {integer, values_.make_integer(0)}, where);
    const value_id high =
        in_double(operation::select, {large, values_.make_double(two_to_31, where), values_.make_double(0, where)});
    const value_id exact = in_double(operation::add, {in_double(operation::convert, {low}), high});
    return format == number_format::double_float ? exact : make(operation::convert, format, {exact}, where);
}

/// Toward zero. From 2^31 on the difference to that is exact.
value_id executor::floating_to_unsigned(value_id floating, const asked_range& where) {
    const number_format format = values_[floating].format;
    const value_id limit = format == number_format::single_float
                               ? values_.make_single(static_cast<float>(two_to_31), where)
                               : values_.make_double(two_to_31, where);
    const value_id large = make(operation::less_equal, number_format::boolean, {limit, floating}, where);
    const value_id less = make(operation::subtract, format, {floating, limit}, where);
    const value_id upper =
        make(operation::bit_xor, number_format::integer,
             {make(operation::convert, number_format::integer, {less}, where), values_.make_integer(sign_bit)}, where);
    const value_id lower = make(operation::convert, number_format::integer, {floating}, where);
    return make(operation::select, number_format::integer, {large, upper, lower}, where);
}

}  // namespace xfc::flow
