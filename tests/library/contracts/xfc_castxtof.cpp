#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const exact_value before = value_of(operands.aa, bus_form::xfloat, operand_coding::adder, generics.mantissa);
    if (before.is != exact_value::kind::number) {
        return {.met = result == ieee_special(before.is, before.negative, bus_form::single_float)};
    }
    mpfr_number exact(128);
    set_exactly(exact, before);
    const bus_bits nearest = nearest_ieee(exact, before.negative, bus_form::single_float);
    const exact_value after = value_of(result, bus_form::single_float, operand_coding::plain, generics.mantissa);
    const bool in_range = after.is == exact_value::kind::number;
    return {.met = result == nearest, .error = in_range ? ulps_between(after, exact, bus_form::single_float) : 0};
}

}  // namespace

extern const contract xfc_castxtof;
const contract xfc_castxtof{
    .aa = operand_coding::adder, .promise = "the nearest single, to even between two; ulp", .check = check};

}  // namespace xfc::proof::promises
