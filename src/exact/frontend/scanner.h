#pragma once

#include <cstdint>
#include <string_view>

#include "grammar.hpp"

namespace xfc {

// Codes of the tokens that are not a single character, as the grammar gives them; the keywords' stand in their table.
inline constexpr std::int32_t token_end_of_input = token_END_OF_INPUT;
inline constexpr std::int32_t token_character_constant = token_CHARACTER_CONSTANT;
inline constexpr std::int32_t token_floating_constant = token_FLOATING_CONSTANT;
inline constexpr std::int32_t token_integer_constant = token_INTEGER_CONSTANT;
inline constexpr std::int32_t token_string_literal = token_STRING;
inline constexpr std::int32_t token_identifier = token_IDENTIFIER;
/// The operators of more than one character have the codes from this one on.
inline constexpr std::int32_t token_first_operator = token_OROR;

/// The characters of the token just read, a terminator behind them; valid until the next call of `next_token`.
[[nodiscard]] std::string_view token_text();

/// Reads the next token of the source program and counts its newlines.
/// Returns the token's code, the character's own code (1 to 255) for a character that is a token by itself, or 0 at
/// the end of the input and at a byte of value 0. A token that does not fit the buffer, or a failing read, ends the
/// run with an L message.
std::int32_t next_token();

/// The keyword's code, or `token_identifier` for any other name.
[[nodiscard]] std::int32_t lookup_keyword(std::string_view text);

}  // namespace xfc
