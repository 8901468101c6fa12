// Usage: prove_exhaustively NAME...
// Tries the model of single-precision functions on all 2 ** 32 operands and prints the largest error with its operand.
//
// Results are compared with the function in double precision. Its error is below one unit of a double (the root and the
// quotient are correctly rounded, the C library states 1 ulp for exp and log), 2 ** -29 of a single's: what is measured
// is right to 2 ** -28 ulp, and no promise is as near to a largest error. A result that is not the rounded double and
// not judged by that (zero, infinite, nan) is judged by the contract, and so is the operand with the largest error.

#include <bit>
#include <cmath>
#include <iomanip>
#include <iostream>

#include "contract.h"
#include "model/model_list.h"

namespace {

using namespace xfc;

struct reference {
    std::string_view name;
    double (*function)(double);
    bool correctly_rounded = false;  ///< promised; a root's or quotient's double is never halfway between singles
};
constexpr reference references[] = {
    {"fp_sqr", [](double x) { return std::sqrt(x); }, true},  {"fp_inv", [](double x) { return 1 / x; }, true},
    {"fp_invsqr", [](double x) { return 1 / std::sqrt(x); }}, {"fp_exp", [](double x) { return std::exp(x); }},
    {"fp_log", [](double x) { return std::log(x); }},
};

constexpr std::uint32_t infinity = 0x7F800000;
constexpr std::uint32_t quiet_nan = 0x7FC00000;

/// Subnormal numbers are zero.
std::uint32_t flushed(std::uint32_t bits) { return (bits & infinity) == 0 ? bits & 0x80000000U : bits; }

/// The double as a single: zero below the normal numbers after rounding, one nan.
std::uint32_t rounded(double value) {
    if (std::isnan(value)) {
        return quiet_nan;
    }
    // A subnormal single has fewer bits; what 24 bits would round up to the smallest normal number is left to the
    // contract, since it differs from the result.
    return flushed(std::bit_cast<std::uint32_t>(static_cast<float>(value)));
}

bool is_normal(std::uint32_t bits) { return (bits & infinity) != 0 && (bits & infinity) != infinity; }

/// Whether all operands keep the promise.
bool prove(const reference& expected, const proof::contract& promised, component_model model) {
    const component_generics generics;
    double worst = 0;
    std::uint32_t worst_operand = 0;
    std::uint64_t misrounded = 0;
    const auto judged = [&](std::uint32_t operand) {
        const component_operands operands{.aa = operand};
        return promised.check(generics, operands, model(generics, operands));
    };
    for (std::uint64_t i = 0; i < (std::uint64_t{1} << 32U); ++i) {
        const auto operand = static_cast<std::uint32_t>(i);
        const auto result = static_cast<std::uint32_t>(model(generics, {.aa = operand}));
        const double exact = expected.function(static_cast<double>(std::bit_cast<float>(flushed(operand))));
        const std::uint32_t nearest = rounded(exact);
        if (result == nearest) {
            continue;
        }
        if (!is_normal(result) || !is_normal(nearest)) {
            if (!judged(operand).met) {
                std::cout << expected.name << ": " << std::hex << operand << " gives " << result << '\n';
                return false;
            }
            continue;
        }
        ++misrounded;
        const double delivered = static_cast<double>(std::bit_cast<float>(result));
        const double error = std::fabs(std::ldexp(delivered - exact, 23 - std::ilogb(exact)));
        if (error > worst) {
            worst = error;
            worst_operand = operand;
        }
    }
    if (expected.correctly_rounded) {
        std::cout << expected.name << ": " << misrounded << " of 2 ** 32 not correctly rounded\n";
        return misrounded == 0;
    }
    const proof::verdict last = judged(worst_operand);
    std::cout << expected.name << ": largest error " << std::setprecision(6) << last.error << " ulp at aa=" << std::hex
              << worst_operand << std::dec << ", " << misrounded << " of 2 ** 32 not correctly rounded\n";
    return last.met && std::fabs(last.error - worst) < 1e-6;
}

}  // namespace

int main(int count, char** arguments) {
    bool proven = count > 1;
    for (int i = 1; i < count; ++i) {
        const reference* expected = nullptr;
        const proof::contract* promised = nullptr;
        for (const reference& each : references) {
            expected = each.name == arguments[i] ? &each : expected;
        }
        for (const proof::contract_row& each : proof::contracts()) {
            promised = each.name == arguments[i] ? each.promised : promised;
        }
        const component_model model = model_named(arguments[i]);
        if (expected == nullptr || promised == nullptr || model == nullptr) {
            std::cerr << "no such function: " << arguments[i] << '\n';
            return 2;
        }
        proven = prove(*expected, *promised, model) && proven;
    }
    std::cout << (proven ? "proven\n" : "NOT proven\n");
    return proven ? 0 : 1;
}
