#include "exact/dfg/node_class.h"

#include <algorithm>
#include <array>

namespace xfc {

namespace {

constexpr std::array<function_row, 9> functions{{
    {"sqrt", 1, component_id::fp_sqr, component_id::dp_sqr},
    {"invsqr", 1, component_id::fp_invsqr, component_id::dp_invsqr},
    {"inv", 1, component_id::fp_inv, component_id::dp_inv},
    {"exp", 1, component_id::fp_exp, component_id::dp_exp},
    {"log", 1, component_id::fp_log, component_id::dp_log},
    {"ldexp", 2, component_id::fp_ldexp, component_id::dp_ldexp, true},
    {"fabs", 1, component_id::fp_fabs, component_id::dp_fabs},
    {node_names::negation, 1, component_id::fp_neg, component_id::dp_neg},
    // Kept: single precision alone knows this second name of the reciprocal.
    {"1/", 0, component_id::fp_inv, component_id::wire},
}};

struct class_row {
    std::string_view name;
    node_class is;
};

constexpr std::array<class_row, 7> named_classes{{
    {node_names::add, node_class::add},
    {node_names::subtract, node_class::subtract},
    {node_names::multiply, node_class::multiply},
    {node_names::divide, node_class::divide},
    {node_names::conversion, node_class::conversion},
    {node_names::normalizer, node_class::normalizer},
    {node_names::delay, node_class::delay},
}};

}  // namespace

std::span<const function_row> function_table() { return functions; }

const function_row* find_function(std::string_view name) {
    const auto* row = std::find_if(functions.begin(), functions.end(),
                                   [name](const function_row& candidate) { return candidate.name == name; });
    return row != functions.end() ? row : nullptr;
}

node_class classify_name(std::string_view name) {
    for (const class_row& row : named_classes) {
        if (row.name == name) {
            return row.is;
        }
    }
    return find_function(name) != nullptr ? node_class::function : node_class::value;
}

}  // namespace xfc
