#include "exact/emit/constants.h"

#include <bit>
#include <utility>

#include "base/wrapping.h"
#include "exact/emit/node_name.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

/// Which lines are written for a constant. Several may be chosen; they are written in this order.
struct encoding_choice {
    bool ieee_float = false;
    bool ieee_double = false;
    bool integer = false;
    bool xfloat = false;
    bool ydouble = false;
};

/// The internal encoding that the bus's width asks for.
encoding_choice choose_by_width(std::int32_t width) {
    encoding_choice choice;
    choice.ydouble = width >= 50;
    choice.xfloat = !choice.ydouble;
    return choice;
}

encoding_choice choose_for_first_input(const dfg_node& node) {
    const std::int32_t width = node.outputs[0].width;
    if (width == 32 || text_of(node.attributes.component).integer_constant) {
        return {.integer = true};
    }
    encoding_choice choice = choose_by_width(width);
    // Kept: a constant of IEEE format is written twice, the IEEE lines first.
    choice.ieee_float = node.attributes.format == number_format::single_float;
    choice.ieee_double = node.attributes.format == number_format::double_float;
    return choice;
}

encoding_choice choose_for_second_input(const dfg_node& node) {
    switch (node.attributes.format) {
        case number_format::single_float:
            return {.ieee_float = true};
        case number_format::double_float:
            return {.ieee_double = true};
        default:
            return node.outputs[0].width == 32 ? encoding_choice{.integer = true}
                                               : choose_by_width(node.outputs[0].width);
    }
}

/// Writes the constant of one node.
class constant_writer {
public:
    constant_writer(const emission& to, std::int32_t slot)
        : to_(to), text_(text_of(attributes_at(slot).component)), name_(slot) {}

    void write(const encoding_choice& choice, double value) {
        if (choice.ieee_float) {
            write_word(32, std::bit_cast<std::uint32_t>(static_cast<float>(value)), "IEEE Float");
        }
        if (choice.ieee_double) {
            const auto pattern = std::bit_cast<std::uint64_t>(value);
            write_word(64, static_cast<std::uint32_t>(pattern >> 32), "IEEE Double");
            write_word(32, static_cast<std::uint32_t>(pattern), "IEEE Double");
        }
        if (choice.integer) {
            write_word(32, static_cast<std::uint32_t>(truncate_to_int32(value)), "Long");
        }
        if (choice.xfloat) {
            write_xfloat(static_cast<float>(value));
        }
        if (choice.ydouble) {
            write_ydouble(value);
        }
    }

private:
    /// A field's upper bits, and what is left of it.
    static std::pair<bit_range, bit_range> split(bit_range field, std::int32_t upper_bits) {
        return {{field.high, field.high - upper_bits + 1}, {field.high - upper_bits, field.low}};
    }

    void open_field(bit_range field) {
        to_.out.append(to_.language.assign_open);
        to_.out.append("const");
        to_.out.append(name_.text());
        write_range(to_, field.high, field.low);
        to_.out.append(to_.language.assign_arrow);
    }

    void close_field(std::string_view encoding) { write_format(to_.out, ";  %s %s\n", to_.language.comment, encoding); }

    /// A field of the constant signal, as wide as its range.
    void write_field(bit_range field, std::int64_t value, std::string_view encoding) {
        open_field(field);
        to_.language.write_number(to_.out, value, field.width());
        close_field(encoding);
    }

    void write_word(std::int32_t high, std::uint32_t word, std::string_view encoding) {
        write_field({high, high - 31}, to_.language.signed_words ? std::int64_t{static_cast<std::int32_t>(word)} : word,
                    encoding);
    }

    void write_value_comment(double value) { write_format(to_.out, "  %s %f\n", to_.language.comment, value); }

    /// Mantissa over the exponent with the IEEE bias kept. Zero is not special: the hidden one is written.
    void write_xfloat(float value) {
        const auto pattern = std::bit_cast<std::uint32_t>(value);
        const std::int64_t sign = pattern >> 31;
        const std::int64_t exponent = pattern >> 23 & 0xFF;
        const std::int64_t significand = (pattern & 0x7FFFFF) + 0x800000;
        write_value_comment(value);
        switch (text_.constant) {
            case constant_form::multiplier:
                write_mantissa(25, sign != 0 ? 0x1FFFFFF - significand : significand, sign != 0, "X Float (mult)");
                break;
            case constant_form::divider:
                // The divider alone takes sign and magnitude.
                write_mantissa(25, sign * 0x1000000 + significand, false, "X Float (div)");
                break;
            case constant_form::adder:
                write_mantissa(29, sign != 0 ? 0x1FFFFFFF - significand : significand, sign != 0, "X Float");
                break;
        }
        write_field(xfloat_.exponent, exponent, "X Float");
    }

    /// The upper `bits` of the mantissa field, then what is left of it, filled with zeros or ones.
    void write_mantissa(std::int32_t bits, std::int64_t upper, bool ones, std::string_view encoding) {
        const auto [mantissa, fill] = split(xfloat_.mantissa, bits);
        write_field(mantissa, upper, encoding);
        write_field(fill, ones ? (std::int64_t{1} << fill.width()) - 1 : 0, encoding);
    }

    /// Mantissa over the exponent with the IEEE bias kept, written in two halves.
    void write_ydouble(double value) {
        const auto pattern = std::bit_cast<std::uint64_t>(value);
        const bool negative = pattern >> 63 != 0;
        const auto exponent = static_cast<std::int64_t>(pattern >> 52 & 0x7FF);
        const auto fraction = static_cast<std::int64_t>(pattern & 0xFFFFFFFFFFFFF);
        constexpr std::string_view encoding = "Y Double";
        write_value_comment(value);
        if (text_.multiplier_bus_constant) {
            const auto [upper, lower] = split(multiplier_.mantissa, 27);
            write_field(upper, (negative ? 0x4000000 : 0) + 0x2000000 + (fraction >> 27), encoding);
            write_field(lower, fraction & 0x7FFFFFF, encoding);
        } else {
            constexpr std::int64_t ones = 0x1FFFFFFF;
            const std::int64_t upper = (fraction >> 29) + 0x800000;
            const std::int64_t lower = fraction & ones;
            const auto [upper_bits, rest] = split(adder_.mantissa, 29);
            const auto [lower_bits, fill] = split(rest, 29);
            write_field(upper_bits, negative ? ones - upper : upper, encoding);
            write_field(lower_bits, negative ? ones - lower : lower, encoding);
            // Kept: zero also for a negative constant, unlike the fill of a single-precision one.
            open_field(fill);
            to_.out.append(to_.language.six_zero_bits);
            close_field(encoding);
        }
        write_field(adder_.exponent, exponent, encoding);
    }

    const emission& to_;
    const instance_text& text_;
    node_name name_;
    bus_layout xfloat_ = layout_of(bus_form::xfloat, current.options.mantissa);
    bus_layout adder_ = layout_of(bus_form::ydouble, current.options.mantissa);
    bus_layout multiplier_ = layout_of(bus_form::ydouble_multiplier, current.options.mantissa);
};

}  // namespace

void write_constants(const emission& to) {
    // Sizes in bytes of the two machine types that the encoding relies on.
    write_format(standard_output, "unsigned %d\n", sizeof(std::uint32_t));
    write_format(standard_output, "double %d\n", sizeof(double));
    bool empty_line_follows = false;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (is_primary_input(node) || is_primary_output(node) || node.attributes.is_removed != 0 ||
            !has_constant_operand(node)) {
            continue;
        }
        const bool first = has_constant(node, 0);
        const encoding_choice choice = first ? choose_for_first_input(node) : choose_for_second_input(node);
        constant_writer(to, slot).write(choice, node.inputs[first ? 0 : 1].constant_value);
        empty_line_follows = empty_line_follows || choice.integer || choice.xfloat || choice.ydouble;
    }
    if (empty_line_follows) {
        to.out.append('\n');
    }
}

}  // namespace xfc
