#include "base/arena.h"

#include <algorithm>
#include <cstring>

namespace xfc {

void* arena::allocate(std::size_t size, std::size_t alignment) {
    void* place = next_;
    if (next_ == nullptr || std::align(alignment, size, place, left_) == nullptr) {
        left_ = std::max(block_size, size + alignment);
        blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(left_));
        place = blocks_.back().get();
        std::align(alignment, size, place, left_);
    }
    next_ = static_cast<std::byte*>(place) + size;
    left_ -= size;
    return place;
}

std::string_view arena::copy_text(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    auto* copy = static_cast<char*>(allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

void arena::clear() {
    blocks_.clear();
    next_ = nullptr;
    left_ = 0;
}

}  // namespace xfc
