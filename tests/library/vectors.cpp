#include "vectors.h"

#include <algorithm>

#include "generic_sets.h"

namespace xfc::proof {

namespace {

class maker {
public:
    maker(const component_generics& generics, std::uint64_t seed) : generics_(generics), random_(seed) {}

    bool one_in(std::uint64_t n) { return random_() % n == 0; }
    std::int32_t below(std::int32_t n) { return static_cast<std::int32_t>(random_() % static_cast<std::uint64_t>(n)); }
    bus_bits random_bits(std::int32_t width) { return ((bus_bits{random_()} << 64U) | random_()) & low_ones(width); }

    /// Bits with long runs: carries through all bits, halfway cases, lonely ones.
    bus_bits pattern(std::int32_t width) {
        const bus_bits all = low_ones(width);
        const auto at = [&] { return bus_bits{1} << static_cast<unsigned>(below(width)); };
        switch (below(9)) {
            case 0:
                return 0;
            case 1:
                return all;
            case 2:
                return at();
            case 3:
                return at() - 1;
            case 4:
                return all - (at() - 1);
            case 5:
                return (at() + at()) & all;
            case 6:
                return (at() - at()) & all;
            case 7:
                // Ends in 1000...: between two neighbours when the low bits are dropped; or one unit beside.
                return ((random_bits(width) | 1) * at() + static_cast<bus_bits>(below(3)) - 1) & all;
            default:
                return random_bits(width);
        }
    }

    /// An integer of any size, as likely of few bits as of many.
    bus_bits sized(std::int32_t width) {
        const bus_bits magnitude = random_bits(1 + below(width));
        return (one_in(2) ? magnitude : ~magnitude + 1) & low_ones(width);
    }

    /// An exponent field: the ends of every range, near the bias, near another one.
    bus_bits exponent(std::int32_t bits, std::int32_t bias, bus_bits other) {
        const bus_bits all = low_ones(bits);
        const auto near = [&](bus_bits middle, std::int32_t by) {
            return (middle + static_cast<bus_bits>(below(2 * by + 1)) - static_cast<bus_bits>(by)) & all;
        };
        const auto width = static_cast<bus_bits>(bias);
        switch (below(8)) {
            case 0:
                return near(0, 2);
            case 1:
                return near(2 * width, 3);
            case 2:
                return near(all - (all >> 4U), 3);
            case 3:
                return near(width, 70);
            case 4:
                return near(other, 2);
            case 5:
            case 6:
                return near(other, 70);
            default:
                return random_bits(bits);
        }
    }

    bus_bits ieee(const bus_layout& layout, bus_bits other) {
        const std::int32_t exponent_bits = layout.exponent.width();
        const bus_bits other_exponent = field(other, layout.exponent);
        const auto bias = static_cast<std::int32_t>(low_ones(exponent_bits - 1));
        const bus_bits fraction = one_in(4) ? field(other, layout.mantissa) : pattern(layout.mantissa.width());
        return fraction |
               (exponent(exponent_bits, bias, other_exponent) << static_cast<unsigned>(layout.exponent.low - 1)) |
               (random_bits(1) << static_cast<unsigned>(layout.sign - 1));
    }

    /// A mantissa of an internal form in the coding that its reader asks for.
    bus_bits mantissa(std::int32_t width, operand_coding coding) {
        if (coding == operand_coding::adder) {
            // Sums of up to sixteen operands, and what cancellation leaves.
            const std::int32_t length = one_in(3) ? 1 + below(width) : width - 1 - below(6);
            const bus_bits magnitude = pattern(length);
            return (one_in(2) ? magnitude : ~magnitude + static_cast<bus_bits>(below(2))) & low_ones(width);
        }
        const std::int32_t fraction = width - 2;
        const bus_bits tail = one_in(2) ? random_bits(fraction) >> static_cast<unsigned>(fraction - 23)
                                                                       << static_cast<unsigned>(fraction - 23)
                                        : pattern(fraction);
        const bus_bits magnitude = (bus_bits{1} << static_cast<unsigned>(fraction)) | tail;
        const bus_bits sign = bus_bits{1} << static_cast<unsigned>(width - 1);
        if (one_in(2)) {
            return magnitude;
        }
        return coding == operand_coding::sign_magnitude ? magnitude | sign : (~magnitude + 1) & low_ones(width);
    }

    bus_bits internal(const bus_layout& layout, operand_coding coding, bus_bits other) {
        const std::int32_t width = layout.mantissa.width();
        const std::int32_t exponent_bits = layout.exponent.width();
        const std::int32_t bias = exponent_bits == xfloat_exponent_bits ? 127 : 1023;
        const bus_bits others = field(other, layout.mantissa);
        bus_bits value = mantissa(width, coding);
        if (one_in(4)) {
            // Cancels, all but the lowest bits.
            value = (one_in(2) ? others : ~others + 1) + (one_in(2) ? pattern(6) : bus_bits{0});
        }
        bus_flags flags;
        if (one_in(10)) {
            const std::int32_t which = below(8);
            flags = {.sat = (which & 1) != 0, .zip = (which & 2) != 0, .nan = which >= 6};
        }
        return internal_bus(layout, value & low_ones(width),
                            exponent(exponent_bits, bias, field(other, layout.exponent)), flags);
    }

    /// The same bits, or all but one of them; numbers whose relation a few bits decide.
    bus_bits neighbour(bus_bits bus, std::int32_t width) {
        const bus_bits turned = bus_bits{1} << static_cast<unsigned>(one_in(3) ? width - 1 : below(width));
        return one_in(3) ? bus : bus ^ turned;
    }

    /// One bus; `other` is the operand before it, to be related to.
    bus_bits bus(port_shape shape, operand_coding coding, bus_bits other) {
        const std::int32_t width = bus_width(shape, generics_);
        if (width == 0) {
            return 0;
        }
        const bus_form form = form_of(shape, generics_);
        const bus_layout layout = layout_of(form, generics_.mantissa);
        const bool structured = one_in(2);
        if (layout.sat != 0) {
            return structured ? internal(layout, coding, other) : random_internal(layout, coding);
        }
        if (!structured) {
            return random_bits(width);
        }
        return layout.sign != 0 ? ieee(layout, other) : one_in(2) ? pattern(width) : sized(width);
    }

private:
    bus_bits random_internal(const bus_layout& layout, operand_coding coding) {
        const std::int32_t width = layout.mantissa.width();
        const bus_bits value = coding == operand_coding::adder ? random_bits(width) : mantissa(width, coding);
        return internal_bus(layout, value, random_bits(layout.exponent.width()), {});
    }

    const component_generics& generics_;
    random_source random_;
};

}  // namespace

std::vector<component_operands> make_vectors(const component_row& row, const contract& promised,
                                             const component_generics& generics, std::size_t count,
                                             std::uint64_t seed) {
    maker make(generics, seed);
    std::vector<component_operands> vectors(count);
    bus_bits before = 0;
    for (component_operands& operands : vectors) {
        operands.aa = make.bus(row.aa, promised.aa, before);
        operands.bb = make.bus(row.bb, promised.bb, operands.aa);
        if ((row.operation == component_operation::compare || row.operation == component_operation::extreme) &&
            make.one_in(4)) {
            operands.bb = make.neighbour(operands.aa, bus_width(row.aa, generics));
        }
        operands.addsub = row.operation == component_operation::add_or_subtract && make.one_in(2);
        operands.condition = row.operation == component_operation::select && make.one_in(2);
        before = operands.aa;
    }
    return vectors;
}

}  // namespace xfc::proof
