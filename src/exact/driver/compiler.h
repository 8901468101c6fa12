#pragma once

#include <span>
#include <string>
#include <string_view>

namespace xfc {

/// One compilation from the command line to the report. `arguments` are those of the process without its name: the
/// source program first, then switches. Returns the exit status, 0 or 1. What an earlier run
/// in the same process left in `current` is forgotten first.
int run_compiler(std::span<const char* const> arguments);

/// The 32-character name buffer that the emitters get: the source argument, cut to 31 characters, with its first "."
/// replaced by the terminator and zeros behind the name. Kept: folders are part of the name.
[[nodiscard]] std::string derive_base_name(std::string_view source_argument);

}  // namespace xfc
