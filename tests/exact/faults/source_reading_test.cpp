// A source whose reading fails on the way, which no file of an ordinary file system does on demand.

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "exact/frontend/parser.h"
#include "exact/frontend/scanner.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

/// A text that can be read up to its end, behind which reading fails.
struct failing_text {
    std::string text;
    std::size_t position = 0;
};

ssize_t read_or_fail(void* cookie, char* block, std::size_t size) {
    auto& source = *static_cast<failing_text*>(cookie);
    const std::size_t count = std::min(size, source.text.size() - source.position);
    if (count == 0) {
        errno = EIO;
        return -1;
    }
    std::memcpy(block, source.text.data() + source.position, count);
    source.position += count;
    return static_cast<ssize_t>(count);
}

run_result parse_and_fail_behind(const std::string& text) {
    failing_text source{text};
    current = {};
    current.source.reset(
        fopencookie(&source, "r", {.read = read_or_fail, .write = nullptr, .seek = nullptr, .close = nullptr}));
    current.line_number = 1;
    run_result result = catch_output([] { static_cast<void>(parse()); });
    current.source.reset();
    return result;
}

std::string program_of_lines(std::size_t lines) {
    std::string text = "float a, y; main() {\n";
    for (; lines > 0; --lines) {
        text += "y = a;\n";
    }
    return text;
}

class failing_source : public testing::TestWithParam<std::size_t> {};

TEST_P(failing_source, ends_the_run_where_its_reading_fails) {
    const run_result result = parse_and_fail_behind(program_of_lines(GetParam()));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "L0048: fread() in PCLEX scanner failed\n");
    EXPECT_EQ(result.standard_output, "");
}

// Around the scanner's blocks of 512 characters and the reader's of 64 KiB, and far behind them.
INSTANTIATE_TEST_SUITE_P(after_lines, failing_source,
                         testing::Values(0, 1, 69, 70, 71, 143, 144, 9358, 9359, 9360, 100000));

TEST(failing_source, may_fail_behind_a_syntax_error) {
    const run_result result = parse_and_fail_behind("float = ;\n" + program_of_lines(200));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "L0048: fread() in PCLEX scanner failed\n");
    EXPECT_EQ(result.standard_output, "line 1 error syntax error at =\n");
}

TEST(failing_source, does_not_matter_behind_a_byte_of_value_0) {
    const run_result result = parse_and_fail_behind("float a;" + std::string(70000, '\0'));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_error, "");
}

}  // namespace

}  // namespace xfc::test
