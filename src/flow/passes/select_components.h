#pragma once

#include <optional>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/graph.h"
#include "flow/passes/design.h"
#include "model/model_list.h"

namespace xfc::flow {

/// Chooses a component for every operation and a conversion for every pair of a value and a coding that some reader
/// asks for.
/// Before: operations as expand.h leaves them.
/// After:  each operand arrives in the coding that its component reads: converted once whoever else reads it so;
///         products and quotients leave their component in the coding that all readers agree upon, else in adder form;
///         what may be unnormalised is normalised in front of multipliers and dividers and where a sum would get more
///         than 16 operands; constants are encoded exactly as their reader asks.
///     [a : single] -> [multiply] -> [add] -> y   becomes
///     a -> castftox 1 -> mulfp1x xoutput -> alufp1x -> castxtof -> y
///         Comparisons, selections, roundings and functions read and deliver IEEE numbers: what decides is rounded as
///         in C, and whatever follows reads the same bits.
/// What needs a component that the library lacks is refused at its place; then there is no design. A library has a
/// component when `find_model` gives its model.
[[nodiscard]] std::optional<design> select_components(const graph& source, const library_options& options,
                                                      diagnostics& messages,
                                                      component_model (*find_model)(std::string_view) = model_named);

}  // namespace xfc::flow
