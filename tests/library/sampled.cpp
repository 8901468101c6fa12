// Usage: prove_sampled NAME [COUNT [SEED]]
// Tries the model of a double-precision function on COUNT operands (10 ** 8 when it is left out) and prints the largest
// error with its operand. Half of the operands have significands with long runs of equal bits, which stand at the ends
// of the tables' segments and of carries.
//
// Results are compared with the C library's function for 80-bit numbers. Its error is below 1 unit there, 2 ** -11 of a
// double's. What does not compare as a number (zero, infinite, nan) is judged by the contract, and so is the operand
// with the largest error.

#include <bit>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <string>

#include "contract.h"
#include "model/model_list.h"
#include "vectors.h"

namespace {

using namespace xfc;

struct reference {
    std::string_view name;
    long double (*function)(long double);
    std::uint64_t lowest_exponent;  ///< field of the operands, for three quarters of them
    std::uint64_t highest_exponent;
    bool positive;  ///< most operands
};
constexpr reference references[] = {
    {"dp_inv", [](long double x) { return 1 / x; }, 1, 2045, false},
    {"dp_invsqr", [](long double x) { return 1 / std::sqrt(x); }, 1, 2046, true},
    {"dp_exp", [](long double x) { return std::exp(x); }, 1023 - 30, 1023 + 9, false},
    {"dp_log", [](long double x) { return std::log(x); }, 1022, 1023, true},
};

constexpr std::int32_t fraction_bits = 52;
constexpr std::uint64_t fraction_ones = (std::uint64_t{1} << fraction_bits) - 1;
constexpr std::uint64_t exponent_ones = 2047;

/// A fraction that is random, or random in front only and has a run behind, or a run, or lonely bits.
std::uint64_t fraction_of(std::uint64_t random, std::uint64_t choice) {
    const std::uint64_t place = choice >> 8U;
    const std::uint64_t run = (std::uint64_t{1} << place % fraction_bits) - 1;
    const std::uint64_t few = (choice >> 16U) % 9 - 4;
    switch (choice % 8) {
        case 0:
            return ((random | run) + few) & fraction_ones;
        case 1:
            return ((random & ~run) + few) & fraction_ones;
        case 2:
            return (run + few) & fraction_ones;
        case 3:
            return (run ^ (random >> (choice >> 20U) % 64)) & fraction_ones;
        default:
            return random & fraction_ones;
    }
}

std::uint64_t operand_of(const reference& expected, proof::random_source& random) {
    const std::uint64_t choice = random();
    const std::uint64_t fraction = fraction_of(random(), choice >> 32U);
    const std::uint64_t exponents = expected.highest_exponent - expected.lowest_exponent + 1;
    const std::uint64_t exponent =
        choice % 4 == 0 ? (choice >> 2U) & exponent_ones : expected.lowest_exponent + (choice >> 2U) % exponents;
    const bool sign = expected.positive ? (choice >> 14U & 63U) == 0 : (choice >> 14U & 1U) != 0;
    return (std::uint64_t{sign} << 63U) | (exponent << fraction_bits) | fraction;
}

bool is_normal(std::uint64_t bits) {
    const std::uint64_t exponent = (bits >> fraction_bits) & exponent_ones;
    return exponent != 0 && exponent != exponent_ones;
}

/// |found - exact| in ulp of the exact value.
double ulps(std::uint64_t found, long double exact) {
    const long double difference = static_cast<long double>(std::bit_cast<double>(found)) - exact;
    return static_cast<double>(std::fabs(std::ldexp(difference, fraction_bits - std::ilogb(exact))));
}

/// Whether all operands keep the promise.
bool prove(const reference& expected, const proof::contract& promised, component_model model, std::uint64_t count,
           std::uint64_t seed) {
    const component_generics generics;
    double worst = 0;
    std::uint64_t worst_operand = 0;
    std::uint64_t misrounded = 0;
    proof::random_source random(seed);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t operand = operand_of(expected, random);
        const auto result = static_cast<std::uint64_t>(model(generics, {.aa = operand}));
        const long double exact =
            is_normal(operand) ? expected.function(static_cast<long double>(std::bit_cast<double>(operand))) : 0;
        if (is_normal(result) && std::isnormal(static_cast<double>(exact))) {
            const double error = ulps(result, exact);
            misrounded += error > 0.5 ? 1 : 0;
            if (error > worst) {
                worst = error;
                worst_operand = operand;
            }
        } else if (!promised.check(generics, {.aa = operand}, result).met) {
            std::cout << expected.name << ": " << std::hex << operand << " gives " << result << '\n';
            return false;
        }
    }
    const proof::verdict last = promised.check(generics, {.aa = worst_operand}, model(generics, {.aa = worst_operand}));
    std::cout << expected.name << ": largest error " << std::setprecision(4) << last.error << " ulp at aa=" << std::hex
              << worst_operand << std::dec << ", " << misrounded << " of " << count << " not correctly rounded\n";
    return last.met && std::fabs(last.error - worst) < 1e-3;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string name = count > 1 ? arguments[1] : "";
    const std::uint64_t operands = count > 2 ? std::stoull(arguments[2]) : 100'000'000;
    const std::uint64_t seed = count > 3 ? std::stoull(arguments[3]) : 1;
    for (const reference& expected : references) {
        for (const proof::contract_row& each : proof::contracts()) {
            if (expected.name == name && each.name == name) {
                const bool proven = prove(expected, *each.promised, model_named(name), operands, seed);
                std::cout << (proven ? "proven\n" : "NOT proven\n");
                return proven ? 0 : 1;
            }
        }
    }
    std::cerr << "no such function: " << name << '\n';
    return 2;
}
