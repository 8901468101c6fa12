#include "flow/passes/coding.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace xfc::flow {

namespace {

using enum coding;

constexpr conversion_row conversions[] = {
    {single_ieee, x_adder, component_id::castftox, 0},
    {single_ieee, x_multiplier, component_id::castftox, 1},
    {single_ieee, x_divider, component_id::castftox, 2},
    {single_ieee, y_multiplier, component_id::castftoy, 0},
    {single_ieee, y_adder, component_id::castftoy, 1},
    {single_ieee, double_ieee, component_id::castftod, 0},
    {x_adder, single_ieee, component_id::castxtof, 0},
    {x_adder, x_multiplier, component_id::normfp1x, 0},
    {x_adder, x_divider, component_id::normfp1x, 1},
    {x_adder, x_adder, component_id::normfp1x, 2},
    {x_adder, y_multiplier, component_id::castxtoy, 0},
    {x_adder, y_adder, component_id::castxtoy, 1},
    {double_ieee, y_multiplier, component_id::castdtoy, 0},
    {double_ieee, y_adder, component_id::castdtoy, 1},
    {double_ieee, single_ieee, component_id::castdtof, 0},
    {y_adder, double_ieee, component_id::castytod, 0},
    {y_adder, single_ieee, component_id::castytof, 0},
    {y_adder, y_multiplier, component_id::normfp2x, 0},
    {y_adder, y_adder, component_id::normfp2x, 1},
    {integer, single_ieee, component_id::castltof, 0},
    {integer, double_ieee, component_id::castltod, 0},
    // For adders it would stay unnormalised, and what is added to it would lose its low bits.
    {integer, y_multiplier, component_id::castltoy, 0},
    {single_ieee, integer, component_id::castftol, 0},
    {double_ieee, integer, component_id::castdtol, 0},
};

/// XFloat for whom: adders are served with guard bits, and so is whoever normalises or converts.
coding xfloat_read_by(component_operation operation) {
    switch (operation) {
        case component_operation::multiply:
            return x_multiplier;
        case component_operation::divide:
            return x_divider;
        default:
            return x_adder;
    }
}

/// By component: whether the generic `target` chooses the form of its result.
constexpr auto has_target = [] {
    std::array<bool, all_components().size() + 1> table = {};
    for (const component_row& row : all_components()) {
        table.at(static_cast<std::size_t>(row.id)) =
            std::any_of(row.generics.begin(), row.generics.end(),
                        [](const generic_row& generic) { return generic.name == "target"; });
    }
    return table;
}();

/// XFloat as components with the generic `target` deliver it; normalizers count their targets otherwise.
coding xfloat_for_target(const component_row& row, std::int32_t target) {
    constexpr coding of_conversions[] = {x_adder, x_multiplier, x_divider};
    constexpr coding of_normalizers[] = {x_multiplier, x_divider, x_adder};
    if (!has_target[static_cast<std::size_t>(row.id)]) {
        return x_adder;
    }
    const auto at = static_cast<std::size_t>(target);
    return row.operation == component_operation::normalize ? of_normalizers[at] : of_conversions[at];
}

}  // namespace

coding operand_coding(component_id component, std::size_t place) {
    const component_row& row = row_of(component);
    const port_shape shape = place == 0 ? row.aa : row.bb;
    if (shape == port_shape::boolean) {
        return boolean;
    }
    switch (form_of(shape, {})) {
        case bus_form::single_float:
            return single_ieee;
        case bus_form::double_float:
            return double_ieee;
        case bus_form::xfloat:
            return xfloat_read_by(row.operation);
        case bus_form::ydouble:
            return y_adder;
        case bus_form::ydouble_multiplier:
            return y_multiplier;
        default:
            return integer;
    }
}

coding result_coding(component_id component, const component_generics& generics) {
    const component_row& row = row_of(component);
    if (row.cc == port_shape::boolean) {
        return boolean;
    }
    if (row.cc == port_shape::single_by_selector) {
        constexpr coding outputs[] = {single_ieee, x_adder, x_multiplier, x_divider};
        return outputs[static_cast<std::size_t>(generics.output_select)];
    }
    switch (form_of(row.cc, generics)) {
        case bus_form::single_float:
            return single_ieee;
        case bus_form::double_float:
            return double_ieee;
        case bus_form::xfloat:
            return xfloat_for_target(row, generics.output_select);
        case bus_form::ydouble:
            return y_adder;
        case bus_form::ydouble_multiplier:
            return y_multiplier;
        default:
            return integer;
    }
}

const conversion_row* conversion_for(coding from, coding to) {
    const auto* found = std::find_if(std::begin(conversions), std::end(conversions),
                                     [&](const conversion_row& row) { return row.from == from && row.to == to; });
    return found == std::end(conversions) ? nullptr : found;
}

}  // namespace xfc::flow
