#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

operand_coding coding_for_target(std::int32_t target) {
    return target == 0   ? operand_coding::adder
           : target == 1 ? operand_coding::multiplier
                         : operand_coding::sign_magnitude;
}

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::single_float, operand_coding::plain, generics.mantissa);
    const exact_value after =
        value_of(result, bus_form::xfloat, coding_for_target(generics.output_select), generics.mantissa);
    if (before.is != after.is) {
        return {.met = false};
    }
    if (before.is == exact_value::kind::nan) {
        return {};
    }
    // The mantissa behind stands further left by a whole number of bits.
    const std::int32_t shift = before.exponent - after.exponent;
    const bool same_number = before.is != exact_value::kind::number ||
                             (shift >= 0 && after.mantissa == before.mantissa * (signed_bus_bits{1} << shift));
    return {.met = before.negative == after.negative && same_number};
}

}  // namespace

extern const contract xfc_castftox;
const contract xfc_castftox{.promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
