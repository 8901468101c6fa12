#include "base/arena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace xfc::test {

namespace {

struct small_record {
    std::int32_t number;
    const char* text;
};

struct alignas(64) wide_record {
    double value;
};

TEST(arena, records_start_at_zero) {
    arena memory;
    for (int count = 0; count < 100000; ++count) {
        const auto* record = memory.create<small_record>();
        ASSERT_EQ(record->number, 0);
        ASSERT_EQ(record->text, nullptr);
    }
    const auto* numbers = memory.create_array<std::int64_t>(100000);
    for (std::size_t index = 0; index < 100000; ++index) {
        ASSERT_EQ(numbers[index], 0);
    }
}

TEST(arena, records_keep_their_place_and_values) {
    arena memory;
    std::vector<small_record*> records;
    for (std::int32_t number = 0; number < 50000; ++number) {
        records.push_back(memory.create<small_record>(number, "x"));
    }
    for (std::int32_t number = 0; number < 50000; ++number) {
        ASSERT_EQ(records.at(static_cast<std::size_t>(number))->number, number);
    }
}

TEST(arena, records_are_aligned) {
    arena memory;
    for (int count = 0; count < 1000; ++count) {
        static_cast<void>(memory.copy_text("abc"));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(memory.create<wide_record>()) % 64, 0U);
        static_cast<void>(memory.copy_text("a"));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(memory.create<double>()) % alignof(double), 0U);
    }
}

TEST(arena, a_record_larger_than_a_block_fits) {
    arena memory;
    static_cast<void>(memory.create<small_record>());
    auto* numbers = memory.create_array<std::int32_t>(1000000);
    numbers[999999] = 7;
    EXPECT_EQ(memory.create<small_record>()->number, 0);
    EXPECT_EQ(numbers[999999], 7);
}

TEST(arena, an_empty_array_is_null) {
    arena memory;
    EXPECT_EQ(memory.create_array<small_record>(0), nullptr);
}

TEST(arena, a_copied_text_is_independent_of_its_source) {
    arena memory;
    std::string source = "first";
    const std::string_view copy = memory.copy_text(source);
    source = "other";
    EXPECT_EQ(copy, "first");
    EXPECT_EQ(memory.copy_text(""), "");
}

TEST(arena, starts_over_when_it_is_cleared) {
    arena memory;
    memory.create<small_record>()->number = 5;
    memory.clear();
    EXPECT_EQ(memory.create<small_record>()->number, 0);
}

}  // namespace

}  // namespace xfc::test
