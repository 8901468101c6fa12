#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow {

/// A stretch of source text: offsets in bytes into all files of one compilation laid end to end, the first from 1.
/// The end is one past the last byte. 0 stands for no place.
struct source_range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    [[nodiscard]] constexpr bool is_known() const { return begin != 0; }
    friend constexpr bool operator==(source_range, source_range) = default;
};

/// A place as people count: lines and columns (bytes) from 1; line 0 stands for no place.
struct source_position {
    std::string_view file;
    int line = 0;
    int column = 0;
    int end_column = 0;     ///< one past the range's last column on this line
    std::string_view text;  ///< the whole line, without its end
};

/// The texts of one compilation, so that places can be told without the parser that made them.
class source_map {
public:
    /// Takes a file whose first byte has offset `begin`. Files come in rising order of their offsets.
    void add_file(std::uint32_t begin, std::string name, std::string text);

    /// The first offset behind all files, for a further one.
    [[nodiscard]] std::uint32_t end() const;

    [[nodiscard]] source_position position_of(source_range range) const;

    /// "FILE:LINE:COLUMN", empty for no place.
    [[nodiscard]] std::string place_text(source_range range) const;

    /// The text of the range itself, its white space folded to single blanks; no more than `longest` characters.
    [[nodiscard]] std::string expression_text(source_range range, std::size_t longest = std::string::npos) const;

    /// The same behind a text that stands already.
    void append_place(std::string& text, source_range range) const;
    void append_expression(std::string& text, source_range range, std::size_t longest) const;

    /// The names of all files, in the order of their offsets.
    [[nodiscard]] std::vector<std::string> file_names() const;

    /// A file's whole text; empty for a file that is none of this compilation's.
    [[nodiscard]] std::string_view file_text(std::string_view name) const;

private:
    struct file {
        std::uint32_t begin;
        std::string name;
        std::string text;
        std::vector<std::uint32_t> line_starts;
        std::vector<std::uint32_t> block_lines;  ///< of every `block` bytes: how many lines start before
    };

    [[nodiscard]] const file* file_at(std::uint32_t offset) const;

    std::vector<file> files_;
};

}  // namespace xfc::flow
