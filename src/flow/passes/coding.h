#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "components/component_table.h"
#include "flow/graph/number_format.h"

namespace xfc::flow {

/// How a bus codes a number. A form of the component library whose mantissa may be coded in several ways counts as
/// several codings, so that two ends of a wire agree exactly when their codings do.
enum class coding : std::uint8_t {
    boolean,
    integer,
    single_ieee,
    x_adder,       ///< single precision inside: guard bits, two's complement, perhaps unnormalised
    x_multiplier,  ///< normalised, two's complement
    x_divider,     ///< normalised, sign and magnitude
    double_ieee,
    y_adder,       ///< double precision inside: guard bits, two's complement, perhaps unnormalised
    y_multiplier,  ///< normalised, sign and magnitude; dividers read it too
};

inline constexpr int coding_count = static_cast<int>(coding::y_multiplier) + 1;

struct coding_row {
    coding what;
    std::string_view text;    ///< in dumps and reports
    std::string_view suffix;  ///< of a signal that carries a value in this coding
    bus_form form;
};

inline constexpr std::array<coding_row, coding_count> coding_rows{{
    {coding::boolean, "boolean", "", bus_form::none},
    {coding::integer, "integer", "", bus_form::long_integer},
    {coding::single_ieee, "single", "", bus_form::single_float},
    {coding::x_adder, "XFloat", "_x", bus_form::xfloat},
    {coding::x_multiplier, "XFloat for multipliers", "_xm", bus_form::xfloat},
    {coding::x_divider, "XFloat for dividers", "_xd", bus_form::xfloat},
    {coding::double_ieee, "double", "", bus_form::double_float},
    {coding::y_adder, "YDouble", "_y", bus_form::ydouble},
    {coding::y_multiplier, "YDouble for multipliers", "_ym", bus_form::ydouble_multiplier},
}};

constexpr const coding_row& row_of(coding what) { return coding_rows[static_cast<std::size_t>(what)]; }

/// The bits of a bus; `mantissa` is the generic of that name.
constexpr bus_layout layout_of(coding what, std::int32_t mantissa) {
    constexpr bus_layout one_bit{.width = 1, .value = 1};
    return what == coding::boolean ? one_bit : layout_of(row_of(what).form, mantissa);
}

/// How a value of the format stands on ports, and between components of IEEE numbers, integers and booleans.
constexpr coding plain_coding(number_format format) {
    constexpr coding of_formats[] = {coding::boolean, coding::integer, coding::single_ieee, coding::double_ieee};
    return of_formats[static_cast<std::size_t>(format)];
}

/// Whether sums in this coding use up guard bits.
constexpr bool has_guard_bits(coding what) { return what == coding::x_adder || what == coding::y_adder; }

/// How a component reads its operand 0 (aa) or 1 (bb). Not of selections, which pass on whatever they read.
[[nodiscard]] coding operand_coding(component_id component, std::size_t place);

/// How a component with these generics codes its result. Not of selections.
[[nodiscard]] coding result_coding(component_id component, const component_generics& generics);

/// A conversion from one coding to another one: a component, and the selector of what it delivers.
struct conversion_row {
    coding from;
    coding to;
    component_id component;
    std::int32_t selector;
};

/// The conversion between two codings of one number, or of a single as a double; null when there is none.
[[nodiscard]] const conversion_row* conversion_for(coding from, coding to);

}  // namespace xfc::flow
