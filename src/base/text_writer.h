#pragma once

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace xfc {

/// Collects text in one large buffer in front of a stream, or in memory when there is no stream.
/// Numbers are written by hand, so the text never depends on the locale.
class text_writer {
public:
    explicit text_writer(std::FILE* stream = nullptr) : stream_(stream) {}
    text_writer(const text_writer&) = delete;
    text_writer& operator=(const text_writer&) = delete;

    void append(std::string_view text) {
        if (text.size() > capacity - used_) {
            append_past_buffer(text);
            return;
        }
        if (text.empty()) {
            return;  // an empty text may have no address
        }
        std::memcpy(buffer() + used_, text.data(), text.size());
        used_ += text.size();
    }

    void append(char character) { append(std::string_view(&character, 1)); }

    /// A decimal number, with a minus sign when it is negative.
    void append_integer(std::int64_t value) {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }

    /// A number with six digits behind the point and no exponent.
    void append_fixed(double value);

    /// Hands everything to the stream. Returns false when a write has failed, now or earlier.
    [[nodiscard]] bool flush();

    /// From now on the text goes to `stream` (null: stays in memory); what was not flushed is dropped.
    void redirect(std::FILE* stream);

    /// The text collected in memory so far; empties the collection.
    [[nodiscard]] std::string take_text();

private:
    static constexpr std::size_t capacity = std::size_t{1} << 18;

    char* buffer() {
        if (!buffer_) {
            buffer_ = std::make_unique_for_overwrite<char[]>(capacity);
        }
        return buffer_.get();
    }
    void append_past_buffer(std::string_view text);
    void write_through(std::string_view text);

    std::FILE* stream_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    std::string memory_;
    bool failed_ = false;
};

/// One value for a placeholder of `write_format`: text for %s, a number for %ld, %d and %f.
inline void append_argument(text_writer& out, std::string_view text) { out.append(text); }
template <class number>
requires std::is_integral_v<number>
void append_argument(text_writer& out, number value) { out.append_integer(static_cast<std::int64_t>(value)); }
inline void append_argument(text_writer& out, double value) { out.append_fixed(value); }

/// Writes a template without placeholders as it stands.
inline void write_format(text_writer& out, std::string_view format) { out.append(format); }

/// Writes a template; each %s, %d, %ld or %f stands for the next argument, whose type decides how it is written.
/// There is no escape for a percent sign, and the templates hold none.
template <class first_argument, class... other_arguments>
void write_format(text_writer& out, std::string_view format, const first_argument& first,
                  const other_arguments&... others) {
    const std::size_t placeholder = format.find('%');
    out.append(format.substr(0, placeholder));
    append_argument(out, first);
    const std::size_t length = format[placeholder + 1] == 'l' ? 3 : 2;
    write_format(out, format.substr(placeholder + length), others...);
}

}  // namespace xfc
