// Lets the fuzzer change programs token by token, and byte by byte only now and then.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "flow/fuzz/c_mutator.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::size_t write(std::string_view text, std::uint8_t* data, std::size_t most) {
    const std::size_t size = std::min(text.size(), most);
    std::memcpy(data, text.data(), size);
    return size;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    constexpr unsigned in_bytes = 25;  // one of so many
    if (seed % in_bytes == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    return write(xfc::flow::fuzz::mutated(text_of(data, size), seed), data, most);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t first_size,
                                                 const std::uint8_t* second, std::size_t second_size, std::uint8_t* out,
                                                 std::size_t most, unsigned seed) {
    return write(xfc::flow::fuzz::crossed(text_of(first, first_size), text_of(second, second_size), seed), out, most);
}
