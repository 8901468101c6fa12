#include "normalized_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const bool adder = generics.output_select == 1;
    const bool rounds = !adder || generics.roundnormalize == 1;
    return check_normalized({.from = bus_form::ydouble,
                             .to = adder ? bus_form::ydouble : bus_form::ydouble_multiplier,
                             .coding = adder ? operand_coding::adder : operand_coding::sign_magnitude,
                             .mantissa_bits = 0,
                             .bias = 1023,
                             .overflow = 7680,
                             .most = rounds ? 0.5 : 1.0,
                             .nearest = rounds,
                             .carries = !adder},
                            operands.aa, result);
}

}  // namespace

extern const contract xfc_normfp2x;
const contract xfc_normfp2x{
    .aa = operand_coding::adder,
    .promise = "within half a unit of its lowest bit; in adder form without roundnormalize a unit",
    .check = check};

}  // namespace xfc::proof::promises
