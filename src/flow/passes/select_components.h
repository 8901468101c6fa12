#pragma once

#include <optional>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/graph.h"
#include "flow/passes/design.h"

namespace xfc::flow {

/// Chooses a component for every operation and a conversion for every pair of a value and a coding that some reader
/// asks for.
/// Before: operations of expand.h.
/// After:  each operand arrives in the coding that its component reads: converted once whoever else reads it so;
///         products and quotients leave their component in the coding that all readers agree upon, else in adder form;
///         what may be unnormalised is normalised in front of multipliers and dividers and where a sum would get more
///         than 16 operands; constants are encoded exactly as their reader asks.
///     [a : single] -> [multiply] -> [add] -> y   becomes
///     a -> castftox 1 -> mulfp1x xoutput -> alufp1x -> castxtof -> y
/// Operations that no component of the library computes are refused at their place; then there is no design.
[[nodiscard]] std::optional<design> select_components(const graph& source, const library_options& options,
                                                      diagnostics& messages);

}  // namespace xfc::flow
