#pragma once

#include <iosfwd>

#include "flow/driver/options.h"

namespace xfc::flow {

/// Writes the page of a design, or what else the command line asks for (--svg, --dot), to -o or a name of its own.
int view(const command_line& line, std::ostream& out, std::ostream& error, bool colour);

}  // namespace xfc::flow
