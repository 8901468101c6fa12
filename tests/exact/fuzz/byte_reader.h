#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace xfc::fuzz {

/// Turns a fuzzer's bytes into choices, one byte each. Behind the last byte every choice is 0, so a generator whose
/// choice 0 is always the shortest way out comes to an end.
class byte_reader {
public:
    explicit byte_reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    /// A number below `count`, which is 1 to 256.
    std::size_t choose(std::size_t count) {
        if (bytes_.empty()) {
            return 0;
        }
        const std::size_t value = bytes_.front() % count;
        bytes_ = bytes_.subspan(1);
        return value;
    }

    /// True once in `count` bytes of equal likelihood; never behind the last byte.
    bool once_in(std::size_t count) { return choose(count) == count - 1; }

    [[nodiscard]] bool is_empty() const { return bytes_.empty(); }

private:
    std::span<const std::uint8_t> bytes_;
};

}  // namespace xfc::fuzz
