#include "model/ydouble.h"

namespace xfc::model {

bus_bits xfc_castftol(const component_generics&, const component_operands& operands) {
    // unpack: an integer has room for all bits of the significand
    constexpr std::int32_t magnitude_bits = 31;
    const unpacked_ieee single = unpack(operands.aa, single_shape);
    const bus_bits significand = (bus_bits{1} << static_cast<unsigned>(single_fraction_bits)) | single.fraction;
    const bus_bits magnitude = significand << static_cast<unsigned>(magnitude_bits - 1 - single_fraction_bits);
    const std::int32_t exponent = single.exponent - single_bias;
    const bool below_one = exponent < 0 || single.flags.nan;
    const bool beyond = exponent >= magnitude_bits && !single.flags.nan;

    // coarse, fine
    const std::int32_t distance = (magnitude_bits - 1 - exponent) & 31;
    const bus_bits whole = below_one ? 0 : magnitude >> static_cast<unsigned>(distance);

    // negate
    const bus_bits signed_whole = single.sign ? (~whole + 1) & low_ones(32) : whole;

    // settle
    return beyond ? (single.sign ? bus_bits{0x80000000} : bus_bits{0x7FFFFFFF}) : signed_whole;
}

}  // namespace xfc::model
