#pragma once

#include "exact/emit/hdl_language.h"

namespace xfc {

/// Connects input ports to their nodes, wires to their drivers, and drivers to output ports. Prints a heading and the
/// number of every node for each of the three.
void write_node_connections(const emission& to);

}  // namespace xfc
