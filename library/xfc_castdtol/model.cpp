#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castdtol(const component_generics&, const component_operands& operands) {
    // unpack: the 31 highest bits of the significand are all that an integer has room for
    constexpr std::int32_t magnitude_bits = 31;
    const unpacked_ieee wide = unpack(operands.aa, double_shape);
    const bus_bits significand = (bus_bits{1} << static_cast<unsigned>(double_fraction_bits)) | wide.fraction;
    const bus_bits magnitude = significand >> static_cast<unsigned>(double_fraction_bits + 1 - magnitude_bits);
    const std::int32_t exponent = wide.exponent - double_bias;
    const bool below_one = exponent < 0 || wide.flags.nan;
    const bool beyond = exponent >= magnitude_bits && !wide.flags.nan;

    // coarse, fine
    const std::int32_t distance = (magnitude_bits - 1 - exponent) & 31;
    const bus_bits whole = below_one ? 0 : magnitude >> static_cast<unsigned>(distance);

    // complement, negate
    const bus_bits signed_whole = wide.sign ? (~whole + 1) & low_ones(32) : whole;

    // settle
    return beyond ? (wide.sign ? bus_bits{0x80000000} : bus_bits{0x7FFFFFFF}) : signed_whole;
}

}  // namespace xfc::model
