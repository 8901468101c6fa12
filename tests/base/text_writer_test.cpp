#include "base/text_writer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

namespace xfc::test {

namespace {

/// More than the writer's buffer holds.
constexpr std::size_t large = 600000;

std::string file_content(std::FILE* stream) {
    std::rewind(stream);
    std::string content;
    for (int character = std::fgetc(stream); character != EOF; character = std::fgetc(stream)) {
        content.push_back(static_cast<char>(character));
    }
    return content;
}

template <class... arguments>
std::string formatted(std::type_identity_t<format_text<std::decay_t<arguments>...>> format,
                      const arguments&... values) {
    text_writer writer;
    write_format(writer, format, values...);
    return writer.take_text();
}

TEST(format_text, fits_when_placeholders_and_arguments_agree_in_number_and_kind) {
    static_assert(format_text<>::fits("plain"));
    static_assert(format_text<std::string_view, int, double>::fits("%s %ld %f"));
    static_assert(format_text<std::int64_t>::fits("%d"));
    static_assert(!format_text<>::fits("%s"));
    static_assert(!format_text<int>::fits("none"));
    static_assert(!format_text<int>::fits("%s"));
    static_assert(!format_text<std::string_view>::fits("%ld"));
    static_assert(!format_text<double>::fits("%ld"));
    static_assert(!format_text<int>::fits("%d%d"));
    static_assert(!format_text<int>::fits("%"));
    EXPECT_EQ(formatted("%s %ld %f%d", "a", 2, 0.5, -1), "a 2 0.500000-1");
}

TEST(text_writer, collects_in_memory_without_a_stream) {
    text_writer writer;
    writer.append("ab");
    writer.append('c');
    EXPECT_EQ(writer.take_text(), "abc");
    EXPECT_EQ(writer.take_text(), "");
}

TEST(text_writer, keeps_the_order_of_texts_larger_than_its_buffer) {
    text_writer writer;
    writer.append("a");
    writer.append(std::string(large, 'b'));
    writer.append("c");
    EXPECT_EQ(writer.take_text(), "a" + std::string(large, 'b') + "c");
    for (std::size_t count = 0; count < large; ++count) {
        writer.append(count % 2 == 0 ? 'x' : 'y');
    }
    const std::string text = writer.take_text();
    ASSERT_EQ(text.size(), large);
    EXPECT_EQ(text.substr(0, 4), "xyxy");
    EXPECT_EQ(text.find("xx"), std::string::npos);
    EXPECT_EQ(text.find("yy"), std::string::npos);
}

TEST(text_writer, writes_whole_numbers_of_64_bits) {
    EXPECT_EQ(formatted("%ld", 0), "0");
    EXPECT_EQ(formatted("%ld", -1), "-1");
    EXPECT_EQ(formatted("%ld", std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(formatted("%ld", std::numeric_limits<std::uint32_t>::max()), "4294967295");
    EXPECT_EQ(formatted("%ld", std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(text_writer, writes_real_numbers_with_six_decimals) {
    EXPECT_EQ(formatted("%f", 0.0), "0.000000");
    EXPECT_EQ(formatted("%f", -0.0), "-0.000000");
    EXPECT_EQ(formatted("%f", 1.5), "1.500000");
    EXPECT_EQ(formatted("%f", -2.0000005), "-2.000001");
    EXPECT_EQ(formatted("%f", 1e15), "1000000000000000.000000");
    EXPECT_EQ(formatted("%f", 1e-9), "0.000000");
    const std::string longest = formatted("%f", -std::numeric_limits<double>::max());
    EXPECT_EQ(longest.size(), 1U + 309U + 7U);
    EXPECT_EQ(longest.substr(0, 6), "-17976");
}

TEST(write_format, puts_each_value_in_its_place) {
    EXPECT_EQ(formatted("no placeholder\n"), "no placeholder\n");
    EXPECT_EQ(formatted("%s", "text"), "text");
    EXPECT_EQ(formatted("%ld%ld", 1, 2), "12");
    EXPECT_EQ(formatted("a%sb%dc%ldd%fe", "x", 1, -2, 0.25), "axb1c-2d0.250000e");
    EXPECT_EQ(formatted("<%s>", ""), "<>");
    EXPECT_EQ(formatted("%s|%s", std::string("p%s"), std::string_view("q")), "p%s|q");
}

TEST(text_writer, hands_its_text_to_the_stream_when_flushed) {
    std::FILE* stream = std::tmpfile();
    text_writer writer(stream);
    writer.append("abc");
    EXPECT_EQ(file_content(stream), "");
    EXPECT_TRUE(writer.flush());
    EXPECT_EQ(file_content(stream), "abc");
    std::fclose(stream);
}

TEST(text_writer, remembers_a_failed_write) {
    std::FILE* full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    text_writer writer(full);
    writer.append("abc");
    EXPECT_FALSE(writer.flush());
    EXPECT_FALSE(writer.flush());
    writer.redirect(nullptr);
    EXPECT_TRUE(writer.flush());
    std::fclose(full);
}

TEST(text_writer, notices_a_failed_write_of_a_text_larger_than_its_buffer) {
    std::FILE* full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    text_writer writer(full);
    writer.append(std::string(large, 'a'));
    EXPECT_FALSE(writer.flush());
    std::fclose(full);
}

TEST(text_writer, drops_what_was_not_flushed_when_it_is_redirected) {
    std::FILE* stream = std::tmpfile();
    text_writer writer(stream);
    writer.append("lost");
    writer.redirect(nullptr);
    writer.append("kept");
    EXPECT_EQ(writer.take_text(), "kept");
    EXPECT_EQ(file_content(stream), "");
    std::fclose(stream);
}

}  // namespace

}  // namespace xfc::test
