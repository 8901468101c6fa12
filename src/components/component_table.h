#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "components/latency.h"
#include "components/library_options.h"
#include "components/number_format.h"

// The component library: one row a component with what both its users and its authors must agree on. An instance reads
// aa and bb and drives cc; buses of an internal form have their flags on ports of their own (aasat, aazip, aanan, ...).

namespace xfc {

/// Every component, in the order of the table. `wire` is no component: the value is passed on as it stands.
enum class component_id : std::uint8_t {
    wire,
    alulong,
    mullong,
    alufp1_dot,
    alufp1x,
    mulfp1_dot,
    mulfp1x,
    divfp1x,
    normfp1x,
    alufp2x,
    mulfp2x,
    divfp2x,
    normfp2x,
    delay,
    castftox,
    castxtof,
    castftoy,
    castdtoy,
    castdtox,
    castxtod,
    castxtoy,
    castytod,
    castytof,
    castytox,
    castdtof,
    castftod,
    castltof,
    castltod,
    castltox,
    castltoy,
    castftol,
    castdtol,
    castxtol,
    castytol,
    fp_sqr,
    fp_invsqr,
    fp_inv,
    fp_exp,
    fp_log,
    fp_ldexp,
    fp_fabs,
    fp_neg,
    dp_sqr,
    dp_invsqr,
    dp_inv,
    dp_exp,
    dp_log,
    dp_ldexp,
    dp_fabs,
    dp_neg,
    cmpf,
    cmpd,
    cmpl,
    logic,
    select,
    extremef,
    extremed,
    extremel,
    copysignf,
    copysignd,
    bitlong,
    shiftlong,
    divlong,
    roundf,
    roundd,
    count_of_components
};

enum class component_operation : std::uint8_t {
    pass_on,
    add_or_subtract,  ///< the port addsub is 0 to add, 1 to subtract bb from aa
    multiply,
    divide,
    normalize,
    delay,
    convert,
    square_root,
    inverse_square_root,
    reciprocal,
    exponential,
    logarithm,
    scale,  ///< aa times two to the power bb
    absolute_value,
    negate,
    compare,
    bitwise,
    select,  ///< aa where the port condition is 1, else bb
    extreme,
    copy_sign,
    shift,
    round_to_integer,
};

/// A bus of an instance.
enum class port_shape : std::uint8_t {
    none,
    long_integer,
    single_float,
    double_float,
    xfloat,
    ydouble,
    ydouble_multiplier,
    bits,                ///< as many as the generic `width` says
    boolean,             ///< one bit, 1 for true
    single_by_selector,  ///< selector 0: IEEE single, else XFloat
    double_by_selector,  ///< selector 0: IEEE double, 1: YDouble, 2: YDouble in multiplier form
    ydouble_by_target,   ///< target 0: YDouble in multiplier form, 1: YDouble
    unpacked_single,     ///< sign, exponent and mantissa on ports of their own
    unpacked_double,
};

/// The form of a bus for an instance's generics; `none` for a bus of plain bits and for a selector without an output.
constexpr bus_form form_of(port_shape shape, const component_generics& generics) {
    switch (shape) {
        case port_shape::long_integer:
            return bus_form::long_integer;
        case port_shape::single_float:
        case port_shape::unpacked_single:
            return bus_form::single_float;
        case port_shape::double_float:
        case port_shape::unpacked_double:
            return bus_form::double_float;
        case port_shape::xfloat:
            return bus_form::xfloat;
        case port_shape::ydouble:
            return bus_form::ydouble;
        case port_shape::ydouble_multiplier:
            return bus_form::ydouble_multiplier;
        case port_shape::single_by_selector:
            return generics.output_select == 0 ? bus_form::single_float : bus_form::xfloat;
        case port_shape::double_by_selector:
            switch (generics.output_select) {
                case 0:
                    return bus_form::double_float;
                case 1:
                    return bus_form::ydouble;
                case 2:
                    return bus_form::ydouble_multiplier;
                default:
                    return bus_form::none;
            }
        case port_shape::ydouble_by_target:
            return generics.output_select == 0 ? bus_form::ydouble_multiplier : bus_form::ydouble;
        default:
            return bus_form::none;
    }
}

/// The generics of one component, in the order in which they are written.
struct generic_list {
    static constexpr std::size_t most = 10;
    std::array<generic_row, most> rows{};
    std::size_t count = 0;

    constexpr generic_list() = default;
    constexpr generic_list(std::initializer_list<generic_row> list) {
        for (const generic_row& row : list) {
            rows[count++] = row;
        }
    }
    [[nodiscard]] constexpr const generic_row* begin() const { return rows.data(); }
    [[nodiscard]] constexpr const generic_row* end() const { return rows.data() + count; }
    [[nodiscard]] constexpr bool empty() const { return count == 0; }
};

struct component_row {
    component_id id = component_id::wire;
    std::string_view name{};  ///< of the entity and module
    component_operation operation = component_operation::pass_on;
    generic_list generics{};
    port_shape aa = port_shape::none;                                         ///< first operand
    port_shape bb = port_shape::none;                                         ///< second operand
    port_shape cc = port_shape::none;                                         ///< result
    std::int32_t (*latency)(const component_generics&) = latency::always<0>;  ///< cycles
    bool clocked = true;                                                      ///< has sysclk, reset and enable
};

namespace component_rows {

using g = component_generics;

constexpr generic_row with_default(generic_row row) {
    row.has_default = true;
    return row;
}
constexpr generic_row flag(std::string_view name, std::int32_t selector) {
    return {.name = name, .field = &g::output_select, .flag = selector};
}
constexpr generic_row target_up_to(std::int32_t highest) {
    return {.name = "target", .field = &g::output_select, .high = highest};
}

inline constexpr generic_row mantissa{.name = "mantissa", .field = &g::mantissa, .low = 32, .high = 36, .step = 4};
inline constexpr generic_row doublespeed{.name = "doublespeed", .field = &g::doublespeed};
inline constexpr generic_row inputnormalize{.name = "inputnormalize", .field = &g::inputnormalize};
inline constexpr generic_row outputscale{.name = "outputscale", .field = &g::outputscale};
inline constexpr generic_row roundconvert{.name = "roundconvert", .field = &g::roundconvert};
inline constexpr generic_row roundnormalize{.name = "roundnormalize", .field = &g::roundnormalize};
inline constexpr generic_row outputpipe{.name = "outputpipe", .field = &g::outputpipe};
inline constexpr generic_row shiftspeed{.name = "shiftspeed", .field = &g::shiftspeed};
inline constexpr generic_row doubleaccuracy{.name = "doubleaccuracy", .field = &g::doubleaccuracy};
inline constexpr generic_row device{.name = "device", .field = &g::device, .high = 2};
inline constexpr generic_row optimization{
    .name = "optimization", .field = &g::optimization, .high = 3, .takes_negative = true};
inline constexpr generic_row synthesize{.name = "synthesize", .field = &g::synthesize};
inline constexpr generic_row normspeed{.name = "normspeed", .field = &g::normspeed, .low = 1, .high = 3};
/// For components that offer only levels 1 and 2.
inline constexpr generic_row normspeed_up_to_2{
    .name = "normspeed", .field = &g::normspeed, .low = 1, .high = 2, .capped = true};
inline constexpr generic_row divider{.name = "divider", .field = &g::divider};
inline constexpr generic_row width{.name = "width", .field = &g::width, .low = 1, .high = 80};
inline constexpr generic_row delay_cycles{.name = "delay", .field = &g::delay, .low = 1, .high = 1 << 20};

inline constexpr generic_row relation{.name = "relation", .field = &g::relation, .high = 5};
inline constexpr generic_row bitoperation{.name = "bitoperation", .field = &g::bitoperation, .high = 2};
inline constexpr generic_row greatest{.name = "greatest", .field = &g::greatest};
inline constexpr generic_row direction{.name = "direction", .field = &g::direction, .high = 2};
inline constexpr generic_row remainder{.name = "remainder", .field = &g::remainder};
inline constexpr generic_row rounding{.name = "rounding", .field = &g::rounding, .high = 3};

inline constexpr generic_row ieeeoutput = flag("ieeeoutput", 0);
inline constexpr generic_row xoutput = flag("xoutput", 1);
inline constexpr generic_row multoutput = flag("multoutput", 2);
/// The single-precision operators have all four outputs, the double-precision divider has this one in multoutput's
/// place.
inline constexpr generic_row divoutput = flag("divoutput", 3);
inline constexpr generic_row divoutput_of_three = flag("divoutput", 2);

using enum component_operation;
using shape = port_shape;

// clang-format off
inline constexpr component_row table[] = {
    {.id = component_id::wire},

    // Integer arithmetic: 32 bits, wrapping.
    {component_id::alulong, "xfc_alulong", add_or_subtract, {},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<3>},
    {component_id::mullong, "xfc_mullong", multiply, {},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<3>},

    // Single-precision arithmetic.
    {component_id::alufp1_dot, "xfc_alufp1_dot", add_or_subtract, {mantissa, shiftspeed, outputpipe},
     shape::xfloat, shape::xfloat, shape::xfloat, latency::alufp1},
    {component_id::alufp1x, "xfc_alufp1x", add_or_subtract, {mantissa, shiftspeed, outputpipe},
     shape::xfloat, shape::xfloat, shape::xfloat, latency::alufp1},
    {component_id::mulfp1_dot, "xfc_mulfp1_dot", multiply, {mantissa, device, optimization, synthesize},
     shape::single_float, shape::single_float, shape::xfloat, latency::mulfp1_dot},
    {component_id::mulfp1x, "xfc_mulfp1x", multiply,
     {mantissa, ieeeoutput, xoutput, multoutput, divoutput, outputscale, synthesize},
     shape::xfloat, shape::xfloat, shape::single_by_selector, latency::mulfp1x},
    {component_id::divfp1x, "xfc_divfp1x", divide,
     {mantissa, ieeeoutput, xoutput, multoutput, divoutput, roundconvert, synthesize},
     shape::xfloat, shape::xfloat, shape::single_by_selector, latency::divfp1x},
    {component_id::normfp1x, "xfc_normfp1x", normalize,
     {mantissa, inputnormalize, roundnormalize, normspeed_up_to_2, target_up_to(2)},
     shape::xfloat, shape::none, shape::xfloat, latency::normfp1x},

    // Double-precision arithmetic.
    {component_id::alufp2x, "xfc_alufp2x", add_or_subtract, {shiftspeed, doublespeed, synthesize},
     shape::ydouble, shape::ydouble, shape::ydouble, latency::alufp2x},
    {component_id::mulfp2x, "xfc_mulfp2x", multiply,
     {ieeeoutput, xoutput, multoutput, roundconvert, roundnormalize, doublespeed, outputpipe, doubleaccuracy, device,
      synthesize},
     shape::ydouble_multiplier, shape::ydouble_multiplier, shape::double_by_selector, latency::mulfp2x},
    {component_id::divfp2x, "xfc_divfp2x", divide,
     {ieeeoutput, xoutput, divoutput_of_three, roundconvert, doublespeed, doubleaccuracy, device, synthesize},
     shape::ydouble_multiplier, shape::ydouble_multiplier, shape::double_by_selector, latency::divfp2x},
    {component_id::normfp2x, "xfc_normfp2x", normalize,
     {roundconvert, roundnormalize, normspeed, doublespeed, target_up_to(1), synthesize},
     shape::ydouble, shape::none, shape::ydouble_by_target, latency::normfp2x},

    {component_id::delay, "xfc_delay", component_operation::delay, {width, delay_cycles, synthesize},
     shape::bits, shape::none, shape::bits, latency::delay},

    // Conversions. castftoy, castdtox, castxtod and castxtoy go without the others' prefix.
    {component_id::castftox, "xfc_castftox", convert, {target_up_to(2), roundconvert, mantissa, outputpipe},
     shape::single_float, shape::none, shape::xfloat, latency::castftox},
    {component_id::castxtof, "xfc_castxtof", convert, {mantissa, normspeed_up_to_2},
     shape::xfloat, shape::none, shape::single_float, latency::castxtof},
    {component_id::castftoy, "castftoy", convert, {target_up_to(1), roundconvert, mantissa, with_default(divider)},
     shape::single_float, shape::none, shape::ydouble_by_target, latency::castftoy},
    {component_id::castdtoy, "xfc_castdtoy", convert,
     {target_up_to(1), roundconvert, outputpipe, doublespeed, synthesize},
     shape::double_float, shape::none, shape::ydouble_by_target, latency::castdtoy},
    {component_id::castdtox, "castdtox", convert, {target_up_to(2), roundconvert, doublespeed, with_default(mantissa)},
     shape::double_float, shape::none, shape::xfloat, latency::castdtox},
    {component_id::castxtod, "castxtod", convert, {mantissa, roundconvert, doublespeed},
     shape::xfloat, shape::none, shape::double_float, latency::castxtod},
    {component_id::castxtoy, "castxtoy", convert, {target_up_to(1), mantissa},
     shape::xfloat, shape::none, shape::ydouble_by_target, latency::always<0>, false},
    {component_id::castytod, "xfc_castytod", convert, {roundconvert, normspeed, doublespeed, synthesize},
     shape::ydouble, shape::none, shape::double_float, latency::castytod},
    {component_id::castytof, "xfc_castytof", convert, {roundconvert, with_default(normspeed_up_to_2)},
     shape::ydouble, shape::none, shape::single_float, latency::castytof},
    {component_id::castytox, "xfc_castytox", convert, {roundconvert, mantissa},
     shape::ydouble, shape::none, shape::xfloat, latency::always<2>},
    {component_id::castdtof, "xfc_castdtof", convert, {roundconvert, with_default(mantissa)},
     shape::double_float, shape::none, shape::single_float, latency::always<2>},
    {component_id::castftod, "xfc_castftod", convert, {},
     shape::single_float, shape::none, shape::double_float, latency::always<2>},

    // Conversions from and to integers.
    {component_id::castltof, "xfc_castltof", convert, {normspeed_up_to_2},
     shape::long_integer, shape::none, shape::single_float, latency::castltof},
    {component_id::castltod, "xfc_castltod", convert, {roundconvert, normspeed, doublespeed},
     shape::long_integer, shape::none, shape::double_float, latency::castltod},
    {component_id::castltox, "xfc_castltox", convert, {target_up_to(2), mantissa},
     shape::long_integer, shape::none, shape::xfloat, latency::always<1>},
    {component_id::castltoy, "xfc_castltoy", convert, {target_up_to(1)},
     shape::long_integer, shape::none, shape::ydouble_by_target, latency::always<1>},
    {component_id::castftol, "xfc_castftol", convert, {normspeed_up_to_2},
     shape::single_float, shape::none, shape::long_integer, latency::castftol},
    {component_id::castdtol, "xfc_castdtol", convert, {roundconvert, outputpipe, doublespeed, normspeed},
     shape::double_float, shape::none, shape::long_integer, latency::castdtol},
    {component_id::castxtol, "xfc_castxtol", convert, {mantissa, normspeed},
     shape::xfloat, shape::none, shape::long_integer, latency::castxtol},
    {component_id::castytol, "xfc_castytol", convert, {normspeed},
     shape::ydouble, shape::none, shape::long_integer, latency::castytol},

    // Single-precision functions.
    {component_id::fp_sqr, "fp_sqr", square_root, {},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<28>},
    {component_id::fp_invsqr, "fp_invsqr", inverse_square_root, {synthesize},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<19>},
    {component_id::fp_inv, "fp_inv", reciprocal, {synthesize},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<14>},
    {component_id::fp_exp, "fp_exp", exponential, {synthesize},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<16>},
    {component_id::fp_log, "fp_log", logarithm, {},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<21>},
    {component_id::fp_ldexp, "fp_ldexp", scale, {},
     shape::unpacked_single, shape::long_integer, shape::unpacked_single, latency::always<2>},
    {component_id::fp_fabs, "fp_fabs", absolute_value, {},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<1>},
    {component_id::fp_neg, "fp_neg", negate, {},
     shape::unpacked_single, shape::none, shape::unpacked_single, latency::always<1>},

    // Double-precision functions.
    {component_id::dp_sqr, "dp_sqr", square_root, {},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::always<57>},
    {component_id::dp_invsqr, "dp_invsqr", inverse_square_root, {doubleaccuracy, doublespeed, device, synthesize},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::dp_invsqr},
    {component_id::dp_inv, "dp_inv", reciprocal, {roundconvert, doubleaccuracy, doublespeed, device, synthesize},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::dp_inv},
    {component_id::dp_exp, "dp_exp", exponential, {roundconvert, doubleaccuracy, doublespeed, device, synthesize},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::dp_exp},
    {component_id::dp_log, "dp_log", logarithm, {device, doublespeed, synthesize, with_default(roundconvert)},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::dp_log},
    {component_id::dp_ldexp, "dp_ldexp", scale, {},
     shape::unpacked_double, shape::long_integer, shape::unpacked_double, latency::always<2>},
    {component_id::dp_fabs, "dp_fabs", absolute_value, {},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::always<1>},
    {component_id::dp_neg, "dp_neg", negate, {},
     shape::unpacked_double, shape::none, shape::unpacked_double, latency::always<1>},

    // From here on xfcflow's alone. Relations and what is made of them.
    {component_id::cmpf, "xfc_cmpf", compare, {relation},
     shape::single_float, shape::single_float, shape::boolean, latency::always<1>},
    {component_id::cmpd, "xfc_cmpd", compare, {relation},
     shape::double_float, shape::double_float, shape::boolean, latency::always<2>},
    {component_id::cmpl, "xfc_cmpl", compare, {relation},
     shape::long_integer, shape::long_integer, shape::boolean, latency::always<1>},
    {component_id::logic, "xfc_logic", bitwise, {bitoperation},
     shape::boolean, shape::boolean, shape::boolean, latency::always<1>},
    {component_id::select, "xfc_select", component_operation::select, {width},
     shape::bits, shape::bits, shape::bits, latency::always<1>},
    {component_id::extremef, "xfc_extremef", extreme, {greatest},
     shape::single_float, shape::single_float, shape::single_float, latency::always<2>},
    {component_id::extremed, "xfc_extremed", extreme, {greatest},
     shape::double_float, shape::double_float, shape::double_float, latency::always<2>},
    {component_id::extremel, "xfc_extremel", extreme, {greatest},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<2>},

    // Signs, bits, integer division, roundings to integers.
    {component_id::copysignf, "xfc_copysignf", copy_sign, {},
     shape::single_float, shape::single_float, shape::single_float, latency::always<1>},
    {component_id::copysignd, "xfc_copysignd", copy_sign, {},
     shape::double_float, shape::double_float, shape::double_float, latency::always<1>},
    {component_id::bitlong, "xfc_bitlong", bitwise, {bitoperation},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<1>},
    {component_id::shiftlong, "xfc_shiftlong", shift, {direction},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<2>},
    {component_id::divlong, "xfc_divlong", divide, {remainder},
     shape::long_integer, shape::long_integer, shape::long_integer, latency::always<35>},
    {component_id::roundf, "xfc_roundf", round_to_integer, {rounding},
     shape::single_float, shape::none, shape::single_float, latency::always<3>},
    {component_id::roundd, "xfc_roundd", round_to_integer, {rounding},
     shape::double_float, shape::none, shape::double_float, latency::always<4>},
};
// clang-format on

constexpr bool rows_stand_at_their_id() {
    std::size_t index = 0;
    for (const component_row& row : table) {
        if (static_cast<std::size_t>(row.id) != index++) {
            return false;
        }
    }
    return index == static_cast<std::size_t>(component_id::count_of_components);
}
static_assert(rows_stand_at_their_id());

/// Whether generics with a default stand behind the others, and output selectors in front of another one.
constexpr bool generics_stand_in_order() {
    for (const component_row& row : table) {
        bool required_seen = false;
        bool flag_is_last = false;
        bool default_seen = false;
        for (const generic_row& generic : row.generics) {
            if (default_seen && !generic.has_default) {
                return false;
            }
            default_seen = generic.has_default;
            if (!generic.has_default) {
                required_seen = true;
                flag_is_last = generic.flag != generic_row::no_flag;
            }
        }
        if (!row.generics.empty() && (!required_seen || flag_is_last)) {
            return false;
        }
    }
    return true;
}
static_assert(generics_stand_in_order());

}  // namespace component_rows

constexpr const component_row& row_of(component_id id) { return component_rows::table[static_cast<std::size_t>(id)]; }

/// All components; the wire is none.
constexpr std::span<const component_row> all_components() { return std::span(component_rows::table).subspan(1); }

/// Those that xfc instantiates, the first rows of the table; xfcflow instantiates all.
constexpr std::span<const component_row> components_of_xfc() {
    return all_components().first(static_cast<std::size_t>(component_id::cmpf) - 1);
}

/// The port of one bit beside a component's buses, in front of them; empty for components without one.
constexpr std::string_view control_port_of(const component_row& row) {
    switch (row.operation) {
        case component_operation::add_or_subtract:
            return "addsub";
        case component_operation::select:
            return "condition";
        default:
            return {};
    }
}

/// The format that a port carries, whatever the form; `none` for plain bits and ports that generics choose.
constexpr number_format format_of(port_shape shape) {
    switch (shape) {
        case port_shape::long_integer:
            return number_format::long_integer;
        case port_shape::single_float:
        case port_shape::unpacked_single:
            return number_format::single_float;
        case port_shape::double_float:
        case port_shape::unpacked_double:
            return number_format::double_float;
        case port_shape::xfloat:
            return number_format::xfloat;
        case port_shape::ydouble:
        case port_shape::ydouble_multiplier:
        case port_shape::ydouble_by_target:
            return number_format::ydouble;
        default:
            return number_format::none;
    }
}

/// xfc's conversion from one format to another one; `wire` for a pair without one.
constexpr component_id conversion_between(number_format from, number_format to) {
    for (const component_row& row : components_of_xfc()) {
        if (row.operation == component_operation::convert && format_of(row.aa) == from && format_of(row.cc) == to) {
            return row.id;
        }
    }
    return component_id::wire;
}

/// Cycles from the operands to the result.
constexpr std::int32_t latency_of(component_id id, const component_generics& generics) {
    return row_of(id).latency(generics);
}

}  // namespace xfc
