#include "flow/simulate/reference.h"

#include <mpfr.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "flow/graph/fold.h"

namespace xfc::flow {

namespace {

constexpr mpfr_prec_t precision = 300;
constexpr auto nearest = MPFR_RNDN;

using unary = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
using binary = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t);

struct exact_row {
    operation op;
    unary of_one = nullptr;
    binary of_two = nullptr;
};

int inverse_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t round) { return mpfr_ui_div(to, 1, from, round); }
/// As 1 / sqrt(x) has it, with the sign of a zero.
int inverse_root_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t round) {
    if (mpfr_zero_p(from) != 0) {
        mpfr_set_inf(to, mpfr_signbit(from) != 0 ? -1 : 1);
        return 0;
    }
    return mpfr_rec_sqrt(to, from, round);
}
int floor_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t) { return mpfr_floor(to, from); }
int ceiling_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t) { return mpfr_ceil(to, from); }
int whole_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t) { return mpfr_trunc(to, from); }
int rounded_of(mpfr_ptr to, mpfr_srcptr from, mpfr_rnd_t) { return mpfr_round(to, from); }

constexpr exact_row exact_rows[] = {
    {operation::add, nullptr, mpfr_add},
    {operation::subtract, nullptr, mpfr_sub},
    {operation::multiply, nullptr, mpfr_mul},
    {operation::divide, nullptr, mpfr_div},
    {operation::minimum, nullptr, mpfr_min},
    {operation::maximum, nullptr, mpfr_max},
    {operation::copy_sign, nullptr, mpfr_copysign},
    {operation::negate, mpfr_neg},
    {operation::absolute, mpfr_abs},
    {operation::square_root, mpfr_sqrt},
    {operation::inverse, inverse_of},
    {operation::inverse_square_root, inverse_root_of},
    {operation::exponential, mpfr_exp},
    {operation::logarithm, mpfr_log},
    {operation::exponential_2, mpfr_exp2},
    {operation::logarithm_2, mpfr_log2},
    {operation::logarithm_10, mpfr_log10},
    {operation::floor, floor_of},
    {operation::ceiling, ceiling_of},
    {operation::truncate, whole_of},
    {operation::round, rounded_of},
    {operation::convert, mpfr_set},
};

const exact_row* row_for(operation op) {
    const auto* found =
        std::find_if(std::begin(exact_rows), std::end(exact_rows), [&](const exact_row& row) { return row.op == op; });
    return found == std::end(exact_rows) ? nullptr : found;
}

void set_bits(mpfr_ptr to, number_format format, std::uint64_t bits) {
    switch (format) {
        case number_format::single_float:
            mpfr_set_flt(to, std::bit_cast<float>(static_cast<std::uint32_t>(bits)), nearest);
            break;
        case number_format::double_float:
            mpfr_set_d(to, std::bit_cast<double>(bits), nearest);
            break;
        case number_format::integer:
            mpfr_set_si(to, static_cast<std::int32_t>(bits), nearest);
            break;
        case number_format::boolean:
            mpfr_set_ui(to, bits == 0 ? 0 : 1, nearest);
            break;
    }
}

/// A floating number that compares and is cut off as the exact one: rounded to odd, so that nothing becomes whole or
/// equal by rounding.
double stand_in(mpfr_srcptr exact) {
    const double cut = mpfr_get_d(exact, MPFR_RNDZ);
    if (!std::isfinite(cut) || mpfr_cmp_d(exact, cut) == 0) {
        return cut;
    }
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(cut) | 1U;
    return std::bit_cast<double>(cut == 0 && mpfr_signbit(exact) != 0 ? bits | (std::uint64_t{1} << 63U) : bits);
}

/// What is finite stays finite: sizes beyond long doubles become the largest of them.
long double as_long_double(mpfr_srcptr exact) {
    const long double number = mpfr_get_ld(exact, nearest);
    const bool too_large = std::isinf(number) && mpfr_inf_p(exact) == 0;
    return too_large ? std::copysign(std::numeric_limits<long double>::max(), number) : number;
}

/// An IEEE format's fraction bits and least exponent of a normal number.
struct float_shape {
    int fraction_bits;
    int least_exponent;
    int greatest_exponent;
};

constexpr int single_fraction_bits = 23;

float_shape shape_of(number_format format) {
    return format == number_format::single_float ? float_shape{23, -126, 127} : float_shape{52, -1022, 1023};
}

}  // namespace

struct exact_reference::numbers {
    explicit numbers(const graph& source)
        : exact(source.size()), known(source.size()), bounded(source.size()), coarse(source.size(), false) {
        for (value_id id = 0; id < source.size(); ++id) {
            const value& one = source[id];
            const bool given = one.op == operation::input || one.op == operation::constant;
            coarse[id] = one.format == number_format::single_float && !given;
            for (const value_id operand : one.operand_span()) {
                coarse[id] = coarse[id] || (!given && is_floating(one.format) && coarse[operand]);
            }
        }
        for (auto& one : exact) {
            mpfr_init2(&one, precision);
        }
    }
    ~numbers() {
        for (auto& one : exact) {
            mpfr_clear(&one);
        }
    }
    numbers(const numbers&) = delete;
    numbers& operator=(const numbers&) = delete;

    /// Comparisons, choices' conditions and whole numbers, as C has them of the exact operands.
    void compute_known(const graph& source, value_id id) {
        const value& one = source[id];
        std::array<known_number, most_operands> operands;
        const auto ids = one.operand_span();
        for (std::size_t place = 0; place < ids.size(); ++place) {
            operands.at(place) = known[ids[place]];
            if (is_floating(operands.at(place).format)) {
                operands.at(place) = known_double(stand_in(at(ids[place])));
            }
        }
        known[id].bits = compute(one.op, one.format, {operands.data(), ids.size()});
        set_bits(at(id), one.format, known[id].bits);
    }

    void compute_comparison(const value& one, value_id id) {
        mpfr_srcptr a = at(one.operands[0]);
        mpfr_srcptr b = at(one.operands[1]);
        const bool truth = one.op == operation::less         ? mpfr_less_p(a, b) != 0
                           : one.op == operation::less_equal ? mpfr_lessequal_p(a, b) != 0
                                                             : mpfr_equal_p(a, b) != 0;
        known[id].bits = truth ? 1 : 0;
        set_bits(at(id), number_format::boolean, known[id].bits);
    }

    void compute_floating(const value& one, value_id id) {
        mpfr_ptr result = at(id);
        mpfr_srcptr a = at(one.operands[0]);
        if (one.op == operation::select) {
            mpfr_set(result, at(one.operands[known[one.operands[0]].bits != 0 ? 1 : 2]), nearest);
        } else if (one.op == operation::scale || one.op == operation::whole_power) {
            const auto whole = static_cast<std::int32_t>(known[one.operands[1]].bits);
            one.op == operation::scale ? mpfr_mul_2si(result, a, whole, nearest)
                                       : mpfr_pow_si(result, a, whole, nearest);
        } else {
            const exact_row& row = *row_for(one.op);
            row.of_one != nullptr ? row.of_one(result, a, nearest)
                                  : row.of_two(result, a, at(one.operands[1]), nearest);
        }
    }

    [[nodiscard]] mpfr_ptr at(value_id id) { return &exact[id]; }

    std::vector<std::remove_extent_t<mpfr_t>> exact;
    std::vector<known_number> known;  ///< bits of integers and booleans
    std::vector<bounded_number> bounded;
    std::vector<bool> coarse;  ///< has been a rounded single on the way
};

exact_reference::exact_reference(const graph& source, std::int32_t mantissa)
    : source_(source), numbers_(std::make_unique<numbers>(source)), mantissa_(mantissa) {}
exact_reference::~exact_reference() = default;

void exact_reference::run(std::span<const std::uint64_t> inputs) {
    numbers& all = *numbers_;
    for (value_id id = 0; id < source_.size(); ++id) {
        const value& one = source_[id];
        all.known[id].format = one.format;
        bounded_number& bounded = all.bounded[id];
        const bool given = one.op == operation::input || one.op == operation::constant;
        if (given) {
            all.known[id].bits = one.op == operation::input ? inputs[one.port()] : one.constant_bits();
            set_bits(all.at(id), one.format, all.known[id].bits);
        } else if (row_of(one.op).operands[0] == operand_rule::alike) {
            all.compute_comparison(one, id);
        } else if (!is_floating(one.format)) {
            all.compute_known(source_, id);
        } else {
            all.compute_floating(one, id);
        }
        bounded = {
            .number = as_long_double(all.at(id)), .exact_zero = mpfr_zero_p(all.at(id)) != 0, .format = one.format};
        if (given) {
            bounded.bound = bound_of_input(bounded);
            continue;
        }
        std::array<bounded_number, most_operands> operands;
        const auto ids = one.operand_span();
        for (std::size_t place = 0; place < ids.size(); ++place) {
            operands.at(place) = all.bounded[ids[place]];
        }
        bounded.bound = bound_of(one.op, bounded, {operands.data(), ids.size()}, mantissa_);
    }
}

deviation exact_reference::deviation_of(std::size_t output, std::uint64_t bits) const {
    const port& one = source_.outputs()[output];
    mpfr_srcptr exact = numbers_->at(one.value);
    const value_bound& bound = numbers_->bounded[one.value].bound;
    const bool anything = !(bound.radius < std::numeric_limits<long double>::infinity());
    deviation found{.apart = bound.range_before ? apart_reason::range
                             : bound.undecided  ? apart_reason::undecided
                             : anything         ? (bound.subnormal ? apart_reason::range : apart_reason::cancelled)
                                                : apart_reason::none};
    mpfr_t got;
    mpfr_init2(got, precision);
    set_bits(got, one.format, bits);
    long double distance = 0;
    if (mpfr_nan_p(exact) != 0 || mpfr_nan_p(got) != 0) {
        found.class_differs = (mpfr_nan_p(exact) != 0) != (mpfr_nan_p(got) != 0);
    } else if (!is_floating(one.format)) {
        mpfr_sub(got, got, exact, nearest);
        distance = std::fabs(mpfr_get_ld(got, nearest));
        found.ulp = static_cast<double>(distance);
    } else {
        float_shape shape = shape_of(one.format);
        shape.fraction_bits = numbers_->coarse[one.value] ? single_fraction_bits : shape.fraction_bits;
        // The exponent of the leading one; MPFR's numbers are from 1/2 to 1.
        const auto exponent = mpfr_regular_p(exact) != 0 ? static_cast<long>(mpfr_get_exp(exact)) - 1 : 0;
        const bool too_large =
            mpfr_inf_p(exact) != 0 || (mpfr_regular_p(exact) != 0 && exponent > shape.greatest_exponent);
        const bool too_small = mpfr_zero_p(exact) != 0 || exponent < shape.least_exponent;
        if (too_large || mpfr_inf_p(got) != 0) {
            // Around the limit rounding may decide for infinity or for the largest number; where the bound reaches
            // beyond the limit on the other side of zero, for that side's infinity.
            const bool same_sign = mpfr_signbit(got) == mpfr_signbit(exact);
            const long double towards_got = as_long_double(exact) * (mpfr_signbit(got) != 0 ? -1.0L : 1.0L);
            const bool reaches = mpfr_inf_p(exact) == 0 && towards_got + bound.radius > largest_finite(one.format);
            found.class_differs =
                mpfr_inf_p(got) == 0 || !(same_sign ? too_large || bound.out_of_range || reaches : reaches);
            if (too_large && mpfr_inf_p(got) == 0 && mpfr_inf_p(exact) == 0) {
                mpfr_sub(got, got, exact, nearest);
                found.class_differs = std::fabs(mpfr_get_ld(got, nearest)) > bound.radius;
            }
        } else if (!(too_small && mpfr_zero_p(got) != 0)) {
            mpfr_sub(got, got, exact, nearest);
            distance = std::fabs(mpfr_get_ld(got, nearest));
            const long unit =
                std::max<long>(mpfr_zero_p(exact) != 0 ? shape.least_exponent : exponent, shape.least_exponent) -
                shape.fraction_bits;
            mpfr_mul_2si(got, got, -unit, nearest);
            found.ulp = std::fabs(mpfr_get_d(got, nearest));
        }
    }
    mpfr_clear(got);
    if (found.apart == apart_reason::none && is_floating(one.format) && mpfr_number_p(exact) != 0) {
        // Half of the digits gone: units of what is left would tell about the cancellation, not about the arithmetic.
        const int digits = numbers_->coarse[one.value] ? single_fraction_bits : shape_of(one.format).fraction_bits;
        const long double size = std::max(std::fabs(as_long_double(exact)), smallest_normal(one.format));
        const long double flushed = bound.out_of_range ? smallest_normal(one.format) : 0.0L;
        const bool few_left = bound.radius - flushed > std::ldexp(size, -(digits / 2));
        // What a zero in the place of a subnormal input takes is none either.
        found.apart = !few_left ? found.apart : bound.subnormal ? apart_reason::range : apart_reason::cancelled;
    }
    // What left the range on the way may come out as C has it or as the exact result has it.
    const bool judged = !anything && !bound.range_before;
    found.outside = judged && ((found.class_differs && !bound.undecided) || distance > bound.radius);
    return found;
}

namespace {

double number_of(const known_number& floating) {
    return floating.format == number_format::single_float
               ? std::bit_cast<float>(static_cast<std::uint32_t>(floating.bits))
               : std::bit_cast<double>(floating.bits);
}

/// A number that C gives; the sign of a zero sum is left free, and so is what is computed from it.
struct c_number {
    known_number number = {};
    bool either_zero = false;
};

bool is_zero(const known_number& one) { return is_floating(one.format) && number_of(one) == 0; }

/// Whether the result may be a zero of either sign.
bool may_be_either_zero(const value& one, const known_number& result, std::span<const c_number> operands) {
    if (!is_zero(result)) {
        return false;
    }
    switch (one.op) {
        case operation::add:
        case operation::subtract:
            return true;
        case operation::absolute:
            return false;
        case operation::copy_sign:
            return operands[1].either_zero;
        case operation::select:
            return operands[operands[0].number.bits != 0 ? 1 : 2].either_zero;
        default:
            return std::any_of(operands.begin(), operands.end(), [](const c_number& from) { return from.either_zero; });
    }
}

/// Whether something else than a zero takes its sign from a zero of either sign.
bool has_free_sign(const value& one, std::span<const c_number> operands) {
    const bool takes = one.op == operation::copy_sign || one.op == operation::divide;
    return takes && operands[1].either_zero && !is_zero(operands[0].number);
}

/// Whether C says what this operation gives.
bool is_defined(const value& one, std::span<const known_number> operands) {
    const auto whole = [&](std::size_t place) { return static_cast<std::int32_t>(operands[place].bits); };
    switch (one.op) {
        case operation::convert:
            if (one.format == number_format::integer && is_floating(operands[0].format)) {
                const double from = number_of(operands[0]);
                return from > -0x1p31 - 1 && from < 0x1p31;
            }
            return true;
        case operation::copy_sign:  // the sign of what is no number
            return !std::isnan(number_of(operands[1]));
        case operation::minimum:  // of zeros of both signs, either
        case operation::maximum:
            return number_of(operands[0]) != 0 || number_of(operands[1]) != 0 || operands[0].bits == operands[1].bits;
        case operation::divide:
        case operation::remainder:
            return one.format != number_format::integer ||
                   (whole(1) != 0 && !(whole(1) == -1 && whole(0) == std::numeric_limits<std::int32_t>::min()));
        case operation::shift_left:
        case operation::shift_right:
        case operation::shift_right_unsigned:
            return whole(1) >= 0 && whole(1) < 32;
        default:
            return true;
    }
}

}  // namespace

bool is_exact_in_c(const graph& source) {
    return std::none_of(source.values().begin(), source.values().end(), [](const value& one) {
        switch (one.op) {
            case operation::inverse:
            case operation::inverse_square_root:
            case operation::exponential:
            case operation::logarithm:
            case operation::exponential_2:
            case operation::logarithm_2:
            case operation::logarithm_10:
            case operation::whole_power:
                return true;
            default:
                return false;
        }
    });
}

std::vector<std::uint64_t> c_outputs(const graph& source, std::span<const std::uint64_t> inputs, c_freedom* freedom) {
    std::vector<c_number> results(source.size());
    bool defined = true;
    for (value_id id = 0; id < source.size(); ++id) {
        const value& one = source[id];
        known_number& result = results[id].number;
        result.format = one.format;
        if (one.op == operation::input || one.op == operation::constant) {
            result.bits = one.op == operation::input ? inputs[one.port()] : one.constant_bits();
            continue;
        }
        std::array<c_number, most_operands> operands;
        std::array<known_number, most_operands> numbers;
        const auto ids = one.operand_span();
        for (std::size_t place = 0; place < ids.size(); ++place) {
            operands.at(place) = results[ids[place]];
            numbers.at(place) = operands.at(place).number;
        }
        const std::span<const c_number> from{operands.data(), ids.size()};
        defined = defined && is_defined(one, {numbers.data(), ids.size()}) && !has_free_sign(one, from);
        result.bits = compute(one.op, one.format, {numbers.data(), ids.size()});
        results[id].either_zero = may_be_either_zero(one, result, from);
    }
    std::vector<std::uint64_t> outputs;
    std::vector<bool> either_zero;
    for (const port& output : source.outputs()) {
        outputs.push_back(results[output.value].number.bits);
        either_zero.push_back(results[output.value].either_zero);
    }
    if (freedom != nullptr) {
        *freedom = {.defined = defined, .either_zero = std::move(either_zero)};
    }
    return outputs;
}

}  // namespace xfc::flow
