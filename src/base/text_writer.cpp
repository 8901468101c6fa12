#include "base/text_writer.h"

#include <utility>

namespace xfc {

void text_writer::append_fixed(double value) {
    // 309 digits, sign, point and six decimals are the longest finite double.
    char digits[340];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6).ptr;
    append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void text_writer::append_past_buffer(std::string_view text) {
    write_through({buffer(), used_});
    used_ = 0;
    if (text.size() > capacity) {
        write_through(text);
        return;
    }
    append(text);
}

void text_writer::write_through(std::string_view text) {
    if (stream_ == nullptr) {
        memory_.append(text);
    } else if (!text.empty() && std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) {
        failed_ = true;
    }
}

bool text_writer::flush() {
    if (used_ != 0) {
        write_through({buffer(), used_});
        used_ = 0;
    }
    if (stream_ != nullptr && std::fflush(stream_) != 0) {
        failed_ = true;
    }
    return !failed_;
}

void text_writer::redirect(std::FILE* stream) {
    stream_ = stream;
    used_ = 0;
    memory_.clear();
    failed_ = false;
}

std::string text_writer::take_text() {
    write_through({buffer(), used_});
    used_ = 0;
    return std::exchange(memory_, {});
}

}  // namespace xfc
