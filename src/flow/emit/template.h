#pragma once

#include <charconv>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>

namespace xfc::flow {

using substitutions = std::map<std::string_view, std::string>;

/// The text with every @word@ replaced by what `words` says for it; all of them must be known.
[[nodiscard]] std::string filled_template(std::string_view format, const substitutions& words);

/// Gives away what has been written as soon as it fills a block.
template <class taker>
void take_full_block(std::string& text, const taker& take) {
    constexpr std::size_t block = std::size_t{256} * 1024;  // bytes
    if (text.size() >= block) {
        take(text);
        text.clear();
    }
}

/// Appends texts and decimal numbers.
template <class... parts>
void append_all(std::string& text, const parts&... all) {
    const auto append = [&](const auto& one) {
        if constexpr (std::is_integral_v<std::decay_t<decltype(one)>>) {
            char digits[24];
            text.append(digits, std::to_chars(digits, digits + sizeof digits, one).ptr);
        } else {
            text.append(std::string_view(one));
        }
    };
    (append(all), ...);
}

}  // namespace xfc::flow
