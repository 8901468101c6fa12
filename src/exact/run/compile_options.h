#pragma once

#include <cstdint>

#include "components/library_options.h"

namespace xfc {

/// Settings of one compilation: those that reach the components, and what the passes alone read. The argument loop
/// writes them once. Kept: `optimization` may be negative here.
struct compile_option_record : library_options {
    std::int32_t fittingregisters = 0;  ///< Kept: accepted and stored, read by no pass.
    std::int32_t clustersize = 16;      ///< unnormalized operands summed before a normalizer stands, 2 to 16
    std::int32_t verilog = 0;           ///< 1: the output is Verilog instead of VHDL
};

}  // namespace xfc
