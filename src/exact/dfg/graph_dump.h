#pragma once

#include <string>

namespace xfc {

/// The graph as text, one line a node: slot, name, format, component, latency and ready time in cycles, widths of the
/// inputs and the output in bits, what feeds each input, and the consumers in order as slot.port. For example:
///
///     4 "+" XFloat xfc_alufp1x latency 5 ready 7 widths 45,45>45 from 6 7 to 9.0
///
/// Constants stand as type=value, an unconnected input as a dash. Marks for internal, normalized and removed nodes
/// follow the format.
[[nodiscard]] std::string dump_graph();

}  // namespace xfc
