#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics&, const component_operands& operands, bus_bits result) {
    constexpr bus_form form = bus_form::single_float;
    const exact_value before = value_of(operands.aa, form, operand_coding::plain, 0);
    const exact_value after = value_of(result, form, operand_coding::plain, 0);
    const bool negative = !before.negative;
    const signed_bus_bits mantissa = -before.mantissa;
    const bus_layout layout = layout_of(form, 0);
    const bool same_fraction = field(result, layout.mantissa) == field(operands.aa, layout.mantissa);
    return {.met = after.is == before.is && after.negative == negative && after.mantissa == mantissa &&
                   after.exponent == before.exponent && same_fraction};
}

}  // namespace

extern const contract fp_neg;
const contract fp_neg{.promise = "the same number with the other sign", .check = check};

}  // namespace xfc::proof::promises
