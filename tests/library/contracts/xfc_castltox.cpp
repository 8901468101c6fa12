#include "exact_value.h"

namespace xfc::proof::promises {

namespace {

verdict check(const component_generics& generics, const component_operands& operands, bus_bits result) {
    const operand_coding codings[] = {operand_coding::adder, operand_coding::multiplier,
                                      operand_coding::sign_magnitude};
    const std::int32_t width = generics.mantissa;
    const operand_coding coding = codings[generics.output_select];
    const exact_value before = value_of(operands.aa, bus_form::long_integer, operand_coding::plain, 0);
    const exact_value after = value_of(result, bus_form::xfloat, coding, width);
    if (after.is != before.is || before.is == exact_value::kind::zero) {
        return {.met = after.is == before.is && !after.negative};
    }
    mpfr_number integer(128);
    mpfr_number converted(128);
    set_exactly(integer, before);
    set_exactly(converted, after);
    const signed_bus_bits magnitude = after.negative ? -after.mantissa : after.mantissa;
    const signed_bus_bits highest = signed_bus_bits{1} << (width - 2);
    const bool in_form = magnitude >= highest && magnitude <= 2 * highest;
    return {.met = mpfr_equal_p(integer, converted) != 0 && in_form};
}

}  // namespace

extern const contract xfc_castltox;
const contract xfc_castltox{.promise = "the same value", .check = check};

}  // namespace xfc::proof::promises
