#include "flow/graph/source_map.h"

#include <algorithm>
#include <utility>

namespace xfc::flow {

void source_map::add_file(std::uint32_t begin, std::string name, std::string text) {
    std::vector<std::uint32_t> starts = {0};
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        starts.push_back(static_cast<std::uint32_t>(at + 1));
    }
    files_.push_back({begin, std::move(name), std::move(text), std::move(starts)});
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
    const auto behind = std::upper_bound(found->line_starts.begin(), found->line_starts.end(), offset);
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

std::string source_map::place_text(source_range range) const {
    const source_position position = position_of(range);
    if (position.line == 0) {
        return {};
    }
    return std::string(position.file) + ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
}

std::string source_map::expression_text(source_range range) const {
    const file* found = file_at(range.begin);
    std::string text;
    if (found == nullptr || range.end <= range.begin) {
        return text;
    }
    const std::string_view whole = found->text;
    bool blank = false;
    for (const char letter : whole.substr(range.begin - found->begin, range.end - range.begin)) {
        if (letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r') {
            blank = true;
            continue;
        }
        if (blank && !text.empty()) {
            text += ' ';
        }
        blank = false;
        text += letter;
    }
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
