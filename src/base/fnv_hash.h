#pragma once

#include <cstdint>
#include <string_view>

namespace xfc {

/// The 64-bit FNV-1a hash of a text, alike on every machine; `before` is the hash of what stands in front of it.
[[nodiscard]] constexpr std::uint64_t fnv_hash(std::string_view text, std::uint64_t before = 0xCBF29CE484222325ULL) {
    for (const char letter : text) {
        before = (before ^ static_cast<unsigned char>(letter)) * 0x100000001B3ULL;
    }
    return before;
}

}  // namespace xfc
