#include "flow/diagnostics/diagnostics.h"

#include <algorithm>
#include <utility>

namespace xfc::flow {

namespace {

constexpr std::size_t number_width = 5;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr int longest_line = 160;  // bytes shown of a source line

struct colours {
    std::string_view bold;
    std::string_view level;
    std::string_view mark;
    std::string_view end;
};

colours colours_of(severity level, bool wanted) {
    if (!wanted) {
        return {};
    }
    constexpr std::string_view levels[] = {"\x1b[1;36m", "\x1b[1;35m", "\x1b[1;31m"};
    return {"\x1b[1m", levels[static_cast<unsigned>(level)], "\x1b[1;32m", "\x1b[0m"};
}

/// Bytes of a line that a terminal shows as they are; tabs and control characters become blanks.
std::string shown(std::string_view line) {
    std::string text(line);
    std::replace_if(
        text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) < ' ' || letter == 127; },
        ' ');
    return text;
}

/// Whether a byte goes on with a letter of several bytes.
bool goes_on(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Columns that a terminal gives the text: a letter each, whatever bytes it has; none to a byte order mark.
std::size_t columns_of(std::string_view text) {
    const bool marked = text.starts_with(byte_order_mark);
    const auto letters = std::count_if(text.begin(), text.end(), [](char byte) { return !goes_on(byte); });
    return static_cast<std::size_t>(letters) - (marked ? 1 : 0);
}

void append_line_and_caret(std::string& text, const source_position& position, const colours& paint) {
    // Of a long line only the part around the place is shown.
    const int length = static_cast<int>(position.text.size());
    const int column = std::min(position.column, length + 1);
    const std::string_view line = position.text;
    const auto start_of_letter = [&](int place) {
        while (place > 1 && place <= length && goes_on(line[static_cast<std::size_t>(place - 1)])) {
            --place;
        }
        return place;
    };
    const auto between = [&](int from, int to) {
        return line.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(std::max(0, to - from)));
    };
    const int first = start_of_letter(column + 40 > longest_line ? column - longest_line / 2 : 1);
    const int behind = start_of_letter(std::min(length + 1, first + longest_line));
    const int end = std::min(position.end_column, behind);
    const std::string number = std::to_string(position.line);
    const std::string margin(std::max(number_width, number.size()), ' ');
    text += margin.substr(number.size()) + number + " | ";
    text += shown(between(first, behind));
    text += '\n' + margin + " | " + std::string(columns_of(between(first, column)), ' ');
    text += paint.mark;
    text += '^' + std::string(std::max<std::size_t>(columns_of(between(column, end)), 1) - 1, '~');
    text += paint.end;
    text += '\n';
}

void append_message(std::string& text, const diagnostic& message, const source_map& places, bool colour) {
    const source_position position = places.position_of(message.where);
    const colours paint = colours_of(message.level, colour);
    text += paint.bold;
    text += position.line != 0 ? places.place_text(message.where) + ": " : "xfcflow: ";
    text += paint.end;
    text += paint.level;
    text += std::string(severity_name(message.level)) + ": ";
    text += paint.end;
    text += paint.bold;
    text += message.text;
    text += paint.end;
    if (!message.name.empty()) {
        text += " [" + message.name + "]";
    }
    text += '\n';
    if (position.line != 0) {
        append_line_and_caret(text, position, paint);
    }
    if (!message.hint.empty()) {
        text += std::string(number_width + 1, ' ');
        text += paint.bold;
        text += "hint:";
        text += paint.end;
        text += ' ' + message.hint + '\n';
    }
    for (const diagnostic& addition : message.additions) {
        append_message(text, addition, places, colour);
    }
}

}  // namespace

std::string filled_in(std::string_view text, std::initializer_list<std::string_view> arguments) {
    std::string filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool placeholder = text[at] == '%' && at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9';
        const std::size_t number = placeholder ? static_cast<std::size_t>(text[at + 1] - '0') : arguments.size();
        if (number < arguments.size()) {
            filled += arguments.begin()[number];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}

diagnostic& diagnostics::report(message_id id, source_range where, std::initializer_list<std::string_view> arguments) {
    const message_row& row = row_of(id);
    messages_.push_back({.level = row.level,
                         .name = std::string(row.name),
                         .where = where,
                         .text = filled_in(row.text, arguments),
                         .hint = filled_in(row.hint, arguments)});
    return messages_.back();
}

void diagnostics::add_to_last(message_id id, source_range where, std::initializer_list<std::string_view> arguments) {
    const message_row& row = row_of(id);
    report(diagnostic{.level = severity::note, .where = where, .text = filled_in(row.text, arguments)});
}

void diagnostics::report(diagnostic message) {
    if (message.level == severity::note && !messages_.empty()) {
        messages_.back().additions.push_back(std::move(message));
    } else {
        messages_.push_back(std::move(message));
    }
}

std::size_t diagnostics::count_of(severity level) const {
    return static_cast<std::size_t>(std::count_if(messages_.begin(), messages_.end(),
                                                  [&](const diagnostic& message) { return message.level == level; }));
}

std::string rendered(const diagnostic& message, const source_map& places, bool colour) {
    std::string text;
    append_message(text, message, places, colour);
    return text;
}

std::string rendered(const diagnostics& messages, const source_map& places, bool colour) {
    std::string text;
    for (const diagnostic& message : messages.messages()) {
        append_message(text, message, places, colour);
    }
    return text;
}

}  // namespace xfc::flow
