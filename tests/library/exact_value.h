#pragma once

#include <mpfr.h>

#include <cstdint>

#include "contract.h"

// Values of buses as exact numbers, for the contracts.

namespace xfc::proof {

/// What a bus says: a number is mantissa * 2 ** exponent exactly.
struct exact_value {
    enum class kind : std::uint8_t { number, zero, infinity, nan };
    kind is = kind::zero;
    bool negative = false;
    signed_bus_bits mantissa = 0;
    std::int32_t exponent = 0;
};

/// The value of a bus. Exponent field 0 is zero, whatever the mantissa says; flags go before it: nan, sat, zip.
[[nodiscard]] exact_value value_of(bus_bits bus, bus_form form, operand_coding coding, std::int32_t mantissa_bits);

/// A number for MPFR, freed with its scope.
class mpfr_number {
public:
    explicit mpfr_number(mpfr_prec_t bits) { mpfr_init2(value_, bits); }
    ~mpfr_number() { mpfr_clear(value_); }
    mpfr_number(const mpfr_number&) = delete;
    mpfr_number& operator=(const mpfr_number&) = delete;
    operator mpfr_ptr() { return value_; }
    operator mpfr_srcptr() const { return value_; }

private:
    mpfr_t value_;
};

/// Bits enough for any sum of two values of one precision.
inline constexpr mpfr_prec_t exact_bits = 20000;

/// Sets `target`, which must have at least 128 bits, to the number (or to zero).
void set_exactly(mpfr_ptr target, const exact_value& value);

/// The IEEE bits of a finite number rounded to nearest even: zero below the normal numbers after rounding.
[[nodiscard]] bus_bits nearest_ieee(mpfr_srcptr number, bool negative, bus_form form);
/// The IEEE bits of a value that is no number: signed zero, signed infinity, the quiet nan.
[[nodiscard]] bus_bits ieee_special(exact_value::kind kind, bool negative, bus_form form);

/// |result - exact| in units of the last place of the exact value rounded to the form's precision.
[[nodiscard]] double ulps_between(const exact_value& result, mpfr_srcptr exact, bus_form form);

/// |result - exact| in units of 2 ** exponent.
[[nodiscard]] double units_between(const exact_value& result, mpfr_srcptr exact, long exponent);

/// Exponent of the bit that stands so many places behind the leading one.
[[nodiscard]] inline long exponent_behind(mpfr_srcptr exact, long places) {
    return static_cast<long>(mpfr_get_exp(exact)) - 1 - places;
}

/// Whether a bus with sign and magnitude is a number whose hidden one is missing: no component delivers such an
/// operand.
[[nodiscard]] bool lacks_hidden_one(bus_bits bus, const bus_layout& layout);

}  // namespace xfc::proof
