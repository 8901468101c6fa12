#pragma once

#include "exact/emit/hdl_language.h"

namespace xfc {

/// Writes an instance for every node whose component is an operator, labelled cmp0, cmp1, ... in slot order.
void write_operators(const emission& to);

/// Writes an instance for every node whose component is a library function, labelled lib0, lib1, ...
void write_functions(const emission& to);

}  // namespace xfc
