#include "flow/graph/fold.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "flow/support/evaluate.h"

namespace xfc::flow::test {

namespace {

constexpr auto boolean = number_format::boolean;
constexpr auto integer = number_format::integer;
constexpr auto single = number_format::single_float;
constexpr auto wide = number_format::double_float;
constexpr double infinity = std::numeric_limits<double>::infinity();

double computed(operation op, number_format format, std::initializer_list<known_number> operands) {
    return number_of({format, compute(op, format, {operands.begin(), operands.size()})});
}

TEST(flow_fold, single_results_are_rounded_once_to_single) {
    const auto tenth = known_single(0.1F);
    const auto third = known_single(1.0F / 3);
    EXPECT_EQ(computed(operation::multiply, single, {tenth, third}), static_cast<double>(0.1F * (1.0F / 3)));
    EXPECT_EQ(computed(operation::exponential, single, {known_single(1)}), static_cast<double>(2.7182817459F));
    EXPECT_EQ(computed(operation::exponential, wide, {known_double(1)}), 2.718281828459045);
    EXPECT_EQ(computed(operation::logarithm_10, wide, {known_double(1000)}), 3.0);
    EXPECT_EQ(computed(operation::exponential_2, single, {known_single(-149)}), std::ldexp(1.0, -149));
    EXPECT_EQ(computed(operation::inverse_square_root, wide, {known_double(4)}), 0.5);
    EXPECT_EQ(computed(operation::whole_power, wide, {known_double(10), known_integer_number(22)}), 1e22);
    EXPECT_EQ(computed(operation::whole_power, wide, {known_double(10), known_integer_number(-3)}), 0.001);
    EXPECT_EQ(computed(operation::scale, single, {tenth, known_integer_number(3)}), static_cast<double>(0.8F));
}

TEST(flow_fold, whatever_is_no_number_has_one_pattern) {
    const std::array nan = {known_double(-std::numeric_limits<double>::quiet_NaN())};
    EXPECT_EQ(compute(operation::negate, wide, nan), 0x7FF8000000000000U);
    const std::array minus_one = {known_single(-1)};
    EXPECT_EQ(compute(operation::square_root, single, minus_one), 0x7FC00000U);
}

TEST(flow_fold, minimum_and_maximum_take_the_number) {
    const auto nan = known_double(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(computed(operation::minimum, wide, {nan, known_double(3)}), 3);
    EXPECT_EQ(computed(operation::maximum, wide, {known_double(3), nan}), 3);
    EXPECT_TRUE(std::signbit(computed(operation::minimum, wide, {known_double(0), known_double(-0.0)})));
    EXPECT_FALSE(std::signbit(computed(operation::maximum, wide, {known_double(-0.0), known_double(0)})));
}

TEST(flow_fold, integers_wrap_and_divide_toward_zero) {
    const auto lowest = known_integer_number(std::numeric_limits<std::int32_t>::min());
    const auto minus_one = known_integer_number(-1);
    EXPECT_EQ(computed(operation::negate, integer, {lowest}), -2147483648.0);
    EXPECT_EQ(computed(operation::divide, integer, {lowest, minus_one}), -2147483648.0);
    EXPECT_EQ(computed(operation::remainder, integer, {lowest, minus_one}), 0);
    EXPECT_EQ(computed(operation::divide, integer, {known_integer_number(-7), known_integer_number(2)}), -3);
    EXPECT_EQ(computed(operation::remainder, integer, {known_integer_number(-7), known_integer_number(2)}), -1);
    EXPECT_EQ(computed(operation::divide, integer, {minus_one, known_integer_number(0)}), 0);
    EXPECT_EQ(computed(operation::shift_right, integer, {minus_one, known_integer_number(4)}), -1);
    EXPECT_EQ(computed(operation::shift_right_unsigned, integer, {minus_one, known_integer_number(28)}), 15);
    EXPECT_EQ(computed(operation::shift_left, integer, {minus_one, known_integer_number(31)}), -2147483648.0);
}

TEST(flow_fold, conversions_to_integers_are_toward_zero_and_held_at_the_ends) {
    EXPECT_EQ(computed(operation::convert, integer, {known_double(-2.9)}), -2);
    EXPECT_EQ(computed(operation::convert, integer, {known_single(3e9F)}), 2147483647.0);
    EXPECT_EQ(computed(operation::convert, integer, {known_double(-infinity)}), -2147483648.0);
    EXPECT_EQ(computed(operation::convert, integer, {known_double(std::nan(""))}), 0);
    EXPECT_EQ(computed(operation::convert, single, {known_integer_number(16777217)}), 16777216.0);
    EXPECT_EQ(computed(operation::convert, single, {known_double(0.1)}), static_cast<double>(0.1F));
}

TEST(flow_fold, comparisons_with_what_is_no_number_are_false) {
    const auto nan = known_single(std::numeric_limits<float>::quiet_NaN());
    for (const auto op : {operation::less, operation::less_equal, operation::equal}) {
        EXPECT_EQ(computed(op, boolean, {nan, nan}), 0);
    }
    EXPECT_EQ(computed(operation::equal, boolean, {known_single(0), known_single(-0.0F)}), 1);
}

class flow_identities : public ::testing::Test {
protected:
    value_id make(operation op, number_format format, std::initializer_list<value_id> operands) {
        return make_folded(target_, op, format, {operands.begin(), operands.size()});
    }

    graph target_;
    value_id x_ = target_.add_input({.name = "x", .format = single});
    value_id n_ = target_.add_input({.name = "n", .format = integer});
    value_id less_ = make(operation::less, boolean, {x_, target_.make_single(1)});
};

TEST_F(flow_identities, known_operands_are_computed) {
    EXPECT_EQ(make(operation::add, single, {target_.make_single(1), target_.make_single(2)}), target_.make_single(3));
}

TEST_F(flow_identities, only_what_keeps_every_bit_is_left_out) {
    EXPECT_EQ(make(operation::multiply, single, {x_, target_.make_single(1)}), x_);
    EXPECT_EQ(make(operation::multiply, single, {target_.make_single(1), x_}), x_);
    EXPECT_EQ(make(operation::divide, single, {x_, target_.make_single(1)}), x_);
    EXPECT_EQ(make(operation::add, single, {x_, target_.make_single(-0.0F)}), x_);
    EXPECT_EQ(make(operation::subtract, single, {x_, target_.make_single(0)}), x_);
    EXPECT_NE(make(operation::add, single, {x_, target_.make_single(0)}), x_);
    EXPECT_NE(make(operation::subtract, single, {x_, target_.make_single(-0.0F)}), x_);
    EXPECT_NE(make(operation::multiply, single, {x_, target_.make_single(0)}), target_.make_single(0));
    EXPECT_NE(make(operation::divide, single, {target_.make_single(1), x_}), x_);
    EXPECT_EQ(make(operation::negate, single, {make(operation::negate, single, {x_})}), x_);
}

TEST_F(flow_identities, integers_know_their_zeros_and_ones) {
    const value_id zero = target_.make_integer(0);
    const value_id one = target_.make_integer(1);
    EXPECT_EQ(make(operation::add, integer, {zero, n_}), n_);
    EXPECT_EQ(make(operation::multiply, integer, {n_, zero}), zero);
    EXPECT_EQ(make(operation::multiply, integer, {one, n_}), n_);
    EXPECT_EQ(make(operation::bit_and, integer, {zero, n_}), zero);
    EXPECT_EQ(make(operation::bit_and, integer, {n_, target_.make_integer(-1)}), n_);
    EXPECT_EQ(make(operation::bit_or, integer, {n_, zero}), n_);
    EXPECT_EQ(make(operation::bit_xor, integer, {n_, zero}), n_);
    EXPECT_EQ(make(operation::shift_left, integer, {n_, zero}), n_);
    EXPECT_NE(make(operation::shift_left, integer, {zero, n_}), n_);
}

TEST_F(flow_identities, known_conditions_choose) {
    const value_id yes = target_.make_boolean(true);
    const value_id no = target_.make_boolean(false);
    const value_id zero = target_.make_single(0);
    EXPECT_EQ(make(operation::select, single, {yes, x_, zero}), x_);
    EXPECT_EQ(make(operation::select, single, {no, x_, zero}), zero);
    EXPECT_EQ(make(operation::select, single, {less_, x_, x_}), x_);
    EXPECT_EQ(make(operation::select, boolean, {less_, yes, no}), less_);
    EXPECT_EQ(make(operation::bit_and, boolean, {less_, yes}), less_);
    EXPECT_EQ(make(operation::bit_and, boolean, {no, less_}), no);
    EXPECT_EQ(make(operation::bit_or, boolean, {less_, yes}), yes);
    EXPECT_EQ(make(operation::bit_or, boolean, {less_, less_}), less_);
    EXPECT_EQ(make(operation::bit_not, boolean, {make(operation::bit_not, boolean, {less_})}), less_);
}

}  // namespace

}  // namespace xfc::flow::test
