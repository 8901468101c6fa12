#pragma once

#include <iosfwd>

#include "flow/driver/options.h"

namespace xfc::flow {

/// Builds a program in a folder of its own, simulates it and compares every output bit with the model. 0 only when all
/// agree.
int simulate(const command_line& line, std::ostream& out, std::ostream& error, bool colour);

}  // namespace xfc::flow
