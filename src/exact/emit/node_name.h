#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace xfc {

/// Signal name of a node: "synth" and the slot's four digits.
/// Kept: the thousands' place takes one character whatever the number, so slot 10000 has a colon there; past slot
/// 9999 names are not legal identifiers, and a place of value 0 ends the name.
class node_name {
public:
    explicit node_name(std::int32_t slot) {
        characters_[5] = static_cast<char>(static_cast<unsigned char>('0' + slot / 1000));
        characters_[6] = static_cast<char>('0' + slot / 100 % 10);
        characters_[7] = static_cast<char>('0' + slot / 10 % 10);
        characters_[8] = static_cast<char>('0' + slot % 10);
    }

    [[nodiscard]] std::string_view text() const {
        return {characters_.data(), characters_[5] == '\0' ? std::size_t{5} : characters_.size()};
    }

private:
    std::array<char, 9> characters_{'s', 'y', 'n', 't', 'h', '0', '0', '0', '0'};
};

}  // namespace xfc
