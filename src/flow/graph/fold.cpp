#include "flow/graph/fold.h"

#include <mpfr.h>

#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>
#include <optional>

#include "base/wrapping.h"

namespace xfc::flow {

namespace {

// Each routine of MPFR is asked for this many bits and the result is rounded once more to the format; a second rounding
// could matter only where the exact result lies within 2^-240 of a halfway case.
constexpr mpfr_prec_t working_bits = 300;

/// A number of MPFR that gives its memory back.
class wide_number {
public:
    explicit wide_number(double start) {
        mpfr_init2(value_, working_bits);
        mpfr_set_d(value_, start, MPFR_RNDN);
    }
    ~wide_number() { mpfr_clear(value_); }
    wide_number(const wide_number&) = delete;
    wide_number& operator=(const wide_number&) = delete;

    mpfr_ptr get() { return value_; }

private:
    mpfr_t value_;
};

using wide_function = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);

template <class real>
real rounded(wide_number& exact) {
    if constexpr (sizeof(real) == sizeof(float)) {
        return mpfr_get_flt(exact.get(), MPFR_RNDN);
    } else {
        return mpfr_get_d(exact.get(), MPFR_RNDN);
    }
}

template <class real>
real by_wide_function(wide_function function, real x) {
    wide_number exact(x);
    function(exact.get(), exact.get(), MPFR_RNDN);
    return rounded<real>(exact);
}

template <class real>
real whole_power(real x, std::int32_t exponent) {
    wide_number exact(x);
    mpfr_pow_si(exact.get(), exact.get(), exponent, MPFR_RNDN);
    return rounded<real>(exact);
}

template <class real>
real inverse_square_root(real x) {
    if (x == 0) {
        return std::copysign(std::numeric_limits<real>::infinity(), x);  // as 1 / sqrt(x) gives it
    }
    return by_wide_function<real>(mpfr_rec_sqrt, x);
}

template <class real>
real smaller(real a, real b) {
    return std::isnan(b) || a < b || (a == b && std::signbit(a)) ? a : b;
}

template <class real>
real larger(real a, real b) {
    return std::isnan(b) || a > b || (a == b && !std::signbit(a)) ? a : b;
}

template <class real>
real pattern(std::uint64_t bits) {
    if constexpr (sizeof(real) == sizeof(float)) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    } else {
        return std::bit_cast<double>(bits);
    }
}

template <class real>
std::uint64_t bits_of(real number) {
    if (std::isnan(number)) {
        number = std::numeric_limits<real>::quiet_NaN();
    }
    if constexpr (sizeof(real) == sizeof(float)) {
        return std::bit_cast<std::uint32_t>(number);
    } else {
        return std::bit_cast<std::uint64_t>(number);
    }
}

/// A floating operation of a floating result; `b` is 0 where there is one operand.
template <class real>
real compute_real(operation op, real a, real b, std::int32_t count) {
    switch (op) {
        case operation::add:
            return a + b;
        case operation::subtract:
            return a - b;
        case operation::multiply:
            return a * b;
        case operation::divide:
            return a / b;
        case operation::negate:
            return -a;
        case operation::absolute:
            return std::fabs(a);
        case operation::minimum:
            return std::isnan(a) ? b : smaller(a, b);
        case operation::maximum:
            return std::isnan(a) ? b : larger(a, b);
        case operation::copy_sign:
            return std::copysign(a, b);
        case operation::square_root:
            return std::sqrt(a);
        case operation::inverse:
            return 1 / a;
        case operation::inverse_square_root:
            return inverse_square_root(a);
        case operation::exponential:
            return by_wide_function(mpfr_exp, a);
        case operation::logarithm:
            return by_wide_function(mpfr_log, a);
        case operation::exponential_2:
            return by_wide_function(mpfr_exp2, a);
        case operation::logarithm_2:
            return by_wide_function(mpfr_log2, a);
        case operation::logarithm_10:
            return by_wide_function(mpfr_log10, a);
        case operation::scale:
            return std::ldexp(a, count);
        case operation::whole_power:
            return whole_power(a, count);
        case operation::floor:
            return std::floor(a);
        case operation::ceiling:
            return std::ceil(a);
        case operation::truncate:
            return std::trunc(a);
        case operation::round:
            return std::round(a);
        default:
            assert(false);
            return 0;
    }
}

std::int32_t divided(std::int32_t a, std::int32_t b) {
    if (b == 0) {
        return 0;
    }
    return b == -1 ? wrapping_subtract(0, a) : a / b;
}

std::int32_t remainder_of(std::int32_t a, std::int32_t b) { return b == 0 || b == -1 ? 0 : a % b; }

std::int32_t compute_integer(operation op, std::int32_t a, std::int32_t b) {
    const auto a_bits = static_cast<std::uint32_t>(a);
    const auto b_bits = static_cast<std::uint32_t>(b);
    const std::uint32_t count = b_bits & 31U;
    switch (op) {
        case operation::add:
            return wrapping_add(a, b);
        case operation::subtract:
            return wrapping_subtract(a, b);
        case operation::multiply:
            return wrapping_multiply(a, b);
        case operation::divide:
            return divided(a, b);
        case operation::remainder:
            return remainder_of(a, b);
        case operation::negate:
            return wrapping_subtract(0, a);
        case operation::bit_and:
            return static_cast<std::int32_t>(a_bits & b_bits);
        case operation::bit_or:
            return static_cast<std::int32_t>(a_bits | b_bits);
        case operation::bit_xor:
            return static_cast<std::int32_t>(a_bits ^ b_bits);
        case operation::bit_not:
            return static_cast<std::int32_t>(~a_bits);
        case operation::shift_left:
            return static_cast<std::int32_t>(a_bits << count);
        case operation::shift_right:
            return a >> count;
        case operation::shift_right_unsigned:
            return static_cast<std::int32_t>(a_bits >> count);
        default:
            assert(false);
            return 0;
    }
}

bool compute_boolean(operation op, bool a, bool b) {
    switch (op) {
        case operation::bit_and:
            return a && b;
        case operation::bit_or:
            return a || b;
        case operation::bit_xor:
            return a != b;
        case operation::bit_not:
            return !a;
        default:
            assert(false);
            return false;
    }
}

template <class number>
bool compare(operation op, number a, number b) {
    switch (op) {
        case operation::less:
            return a < b;
        case operation::less_equal:
            return a <= b;
        case operation::equal:
            return a == b;
        default:
            assert(false);
            return false;
    }
}

std::int32_t integer_of(const known_number& from) { return static_cast<std::int32_t>(from.bits); }

/// The number itself; every format fits into a double.
double wide_value(const known_number& from) {
    switch (from.format) {
        case number_format::single_float:
            return static_cast<double>(pattern<float>(from.bits));
        case number_format::double_float:
            return pattern<double>(from.bits);
        default:
            return integer_of(from);
    }
}

std::uint64_t converted(number_format result, const known_number& from) {
    const double number = wide_value(from);
    switch (result) {
        case number_format::integer:
            return static_cast<std::uint32_t>(truncate_to_int32(number));
        case number_format::single_float:
            return bits_of(static_cast<float>(number));
        default:
            return bits_of(number);
    }
}

bool is_comparison(operation op) {
    return op == operation::less || op == operation::less_equal || op == operation::equal;
}

template <class real>
std::uint64_t compute_floating(operation op, std::span<const known_number> operands) {
    const bool counted = op == operation::scale || op == operation::whole_power;
    const auto a = pattern<real>(operands[0].bits);
    const auto b = operands.size() > 1 && !counted ? pattern<real>(operands[1].bits) : real{0};
    return bits_of(compute_real<real>(op, a, b, counted ? integer_of(operands[1]) : 0));
}

// ---- identities ----

struct known_operand {
    value_id id;
    std::optional<known_number> number;
};

/// Whether the operand is this number, zeros told apart by their sign.
bool is_number(const known_operand& operand, double number) {
    if (!operand.number || operand.number->format == number_format::boolean) {
        return false;
    }
    const double value = wide_value(*operand.number);
    return value == number && (operand.number->format == number_format::integer || value != 0 ||
                               std::signbit(value) == std::signbit(number));
}

bool is_integer(const known_operand& operand, std::uint32_t bits) {
    return operand.number && operand.number->format == number_format::integer && operand.number->bits == bits;
}

bool is_truth(const known_operand& operand, bool truth) {
    return operand.number && operand.number->format == number_format::boolean && (operand.number->bits != 0) == truth;
}

using pair = std::array<known_operand, 2>;

/// The operand that the operation's bits always equal, for operations of two numbers.
std::optional<value_id> kept_number(operation op, number_format format, const pair& two) {
    const auto& [a, b] = two;
    const bool integer = format == number_format::integer;
    switch (op) {
        case operation::add: {
            const double nothing = integer ? 0.0 : -0.0;
            if (is_number(b, nothing)) {
                return a.id;
            }
            return is_number(a, nothing) ? std::optional(b.id) : std::nullopt;
        }
        case operation::subtract:
            return is_number(b, 0.0) ? std::optional(a.id) : std::nullopt;
        case operation::multiply:
            if (is_number(b, 1) || (integer && is_number(a, 0))) {
                return a.id;
            }
            return is_number(a, 1) || (integer && is_number(b, 0)) ? std::optional(b.id) : std::nullopt;
        case operation::divide:
            return is_number(b, 1) ? std::optional(a.id) : std::nullopt;
        case operation::whole_power:
            return is_integer(b, 1) ? std::optional(a.id) : std::nullopt;
        case operation::scale:
        case operation::shift_left:
        case operation::shift_right:
        case operation::shift_right_unsigned:
            return is_integer(b, 0) ? std::optional(a.id) : std::nullopt;
        default:
            return std::nullopt;
    }
}

/// The same for the operations on bits, of integers and of booleans.
std::optional<value_id> kept_bits(operation op, const pair& two) {
    for (const bool swapped : {false, true}) {
        const known_operand& a = two[swapped ? 1 : 0];
        const known_operand& b = two[swapped ? 0 : 1];
        const bool b_clear = is_integer(b, 0) || is_truth(b, false);
        const bool b_full = is_integer(b, 0xFFFFFFFF) || is_truth(b, true);
        if ((op == operation::bit_and && b_clear) || (op == operation::bit_or && b_full)) {
            return b.id;
        }
        if ((op == operation::bit_and && b_full) || (op != operation::bit_and && b_clear)) {
            return a.id;
        }
        if (op != operation::bit_xor && a.id == b.id) {
            return a.id;
        }
    }
    return std::nullopt;
}

bool is_bit_pair(operation op) {
    return op == operation::bit_and || op == operation::bit_or || op == operation::bit_xor;
}

std::optional<value_id> kept_operand(const graph& target, operation op, number_format format,
                                     std::span<const value_id> operands) {
    const auto known = [&](value_id id) {
        const value& one = target[id];
        known_operand operand{id, std::nullopt};
        if (one.op == operation::constant) {
            operand.number = {one.format, one.constant_bits()};
        }
        return operand;
    };
    if (op == operation::select) {
        if (operands[1] == operands[2]) {
            return operands[1];
        }
        if (const auto truth = target.known_boolean(operands[0])) {
            return *truth ? operands[1] : operands[2];
        }
        if (target.known_boolean(operands[1]) == true && target.known_boolean(operands[2]) == false) {
            return operands[0];
        }
        return std::nullopt;
    }
    const value& first = target[operands[0]];
    const bool twice = op == operation::bit_not || op == operation::negate;
    if (operands.size() == 1) {
        return twice && first.op == op ? std::optional(first.operands[0]) : std::nullopt;
    }
    const pair two = {known(operands[0]), known(operands[1])};
    return is_bit_pair(op) ? kept_bits(op, two) : kept_number(op, format, two);
}

}  // namespace

known_number known_integer_number(std::int32_t number) {
    return {number_format::integer, static_cast<std::uint32_t>(number)};
}
known_number known_boolean_number(bool truth) { return {number_format::boolean, truth ? 1U : 0U}; }
known_number known_single(float number) { return {number_format::single_float, bits_of(number)}; }
known_number known_double(double number) { return {number_format::double_float, bits_of(number)}; }

std::uint64_t compute(operation op, number_format result, std::span<const known_number> operands) {
    if (op == operation::select) {
        return operands[operands[0].bits != 0 ? 1 : 2].bits;
    }
    if (op == operation::convert) {
        return converted(result, operands[0]);
    }
    if (is_comparison(op)) {
        return compare(op, wide_value(operands[0]), wide_value(operands[1])) ? 1 : 0;
    }
    switch (result) {
        case number_format::boolean:
            return compute_boolean(op, operands[0].bits != 0, operands.size() > 1 && operands[1].bits != 0) ? 1 : 0;
        case number_format::integer:
            return static_cast<std::uint32_t>(
                compute_integer(op, integer_of(operands[0]), operands.size() > 1 ? integer_of(operands[1]) : 0));
        case number_format::single_float:
            return compute_floating<float>(op, operands);
        case number_format::double_float:
            return compute_floating<double>(op, operands);
    }
    return 0;
}

known_number power_of(const known_number& base, const known_number& exponent) {
    wide_number exact(wide_value(base));
    wide_number wide_exponent(wide_value(exponent));
    mpfr_pow(exact.get(), exact.get(), wide_exponent.get(), MPFR_RNDN);
    return base.format == number_format::single_float ? known_single(rounded<float>(exact))
                                                      : known_double(rounded<double>(exact));
}

value_id make_folded(graph& target, operation op, number_format format, std::span<const value_id> operands,
                     source_range where, call_id call) {
    std::array<known_number, most_operands> numbers;
    bool all_known = true;
    for (std::size_t place = 0; place < operands.size(); ++place) {
        const value& one = target[operands[place]];
        all_known = all_known && one.op == operation::constant;
        numbers.at(place) = {one.format, one.constant_bits()};
    }
    if (all_known) {
        return target.make_constant(format, compute(op, format, {numbers.data(), operands.size()}), where, call);
    }
    if (const auto kept = kept_operand(target, op, format, operands)) {
        return *kept;
    }
    return target.make(op, format, operands, where, call);
}

}  // namespace xfc::flow
