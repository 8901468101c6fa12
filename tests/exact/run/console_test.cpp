#include "exact/run/console.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "exact/support/compile.h"

namespace xfc::test {

namespace {

TEST(finish_streams, writes_everything_out_and_keeps_the_status) {
    EXPECT_EQ(finish_streams(0), 0);
    EXPECT_EQ(finish_streams(1), 1);
    EXPECT_EXIT(
        {
            standard_error.append("last words");
            std::_Exit(finish_streams(3));
        },
        testing::ExitedWithCode(3), "^last words$");
}

TEST(fail, prints_its_message_and_unwinds_with_status_1) {
    const run_result to_output = catch_output([] { fail(message_id::mm_out_of_range); });
    EXPECT_EQ(to_output.status, 1);
    EXPECT_EQ(to_output.standard_output, "mm switch must be 32 or 36");
    EXPECT_EQ(to_output.standard_error, "");
    const run_result to_error = catch_output([] { fail(message_id::cannot_open_source, "x.c"); });
    EXPECT_EQ(to_error.status, 1);
    EXPECT_EQ(to_error.standard_output, "");
    EXPECT_EQ(to_error.standard_error, "Can't open source program file x.c\n");
}

TEST(report, prints_its_message_and_returns) {
    bool returned = false;
    const run_result result = catch_output([&returned] {
        report(message_id::qualifier_already_exists);
        report(message_id::parse_error_line, 12, "syntax error", "x");
        returned = true;
    });
    EXPECT_TRUE(returned);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_output, "type qualifier already existsline 12 error syntax error at x\n");
}

TEST(finish_streams, says_so_when_the_standard_output_cannot_be_written) {
    EXPECT_EXIT(
        {
            standard_output.redirect(std::fopen("/dev/full", "w"));
            standard_output.append("lost");
            std::_Exit(finish_streams(0));
        },
        testing::ExitedWithCode(1), "^Can't write to the standard output\n$");
    EXPECT_EXIT(
        {
            standard_output.redirect(std::fopen("/dev/full", "w"));
            standard_output.append("lost");
            std::_Exit(finish_streams(1));
        },
        testing::ExitedWithCode(1), "^$");
}

TEST(catalogue, every_row_has_a_text_of_its_own) {
    std::set<std::string_view> texts;
    for (const message& row : message_catalogue) {
        EXPECT_FALSE(row.text.empty());
        EXPECT_TRUE(texts.insert(row.text).second) << row.text;
    }
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(message_id::count_of_messages));
}

TEST(catalogue, own_lines_of_the_standard_error_end) {
    for (const message& row : message_catalogue) {
        if (row.stream == message_stream::standard_error) {
            EXPECT_EQ(row.text.back(), '\n') << row.text;
        }
    }
}

}  // namespace

}  // namespace xfc::test
