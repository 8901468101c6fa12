#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

// Numbers that a C program is run with in place of float, double and long: each carries its exact value (to 64 bits),
// how far the hardware's may be from it, and how large the values were that it was summed from, since what cancellation
// leaves keeps the place of its operands.

namespace traced {

template <class ieee>
class real {
public:
    /// Relative error of one component: two units in the last place, conversions on the way included.
    static constexpr long double unit = 2 * static_cast<long double>(std::numeric_limits<ieee>::epsilon());

    real() = default;
    /// A constant is rounded to the format.
    real(double constant) : real(constant, std::fabs(constant) * unit, std::fabs(constant)) {}
    real(int constant) : real(static_cast<double>(constant)) {}
    real(long double value, long double error, long double scale) : value_(value), error_(error), scale_(scale) {}
    /// float to double; the other way takes an assignment.
    real(const real<float>& narrow) requires(sizeof(ieee) == 8)
        : real(narrow.value(), narrow.error(), narrow.scale()) {}
    template <class other>
    real& operator=(const real<other>& wide) {
        *this = real(wide.value(), wide.error() + unit * wide.scale(), wide.scale());
        return *this;
    }
    /// An input.
    static real exactly(ieee value) { return {value, 0, std::fabs(value)}; }

    [[nodiscard]] long double value() const { return value_; }
    [[nodiscard]] long double error() const { return error_; }
    [[nodiscard]] long double scale() const { return scale_; }

    friend real operator+(const real& a, const real& b) {
        const long double scale = a.scale_ + b.scale_;
        return {a.value_ + b.value_, a.error_ + b.error_ + unit * scale, scale};
    }
    friend real operator-(const real& a) { return {-a.value_, a.error_, a.scale_}; }
    friend real operator-(const real& a, const real& b) { return a + -b; }
    friend real operator*(const real& a, const real& b) {
        const long double scale = a.scale_ * b.scale_;
        return {a.value_ * b.value_, a.scale_ * b.error_ + b.scale_ * a.error_ + a.error_ * b.error_ + unit * scale,
                scale};
    }
    friend real operator/(const real& a, const real& b) {
        return from(a.value_ / b.value_,
                    (a.error_ + std::fabs(a.value_ / b.value_) * b.error_) / (std::fabs(b.value_) - b.error_),
                    std::fabs(b.value_) > b.error_);
    }
    friend real sqrt(const real& a) {
        return from(std::sqrt(a.value_), a.error_ / (2 * std::sqrt(a.value_ - a.error_)), is_sign_known(a));
    }
    friend real invsqr(const real& a) { return exactly(1) / sqrt(a); }
    friend real inv(const real& a) { return exactly(1) / a; }
    /// From 11,000 on, beyond every double, what a long double holds.
    friend real exp(const real& a) {
        const long double value = std::exp(std::min(a.value_, 11000.0L));
        return from(value, value * std::expm1(a.error_), true);
    }
    friend real log(const real& a) {
        return from(std::log(a.value_), a.error_ / (a.value_ - a.error_), is_sign_known(a));
    }
    friend real fabs(const real& a) { return {std::fabs(a.value_), a.error_, a.scale_}; }
    friend real negate(const real& a) { return -a; }
    friend real ldexp(const real& a, int places) {
        return {std::ldexp(a.value_, places), std::ldexp(a.error_, places), std::ldexp(a.scale_, places)};
    }

private:
    /// A function's result; without a bound when the operand is not known well enough. Not-a-number needs no bound.
    static real from(long double value, long double error, bool bounded) {
        const long double beyond = std::numeric_limits<long double>::infinity();
        return {value, bounded ? error + unit * std::fabs(value) : beyond, std::fabs(value)};
    }
    static bool is_sign_known(const real& a) { return std::fabs(a.value_) > a.error_; }

    long double value_ = 0;
    long double error_ = 0;
    long double scale_ = 0;
};

/// 32 bits, wrapping.
class integer {
public:
    integer() = default;
    integer(std::int64_t value) : bits_(static_cast<std::uint32_t>(value)) {}
    [[nodiscard]] std::uint32_t bits() const { return bits_; }
    friend integer operator+(integer a, integer b) { return a.bits_ + b.bits_; }
    friend integer operator-(integer a, integer b) { return a.bits_ - b.bits_; }
    friend integer operator*(integer a, integer b) { return std::uint64_t{a.bits_} * b.bits_; }

private:
    std::uint32_t bits_ = 0;
};

/// A port's value from its bits, and whether the bits of a port are near enough to it.
inline void read(std::uint64_t bits, real<float>& value) {
    value = real<float>::exactly(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
}
inline void read(std::uint64_t bits, real<double>& value) {
    value = real<double>::exactly(std::bit_cast<double>(bits));
}
inline void read(std::uint64_t bits, integer& value) { value = integer(static_cast<std::int64_t>(bits)); }

template <class ieee>
bool agrees(ieee found, const real<ieee>& expected) {
    if (std::isnan(expected.value())) {
        return std::isnan(found);
    }
    if (!std::isfinite(expected.error())) {
        return true;
    }
    const long double low = expected.value() - expected.error();
    const long double high = expected.value() + expected.error();
    // What is too large is infinite, what is below the normal numbers zero.
    if (std::isinf(found)) {
        return found > 0 ? high > std::numeric_limits<ieee>::max() : low < std::numeric_limits<ieee>::lowest();
    }
    if (found == 0) {
        return low < std::numeric_limits<ieee>::min() && high > -std::numeric_limits<ieee>::min();
    }
    return low <= found && found <= high;
}
inline bool agrees(std::uint64_t bits, const real<float>& expected) {
    return agrees(std::bit_cast<float>(static_cast<std::uint32_t>(bits)), expected);
}
inline bool agrees(std::uint64_t bits, const real<double>& expected) {
    return agrees(std::bit_cast<double>(bits), expected);
}
inline bool agrees(std::uint64_t bits, const integer& expected) { return bits == expected.bits(); }

/// What stands behind a difference.
template <class ieee>
long double shown(const real<ieee>& expected) {
    return expected.value();
}
inline long double shown(const integer& expected) { return expected.bits(); }

/// Operands of moderate size, of either sign, and now and then of one wide range.
inline std::uint64_t random_bits(std::uint64_t random, const real<float>&) {
    const std::uint64_t exponent = random % 8 == 0 ? 127 - 20 + (random >> 40U) % 40 : 127 - 2 + (random >> 40U) % 4;
    return ((random >> 60U) & 1U) << 31U | exponent << 23U | ((random >> 8U) & 0x7FFFFFU);
}
inline std::uint64_t random_bits(std::uint64_t random, const real<double>&) {
    const std::uint64_t exponent = random % 8 == 0 ? 1023 - 20 + (random >> 8U) % 40 : 1023 - 2 + (random >> 8U) % 4;
    return ((random >> 60U) & 1U) << 63U | exponent << 52U | ((random * 0x9E3779B97F4A7C15U) >> 12U);
}
inline std::uint64_t random_bits(std::uint64_t random, const integer&) { return random >> 32U; }

}  // namespace traced
