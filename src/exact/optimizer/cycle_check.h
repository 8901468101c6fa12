#pragma once

namespace xfc {

/// Ends the run when a value depends on itself through source links, naming the lowest-numbered variable on such a
/// cycle, or the lowest-numbered node when no variable lies on one. Passes that follow drivers rely on it.
void require_acyclic_graph();

}  // namespace xfc
