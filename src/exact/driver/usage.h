#pragma once

namespace xfc {

/// Prints the usage text on the standard error.
void print_usage();

}  // namespace xfc
