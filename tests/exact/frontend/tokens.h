#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "exact/frontend/scanner.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

// Running the scanner alone over a source text.

namespace xfc::test {

/// One token as the parser would see it.
struct token {
    std::int32_t code = 0;
    std::string text;
    std::int32_t line = 0;  ///< value of `line_number` after the token

    bool operator==(const token&) const = default;
};

struct scan_result {
    std::vector<token> tokens;  ///< up to the end of the input, which is left out
    std::int32_t last_line = 0;
    run_result run;
};

/// Scans the whole text, or up to the fatal error.
inline scan_result scan(const std::string& source) {
    scan_result result;
    open_source_text(source);
    result.run = catch_output([&] {
        for (std::int32_t code = next_token(); code != token_end_of_input; code = next_token()) {
            result.tokens.push_back({code, std::string(token_text()), current.line_number});
        }
    });
    result.last_line = current.line_number;
    return result;
}

/// The codes of all tokens.
inline std::vector<std::int32_t> codes(const std::string& source) {
    std::vector<std::int32_t> found;
    for (const token& each : scan(source).tokens) {
        found.push_back(each.code);
    }
    return found;
}

/// The texts of all tokens.
inline std::vector<std::string> texts(const std::string& source) {
    std::vector<std::string> found;
    for (const token& each : scan(source).tokens) {
        found.push_back(each.text);
    }
    return found;
}

/// Whether scanning ends with the message for a token that does not fit the buffer, and with nothing else.
inline bool overflows(const std::string& source) {
    const run_result run = scan(source).run;
    return run.status == 1 && run.standard_output.empty() &&
           run.standard_error == "L0029: PCLEX input buffer overflowed\n";
}

inline std::string repeated(std::size_t count, char character) { return std::string(count, character); }

}  // namespace xfc::test
