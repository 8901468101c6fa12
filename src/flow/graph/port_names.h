#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow {

/// Spellings that VHDL and Verilog both accept for these names, in the same order, no two of them equal whatever the
/// case, none of them a reserved word, a name that every design uses, or `design`, the design's own. A name that is
/// legal as it stands stays, unless an earlier one took it.
[[nodiscard]] std::vector<std::string> legal_names(std::span<const std::string> names, std::string_view design);

/// Whether the word means something in VHDL, in Verilog or in every design; case does not matter.
[[nodiscard]] bool is_reserved(std::string_view word);

/// A name with the letters and underscores that both languages take; not looked up as a reserved word.
[[nodiscard]] std::string legal_letters(std::string_view name);

}  // namespace xfc::flow
