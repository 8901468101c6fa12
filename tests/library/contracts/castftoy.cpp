#include "same_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::single_float, operand_coding::plain, 0);
    const exact_value after = generics.output_select == 0
                                  ? value_of(result, bus_form::ydouble_multiplier, operand_coding::sign_magnitude, 0)
                                  : value_of(result, bus_form::ydouble, operand_coding::adder, 0);
    return {.met = same_value(before, after)};
}

}  // namespace

extern const contract castftoy;
const contract castftoy{.promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
