#include <algorithm>

#include "model/ieee_pack.h"

namespace xfc::model {

bus_bits dp_ldexp(const component_generics&, const component_operands& operands) {
    constexpr bus_form form = bus_form::double_float;
    constexpr bus_layout layout = layout_of(form, 0);
    constexpr std::int32_t limit = 1 << (layout.exponent.width() + 1);

    // clamp
    const auto scale = static_cast<std::int32_t>(sign_extended(operands.bb, 32));
    const std::int32_t clamped = std::clamp(scale, -limit, limit - 1);
    const bus_bits exponent = field(operands.aa, layout.exponent);
    const bus_bits fraction = field(operands.aa, layout.mantissa);
    const bool ones = exponent == low_ones(layout.exponent.width());
    const bus_flags flags{.sat = ones && fraction == 0, .zip = exponent == 0, .nan = ones && fraction != 0};

    // scale
    return pack_ieee(form, bit(operands.aa, layout.sign - 1), flags, static_cast<std::int32_t>(exponent) + clamped,
                     fraction);
}

}  // namespace xfc::model
