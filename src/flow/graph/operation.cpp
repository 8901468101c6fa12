#include "flow/graph/operation.h"

#include <algorithm>
#include <iterator>

namespace xfc::flow {

namespace {

constexpr format_set set_of(std::initializer_list<number_format> formats) {
    format_set set;
    for (const number_format format : formats) {
        set.bits = static_cast<std::uint8_t>(set.bits | (1U << static_cast<unsigned>(format)));
    }
    return set;
}

constexpr auto b = number_format::boolean;
constexpr auto i = number_format::integer;
constexpr auto s = number_format::single_float;
constexpr auto d = number_format::double_float;

constexpr format_set none = set_of({});
constexpr format_set floats = set_of({s, d});
constexpr format_set numbers = set_of({i, s, d});
constexpr format_set integers = set_of({i});
constexpr format_set bits = set_of({b, i});
constexpr format_set booleans = set_of({b});
constexpr format_set all = set_of({b, i, s, d});

using operands = std::array<operand_rule, most_operands>;
constexpr operands no_operands = {operand_rule::none, operand_rule::none, operand_rule::none};
constexpr operands unary = {operand_rule::as_result, operand_rule::none, operand_rule::none};
constexpr operands binary = {operand_rule::as_result, operand_rule::as_result, operand_rule::none};
constexpr operands with_integer = {operand_rule::as_result, operand_rule::integer, operand_rule::none};
constexpr operands with_known = {operand_rule::as_result, operand_rule::known, operand_rule::none};
constexpr operands comparison = {operand_rule::alike, operand_rule::alike, operand_rule::none};
constexpr operands choice = {operand_rule::condition, operand_rule::as_result, operand_rule::as_result};
constexpr operands conversion = {operand_rule::any_other, operand_rule::none, operand_rule::none};

constexpr bool commutes = true;
constexpr bool ordered = false;

constexpr operation_row rows[] = {
    {operation::input, "input", no_operands, ordered, all, none},
    {operation::constant, "constant", no_operands, ordered, all, none},
    {operation::add, "add", binary, commutes, numbers, none},
    {operation::subtract, "subtract", binary, ordered, numbers, none},
    {operation::multiply, "multiply", binary, commutes, numbers, none},
    {operation::divide, "divide", binary, ordered, numbers, none},
    {operation::remainder, "remainder", binary, ordered, integers, none},
    {operation::negate, "negate", unary, ordered, numbers, none},
    {operation::absolute, "absolute", unary, ordered, floats, none},
    {operation::minimum, "minimum", binary, ordered, floats, none},
    {operation::maximum, "maximum", binary, ordered, floats, none},
    {operation::copy_sign, "copy_sign", binary, ordered, floats, none},
    {operation::square_root, "square_root", unary, ordered, floats, none},
    {operation::inverse, "inverse", unary, ordered, floats, none},
    {operation::inverse_square_root, "inverse_square_root", unary, ordered, floats, none},
    {operation::exponential, "exponential", unary, ordered, floats, none},
    {operation::logarithm, "logarithm", unary, ordered, floats, none},
    {operation::exponential_2, "exponential_2", unary, ordered, floats, none},
    {operation::logarithm_2, "logarithm_2", unary, ordered, floats, none},
    {operation::logarithm_10, "logarithm_10", unary, ordered, floats, none},
    {operation::scale, "scale", with_integer, ordered, floats, none},
    {operation::whole_power, "whole_power", with_known, ordered, floats, none},
    {operation::floor, "floor", unary, ordered, floats, none},
    {operation::ceiling, "ceiling", unary, ordered, floats, none},
    {operation::truncate, "truncate", unary, ordered, floats, none},
    {operation::round, "round", unary, ordered, floats, none},
    {operation::bit_and, "and", binary, commutes, bits, none},
    {operation::bit_or, "or", binary, commutes, bits, none},
    {operation::bit_xor, "xor", binary, commutes, bits, none},
    {operation::bit_not, "not", unary, ordered, bits, none},
    {operation::shift_left, "shift_left", with_integer, ordered, integers, none},
    {operation::shift_right, "shift_right", with_integer, ordered, integers, none},
    {operation::shift_right_unsigned, "shift_right_unsigned", with_integer, ordered, integers, none},
    {operation::less, "less", comparison, ordered, booleans, numbers},
    {operation::less_equal, "less_equal", comparison, ordered, booleans, numbers},
    {operation::equal, "equal", comparison, commutes, booleans, numbers},
    {operation::select, "select", choice, ordered, all, none},
    {operation::convert, "convert", conversion, ordered, numbers, none},
};

constexpr bool rows_stand_in_order() {
    for (int index = 0; index < operation_count; ++index) {
        if (static_cast<int>(rows[index].op) != index) {
            return false;
        }
    }
    return true;
}

static_assert(std::size(rows) == operation_count);
static_assert(rows_stand_in_order());

}  // namespace

const operation_row& row_of(operation op) { return rows[static_cast<unsigned>(op)]; }

std::optional<operation> operation_named(std::string_view name) {
    const auto* found =
        std::find_if(std::begin(rows), std::end(rows), [&](const operation_row& row) { return row.name == name; });
    return found == std::end(rows) ? std::nullopt : std::optional(found->op);
}

}  // namespace xfc::flow
