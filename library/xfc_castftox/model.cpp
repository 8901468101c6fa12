#include "model/xfloat.h"

namespace xfc::model {

bus_bits xfc_castftox(const component_generics& generics, const component_operands& operands) {
    const bus_layout single = layout_of(bus_form::single_float, generics.mantissa);
    const bus_layout result = layout_of(bus_form::xfloat, generics.mantissa);
    constexpr std::int32_t significand_bits = single_fraction_bits + 1;
    const std::int32_t signs = generics.output_select == 0 ? adder_guard_bits + 1 : 1;
    const std::int32_t tail = generics.mantissa - significand_bits - signs;
    const bool complements = generics.output_select != 2;

    // unpack
    const bool sign = bit(operands.aa, single.sign - 1);
    const bus_bits exponent = field(operands.aa, single.exponent);
    const bus_bits fraction = field(operands.aa, single.mantissa);
    const bool ones = exponent == single_exponent_of_infinity;
    const bus_flags flags{.sat = ones && fraction == 0, .zip = exponent == 0, .nan = ones && fraction != 0};
    const bus_bits magnitude = (bus_bits{1} << static_cast<unsigned>(single_fraction_bits)) | fraction;
    const bus_bits significand = complements && sign ? ~magnitude & low_ones(significand_bits) : magnitude;

    // convert
    const bus_bits sum = (significand + static_cast<bus_bits>(complements && sign)) & low_ones(significand_bits);
    const bus_bits front = sign ? low_ones(signs) : 0;
    const bus_bits mantissa = ((front << static_cast<unsigned>(significand_bits)) | sum) << static_cast<unsigned>(tail);
    return internal_bus(result, mantissa, exponent, flags);
}

}  // namespace xfc::model
