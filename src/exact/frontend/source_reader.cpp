#include "exact/frontend/source_reader.h"

#include <array>
#include <cstdio>

#include "exact/run/console.h"
#include "exact/run/run_state.h"

namespace xfc {

namespace {

// Characters read ahead of the scanner's own blocks, so that the character behind a carriage return can be seen.
std::array<char, std::size_t{1} << 16> ahead;
std::size_t ahead_position = 0;
std::size_t ahead_end = 0;

/// The next character of the file without taking it, or EOF.
int peek_character() {
    if (ahead_position == ahead_end) {
        ahead_position = 0;
        ahead_end = std::fread(ahead.data(), 1, ahead.size(), source_file);
        if (ahead_end == 0) {
            // What was delivered in front of a failure is read first.
            if (std::ferror(source_file) != 0) {
                fail(message_id::scanner_read_failed);
            }
            return EOF;
        }
    }
    return static_cast<unsigned char>(ahead[ahead_position]);
}

}  // namespace

std::size_t read_source_block(char* block, std::size_t size) {
    std::size_t count = 0;
    while (count < size) {
        const int character = peek_character();
        if (character == EOF) {
            break;
        }
        ++ahead_position;
        if (character == '\r' && peek_character() == '\n') {
            continue;
        }
        block[count++] = static_cast<char>(character);
    }
    return count;
}

void reset_source_reader() {
    ahead_position = 0;
    ahead_end = 0;
}

}  // namespace xfc
