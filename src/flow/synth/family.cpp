#include "flow/synth/family.h"

#include <algorithm>

namespace xfc::flow {

namespace {

using enum resource;

constexpr cell_row ice40_cells[] = {{"SB_LUT4", look_up_table}, {"SB_DFF", flip_flop}, {"SB_MAC16", multiplier}};
// A carry cell takes the place of two look-up tables.
constexpr cell_row ecp5_cells[] = {
    {"LUT4", look_up_table}, {"CCU2C", look_up_table, 2}, {"TRELLIS_FF", flip_flop}, {"MULT", multiplier}};
// Shift registers and small memories stand in look-up tables.
constexpr cell_row xilinx_cells[] = {{"LUT", look_up_table},   {"SRL", look_up_table},    {"RAM32", look_up_table},
                                     {"RAM64", look_up_table}, {"INV", look_up_table, 0}, {"FD", flip_flop},
                                     {"DSP48", multiplier}};
constexpr cell_row intel_cells[] = {{"MISTRAL_ALUT", look_up_table},
                                    {"MISTRAL_NOT", look_up_table, 0},
                                    {"MISTRAL_FF", flip_flop},
                                    {"MISTRAL_MUL", multiplier}};

constexpr family_row rows[] = {
    {"ice40", "iCE40", "synth_ice40 -dsp -abc2", ice40_cells, false, true, true},
    {"ecp5", "ECP5", "synth_ecp5", ecp5_cells, false, false, false},
    {"xilinx", "Xilinx 7", "synth_xilinx -flatten", xilinx_cells, true, false, false},
    {"intel", "Intel Cyclone V", "synth_intel_alm -family cyclonev", intel_cells, false, true, false},
};

}  // namespace

std::span<const family_row> family_rows() { return rows; }

const family_row* family_named(std::string_view name) {
    const auto* found =
        std::find_if(std::begin(rows), std::end(rows), [&](const family_row& row) { return row.name == name; });
    return found == std::end(rows) ? nullptr : found;
}

}  // namespace xfc::flow
