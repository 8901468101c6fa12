#pragma once

#include <cstdint>

#include "components/library_options.h"
#include "components/number_format.h"

// Bit-exact models of the components, one in library/NAME/model.cpp for every folder: the same steps under the same
// names as the component's two hardware texts. What the hardware delivers after its latency, the model returns.

namespace xfc {

/// The bits of one bus; bit 1 of the layouts is the lowest. No bus is wider than 128 bits.
__extension__ using bus_bits = unsigned __int128;
__extension__ using signed_bus_bits = __int128;

/// What a component reads in one cycle. Buses of an internal form carry sat, zip and nan above their value field.
struct component_operands {
    bus_bits aa = 0;
    bus_bits bb = 0;         ///< 0 when the component has no second operand
    bool addsub = false;     ///< true: subtract; adders alone read it
    bool condition = false;  ///< true: aa; selections alone read it
};

/// The result's bus for one set of operands. Every pattern of bits is an operand; generics are within their rows.
using component_model = bus_bits (*)(const component_generics&, const component_operands&);

// ---- Fields of buses ----

/// `width` ones, up to 128.
constexpr bus_bits low_ones(std::int32_t width) {
    return width >= 128 ? ~bus_bits{0} : (bus_bits{1} << static_cast<unsigned>(width)) - 1;
}
/// The bits `high` down to `low` of a bus, counted from 0.
constexpr bus_bits slice(bus_bits bus, std::int32_t high, std::int32_t low) {
    return (bus >> static_cast<unsigned>(low)) & low_ones(high - low + 1);
}
constexpr bool bit(bus_bits bus, std::int32_t index) { return ((bus >> static_cast<unsigned>(index)) & 1) != 0; }
/// A field of a layout, whose bits are counted from 1.
constexpr bus_bits field(bus_bits bus, bit_range range) { return slice(bus, range.high - 1, range.low - 1); }
/// The `width` low bits read as two's complement.
constexpr signed_bus_bits sign_extended(bus_bits bits, std::int32_t width) {
    const bus_bits sign = bus_bits{1} << static_cast<unsigned>(width - 1);
    return static_cast<signed_bus_bits>((bits & low_ones(width)) ^ sign) - static_cast<signed_bus_bits>(sign);
}
constexpr bus_bits bits_of(signed_bus_bits value, std::int32_t width) {
    return static_cast<bus_bits>(value) & low_ones(width);
}

/// The marks of a bus of an internal form.
struct bus_flags {
    bool sat = false;
    bool zip = false;
    bool nan = false;
};
constexpr bus_flags flags_of(bus_bits bus, const bus_layout& layout) {
    return {.sat = bit(bus, layout.sat - 1), .zip = bit(bus, layout.zip - 1), .nan = bit(bus, layout.nan - 1)};
}
/// A bus of an internal form from its fields, each within its width.
constexpr bus_bits internal_bus(const bus_layout& layout, bus_bits mantissa, bus_bits exponent, bus_flags flags) {
    // NOLINTBEGIN(clang-analyzer-core.UndefinedBinaryOperatorResult): internal forms have all their fields.
    return (mantissa << static_cast<unsigned>(layout.mantissa.low - 1)) | exponent |
           (bus_bits{flags.sat} << static_cast<unsigned>(layout.sat - 1)) |
           (bus_bits{flags.zip} << static_cast<unsigned>(layout.zip - 1)) |
           (bus_bits{flags.nan} << static_cast<unsigned>(layout.nan - 1));
    // NOLINTEND(clang-analyzer-core.UndefinedBinaryOperatorResult)
}

}  // namespace xfc
