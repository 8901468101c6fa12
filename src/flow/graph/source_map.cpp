#include "flow/graph/source_map.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace xfc::flow {

namespace {

constexpr std::uint32_t block = 1024;  // bytes whose lines are looked through

}  // namespace

void source_map::add_file(std::uint32_t begin, std::string name, std::string text) {
    std::vector<std::uint32_t> starts = {0};
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        starts.push_back(static_cast<std::uint32_t>(at + 1));
    }
    std::vector<std::uint32_t> lines;
    for (std::uint32_t line = 0; line < starts.size(); ++line) {
        lines.resize(std::max<std::size_t>(lines.size(), starts[line] / block + 1), line);
    }
    lines.resize(text.size() / block + 2, static_cast<std::uint32_t>(starts.size()));
    files_.push_back({begin, std::move(name), std::move(text), std::move(starts), std::move(lines)});
}

std::uint32_t source_map::end() const {
    return files_.empty() ? 1 : files_.back().begin + static_cast<std::uint32_t>(files_.back().text.size()) + 1;
}

const source_map::file* source_map::file_at(std::uint32_t offset) const {
    const auto behind = std::upper_bound(files_.begin(), files_.end(), offset,
                                         [](std::uint32_t wanted, const file& one) { return wanted < one.begin; });
    if (offset == 0 || behind == files_.begin()) {
        return nullptr;
    }
    const file& found = *(behind - 1);
    return offset - found.begin <= found.text.size() ? &found : nullptr;
}

source_position source_map::position_of(source_range range) const {
    const file* found = file_at(range.begin);
    if (found == nullptr) {
        return {};
    }
    const std::uint32_t offset = range.begin - found->begin;
    const auto line_start = [&](std::uint32_t line) { return found->line_starts.begin() + line; };
    const auto behind = std::upper_bound(line_start(found->block_lines[offset / block]),
                                         line_start(found->block_lines[offset / block + 1]), offset);
    const std::uint32_t start = *(behind - 1);
    const std::size_t next = behind == found->line_starts.end() ? std::string_view::npos : *behind - 1U;
    std::string_view line = std::string_view(found->text).substr(start, next - start);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    source_position position;
    position.file = found->name;
    position.line = static_cast<int>(behind - found->line_starts.begin());
    position.column = static_cast<int>(offset - start) + 1;
    const auto longest = static_cast<std::uint32_t>(line.size());
    const std::uint32_t end = range.end > range.begin ? range.end - found->begin - start : offset - start + 1;
    position.end_column = std::max(static_cast<int>(std::min(end, longest)) + 1, position.column + 1);
    position.text = line;
    return position;
}

std::string_view source_map::file_text(std::string_view name) const {
    const auto found = std::find_if(files_.begin(), files_.end(), [&](const file& one) { return one.name == name; });
    return found == files_.end() ? std::string_view() : found->text;
}

void source_map::append_place(std::string& text, source_range range) const {
    const source_position position = position_of(range);
    if (position.line == 0) {
        return;
    }
    text += position.file;
    for (const int number : {position.line, position.column}) {
        char digits[16];
        text.append(":").append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
}

std::string source_map::place_text(source_range range) const {
    std::string text;
    append_place(text, range);
    return text;
}

void source_map::append_expression(std::string& text, source_range range, std::size_t longest) const {
    const file* found = file_at(range.begin);
    if (found == nullptr || range.end <= range.begin) {
        return;
    }
    const std::string_view whole = found->text;
    const std::size_t begin = text.size();
    bool blank = false;
    for (const char letter : whole.substr(range.begin - found->begin, range.end - range.begin)) {
        if (letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r') {
            blank = true;
            continue;
        }
        if (text.size() - begin >= longest) {
            break;
        }
        if (blank && text.size() != begin) {
            text += ' ';
        }
        blank = false;
        text += letter;
    }
    text.resize(std::min(text.size(), begin + std::min(longest, text.size())));
}

std::string source_map::expression_text(source_range range, std::size_t longest) const {
    std::string text;
    append_expression(text, range, longest);
    return text;
}

std::vector<std::string> source_map::file_names() const {
    std::vector<std::string> names;
    for (const file& one : files_) {
        names.push_back(one.name);
    }
    return names;
}

}  // namespace xfc::flow
