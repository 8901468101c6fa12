#pragma once

#include <cstdint>

#include "exact/dfg/dfg.h"
#include "exact/run/compilation.h"

namespace xfc {

/// The generics that an instance gets from the options, with a selector of its own.
[[nodiscard]] inline component_generics generics_of_options(std::int32_t output_select = 0) {
    component_generics generics{current.options};
    generics.output_select = output_select;
    return generics;
}

/// Bits of a port for an instance's generics; 0 when the component has no such port.
[[nodiscard]] inline std::int32_t port_width(port_shape shape, const component_generics& generics) {
    return layout_of(form_of(shape, generics), generics.mantissa).width;
}

/// Sets a component's latency, with which the node's ready time starts.
inline void set_latency(node_attributes& attributes, std::int32_t cycles) {
    attributes.latency = cycles;
    attributes.ready_time = cycles;
}

}  // namespace xfc
