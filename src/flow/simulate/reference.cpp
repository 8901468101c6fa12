#include "flow/simulate/reference.h"

#include <mpfr.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <memory>

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

constexpr exact_row exact_rows[] = {
    {operation::add, nullptr, mpfr_add},
    {operation::subtract, nullptr, mpfr_sub},
    {operation::multiply, nullptr, mpfr_mul},
    {operation::divide, nullptr, mpfr_div},
    {operation::negate, mpfr_neg},
    {operation::absolute, mpfr_abs},
    {operation::square_root, mpfr_sqrt},
    {operation::inverse, inverse_of},
    {operation::inverse_square_root, mpfr_rec_sqrt},
    {operation::exponential, mpfr_exp},
    {operation::logarithm, mpfr_log},
    {operation::exponential_2, mpfr_exp2},
    {operation::logarithm_2, mpfr_log2},
    {operation::logarithm_10, mpfr_log10},
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
        default:
            mpfr_set_si(to, static_cast<std::int32_t>(bits), nearest);
            break;
    }
}

/// An IEEE format's fraction bits and least exponent of a normal number.
struct float_shape {
    int fraction_bits;
    int least_exponent;
    int greatest_exponent;
};

float_shape shape_of(number_format format) {
    return format == number_format::single_float ? float_shape{23, -126, 127} : float_shape{52, -1022, 1023};
}

}  // namespace

struct exact_reference::numbers {
    explicit numbers(std::size_t count) : size(count), all(new mpfr_t[count]) {
        for (std::size_t at = 0; at < size; ++at) {
            mpfr_init2(all[at], precision);
        }
    }
    ~numbers() {
        for (std::size_t at = 0; at < size; ++at) {
            mpfr_clear(all[at]);
        }
    }
    numbers(const numbers&) = delete;
    numbers& operator=(const numbers&) = delete;

    std::size_t size;
    std::unique_ptr<mpfr_t[]> all;
    std::vector<known_number> known;  ///< integers and booleans as C has them, by value
};

exact_reference::exact_reference(const graph& source) : source_(source), numbers_(new numbers(source.size())) {
    numbers_->known.resize(source.size());
}
exact_reference::~exact_reference() { delete numbers_; }

bool exact_reference::follows(const graph& source) {
    return std::all_of(source.values().begin(), source.values().end(), [](const value& one) {
        if (one.op == operation::input || one.op == operation::constant || one.op == operation::convert ||
            one.op == operation::scale || one.op == operation::whole_power) {
            return true;
        }
        return one.format == number_format::integer || row_for(one.op) != nullptr;
    });
}

void exact_reference::run(std::span<const std::uint64_t> inputs) {
    for (value_id id = 0; id < source_.size(); ++id) {
        const value& one = source_[id];
        mpfr_ptr result = numbers_->all[id];
        known_number& known = numbers_->known[id];
        known.format = one.format;
        if (one.op == operation::input || one.op == operation::constant) {
            known.bits = one.op == operation::input ? inputs[one.port()] : one.constant_bits();
            set_bits(result, one.format, known.bits);
            continue;
        }
        mpfr_srcptr a = numbers_->all[one.operands[0]];
        if (one.format == number_format::integer) {
            // Whole numbers wrap as C's do; what comes from a floating number is cut off where C cuts it.
            std::array<known_number, most_operands> operands;
            const auto ids = one.operand_span();
            for (std::size_t place = 0; place < ids.size(); ++place) {
                operands.at(place) = numbers_->known[ids[place]];
                if (is_floating(operands.at(place).format)) {
                    operands.at(place) = known_double(mpfr_get_d(numbers_->all[ids[place]], MPFR_RNDZ));
                }
            }
            known.bits = compute(one.op, one.format, {operands.data(), ids.size()});
            set_bits(result, one.format, known.bits);
        } else if (one.op == operation::convert) {
            mpfr_set(result, a, nearest);
        } else if (one.op == operation::scale || one.op == operation::whole_power) {
            const auto whole = static_cast<std::int32_t>(numbers_->known[one.operands[1]].bits);
            one.op == operation::scale ? mpfr_mul_2si(result, a, whole, nearest)
                                       : mpfr_pow_si(result, a, whole, nearest);
        } else {
            const exact_row& row = *row_for(one.op);
            row.of_one != nullptr ? row.of_one(result, a, nearest)
                                  : row.of_two(result, a, numbers_->all[one.operands[1]], nearest);
        }
    }
}

deviation exact_reference::deviation_of(std::size_t output, std::uint64_t bits) const {
    const port& one = source_.outputs()[output];
    mpfr_srcptr exact = numbers_->all[one.value];
    mpfr_t got;
    mpfr_init2(got, precision);
    set_bits(got, one.format, bits);
    deviation found;
    if (mpfr_nan_p(exact) != 0 || mpfr_nan_p(got) != 0) {
        found.class_differs = (mpfr_nan_p(exact) != 0) != (mpfr_nan_p(got) != 0);
    } else if (one.format == number_format::integer) {
        mpfr_sub(got, got, exact, nearest);
        found.ulp = std::fabs(mpfr_get_d(got, nearest));
    } else {
        const float_shape shape = shape_of(one.format);
        // The exponent of the leading one; MPFR's numbers are from 1/2 to 1.
        const auto exponent = mpfr_regular_p(exact) != 0 ? static_cast<long>(mpfr_get_exp(exact)) - 1 : 0;
        const bool too_large =
            mpfr_inf_p(exact) != 0 || (mpfr_regular_p(exact) != 0 && exponent > shape.greatest_exponent);
        const bool too_small = mpfr_zero_p(exact) != 0 || exponent < shape.least_exponent;
        if (too_large || mpfr_inf_p(got) != 0) {
            // Just below the limit rounding may decide for infinity.
            const bool at_limit = !too_large && exponent == shape.greatest_exponent;
            found.class_differs =
                !at_limit && (!too_large || mpfr_inf_p(got) == 0 || mpfr_signbit(got) != mpfr_signbit(exact));
        } else if (!(too_small && mpfr_zero_p(got) != 0)) {
            mpfr_sub(got, got, exact, nearest);
            const long unit =
                std::max<long>(mpfr_zero_p(exact) != 0 ? shape.least_exponent : exponent, shape.least_exponent) -
                shape.fraction_bits;
            mpfr_mul_2si(got, got, -unit, nearest);
            found.ulp = std::fabs(mpfr_get_d(got, nearest));
        }
    }
    mpfr_clear(got);
    return found;
}

std::vector<std::uint64_t> c_outputs(const graph& source, std::span<const std::uint64_t> inputs) {
    std::vector<known_number> results(source.size());
    for (value_id id = 0; id < source.size(); ++id) {
        const value& one = source[id];
        results[id].format = one.format;
        if (one.op == operation::input || one.op == operation::constant) {
            results[id].bits = one.op == operation::input ? inputs[one.port()] : one.constant_bits();
            continue;
        }
        std::array<known_number, most_operands> operands;
        const auto ids = one.operand_span();
        for (std::size_t place = 0; place < ids.size(); ++place) {
            operands.at(place) = results[ids[place]];
        }
        results[id].bits = compute(one.op, one.format, {operands.data(), ids.size()});
    }
    std::vector<std::uint64_t> outputs;
    for (const port& output : source.outputs()) {
        outputs.push_back(results[output.value].bits);
    }
    return outputs;
}

}  // namespace xfc::flow
