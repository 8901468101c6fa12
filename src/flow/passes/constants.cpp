#include "flow/passes/constants.h"

namespace xfc::flow {

namespace {

/// A mantissa field: where the hidden one stands, counted from 0, and whether negative numbers are complemented.
struct mantissa_shape {
    std::int32_t hidden;
    bool complements;
};

/// Sign, guard bits where the coding has them, hidden one, fraction: from the top of the field down.
mantissa_shape shape_of(coding code, std::int32_t field_width) {
    constexpr std::int32_t guard_bits = 4;
    const std::int32_t front = has_guard_bits(code) ? 1 + guard_bits : 1;
    return {field_width - front - 1, code != coding::x_divider && code != coding::y_multiplier};
}

/// An IEEE number in an internal coding.
bus_bits internal_constant(const bus_layout& from, bus_bits bits, coding code, std::int32_t mantissa) {
    const bus_layout to = layout_of(code, mantissa);
    const bool sign = bit(bits, from.sign - 1);
    const auto exponent = static_cast<std::int32_t>(field(bits, from.exponent));
    const bus_bits fraction = field(bits, from.mantissa);
    const std::int32_t highest = (1 << from.exponent.width()) - 1;
    const bus_flags flags{
        .sat = exponent == highest && fraction == 0, .zip = exponent == 0, .nan = exponent == highest && fraction != 0};

    const std::int32_t width = to.mantissa.width();
    const mantissa_shape shape = shape_of(code, width);
    const bool marked = flags.sat || flags.zip || flags.nan;
    const bus_bits significand = marked ? 0 : (bus_bits{1} << static_cast<unsigned>(from.mantissa.width())) | fraction;
    // NOLINTBEGIN(clang-analyzer-core.UndefinedBinaryOperatorResult):
    // the analyzer supposes layouts without a mantissa, which no floating format has.
    const bus_bits magnitude = significand << static_cast<unsigned>(shape.hidden - from.mantissa.width());
    const bus_bits top = bus_bits{sign} << static_cast<unsigned>(width - 1);
    // NOLINTEND(clang-analyzer-core.UndefinedBinaryOperatorResult)
    const bus_bits coded =
        marked || !shape.complements ? top | magnitude : (sign ? ~magnitude + 1 : magnitude) & low_ones(width);

    // The biases differ where a single becomes a double inside.
    const std::int32_t bias = (1 << (from.exponent.width() - 1)) - 1;
    const std::int32_t inner_bias =
        row_of(code).form == bus_form::xfloat ? 127 : 1023;  // the bias of the IEEE format inside which it stands
    return internal_bus(to, coded, marked ? 0 : static_cast<bus_bits>(exponent - bias + inner_bias), flags);
}

}  // namespace

bus_bits encoded_constant(number_format format, std::uint64_t bits, coding code, std::int32_t mantissa) {
    if (code == coding::boolean || code == coding::integer || code == coding::single_ieee ||
        code == coding::double_ieee) {
        return bits;
    }
    const bus_form from = format == number_format::single_float ? bus_form::single_float : bus_form::double_float;
    return internal_constant(layout_of(from, mantissa), bits, code, mantissa);
}

}  // namespace xfc::flow
