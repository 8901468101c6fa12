#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

/// Which values a switch accepts, and what is said to the others.
struct value_range {
    bool (*accepts)(std::int32_t value);
    fitting_message<> out_of_range;
};

/// One switch of the command line.
struct switch_row {
    std::string_view name;
    std::int32_t compile_option_record::*field;
    bool takes_value = false;
    std::int32_t value = 1;              ///< stored when the switch takes no value
    const value_range* range = nullptr;  ///< of the values it takes; null: every value
    void (*after)() = nullptr;           ///< settles what the switch means for other fields
};

/// All switches in the order in which an argument is compared with them.
[[nodiscard]] std::span<const switch_row> switch_table();

/// What the argument loop came to.
enum class argument_result : std::uint8_t { accepted, value_missing };

/// Puts every option at its default and then reads the arguments in order. Arguments that are no
/// switch are ignored. A value out of range ends the run.
[[nodiscard]] argument_result read_switches(std::span<const char* const> arguments);

}  // namespace xfc
