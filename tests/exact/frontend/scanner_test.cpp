#include "exact/frontend/scanner.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "exact/frontend/keyword_table.h"
#include "exact/frontend/tokens.h"

namespace xfc::test {

namespace {

using code_list = std::vector<std::int32_t>;
using text_list = std::vector<std::string>;

struct spelled_code {
    std::string_view spelling;
    std::int32_t code;
};

constexpr std::array<spelled_code, 32> keywords{{
    {"auto", 265},     {"break", 266},  {"case", 267},    {"char", 268},   {"const", 269},    {"continue", 270},
    {"default", 271},  {"do", 272},     {"double", 273},  {"else", 274},   {"enum", 275},     {"extern", 276},
    {"float", 277},    {"for", 278},    {"goto", 279},    {"if", 280},     {"int", 281},      {"long", 282},
    {"register", 283}, {"return", 284}, {"short", 285},   {"signed", 286}, {"sizeof", 287},   {"static", 288},
    {"struct", 289},   {"switch", 290}, {"typedef", 291}, {"void", 292},   {"volatile", 293}, {"union", 294},
    {"unsigned", 295}, {"while", 296},
}};

constexpr std::array<spelled_code, 21> operators{{
    {"||", 297}, {"&&", 298}, {"==", 299},  {"!=", 300},  {"<=", 301},  {">=", 302}, {"<<", 303},
    {">>", 304}, {"++", 305}, {"--", 306},  {"->", 307},  {"+=", 308},  {"-=", 309}, {"*=", 310},
    {"/=", 311}, {"%=", 312}, {"<<=", 313}, {">>=", 314}, {"&&=", 315}, {"^=", 316}, {"|=", 317},
}};

TEST(keywords, each_keyword_has_its_code) {
    for (const spelled_code& row : keywords) {
        EXPECT_EQ(lookup_keyword(row.spelling), row.code) << row.spelling;
        EXPECT_EQ(codes(std::string(row.spelling)), (code_list{row.code})) << row.spelling;
    }
}

TEST(keywords, the_table_holds_32_rows_in_byte_order) {
    EXPECT_EQ(keyword_table.size(), 32U);
    for (std::size_t index = 1; index < keyword_table.size(); ++index) {
        EXPECT_LT(keyword_table.at(index - 1).spelling, keyword_table.at(index).spelling);
    }
}

TEST(keywords, every_other_name_is_an_identifier) {
    for (const std::string_view name : {"", "a", "floa", "floats", "Float", "FLOAT", "aut", "auto_", "while_", "zzz",
                                        "_", "do1", "signe", "signeds", "inline"}) {
        EXPECT_EQ(lookup_keyword(name), 262) << name;
    }
    EXPECT_EQ(lookup_keyword("\xff"), 262);
}

TEST(keywords, case_matters) {
    EXPECT_EQ(codes("Float float FLOAT"), (code_list{262, 277, 262}));
    EXPECT_EQ(scan("Float float").tokens, (std::vector<token>{{262, "Float", 1}, {277, "float", 1}}));
}

TEST(operators, each_operator_has_its_code) {
    for (const spelled_code& row : operators) {
        const std::string spelling(row.spelling);
        EXPECT_EQ(scan(spelling).tokens, (std::vector<token>{{row.code, spelling, 1}}));
        EXPECT_EQ(scan("a" + spelling + "b").tokens,
                  (std::vector<token>{{262, "a", 1}, {row.code, spelling, 1}, {262, "b", 1}}));
    }
}

TEST(operators, the_longest_one_wins) {
    EXPECT_EQ(codes("<<<="), (code_list{303, 301}));
    EXPECT_EQ(codes("<<=="), (code_list{313, '='}));
    EXPECT_EQ(codes(">>>="), (code_list{304, 302}));
    EXPECT_EQ(codes("a+++b"), (code_list{262, 305, '+', 262}));
    EXPECT_EQ(codes("a---b"), (code_list{262, 306, '-', 262}));
    EXPECT_EQ(codes("--->"), (code_list{306, 307}));
    EXPECT_EQ(codes("|||"), (code_list{297, '|'}));
    EXPECT_EQ(codes("==="), (code_list{299, '='}));
    EXPECT_EQ(codes("-->"), (code_list{306, '>'}));
    EXPECT_EQ(codes("^^="), (code_list{'^', 316}));
    EXPECT_EQ(codes("%%="), (code_list{'%', 312}));
}

TEST(operators, and_assign_has_two_ampersands) {
    EXPECT_EQ(codes("x&&=y"), (code_list{262, 315, 262}));
    EXPECT_EQ(codes("x &&= y"), (code_list{262, 315, 262}));
    EXPECT_EQ(codes("x&=y"), (code_list{262, '&', '=', 262}));
    EXPECT_EQ(codes("x&&&=y"), (code_list{262, 298, '&', '=', 262}));
}

TEST(operators, the_ellipsis_is_three_dots) { EXPECT_EQ(codes("..."), (code_list{'.', '.', '.'})); }

TEST(operators, two_slashes_are_two_tokens) {
    EXPECT_EQ(codes("a//b"), (code_list{262, '/', '/', 262}));
    EXPECT_EQ(codes("a//=b"), (code_list{262, '/', 311, 262}));
}

TEST(names, a_name_holds_letters_digits_and_underscores) {
    EXPECT_EQ(scan("_a9 Z_0 x1F").tokens, (std::vector<token>{{262, "_a9", 1}, {262, "Z_0", 1}, {262, "x1F", 1}}));
    EXPECT_EQ(texts("a.b"), (text_list{"a", ".", "b"}));
}

TEST(names, an_L_before_something_else_than_a_quote_begins_a_name) {
    EXPECT_EQ(scan("L La L1 L+").tokens,
              (std::vector<token>{{262, "L", 1}, {262, "La", 1}, {262, "L1", 1}, {262, "L", 1}, {'+', "+", 1}}));
}

TEST(integers, any_suffix_letters_belong_to_the_constant) {
    EXPECT_EQ(scan("12uL 0 7lluULL 3U").tokens,
              (std::vector<token>{{260, "12uL", 1}, {260, "0", 1}, {260, "7lluULL", 1}, {260, "3U", 1}}));
    EXPECT_EQ(scan("12ux").tokens, (std::vector<token>{{260, "12u", 1}, {262, "x", 1}}));
}

TEST(integers, there_are_no_hexadecimal_constants) {
    EXPECT_EQ(scan("0x1F").tokens, (std::vector<token>{{260, "0", 1}, {262, "x1F", 1}}));
}

TEST(integers, a_leading_zero_changes_nothing) {
    EXPECT_EQ(scan("017 089").tokens, (std::vector<token>{{260, "017", 1}, {260, "089", 1}}));
}

TEST(floats, digits_may_stand_on_one_side_of_the_point_only) {
    EXPECT_EQ(scan("1.5 1. .5").tokens, (std::vector<token>{{259, "1.5", 1}, {259, "1.", 1}, {259, ".5", 1}}));
    EXPECT_EQ(scan("1..5").tokens, (std::vector<token>{{259, "1.", 1}, {259, ".5", 1}}));
    EXPECT_EQ(scan("1.2.3").tokens, (std::vector<token>{{259, "1.2", 1}, {259, ".3", 1}}));
    EXPECT_EQ(codes("."), (code_list{'.'}));
    EXPECT_EQ(scan("s.5").tokens, (std::vector<token>{{262, "s", 1}, {259, ".5", 1}}));
}

TEST(floats, an_exponent_is_a_name) {
    EXPECT_EQ(scan("1.5e3").tokens, (std::vector<token>{{259, "1.5", 1}, {262, "e3", 1}}));
    EXPECT_EQ(scan("1e5").tokens, (std::vector<token>{{260, "1", 1}, {262, "e5", 1}}));
    EXPECT_EQ(scan("1.5e-3").tokens,
              (std::vector<token>{{259, "1.5", 1}, {262, "e", 1}, {'-', "-", 1}, {260, "3", 1}}));
}

TEST(floats, a_suffix_is_a_name) {
    EXPECT_EQ(scan("1.5f").tokens, (std::vector<token>{{259, "1.5", 1}, {262, "f", 1}}));
    EXPECT_EQ(scan("1.5L").tokens, (std::vector<token>{{259, "1.5", 1}, {262, "L", 1}}));
    EXPECT_EQ(scan("1u.5").tokens, (std::vector<token>{{260, "1u", 1}, {259, ".5", 1}}));
}

TEST(character_constants, may_be_empty_long_wide_or_escaped) {
    for (const std::string text : {"''", "'a'", "'abc'", "L'a'", "L''", R"('\'')", R"('\\')", R"('\n')", "'\"'"}) {
        EXPECT_EQ(scan(text).tokens, (std::vector<token>{{258, text, 1}}));
    }
}

TEST(strings, may_be_empty_wide_or_escaped) {
    for (const std::string text : {R"("")", R"("ab c")", R"(L"a")", R"("\"")", R"("\\")", R"("a\nb")", R"("'")"}) {
        EXPECT_EQ(scan(text).tokens, (std::vector<token>{{261, text, 1}}));
    }
    EXPECT_EQ(scan(R"("a""b")").tokens, (std::vector<token>{{261, "\"a\"", 1}, {261, "\"b\"", 1}}));
}

TEST(strings, an_unterminated_one_leaves_its_opening_quote) {
    EXPECT_EQ(scan("\"ab\nc").tokens, (std::vector<token>{{'"', "\"", 1}, {262, "ab", 1}, {262, "c", 2}}));
    EXPECT_EQ(scan("\"ab").tokens, (std::vector<token>{{'"', "\"", 1}, {262, "ab", 1}}));
    EXPECT_EQ(scan("'a\n").tokens, (std::vector<token>{{'\'', "'", 1}, {262, "a", 1}}));
    EXPECT_EQ(scan("L\"a\nb").tokens,
              (std::vector<token>{{262, "L", 1}, {'"', "\"", 1}, {262, "a", 1}, {262, "b", 2}}));
    EXPECT_EQ(scan("L'").tokens, (std::vector<token>{{262, "L", 1}, {'\'', "'", 1}}));
}

TEST(strings, an_escaped_newline_does_not_belong_to_a_string) {
    EXPECT_EQ(codes("\"a\\\nb\""), (code_list{'"', 262, '\\', 262, '"'}));
    EXPECT_EQ(codes("'a\\\nb'"), (code_list{'\'', 262, '\\', 262, '\''}));
    EXPECT_EQ(codes("\"a\\"), (code_list{'"', 262, '\\'}));
}

TEST(blanks, only_blanks_tabs_and_newlines_are_white_space) {
    EXPECT_EQ(codes(" \t a\t\tb \n"), (code_list{262, 262}));
    EXPECT_EQ(codes("a\fb\vc\rd"), (code_list{262, '\f', 262, '\v', 262, '\r', 262}));
}

TEST(newlines, each_one_counts) {
    const scan_result result = scan("a\nb\n\n\nc");
    EXPECT_EQ(result.tokens, (std::vector<token>{{262, "a", 1}, {262, "b", 2}, {262, "c", 5}}));
    EXPECT_EQ(scan("\n\n").last_line, 3);
}

TEST(preprocessor_lines, are_skipped_at_the_start_of_a_line) {
    EXPECT_EQ(scan("#include x\ny").tokens, (std::vector<token>{{262, "y", 2}}));
    EXPECT_EQ(scan("a\n#define x \"y\nb").tokens, (std::vector<token>{{262, "a", 1}, {262, "b", 3}}));
    EXPECT_EQ(scan(" \t # if 1 /* \nb").tokens, (std::vector<token>{{262, "b", 2}}));
    EXPECT_EQ(scan("#\n#\n#\nb").tokens, (std::vector<token>{{262, "b", 4}}));
}

TEST(preprocessor_lines, a_hash_elsewhere_is_a_token) {
    EXPECT_EQ(codes("a # b\n"), (code_list{262, '#', 262}));
    EXPECT_EQ(codes("/* c */ # b\n"), (code_list{'#', 262}));
    EXPECT_EQ(codes("/*\n*/# b\n"), (code_list{'#', 262}));
    EXPECT_EQ(codes("/*\n*/ # b\n"), (code_list{'#', 262}));
    EXPECT_EQ(codes("##\n"), (code_list{}));
}

TEST(preprocessor_lines, one_without_a_newline_is_not_skipped) {
    EXPECT_EQ(codes("#include x"), (code_list{'#', 262, 262}));
    EXPECT_EQ(codes("a\n  #include"), (code_list{262, '#', 262}));
}

TEST(preprocessor_lines, a_backslash_does_not_continue_one) {
    EXPECT_EQ(scan("#define a \\\nb\n").tokens, (std::vector<token>{{262, "b", 2}}));
}

TEST(comments, are_skipped_and_count_their_newlines) {
    EXPECT_EQ(scan("a/* b */c").tokens, (std::vector<token>{{262, "a", 1}, {262, "c", 1}}));
    EXPECT_EQ(scan("a/*\n b\n\n*/c").tokens, (std::vector<token>{{262, "a", 1}, {262, "c", 4}}));
    EXPECT_EQ(scan("/**/a").tokens, (std::vector<token>{{262, "a", 1}}));
    EXPECT_EQ(scan("/*/a*/b").tokens, (std::vector<token>{{262, "b", 1}}));
    EXPECT_EQ(scan("/*\n# \"\n*/a").tokens, (std::vector<token>{{262, "a", 3}}));
}

TEST(comments, several_stars_before_the_slash_end_one) {
    EXPECT_EQ(codes("/* a **/b"), (code_list{262}));
    EXPECT_EQ(codes("/*****/b"), (code_list{262}));
    EXPECT_EQ(codes("/* * / */b"), (code_list{262}));
}

TEST(comments, do_not_nest) { EXPECT_EQ(codes("/* /* */ */"), (code_list{'*', '/'})); }

TEST(comments, an_open_one_at_the_end_is_not_reported) {
    const scan_result result = scan("a /* b\nc");
    EXPECT_EQ(result.tokens, (std::vector<token>{{262, "a", 1}}));
    EXPECT_EQ(result.last_line, 2);
    EXPECT_EQ(result.run.status, 0);
    EXPECT_EQ(result.run.standard_output + result.run.standard_error, "");
    EXPECT_EQ(codes("/* *"), (code_list{}));
    EXPECT_EQ(codes("/*"), (code_list{}));
}

TEST(characters, every_other_character_is_its_own_token) {
    const std::string_view own_rule = "\n\t abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";
    for (int code = 1; code <= 255; ++code) {
        const char character = static_cast<char>(static_cast<unsigned char>(code));
        if (own_rule.find(character) == std::string_view::npos) {
            EXPECT_EQ(scan(std::string(";") + character).tokens,
                      (std::vector<token>{{';', ";", 1}, {code, std::string(1, character), 1}}));
        }
    }
}

TEST(characters, bytes_past_127_do_not_belong_to_names_or_numbers) {
    EXPECT_EQ(codes("a\xe4z"), (code_list{262, 0xe4, 262}));
    EXPECT_EQ(codes("1\xb2"), (code_list{260, 0xb2}));
    EXPECT_EQ(codes("\x80\xff"), (code_list{0x80, 0xff}));
    EXPECT_EQ(codes("\"\xff\" /* \xfe */"), (code_list{261}));
}

TEST(characters, a_byte_of_value_0_ends_the_input_of_the_parser) {
    EXPECT_EQ(codes(std::string("a\0b", 3)), (code_list{262}));
    EXPECT_EQ(codes(std::string("\0", 1)), (code_list{}));
    EXPECT_EQ(codes(std::string("/*\0*/ a", 7)), (code_list{262}));
    EXPECT_EQ(codes(std::string("\"\0\" a", 5)), (code_list{261, 262}));
    EXPECT_EQ(codes(std::string("#\0\n a", 5)), (code_list{262}));
}

/// The codes of `count` calls, with the texts that stood ready after each.
std::vector<token> calls(const std::string& source, int count) {
    std::vector<token> found;
    open_source_text(source);
    const run_result run = catch_output([&] {
        for (int call = 0; call < count; ++call) {
            const std::int32_t code = next_token();
            found.push_back({code, std::string(token_text()), current.line_number});
        }
    });
    EXPECT_EQ(run.status, 0) << run.standard_error;
    return found;
}

TEST(end_of_input, an_empty_source_returns_0_at_once) { EXPECT_EQ(calls("", 1), (std::vector<token>{{0, "", 1}})); }

TEST(end_of_input, every_later_call_returns_0_with_an_empty_text) {
    EXPECT_EQ(calls("a", 4), (std::vector<token>{{262, "a", 1}, {0, "", 1}, {0, "", 1}, {0, "", 1}}));
    EXPECT_EQ(calls("\n \n", 3), (std::vector<token>{{0, "", 3}, {0, "", 3}, {0, "", 3}}));
    EXPECT_EQ(calls("/* a", 2), (std::vector<token>{{0, "", 1}, {0, "", 1}}));
}

TEST(token_text, is_terminated_in_place_and_the_character_behind_it_put_back) {
    EXPECT_EQ(calls("ab+cd", 4), (std::vector<token>{{262, "ab", 1}, {'+', "+", 1}, {262, "cd", 1}, {0, "", 1}}));
}

TEST(run_of_the_scanner, starts_over_after_a_reset) {
    EXPECT_EQ(codes("a /* open"), (code_list{262}));
    EXPECT_EQ(codes("b"), (code_list{262}));
    EXPECT_EQ(codes("#x\n"), (code_list{}));
}

}  // namespace

}  // namespace xfc::test
