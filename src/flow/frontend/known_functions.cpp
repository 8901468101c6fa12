#include "flow/frontend/known_functions.h"

#include <string>

namespace xfc::flow {

namespace {

constexpr auto component = known_way::component;
constexpr auto missing = known_way::missing;
constexpr auto none = operation::constant;

constexpr known_function rows[] = {
    {"sqrt", component, operation::square_root, 1, false},
    {"exp", component, operation::exponential, 1, false},
    {"log", component, operation::logarithm, 1, false},
    {"exp2", component, operation::exponential_2, 1, false},
    {"log2", component, operation::logarithm_2, 1, false},
    {"log10", component, operation::logarithm_10, 1, false},
    {"fabs", component, operation::absolute, 1, false},
    {"fmin", component, operation::minimum, 2, false},
    {"fmax", component, operation::maximum, 2, false},
    {"copysign", component, operation::copy_sign, 2, false},
    {"ldexp", component, operation::scale, 2, true},
    {"scalbn", component, operation::scale, 2, true},
    {"floor", component, operation::floor, 1, false},
    {"ceil", component, operation::ceiling, 1, false},
    {"trunc", component, operation::truncate, 1, false},
    {"round", component, operation::round, 1, false},
    {"inv", component, operation::inverse, 1, false},
    {"invsqr", component, operation::inverse_square_root, 1, false},
    {"negate", component, operation::negate, 1, false},
    {"pow", known_way::power, none, 2, false},
    {"sin", missing, none, 1, false},
    {"cos", missing, none, 1, false},
    {"tan", missing, none, 1, false},
    {"asin", missing, none, 1, false},
    {"acos", missing, none, 1, false},
    {"atan", missing, none, 1, false},
    {"atan2", missing, none, 2, false},
    {"sinh", missing, none, 1, false},
    {"cosh", missing, none, 1, false},
    {"tanh", missing, none, 1, false},
    {"asinh", missing, none, 1, false},
    {"acosh", missing, none, 1, false},
    {"atanh", missing, none, 1, false},
    {"cbrt", missing, none, 1, false},
    {"hypot", missing, none, 2, false},
    {"fmod", missing, none, 2, false},
    {"remainder", missing, none, 2, false},
    {"fma", missing, none, 3, false},
    {"erf", missing, none, 1, false},
    {"erfc", missing, none, 1, false},
    {"tgamma", missing, none, 1, false},
    {"lgamma", missing, none, 1, false},
    {"expm1", missing, none, 1, false},
    {"log1p", missing, none, 1, false},
    {"logb", missing, none, 1, false},
    {"rint", missing, none, 1, false},
    {"nearbyint", missing, none, 1, false},
    {"nextafter", missing, none, 2, false},
};

}  // namespace

std::span<const known_function> known_functions() { return rows; }

found_function find_known_function(std::string_view name) {
    for (const known_function& row : rows) {
        if (row.name == name) {
            return {&row, false};
        }
        if (name.size() == row.name.size() + 1 && name.back() == 'f' && name.starts_with(row.name)) {
            return {&row, true};
        }
    }
    return {};
}

}  // namespace xfc::flow
