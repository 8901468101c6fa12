#pragma once

#include <iosfwd>

#include "flow/driver/options.h"

namespace xfc::flow {

/// Synthesises the hardware of a program and tells what it takes, how fast it is and what limits it.
int synth(const command_line& given, std::ostream& out, std::ostream& error, bool colour);

}  // namespace xfc::flow
