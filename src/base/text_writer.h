#pragma once

#include <array>
#include <charconv>
#include <cstddef>
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

/// What a placeholder takes: %s a text, %d and %ld a whole number, %f a number with six decimals.
enum class placeholder : std::uint8_t { text, integer, fixed };

/// The placeholder that an argument of this type is written for.
template <class argument>
constexpr placeholder placeholder_for() {
    if constexpr (std::is_convertible_v<const argument&, std::string_view>) {
        return placeholder::text;
    } else if constexpr (std::is_integral_v<argument>) {
        return placeholder::integer;
    } else {
        static_assert(std::is_same_v<argument, double>, "no placeholder for this type");
        return placeholder::fixed;
    }
}

/// A template for arguments of these types. One whose placeholders do not fit them in number and kind does not compile.
/// There is no escape for a percent sign, and the templates hold none.
template <class... arguments>
class format_text {
public:
    template <class text>
    requires std::is_convertible_v<const text&, std::string_view>
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is meant to become a checked template.
    consteval format_text(const text& source) : text_(source) {
        if (!fits(text_)) {
            throw "the placeholders do not fit the arguments";
        }
    }

    [[nodiscard]] constexpr std::string_view text() const { return text_; }

    /// Whether the placeholders of `source` are those of the arguments, in order.
    static constexpr bool fits(std::string_view source) {
        constexpr std::array<placeholder, sizeof...(arguments) + 1> expected{placeholder_for<arguments>()...};
        std::size_t count = 0;
        for (std::size_t at = source.find('%'); at != std::string_view::npos; at = source.find('%', at + 1)) {
            if (count == sizeof...(arguments) || !is_placeholder(source.substr(at + 1), expected[count])) {
                return false;
            }
            ++count;
        }
        return count == sizeof...(arguments);
    }

private:
    static constexpr bool is_placeholder(std::string_view behind_percent, placeholder expected) {
        switch (expected) {
            case placeholder::text:
                return behind_percent.starts_with('s');
            case placeholder::integer:
                return behind_percent.starts_with('d') || behind_percent.starts_with("ld");
            default:
                return behind_percent.starts_with('f');
        }
    }

    std::string_view text_;
};

inline void append_argument(text_writer& out, std::string_view text) { out.append(text); }
template <class number>
requires std::is_integral_v<number>
void append_argument(text_writer& out, number value) { out.append_integer(static_cast<std::int64_t>(value)); }
inline void append_argument(text_writer& out, double value) { out.append_fixed(value); }

/// Writes a template that is known to fit; each placeholder stands for the next argument.
template <class... arguments>
void write_fitting(text_writer& out, std::string_view format, const arguments&... values) {
    [[maybe_unused]] const auto write_next = [&out, &format](const auto& value) {
        const std::size_t at = format.find('%');
        out.append(format.substr(0, at));
        append_argument(out, value);
        format.remove_prefix(at + (format[at + 1] == 'l' ? 3 : 2));
    };
    (write_next(values), ...);
    out.append(format);
}

/// Writes a template, its placeholders replaced by the arguments.
template <class... arguments>
void write_format(text_writer& out, std::type_identity_t<format_text<std::decay_t<arguments>...>> format,
                  const arguments&... values) {
    write_fitting(out, format.text(), values...);
}

}  // namespace xfc
