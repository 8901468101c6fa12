// The buffer is filled in blocks of 512 characters; when its data are used up, what was read of the current token may
// be at most 511 characters. The first block holds the characters 0 to 511 of the source, the second 512 to 1023. The
// data are used up as soon as the scanner stands behind the last character, also if nothing more could belong to the
// token.

#include <gtest/gtest.h>

#include "exact/frontend/tokens.h"

namespace xfc::test {

namespace {

const std::string more_text = repeated(1200, ';');

/// A source with an identifier of that length at that offset.
std::string identifier_at(std::size_t offset, std::size_t length, const std::string& behind) {
    return repeated(offset, ';') + repeated(length, 'a') + behind;
}

struct identifier_case {
    std::size_t offset;
    std::size_t length;
    bool overflows;
};

void check(const std::vector<identifier_case>& cases, const std::string& behind) {
    for (const identifier_case& each : cases) {
        const std::string source = identifier_at(each.offset, each.length, behind);
        EXPECT_EQ(overflows(source), each.overflows) << each.length << " characters at " << each.offset;
        if (!each.overflows) {
            const scan_result result = scan(source);
            ASSERT_EQ(result.tokens.size(), each.offset + 1 + (behind == more_text ? more_text.size() : 0));
            EXPECT_EQ(result.tokens.at(each.offset).text, repeated(each.length, 'a'));
            EXPECT_EQ(result.tokens.at(each.offset).code, token_identifier);
        }
    }
}

TEST(buffer, an_identifier_at_the_start_of_a_block_has_at_most_511_characters) {
    check({{0, 510, false}, {0, 511, false}, {0, 512, true}, {0, 513, true}, {0, 600, true}}, more_text);
    check({{0, 508, false}, {0, 509, false}, {0, 510, false}, {0, 511, false}}, "");
    check({{0, 512, true}, {0, 513, true}, {0, 600, true}}, "");
    check({{512, 511, false}, {512, 512, true}, {512, 513, true}, {512, 600, true}}, more_text);
    check({{512, 511, false}, {512, 512, true}, {512, 513, true}, {512, 600, true}}, "");
}

TEST(buffer, an_identifier_that_starts_inside_a_block_may_reach_to_the_end_of_the_next) {
    // 511 characters are kept at the first refill; with the second block there are 1023.
    check({{1, 511, false}, {1, 512, false}, {1, 513, false}, {1, 600, false}, {1, 1022, false}, {1, 1023, true}},
          more_text);
    // 502 characters are kept; with the second block there are 1014.
    check({{10, 511, false}, {10, 512, false}, {10, 513, false}, {10, 600, false}, {10, 1013, false}, {10, 1014, true}},
          more_text);
}

TEST(buffer, an_identifier_at_the_last_character_of_a_block_has_at_most_512_characters) {
    // One character is kept; with the second block there are 513.
    check({{511, 511, false}, {511, 512, false}, {511, 513, true}, {511, 600, true}}, more_text);
}

TEST(buffer, the_read_that_only_finds_the_end_needs_the_token_to_be_short) {
    check({{1, 511, false}, {1, 512, true}, {1, 513, true}, {1, 600, true}}, "");
    check({{10, 511, false}, {10, 512, true}, {10, 513, true}, {10, 600, true}}, "");
    check({{511, 511, false}, {511, 512, true}, {511, 513, true}, {511, 600, true}}, "");
}

TEST(buffer, one_newline_behind_a_long_token_saves_it) {
    check({{1, 512, false}, {1, 600, false}, {10, 512, false}, {511, 511, false}}, "\n");
    // The newline stands behind the second block only here.
    check({{511, 513, true}, {0, 512, true}}, "\n");
    check({{511, 512, false}}, "\n");
}

TEST(buffer, blocks_count_from_the_last_refill_and_not_from_the_token_before) {
    // Each identifier of 255 with its semicolon takes 256 characters, so the third starts a block.
    const std::string pair = repeated(255, 'b') + ";";
    EXPECT_FALSE(overflows(pair + pair + repeated(511, 'a') + more_text));
    EXPECT_TRUE(overflows(pair + pair + repeated(512, 'a') + more_text));
    EXPECT_FALSE(overflows(pair + repeated(255 + 512, 'a') + more_text));
    EXPECT_TRUE(overflows(pair + repeated(256 + 512, 'a') + more_text));
}

TEST(buffer, a_number_follows_the_same_rule) {
    EXPECT_FALSE(overflows(repeated(511, '1') + more_text));
    EXPECT_TRUE(overflows(repeated(512, '1') + more_text));
    EXPECT_FALSE(overflows("1." + repeated(509, '1') + more_text));
    EXPECT_TRUE(overflows("1." + repeated(510, '1') + more_text));
    EXPECT_FALSE(overflows(";." + repeated(600, '1') + more_text));
}

TEST(buffer, a_string_may_not_end_where_its_block_ends_when_it_started_there) {
    EXPECT_FALSE(overflows('"' + repeated(509, 'x') + '"' + more_text));
    EXPECT_TRUE(overflows('"' + repeated(510, 'x') + '"' + more_text));
    EXPECT_FALSE(overflows(";\"" + repeated(1020, 'x') + '"' + more_text));
    EXPECT_TRUE(overflows(";\"" + repeated(1021, 'x') + '"' + more_text));
    EXPECT_FALSE(overflows('\'' + repeated(509, 'x') + '\'' + more_text));
    EXPECT_TRUE(overflows('\'' + repeated(510, 'x') + '\'' + more_text));
}

TEST(buffer, an_unterminated_string_is_read_up_to_its_newline) {
    EXPECT_EQ(codes('"' + repeated(510, 'x') + "\n"), (std::vector<std::int32_t>{'"', 262}));
    EXPECT_TRUE(overflows('"' + repeated(511, 'x') + "\n"));
}

TEST(buffer, a_run_of_comment_text_follows_the_same_rule) {
    // The run starts at character 2: 510 characters are kept, with the second block there are 1022.
    EXPECT_FALSE(overflows("/*" + repeated(1021, 'x') + "*/" + more_text));
    EXPECT_TRUE(overflows("/*" + repeated(1022, 'x') + "*/" + more_text));
    EXPECT_EQ(codes("/*" + repeated(1021, 'x') + "*/y"), (std::vector<std::int32_t>{262}));
    // An open comment of 512 characters of text meets the end of the source.
    EXPECT_FALSE(overflows("/*" + repeated(511, 'x')));
    EXPECT_TRUE(overflows("/*" + repeated(512, 'x')));
}

TEST(buffer, newlines_and_stars_cut_a_comment_into_short_runs) {
    std::string lines = "/*";
    std::string stars = "/*";
    for (int count = 0; count < 20; ++count) {
        lines += repeated(300, 'x') + "\n";
        stars += repeated(300, 'x') + "* ";
    }
    const scan_result result = scan(lines + "*/y");
    EXPECT_EQ(result.tokens, (std::vector<token>{{262, "y", 21}}));
    EXPECT_EQ(codes(stars + "*/y"), (std::vector<std::int32_t>{262}));
}

TEST(buffer, a_preprocessor_line_counts_with_its_newline) {
    EXPECT_FALSE(overflows("#" + repeated(509, 'x') + "\n" + more_text));
    EXPECT_TRUE(overflows("#" + repeated(510, 'x') + "\n" + more_text));
    // The line starts at character 1.
    EXPECT_FALSE(overflows("\n#" + repeated(1020, 'x') + "\n" + more_text));
    EXPECT_TRUE(overflows("\n#" + repeated(1021, 'x') + "\n" + more_text));
    const scan_result result = scan("\n#" + repeated(1020, 'x') + "\ny");
    EXPECT_EQ(result.tokens, (std::vector<token>{{262, "y", 3}}));
}

TEST(buffer, a_preprocessor_line_without_a_newline_is_read_to_the_end_first) {
    const scan_result result = scan("#" + repeated(510, 'x'));
    EXPECT_EQ(result.tokens, (std::vector<token>{{'#', "#", 1}, {262, repeated(510, 'x'), 1}}));
    EXPECT_TRUE(overflows("#" + repeated(511, 'x')));
    EXPECT_TRUE(overflows("#" + repeated(300, 'x') + " " + repeated(300, 'x')));
}

TEST(buffer, a_run_of_blanks_follows_the_same_rule) {
    EXPECT_FALSE(overflows(repeated(511, ' ') + "y"));
    EXPECT_TRUE(overflows(repeated(512, ' ') + "y"));
    EXPECT_FALSE(overflows(";" + repeated(1022, '\t') + "y" + more_text));
    EXPECT_TRUE(overflows(";" + repeated(1023, '\t') + "y" + more_text));
    EXPECT_EQ(codes(";" + repeated(1022, ' ') + "y"), (std::vector<std::int32_t>{';', 262}));
    // At the end of the source 511 blanks may be pending.
    EXPECT_FALSE(overflows(repeated(511, ' ')));
    EXPECT_TRUE(overflows(";" + repeated(512, ' ')));
}

TEST(buffer, short_tokens_never_overflow) {
    const scan_result result = scan(repeated(5000, ';'));
    EXPECT_EQ(result.tokens.size(), 5000U);
    EXPECT_EQ(result.run.status, 0);
    EXPECT_EQ(scan(repeated(5000, '\n')).last_line, 5001);
}

TEST(buffer, a_token_across_the_end_of_a_block_is_whole) {
    for (std::size_t before = 508; before <= 513; ++before) {
        const std::string start = repeated(before, ';');
        EXPECT_EQ(scan(start + "<<=x").tokens.at(before), (token{313, "<<=", 1}));
        EXPECT_EQ(scan(start + "&&=").tokens.at(before), (token{315, "&&=", 1}));
        EXPECT_EQ(scan(start + "float x").tokens.at(before), (token{277, "float", 1}));
        EXPECT_EQ(scan(start + "12.75").tokens.at(before), (token{259, "12.75", 1}));
        EXPECT_EQ(scan(start + "/**/z").tokens.at(before), (token{262, "z", 1}));
        EXPECT_EQ(scan(start + "/* **/z").tokens.at(before), (token{262, "z", 1}));
        EXPECT_EQ(scan(start + "L'a'").tokens.at(before), (token{258, "L'a'", 1}));
        EXPECT_EQ(scan(start + "\n#x\nz").tokens.at(before), (token{262, "z", 3}));
        EXPECT_EQ(scan(start + "\"\\\"\"").tokens.at(before), (token{261, "\"\\\"\"", 1}));
    }
}

TEST(buffer, the_terminated_text_is_restored_across_a_refill) {
    const std::string start = repeated(508, ';');
    const scan_result result = scan(start + "abc+def*ghi");
    const std::vector<token> tail(result.tokens.begin() + 508, result.tokens.end());
    EXPECT_EQ(tail,
              (std::vector<token>{{262, "abc", 1}, {'+', "+", 1}, {262, "def", 1}, {'*', "*", 1}, {262, "ghi", 1}}));
}

TEST(carriage_returns, one_before_a_newline_is_dropped) {
    EXPECT_EQ(scan("a\r\nb\r\n").tokens, (std::vector<token>{{262, "a", 1}, {262, "b", 2}}));
    EXPECT_EQ(scan("#x\r\ny").tokens, (std::vector<token>{{262, "y", 2}}));
    EXPECT_EQ(scan("/*\r\n*/y").tokens, (std::vector<token>{{262, "y", 2}}));
}

TEST(carriage_returns, any_other_is_a_token) {
    EXPECT_EQ(codes("a\rb"), (std::vector<std::int32_t>{262, '\r', 262}));
    EXPECT_EQ(codes("a\r"), (std::vector<std::int32_t>{262, '\r'}));
    EXPECT_EQ(codes("a\r\r\nb"), (std::vector<std::int32_t>{262, '\r', 262}));
    EXPECT_EQ(codes("a\r \n"), (std::vector<std::int32_t>{262, '\r'}));
    EXPECT_EQ(codes("\r\r"), (std::vector<std::int32_t>{'\r', '\r'}));
}

TEST(carriage_returns, are_dropped_across_the_ends_of_blocks) {
    for (const std::size_t before : {510U, 511U, 512U, 513U, 1023U, 65534U, 65535U, 65536U, 131071U}) {
        const scan_result result = scan(repeated(before, ';') + "\r\nx");
        ASSERT_EQ(result.tokens.size(), before + 1) << before;
        EXPECT_EQ(result.tokens.back(), (token{262, "x", 2})) << before;
        const scan_result single = scan(repeated(before, ';') + "\rx");
        ASSERT_EQ(single.tokens.size(), before + 2) << before;
        EXPECT_EQ(single.tokens.at(before).code, '\r') << before;
        EXPECT_EQ(codes(repeated(before, ';') + "\r").size(), before + 1) << before;
    }
}

TEST(carriage_returns, dropped_ones_do_not_count_in_a_block) {
    // Only if the block holds 512 characters besides the dropped one are 511 kept, and 1023 there after the refill.
    EXPECT_FALSE(overflows("\r\n" + repeated(1022, 'a') + more_text));
    EXPECT_TRUE(overflows("\r\n" + repeated(1023, 'a') + more_text));
    // A dropped one does not shift the start of the blocks.
    EXPECT_FALSE(overflows(repeated(511, ';') + "\r\n" + repeated(511, 'a') + more_text));
    EXPECT_TRUE(overflows(repeated(511, ';') + "\r\n" + repeated(512, 'a') + more_text));
}

}  // namespace

}  // namespace xfc::test
