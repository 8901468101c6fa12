#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace xfc::flow {

/// Runs xfcflow with the arguments behind its name and gives the exit status: 0 only when what was asked for holds.
/// `terminal`: messages go to one, and may have colours.
int run(std::span<const std::string> arguments, std::ostream& out, std::ostream& error, bool terminal);

}  // namespace xfc::flow
