#pragma once

#include <string>

#include "flow/emit/datapath.h"
#include "flow/emit/library_files.h"

namespace xfc::flow {

/// A test bench called `bench` around a design. It reads vectors.txt, a line of zeros and ones a cycle: reset, enable,
/// startin, the inputs; and writes results.txt, a line a cycle: startout and the outputs as they are in front of the
/// clock's edge. `wave`: in Verilog, every signal into wave.vcd; a VHDL simulator does that by itself.
[[nodiscard]] std::string bench_text(const datapath& what, language lang, bool wave = false);

}  // namespace xfc::flow
