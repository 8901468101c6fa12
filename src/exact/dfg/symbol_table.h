#pragma once

#include <cstdint>
#include <string_view>

#include "exact/run/symbol_records.h"

namespace xfc {

/// Turns every declaration in the label list into records. Prints the value of each evaluated initializer.
void process_declarations();

/// Makes an empty record, makes it the current one and, if it is the first one, the table's head. Links nothing.
symbol_record* new_symbol();

/// Evaluates the initializer of `name` from the cursor up to its end mark, on which it leaves the cursor; prints and
/// returns the value. Arithmetic is 32-bit and wraps. An initializer without an integer constant, with more than 32
/// items, or that does not reduce to one value, ends the run.
std::int32_t evaluate_constant(std::string_view name);

/// The record after `record` on the readers' walk: along `next` while that is in use, then over to the next block.
[[nodiscard]] const symbol_record* following_symbol(const symbol_record& record);

}  // namespace xfc
