#pragma once

#include <iosfwd>

#include "flow/driver/options.h"

namespace xfc::flow {

/// Builds a program with every set of options that changes its hardware and compares them; or writes that as lines to
/// run elsewhere, runs one of these, or puts their results together.
int explore(const command_line& line, std::ostream& out, std::ostream& error, bool colour);

}  // namespace xfc::flow
