#include "flow/frontend/integer_ranges.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "flow/graph/fold.h"

namespace xfc::flow::test {

namespace {

constexpr auto integer = number_format::integer;
constexpr auto boolean = number_format::boolean;

/// Numbers of a graph for some inputs, beside it. A number is missing where it comes of a division by zero.
struct sample {
    std::array<std::int32_t, 2> inputs;
    std::vector<std::optional<std::int32_t>> numbers;
};

std::optional<std::int32_t> number_of(const value& one, number_format operand_format, const sample& now) {
    std::vector<known_number> operands;
    for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
        const auto number = now.numbers[one.operands.at(place)];
        const bool is_dropped =
            one.op == operation::select && place > 0 && (*now.numbers[one.operands[0]] != 0) != (place == 1);
        if (!number && !is_dropped) {
            return std::nullopt;
        }
        const bool is_condition = operand_format == boolean || (one.op == operation::select && place == 0);
        operands.push_back(is_condition ? known_boolean_number(*number != 0)
                                        : known_integer_number(number.value_or(0)));
    }
    const bool divides = one.op == operation::divide || one.op == operation::remainder;
    if (divides && *now.numbers[one.operands[1]] == 0) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(compute(one.op, one.format, operands));
}

/// A graph of integers and booleans made of two inputs and a few constants.
class random_integers {
private:
    template <class container>
    typename container::value_type any_of(const container& of) {
        // Later ones oftener, for depth.
        const std::size_t from = random_() % 2 == 0 ? of.size() - std::min<std::size_t>(of.size(), 6) : 0;
        return of[from + random_() % (of.size() - from)];
    }

public:
    random_integers(std::uint32_t seed, std::vector<sample> samples) : random_(seed), samples_(std::move(samples)) {
        for (const char* name : {"x", "y"}) {
            integers_.push_back(values_.add_input({.name = name, .format = integer}));
        }
        for (const std::int32_t number : {0, 1, -1, 3, 8, 24, 31, 255, INT32_MAX, INT32_MIN}) {
            integers_.push_back(values_.make_integer(number));
        }
        booleans_.push_back(values_.make_boolean(true));
        for (sample& one : samples_) {
            one.numbers.resize(values_.size());
            one.numbers[integers_[0]] = one.inputs[0];
            one.numbers[integers_[1]] = one.inputs[1];
            for (std::size_t place = 2; place < integers_.size(); ++place) {
                one.numbers[integers_[place]] = values_.known_integer(integers_[place]);
            }
            one.numbers[booleans_[0]] = 1;
        }
    }

    void add_one() {
        static constexpr std::array kinds = {
            operation::add,        operation::subtract,   operation::multiply,   operation::divide,
            operation::remainder,  operation::negate,     operation::bit_and,    operation::bit_or,
            operation::bit_xor,    operation::bit_not,    operation::shift_left, operation::shift_right,
            operation::select,     operation::select,     operation::select,     operation::shift_right_unsigned,
            operation::less,       operation::less_equal, operation::equal,      operation::less,
            operation::less_equal, operation::equal,      operation::bit_and,    operation::convert};
        const operation op = any_of(kinds);
        const bool is_logic = op == operation::bit_and && random_() % 2 == 0;
        const bool is_boolean = is_comparison(op) || is_logic;
        const number_format from = is_logic || op == operation::convert ? boolean : integer;
        std::vector<value_id> operands;
        if (op == operation::select) {
            operands = {any_of(booleans_), any_of(integers_), any_of(integers_)};
        } else {
            const bool has_one = op == operation::negate || op == operation::bit_not || op == operation::convert;
            for (int place = 0; place < (has_one ? 1 : 2); ++place) {
                operands.push_back(any_of(from == boolean ? booleans_ : integers_));
            }
        }
        const value_id made = make_folded(values_, op, is_boolean ? boolean : integer, operands);
        for (sample& one : samples_) {
            while (one.numbers.size() < values_.size()) {
                const auto id = static_cast<value_id>(one.numbers.size());
                const value& next = values_[id];
                const bool is_known = next.op == operation::constant;
                const number_format of =
                    is_known ? next.format : values_[next.operands[next.op == operation::select ? 1 : 0]].format;
                one.numbers.push_back(!is_known ? number_of(next, of, one)
                                      : next.format == integer
                                          ? values_.known_integer(id)
                                          : std::optional<std::int32_t>(*values_.known_boolean(id)));
            }
        }
        (is_boolean ? booleans_ : integers_).push_back(made);
    }

    /// Whether all numbers are in their ranges; counts the ranges that say something.
    void check(int& narrow_count) {
        integer_ranges ranges(values_);
        for (const value_id id : integers_) {
            const integer_range range = ranges.of(id);
            narrow_count += range.low > all_integers.low || range.high < all_integers.high ? 1 : 0;
            for (const sample& one : samples_) {
                if (one.numbers[id]) {
                    ASSERT_TRUE(range.contains(*one.numbers[id]))
                        << row_of(values_[id].op).name << ' ' << *one.numbers[id] << " not in " << range.low << ".."
                        << range.high;
                }
            }
        }
    }

private:
    std::mt19937 random_;
    graph values_;
    std::vector<sample> samples_;
    std::vector<value_id> integers_;
    std::vector<value_id> booleans_;
};

TEST(flow_integer_ranges, contain_every_number) {
    std::vector<sample> samples;
    for (const std::int32_t x : {0, 1, -1, 2, 3, 7, 8, 9, 100, -100, INT32_MAX, INT32_MIN, INT32_MIN + 7}) {
        for (const std::int32_t y : {0, 1, -1, 4, 8, 31, -8, 1000, INT32_MAX, INT32_MIN}) {
            samples.push_back({.inputs = {x, y}, .numbers = {}});
        }
    }
    int narrow_count = 0;
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        random_integers one(seed, samples);
        for (int count = 0; count < 60; ++count) {
            one.add_one();
        }
        one.check(narrow_count);
        ASSERT_FALSE(HasFatalFailure()) << "seed " << seed;
    }
    EXPECT_GT(narrow_count, 1000);
}

class of_inputs : public ::testing::Test {
protected:
    value_id make(operation op, number_format format, std::initializer_list<value_id> operands) {
        return make_folded(values, op, format, {operands.begin(), operands.size()});
    }
    value_id constant(std::int32_t number) { return values.make_integer(number); }
    void expect(value_id id, std::int64_t low, std::int64_t high) {
        const integer_range range = ranges.of(id);
        EXPECT_EQ(range.low, low);
        EXPECT_EQ(range.high, high);
    }

    graph values;
    integer_ranges ranges{values};
    value_id n = values.add_input({.name = "n", .format = integer});
};

using flow_integer_range = of_inputs;

TEST_F(flow_integer_range, of_a_limited_number) {
    const value_id large = make(operation::less, boolean, {constant(8), n});
    const value_id limited = make(operation::select, integer, {large, constant(8), n});
    expect(limited, all_integers.low, 8);
    const value_id negative = make(operation::less, boolean, {limited, constant(0)});
    expect(make(operation::select, integer, {negative, constant(0), limited}), 0, 8);
}

TEST_F(flow_integer_range, of_a_limited_unsigned_number) {
    const value_id turned = make(operation::bit_xor, integer, {n, constant(INT32_MIN)});
    const value_id large = make(operation::less_equal, boolean, {constant(INT32_MIN + 8), turned});
    expect(make(operation::select, integer, {large, constant(8), n}), 0, 8);
}

TEST_F(flow_integer_range, of_a_choice_in_a_choice) {
    const value_id negative = make(operation::less, boolean, {n, constant(0)});
    const value_id large = make(operation::less, boolean, {constant(8), n});
    const value_id inner = make(operation::select, integer, {large, constant(8), n});
    expect(make(operation::select, integer, {negative, constant(0), inner}), 0, 8);
}

TEST_F(flow_integer_range, of_a_shift_by_a_few_bits) {
    const value_id distance = make(operation::bit_and, integer, {n, constant(7)});
    expect(make(operation::shift_left, integer, {constant(1), distance}), 1, 128);
    expect(make(operation::shift_right, integer, {constant(-256), distance}), -256, -2);
    expect(make(operation::shift_right_unsigned, integer, {constant(-1), distance}), all_integers.low,
           all_integers.high);
}

TEST_F(flow_integer_range, is_narrower_where_more_is_known) {
    const value_id sum = make(operation::add, integer, {n, constant(1)});
    expect(sum, all_integers.low, all_integers.high);
    ranges.learn(sum, {0, 6});
    expect(sum, 0, 6);
    const integer_range none = {1, 0};
    EXPECT_TRUE(ranges.computed(sum, [&](value_id) { return none; }).is_empty());
    EXPECT_EQ(ranges.computed(sum, [](value_id) { return integer_range{1, 2}; }).high, 4);
}

TEST_F(flow_integer_range, of_a_count) {
    value_id count = constant(0);
    const value_id x = values.add_input({.name = "x", .format = integer});
    for (int round = 0; round < 20; ++round) {
        const value_id more = make(operation::less, boolean, {constant(round), x});
        const value_id next = make(operation::add, integer, {count, constant(1)});
        count = make(operation::select, integer, {more, next, count});
    }
    expect(count, 0, 20);
}

TEST(flow_integer_range_pairs, are_decided_where_all_numbers_agree) {
    EXPECT_EQ(decided(operation::less, {0, 3}, {4, 5}), true);
    EXPECT_EQ(decided(operation::less, {0, 4}, {4, 5}), std::nullopt);
    EXPECT_EQ(decided(operation::less, {5, 6}, {4, 5}), false);
    EXPECT_EQ(decided(operation::less_equal, {0, 4}, {4, 5}), true);
    EXPECT_EQ(decided(operation::less_equal, {5, 6}, {4, 5}), std::nullopt);
    EXPECT_EQ(decided(operation::less_equal, {6, 6}, {4, 5}), false);
    EXPECT_EQ(decided(operation::equal, {6, 6}, {4, 5}), false);
    EXPECT_EQ(decided(operation::equal, {4, 4}, {4, 4}), true);
    EXPECT_EQ(decided(operation::equal, {4, 5}, {4, 5}), std::nullopt);
}

}  // namespace

}  // namespace xfc::flow::test
