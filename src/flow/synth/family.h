#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace xfc::flow {

/// What a cell of a netlist costs.
enum class resource : std::uint8_t { look_up_table, flip_flop, multiplier };

/// Cells whose type begins so; the first row that fits counts.
struct cell_row {
    std::string_view prefix;
    resource kind;
    int each = 1;  ///< how many one cell takes
};

/// A family of devices that Yosys synthesises for.
struct family_row {
    std::string_view name;       ///< as the command line says it
    std::string_view text;       ///< as people know it
    std::string_view synthesis;  ///< Yosys' command but for the top
    std::span<const cell_row> cells;
    bool shift_registers;   ///< chains of registers become look-up tables
    bool resets_to_choose;  ///< a register that is a bit or a constant is reset for that: a look-up table a condition
    bool places;            ///< nextpnr-ice40 places it, on an HX8K in the package ct256
};

[[nodiscard]] std::span<const family_row> family_rows();

/// The family of this name; null when there is none.
[[nodiscard]] const family_row* family_named(std::string_view name);

}  // namespace xfc::flow
