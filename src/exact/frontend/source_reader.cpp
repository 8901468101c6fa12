#include "exact/frontend/source_reader.h"

#include <cstdio>

#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

constexpr std::size_t ahead_size = std::size_t{1} << 16;

/// The next character of the file without taking it, or EOF.
int peek_character() {
    read_ahead& ahead = current.ahead;
    if (ahead.position == ahead.end) {
        ahead.characters.resize(ahead_size);
        ahead.position = 0;
        ahead.end = std::fread(ahead.characters.data(), 1, ahead_size, current.source.get());
        if (ahead.end == 0) {
            // What was delivered in front of a failure is read first.
            if (std::ferror(current.source.get()) != 0) {
                fail(message_id::scanner_read_failed);
            }
            return EOF;
        }
    }
    return static_cast<unsigned char>(ahead.characters[ahead.position]);
}

}  // namespace

std::size_t read_source_block(char* block, std::size_t size) {
    std::size_t count = 0;
    while (count < size) {
        const int character = peek_character();
        if (character == EOF) {
            break;
        }
        ++current.ahead.position;
        if (character == '\r' && peek_character() == '\n') {
            continue;
        }
        block[count++] = static_cast<char>(character);
    }
    return count;
}

}  // namespace xfc
