#pragma once

#include <cstddef>

namespace xfc {

/// Reads the next block of the source program into `block`: `size` characters, fewer only at the end of the input,
/// 0 when nothing is left. A carriage return directly before a newline is dropped on the way and does not count.
/// A failing read ends the run with the L0048 message.
std::size_t read_source_block(char* block, std::size_t size);

}  // namespace xfc
