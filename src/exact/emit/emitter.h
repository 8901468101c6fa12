#pragma once

#include <string>

namespace xfc {

/// Writes the graph as one VHDL entity with its architecture. `base_name` is the driver's 32-character name buffer:
/// the entity name, its terminator and what stood behind it. Ends the run when the file cannot be written.
void emit_vhdl(const std::string& base_name);

/// Writes the graph as one Verilog module; the same datapath with the same names, numbers and generics.
void emit_verilog(const std::string& base_name);

}  // namespace xfc
