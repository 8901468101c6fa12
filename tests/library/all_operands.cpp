// Usage: all_operands NAME
// Compares the model of a single-precision function with the host's own, for all operands. Minutes a function.

#include <bit>
#include <cmath>
#include <iostream>

#include "model/component_model.h"

namespace {

struct function_row {
    std::string_view name;  ///< of the component
    float (*host)(float);   ///< correctly rounded
};
constexpr function_row functions[] = {
    {"fp_sqr", [](float x) { return std::sqrt(x); }},
    {"fp_inv", [](float x) { return 1.0F / x; }},
};

constexpr std::uint64_t all_operands = std::uint64_t{1} << 32U;
constexpr std::uint32_t quiet_nan = 0x7FC00000;

float without_subnormals(float value) { return std::fpclassify(value) == FP_SUBNORMAL ? value * 0.0F : value; }

std::uint32_t expected(const function_row& function, std::uint32_t operand) {
    const float value = without_subnormals(function.host(without_subnormals(std::bit_cast<float>(operand))));
    return std::isnan(value) ? quiet_nan : std::bit_cast<std::uint32_t>(value);
}

/// Operands for which model and host differ; prints the first of them.
std::uint64_t count_differences(const function_row& function, xfc::component_model model) {
    std::uint64_t different = 0;
    const xfc::component_generics generics{};
    for (std::uint64_t next = 0; next < all_operands; ++next) {
        const auto operand = static_cast<std::uint32_t>(next);
        const auto found = static_cast<std::uint32_t>(model(generics, {.aa = operand}));
        if (found != expected(function, operand) && different++ == 0) {
            std::cout << std::hex << "the model of " << operand << " gives " << found << ", the host "
                      << expected(function, operand) << std::dec << '\n';
        }
    }
    return different;
}

}  // namespace

int main(int argc, char** argv) {
    for (const function_row& function : functions) {
        const xfc::component_model model = xfc::model_named(function.name);
        if (argc == 2 && function.name == argv[1] && model != nullptr) {
            const std::uint64_t different = count_differences(function, model);
            std::cout << function.name << ": " << different << " of " << all_operands << " operands differ\n";
            return different == 0 ? 0 : 1;
        }
    }
    std::cerr << "usage: all_operands fp_sqr|fp_inv\n";
    return 2;
}
