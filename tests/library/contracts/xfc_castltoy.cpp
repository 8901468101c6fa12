#include "same_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::long_integer, operand_coding::plain, 0);
    const bool adder = generics.output_select == 1;
    const exact_value after = value_of(result, adder ? bus_form::ydouble : bus_form::ydouble_multiplier,
                                       adder ? operand_coding::adder : operand_coding::sign_magnitude, 0);
    // Multipliers and dividers rely on the hidden one.
    const bool normal = adder || after.is != exact_value::kind::number ||
                        bit(field(result, layout_of(bus_form::ydouble_multiplier, 0).mantissa), 52);
    return {.met = same_value(before, after) && normal};
}

}  // namespace

extern const contract xfc_castltoy;
const contract xfc_castltoy{.promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
