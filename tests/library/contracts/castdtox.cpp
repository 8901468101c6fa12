#include "normalized_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    static constexpr operand_coding codings[] = {operand_coding::adder, operand_coding::multiplier,
                                                 operand_coding::sign_magnitude};
    return check_normalized({.from = bus_form::double_float,
                             .to = bus_form::xfloat,
                             .coding = codings[generics.output_select],
                             .mantissa_bits = generics.mantissa,
                             .bias = 127,
                             .overflow = 960,
                             .most = 0.5,
                             .nearest = true,
                             .carries = true},
                            operands.aa, result);
}

}  // namespace

extern const contract castdtox;
const contract castdtox{.promise = "the nearest number; units of the lowest bit", .check = check};

}  // namespace xfc::proof::promises
