#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

namespace xfc {

/// Where the scanner stands in its buffer. The buffer holds the token being read and what was read behind it.
struct scanner_state {
    static constexpr std::size_t buffer_size = 1024;

    std::array<char, buffer_size> buffer{};
    std::size_t token_start = 0;  ///< first character of the token being read
    std::size_t position = 0;     ///< next character to look at
    std::size_t data_end = 0;     ///< behind the last character read
    char saved_character = 0;     ///< what the terminator of the last token overwrote
    char previous_character = '\n';
    bool terminated = false;
    bool in_comment = false;
    bool end_of_input = false;
    bool started = false;
    std::size_t token_length = 0;  ///< of the token just read, which starts at `token_start`, in characters
};

/// Closes the source program.
struct file_closer {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using source_stream = std::unique_ptr<std::FILE, file_closer>;

/// Characters read ahead of the scanner's own blocks, so that the character behind a carriage return can be seen.
struct read_ahead {
    std::vector<char> characters;  ///< empty until the first read
    std::size_t position = 0;
    std::size_t end = 0;
};

}  // namespace xfc
