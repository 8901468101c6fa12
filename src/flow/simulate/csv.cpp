#include "flow/simulate/csv.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "flow/simulate/accuracy.h"

namespace xfc::flow {

namespace {

/// One field of a line without the blanks and quotes around it, and where it stands.
struct field {
    std::string_view text;
    source_range where;
};

std::string_view trimmed(std::string_view text) {
    const auto blank = [](char letter) { return letter == ' ' || letter == '\t' || letter == '\r'; };
    while (!text.empty() && blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

class csv_reader {
public:
    csv_reader(std::string_view text, std::uint32_t offset, const graph& source, diagnostics& messages)
        : text_(text), offset_(offset), source_(source), messages_(messages) {}

    std::vector<std::vector<std::uint64_t>> run() {
        std::vector<std::vector<std::uint64_t>> vectors;
        bool has_header = false;
        for (std::size_t at = 0; at < text_.size();) {
            const std::size_t end = std::min(text_.find('\n', at), text_.size());
            const std::string_view line = text_.substr(at, end - at);
            at = end + 1;
            if (trimmed(line).empty()) {
                continue;
            }
            if (!has_header) {
                has_header = true;
                if (!read_header(line)) {
                    return {};
                }
            } else if (!read_vector(line, vectors)) {
                return {};
            }
        }
        if (!has_header || vectors.empty()) {
            messages_.report(message_id::csv_empty, {offset_, offset_ + 1});
        }
        return vectors;
    }

private:
    source_range range_of(std::string_view part) const {
        const auto begin = offset_ + static_cast<std::uint32_t>(part.data() - text_.data());
        return {begin, begin + static_cast<std::uint32_t>(std::max<std::size_t>(part.size(), 1))};
    }

    std::vector<field> fields_of(std::string_view line) const {
        std::vector<field> fields;
        for (std::size_t at = 0; at <= line.size();) {
            const std::size_t end = std::min(line.find(',', at), line.size());
            std::string_view text = trimmed(line.substr(at, end - at));
            if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
                text = trimmed(text.substr(1, text.size() - 2));
            }
            fields.push_back({text, range_of(text.empty() ? line.substr(at, end - at) : text)});
            at = end + 1;
        }
        return fields;
    }

    bool read_header(std::string_view line) {
        const auto inputs = source_.inputs();
        std::vector<bool> seen(inputs.size(), false);
        for (const field& one : fields_of(line)) {
            const auto found =
                std::find_if(inputs.begin(), inputs.end(), [&](const port& input) { return input.name == one.text; });
            if (found == inputs.end()) {
                messages_.report(message_id::csv_port, one.where, {one.text});
                return false;
            }
            const auto place = static_cast<std::size_t>(found - inputs.begin());
            if (seen[place]) {
                messages_.report(message_id::csv_twice, one.where, {one.text});
                return false;
            }
            seen[place] = true;
            columns_.push_back(place);
        }
        for (std::size_t place = 0; place < seen.size(); ++place) {
            if (!seen[place]) {
                messages_.report(message_id::csv_missing, range_of(trimmed(line)), {inputs[place].name});
                return false;
            }
        }
        return true;
    }

    bool read_vector(std::string_view line, std::vector<std::vector<std::uint64_t>>& vectors) {
        const std::vector<field> fields = fields_of(line);
        if (fields.size() != columns_.size()) {
            messages_.report(message_id::csv_fields, range_of(trimmed(line)),
                             {std::to_string(fields.size()), std::to_string(columns_.size())});
            return false;
        }
        std::vector<std::uint64_t> vector(columns_.size(), 0);
        for (std::size_t column = 0; column < fields.size(); ++column) {
            const port& input = source_.inputs()[columns_[column]];
            const field& here = fields[column];
            const auto bits = is_floating(input.format) ? floating(here.text, input.format) : whole(here, input);
            if (!bits) {
                if (is_floating(input.format)) {
                    messages_.report(message_id::csv_number, here.where, {here.text, format_name(input.format)});
                }
                return false;
            }
            vector[columns_[column]] = *bits;
        }
        vectors.push_back(std::move(vector));
        return true;
    }

    /// What the port's C type holds, decimal or hexadecimal; of 32 bits either reading, with a sign and without one,
    /// since the bits are the same. Says here what else it is.
    std::optional<std::uint64_t> whole(const field& here, const port& input) {
        std::string_view text = here.text;
        const bool negative = text.starts_with('-');
        if (negative || text.starts_with('+')) {
            text.remove_prefix(1);
        }
        const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
        if (hexadecimal) {
            text.remove_prefix(2);
        }
        std::uint64_t number = 0;
        const auto [end, failure] =
            std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
        const bool is_long = failure == std::errc::result_out_of_range;
        if (text.empty() || end != text.data() + text.size() || (failure != std::errc{} && !is_long)) {
            messages_.report(message_id::csv_number, here.where, {here.text, format_name(input.format)});
            return std::nullopt;
        }
        const bool is_boolean = input.format == number_format::boolean;
        const bool is_whole_word = input.c_bytes == 4;
        const bool has_sign = !is_boolean && (input.c_signed || is_whole_word);
        const std::uint32_t bits = is_boolean ? 1 : 8 * input.c_bytes - (has_sign && !is_whole_word ? 1 : 0);
        const std::uint64_t most = (std::uint64_t{1} << bits) - 1;
        const std::uint64_t least = !has_sign ? 0 : is_whole_word ? 0x80000000U : most + 1;  // below zero
        if (is_long || number > (negative ? least : most)) {
            messages_.report(message_id::csv_range, here.where,
                             {here.text, input.name, is_boolean ? "bool" : input.c_type,
                              (least == 0 ? "" : "-") + std::to_string(least), std::to_string(most)});
            return std::nullopt;
        }
        return static_cast<std::uint32_t>(negative ? 0 - number : number);
    }

    /// Rounded once, to the nearest. A number that is too large is refused; write inf for infinity.
    static std::optional<std::uint64_t> floating(std::string_view text, number_format format) {
        std::string number(text);
        const bool has_suffix = number.size() > 1 && (number.back() == 'f' || number.back() == 'F') &&
                                (std::isdigit(static_cast<unsigned char>(number[number.size() - 2])) != 0 ||
                                 number[number.size() - 2] == '.');
        const bool hexadecimal = number.find_first_of("xX") != std::string::npos;
        if (has_suffix && (!hexadecimal || number.find_first_of("pP") != std::string::npos)) {
            number.pop_back();
        }
        const bool begins_well = !number.empty() && std::isspace(static_cast<unsigned char>(number.front())) == 0 &&
                                 number.find('(') == std::string::npos;
        if (!begins_well) {
            return std::nullopt;
        }
        char* end = nullptr;
        errno = 0;
        if (format == number_format::single_float) {
            const float result = std::strtof(number.c_str(), &end);
            if (end != number.c_str() + number.size() || (errno == ERANGE && std::isinf(result))) {
                return std::nullopt;
            }
            return std::isnan(result) ? 0x7FC00000U : std::bit_cast<std::uint32_t>(result);
        }
        const double result = std::strtod(number.c_str(), &end);
        if (end != number.c_str() + number.size() || (errno == ERANGE && std::isinf(result))) {
            return std::nullopt;
        }
        return std::isnan(result) ? 0x7FF8000000000000U : std::bit_cast<std::uint64_t>(result);
    }

    std::string_view text_;
    std::uint32_t offset_;
    const graph& source_;
    diagnostics& messages_;
    std::vector<std::size_t> columns_;  ///< the input port of each column
};

}  // namespace

std::vector<std::vector<std::uint64_t>> vectors_from_csv(std::string_view text, std::uint32_t offset,
                                                         const graph& source, diagnostics& messages) {
    return csv_reader(text, offset, source, messages).run();
}

std::string csv_of_outputs(const graph& source, const std::vector<std::vector<std::uint64_t>>& results) {
    std::string text;
    for (const port& output : source.outputs()) {
        text += (text.empty() ? "" : ",") + output.name;
    }
    text += '\n';
    for (const std::vector<std::uint64_t>& outputs : results) {
        for (std::size_t place = 0; place < outputs.size(); ++place) {
            text += (place == 0 ? "" : ",") + c_text(source.outputs()[place], outputs[place]);
        }
        text += '\n';
    }
    return text;
}

}  // namespace xfc::flow
