#pragma once

#include "exact/dfg/number_format.h"

namespace xfc {

/// The format's letter in conversion kinds such as "castftox". A format without one ends the run.
[[nodiscard]] char format_code(number_format format);

}  // namespace xfc
