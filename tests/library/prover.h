#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "components/component_table.h"

// Proves one component: its texts' heads against its row, its model against its contract, its Verilog and VHDL
// against its model, and with the registers bypassed the VHDL against the Verilog.

namespace xfc::proof {

struct prover_settings {
    std::filesystem::path library;  ///< the folder with common/ and a folder a component
    std::filesystem::path benches;  ///< where bench_text.vhd and formal/ stand
    std::filesystem::path work;     ///< for generated files; what was there is replaced
    std::size_t vectors = 10000;    ///< operands a component and set of generics
    std::uint64_t seed = 1;
    std::vector<std::string> simulators{"icarus", "verilator", "ghdl"};
    bool all_sets = false;  ///< prove all sets of generics, not only covering_sets
    bool formal = false;    ///< prove VHDL and Verilog equal instead
    bool measured = false;  ///< only write what scripts/measure-library synthesizes
};

/// What was found wrong with a component; nothing when it is proven. Prints what was measured as it goes.
[[nodiscard]] std::vector<std::string> prove_component(const component_row& row, const prover_settings& settings);

/// The same for one component's VHDL against its Verilog, for all operands, set by set.
[[nodiscard]] std::vector<std::string> prove_formally(const component_row& row, const prover_settings& settings);

/// Writes measured.v, the component between shift registers, for the options' defaults but where `settled` (such as
/// "mantissa=36") says otherwise. Says what is wrong with `settled`.
[[nodiscard]] std::vector<std::string> write_measured(const component_row& row, const prover_settings& settings,
                                                      const std::vector<std::string>& settled);

/// The output of a command of the shell, both streams; its exit status goes to `status`.
[[nodiscard]] std::string output_of(const std::string& command, int& status);

/// The hardware texts that a component consists of, its own last.
[[nodiscard]] std::vector<std::filesystem::path> texts_of(const component_row& row,
                                                          const std::filesystem::path& library,
                                                          std::string_view extension);

/// The sets of generics that the settings ask for.
[[nodiscard]] std::vector<component_generics> sets_to_prove(const component_row& row, const prover_settings& settings);

/// "a b c" for the shell, quoted.
[[nodiscard]] std::string quoted(const std::vector<std::filesystem::path>& paths);

}  // namespace xfc::proof
