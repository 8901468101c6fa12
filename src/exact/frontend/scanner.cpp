// Splits the source program into tokens: longest match, the earlier rule between equally long matches.
//
// The buffer holds 1024 characters and is filled in blocks of 512. It is refilled before the automaton is asked
// whether it can move, so a token may end exactly where the data end and still cause a read. Whether a token of more
// than 511 characters fits therefore depends on where it starts in its block.

#include "exact/frontend/scanner.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "exact/frontend/keyword_table.h"
#include "exact/frontend/source_reader.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

constexpr std::size_t block_size = 512;
constexpr std::size_t longest_kept_part = 511;
constexpr int no_character = -1;

/// The operators of more than one character, in the order of their codes from `token_first_operator` on.
/// Kept: the and-assign operator is spelled with two ampersands; "&=" is two tokens.
constexpr std::array<std::string_view, 21> operator_spellings{
    "||", "&&", "==", "!=", "<=", ">=",  "<<",  ">>",  "++", "--", "->",
    "+=", "-=", "*=", "/=", "%=", "<<=", ">>=", "&&=", "^=", "|="};

scanner_state& state = current.scanner;

void refill() {
    if (state.data_end >= longest_kept_part) {
        const std::size_t part = state.data_end - state.token_start;
        if (part > longest_kept_part) {
            fail(message_id::scanner_buffer_overflowed);
        }
        std::memmove(state.buffer.data(), state.buffer.data() + state.token_start, part);
        state.token_start = 0;
        state.position = part;
        state.data_end = part;
    }
    const std::size_t count = read_source_block(state.buffer.data() + state.data_end, block_size);
    if (count == 0) {
        if (state.end_of_input) {
            fail(message_id::scanner_saw_end_twice);
        }
        state.end_of_input = true;
    }
    state.data_end += count;
}

/// The character at the position, or `no_character` at the end of the input.
int peek() {
    if (state.position == state.data_end && !state.end_of_input) {
        refill();
    }
    return state.position < state.data_end ? static_cast<unsigned char>(state.buffer[state.position]) : no_character;
}

/// Moves over the current character; returns the next one.
int advance() {
    ++state.position;
    return peek();
}

constexpr bool is_digit(int character) { return character >= '0' && character <= '9'; }
constexpr bool is_letter(int character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || character == '_';
}
constexpr bool is_blank(int character) { return character == ' ' || character == '\t'; }
constexpr bool is_integer_suffix(int character) {
    return character == 'u' || character == 'U' || character == 'l' || character == 'L';
}

/// What a match yields: a token code, or one of these.
constexpr std::int32_t skipped = -1;

std::size_t matched_length() { return state.position - state.token_start; }

void back_up_to(std::size_t length) { state.position = state.token_start + length; }

void skip_blanks() {
    while (is_blank(peek())) {
        ++state.position;
    }
}

/// A line whose first character other than blanks and tabs is "#", up to its newline, which is given back so that it
/// is counted. Without a newline behind it there is no such line: nothing is taken.
bool match_preprocessor_line() {
    skip_blanks();
    if (peek() == '#') {
        int character = advance();
        while (character != '\n' && character != no_character) {
            character = advance();
        }
        if (character == '\n') {
            advance();
            back_up_to(matched_length() - 1);
            return true;
        }
    }
    back_up_to(0);
    return false;
}

/// A character constant or a string literal from its opening quote on. It cannot span lines, not even behind a
/// backslash. Returns false, with the position left behind the last character looked at, when it is not terminated.
bool match_quoted(char quote) {
    int character = advance();
    while (character != quote) {
        if (character == '\\') {
            character = advance();
        }
        if (character == '\n' || character == no_character) {
            return false;
        }
        character = advance();
    }
    advance();
    return true;
}

std::int32_t match_name() {
    while (is_letter(peek()) || is_digit(peek())) {
        ++state.position;
    }
    return lookup_keyword({state.buffer.data() + state.token_start, matched_length()});
}

/// Kept: floating constants have neither exponent nor suffix, and there are no hexadecimal constants.
std::int32_t match_number() {
    while (is_digit(peek())) {
        ++state.position;
    }
    if (peek() == '.') {
        int character = advance();
        while (is_digit(character)) {
            character = advance();
        }
        return token_floating_constant;
    }
    while (is_integer_suffix(peek())) {
        ++state.position;
    }
    return token_integer_constant;
}

/// The longest operator that starts with the current character, else the character itself.
std::int32_t match_operator_or_character() {
    const std::int32_t single = peek();
    std::int32_t code = single;
    advance();
    for (std::size_t longer = 2; longer <= 3 && peek() != no_character; ++longer) {
        const std::string_view text(state.buffer.data() + state.token_start, longer);
        const auto* found = std::find(operator_spellings.begin(), operator_spellings.end(), text);
        if (found == operator_spellings.end()) {
            break;
        }
        code = token_first_operator + static_cast<std::int32_t>(found - operator_spellings.begin());
        advance();
    }
    return code;
}

std::int32_t match_in_comment() {
    int character = peek();
    if (character == '\n') {
        ++current.line_number;
        advance();
    } else if (character == '*') {
        if (advance() == '/') {
            state.in_comment = false;
            advance();
        }
    } else {
        while (character != '*' && character != '\n' && character != no_character) {
            character = advance();
        }
    }
    return skipped;
}

std::int32_t match_quoted_or_character(char quote, std::int32_t code) {
    const std::int32_t opening = peek();
    if (match_quoted(quote)) {
        return code;
    }
    back_up_to(1);
    return opening;
}

std::int32_t match_slash() {
    const std::int32_t code = match_operator_or_character();
    if (code == '/' && peek() == '*') {
        state.in_comment = true;
        advance();
        return skipped;
    }
    return code;
}

/// An "L" may belong to a wide constant; when that is not terminated it begins a name.
std::int32_t match_name_or_wide_constant() {
    const int next = advance();
    if (next == '\'' && match_quoted('\'')) {
        return token_character_constant;
    }
    if (next == '"' && match_quoted('"')) {
        return token_string_literal;
    }
    back_up_to(1);
    return match_name();
}

std::int32_t match_dot() {
    int character = advance();
    if (!is_digit(character)) {
        return '.';
    }
    while (is_digit(character)) {
        character = advance();
    }
    return token_floating_constant;
}

/// Matches one rule at the position, which is not the end of the input.
std::int32_t match_rule() {
    if (state.in_comment) {
        return match_in_comment();
    }
    if (state.previous_character == '\n' && match_preprocessor_line()) {
        return skipped;
    }
    const int character = peek();
    if (character == 'L') {
        return match_name_or_wide_constant();
    }
    if (is_letter(character)) {
        return match_name();
    }
    if (is_digit(character)) {
        return match_number();
    }
    switch (character) {
        case ' ':
        case '\t':
            skip_blanks();
            return skipped;
        case '\n':
            ++current.line_number;
            advance();
            return skipped;
        case '.':
            return match_dot();
        case '/':
            return match_slash();
        case '\'':
            return match_quoted_or_character('\'', token_character_constant);
        case '"':
            return match_quoted_or_character('"', token_string_literal);
        default:
            return match_operator_or_character();
    }
}

void restore_saved_character() {
    if (state.terminated) {
        state.buffer[state.position] = state.saved_character;
        state.terminated = false;
    }
}

void terminate_token() {
    if (state.position == state.token_start) {
        fail(message_id::scanner_internal_error);
    }
    state.previous_character = state.buffer[state.position - 1];
    state.saved_character = state.buffer[state.position];
    state.buffer[state.position] = '\0';
    state.terminated = true;
    state.token_length = matched_length();
}

void start() {
    state.buffer[0] = '\n';
    state.token_start = state.position = state.data_end = 1;
    state.started = true;
}

}  // namespace

std::int32_t lookup_keyword(std::string_view text) {
    const auto* row =
        std::lower_bound(keyword_table.begin(), keyword_table.end(), text,
                         [](const keyword_row& left, std::string_view right) { return left.spelling < right; });
    return row != keyword_table.end() && row->spelling == text ? row->code : token_identifier;
}

std::int32_t next_token() {
    if (!state.started) {
        start();
    }
    for (;;) {
        restore_saved_character();
        state.token_start = state.position;
        if (peek() == no_character) {
            state.token_length = 0;
            return token_end_of_input;
        }
        const std::int32_t code = match_rule();
        terminate_token();
        if (code != skipped) {
            return code;
        }
    }
}

std::string_view token_text() {
    // A character of value 0 ends the text.
    const std::string_view token(state.buffer.data() + state.token_start, state.token_length);
    return token.substr(0, token.find('\0'));
}

}  // namespace xfc
