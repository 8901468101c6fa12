#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace xfc {

/// Memory for records that live as long as the arena: taken in large blocks and never given back one by one.
class arena {
public:
    /// A value-initialized record.
    template <class record, class... arguments>
    record* create(arguments&&... values) {
        static_assert(std::is_trivially_destructible_v<record>);
        return ::new (allocate(sizeof(record), alignof(record))) record{std::forward<arguments>(values)...};
    }

    /// An array of value-initialized records, or null when `count` is 0.
    template <class record>
    record* create_array(std::size_t count) {
        static_assert(std::is_trivially_destructible_v<record>);
        if (count == 0) {
            return nullptr;
        }
        auto* records = static_cast<record*>(allocate(count * sizeof(record), alignof(record)));
        std::uninitialized_value_construct_n(records, count);
        return records;
    }

    /// A copy of the text that lives as long as the arena.
    std::string_view copy_text(std::string_view text);

    /// Gives every record back at once.
    void clear();

private:
    void* allocate(std::size_t size, std::size_t alignment);

    static constexpr std::size_t block_size = std::size_t{1} << 18;
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

}  // namespace xfc
