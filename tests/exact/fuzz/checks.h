#pragma once

#include "compilation.h"

namespace xfc::fuzz {

/// What holds for every compilation of any source with any switches: the status, what is printed last, which file is
/// there, and that the source is not touched. Reports a violation.
void check_outcome(const compilation_request& request, const compilation& result);

/// The same bytes and the same status.
void check_equal(const compilation& one, const compilation& other, const std::string& what);

/// Logs of the two languages: the same up to the emission, sweep lines included, and the same report and verdict.
void check_same_design(const compilation& vhdl, const compilation& verilog);

}  // namespace xfc::fuzz
