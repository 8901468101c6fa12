#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace xfc {

/// The open source program. The driver opens it and closes it right after the parse; the scanner reads it.
extern std::FILE* source_file;

/// The source program as the command line names it, for the check that the output does not overwrite it.
extern std::string source_path;

/// Current source line. Kept: -1 until the driver sets it to 1 just before the parse.
extern std::int32_t line_number;

/// Syntax errors counted by the parser.
extern std::int32_t error_count;

/// Depth of the pipeline in clock cycles, written by latency balancing.
extern std::int32_t max_latency;

/// Name of the output while it is open, else null; for the end of a run that may not allocate any more.
extern const char* unfinished_output;

}  // namespace xfc
