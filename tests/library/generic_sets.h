#pragma once

#include <string>
#include <vector>

#include "components/component_table.h"

// The sets of generics that a component is proved for.

namespace xfc::proof {

/// All combinations of the values that the row's generics take. A generic of more than 16 values is tried at a few.
[[nodiscard]] std::vector<component_generics> generic_sets(const component_row& row);

/// More sets than these are proved by a choice of them, and so are those that have more pipeline stages in all.
inline constexpr std::size_t most_sets = 24;
inline constexpr std::int32_t most_stages = 400;

/// Cycles of all these sets together.
[[nodiscard]] std::int32_t stages_of(const component_row& row, const std::vector<component_generics>& sets);

/// Of all combinations a few in which every two values of two generics come together and every latency occurs; all of
/// them where they are no more than `most_sets` with `most_stages`. The same choice every time.
[[nodiscard]] std::vector<component_generics> covering_sets(const component_row& row);

/// "mantissa=32 shiftspeed=1", in the order of the row.
[[nodiscard]] std::string text_of(const component_row& row, const component_generics& generics);

/// What an instance does with one port.
struct port_connection {
    std::string name;
    std::int32_t high = 0;  ///< bits of the bus that the port carries, counted from 0
    std::int32_t low = 0;
    bool single_bit = false;  ///< std_logic, not a vector
};

/// The ports that carry one bus: value field and flags, or sign, exponent and mantissa. `prefix` is aa, bb or cc.
[[nodiscard]] std::vector<port_connection> ports_of(port_shape shape, const component_generics& generics,
                                                    const std::string& prefix);
/// Bits of the whole bus, flags included; 0 for no bus.
[[nodiscard]] std::int32_t bus_width(port_shape shape, const component_generics& generics);

}  // namespace xfc::proof
