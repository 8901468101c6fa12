#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow::fuzz {

/// The text's tokens as C has them, blanks and comments included: joined again they are the text. Bytes that begin no
/// token stand alone.
[[nodiscard]] std::vector<std::string_view> tokens_of(std::string_view text);

/// The text with a few of its tokens dropped, doubled, exchanged, put elsewhere or replaced by words of C, numbers and
/// names; now and then with other switches in its first line. Equal seeds give equal texts.
[[nodiscard]] std::string mutated(std::string_view text, std::uint64_t seed);

/// The first text with a stretch of the second one in it.
[[nodiscard]] std::string crossed(std::string_view first, std::string_view second, std::uint64_t seed);

}  // namespace xfc::flow::fuzz
