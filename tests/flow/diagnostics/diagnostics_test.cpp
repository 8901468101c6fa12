#include "flow/diagnostics/diagnostics.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace xfc::flow::test {

namespace {

source_map one_file() {
    source_map places;
    places.add_file(1, "prog.c", "float y;\n\ty = x[n];\n");
    return places;
}

TEST(flow_diagnostics, a_message_shows_place_line_caret_and_hint) {
    diagnostics messages;
    messages.report(message_id::unknown_index, {17, 18});
    EXPECT_EQ(rendered(messages, one_file()),
              "prog.c:2:8: error: this index is not known at compile time [unknown-index]\n"
              "    2 |  y = x[n];\n"
              "      |        ^\n"
              "      hint: index with constants and loop counters, or choose among the elements with comparisons\n");
}

TEST(flow_diagnostics, additions_stand_below_their_message) {
    diagnostics messages;
    messages.report(message_id::unused_variable, {7, 8}, {"y"});
    messages.add_to_last(message_id::declared_here, {15, 19}, {"x"});
    EXPECT_EQ(rendered(messages, one_file()),
              "prog.c:1:7: warning: 'y' is never used and becomes no port [unused]\n"
              "    1 | float y;\n"
              "      |       ^\n"
              "      hint: leave it out, or use it\n"
              "prog.c:2:6: note: 'x' is declared here\n"
              "    2 |  y = x[n];\n"
              "      |      ^~~~\n");
    EXPECT_EQ(messages.count_of(severity::warning), 1U);
    EXPECT_FALSE(messages.has_errors());
}

TEST(flow_diagnostics, a_message_without_place_names_the_program) {
    diagnostics messages;
    messages.report(message_id::parser_failed, {});
    EXPECT_TRUE(rendered(messages, {}).starts_with("xfcflow: error: the C parser failed on this program [parser]\n"));
}

TEST(flow_diagnostics, colours_come_when_asked_for) {
    diagnostics messages;
    messages.report(message_id::unknown_index, {17, 18});
    EXPECT_NE(rendered(messages, one_file(), true).find("\x1b[1;31merror: \x1b[0m"), std::string::npos);
}

TEST(flow_diagnostics, the_caret_counts_letters_not_bytes) {
    const std::string line = "\xEF\xBB\xBFint \xC3\xA4\xE2\x82\xAC = n\xC3\xB6;";
    source_map places;
    places.add_file(1, "letters.c", line + "\n");
    diagnostics messages;
    messages.report(message_id::goto_statement, {16, 19});
    EXPECT_NE(rendered(messages, places).find("letters.c:1:16: "), std::string::npos);
    EXPECT_NE(rendered(messages, places).find("    1 | " + line + "\n      |          ^~\n"), std::string::npos)
        << rendered(messages, places);
    // Nor is a letter cut in halves where a part of a long line is shown.
    for (std::size_t before = 200; before < 203; ++before) {
        std::string euros;
        for (std::size_t letter = 0; letter < 2 * before; ++letter) {
            euros += "\xE2\x82\xAC";
        }
        source_map long_line;
        long_line.add_file(1, "long.c", std::string(before, 'a') + euros + "!" + euros + "\n");
        const auto at = static_cast<std::uint32_t>(1 + before + euros.size());
        diagnostics told;
        told.report(message_id::goto_statement, {at, at + 1});
        const std::string text = rendered(told, long_line);
        const std::size_t start = text.find(" | ") + 3;
        const std::size_t mark = text.find('!', start);
        const std::size_t end = text.find('\n', start);
        EXPECT_TRUE(text.substr(start).starts_with("\xE2\x82\xAC")) << text;
        EXPECT_EQ(text.substr(end - 3, 3), "\xE2\x82\xAC") << text;
        EXPECT_EQ(text.find('^') - (end + std::string("\n      | ").size()), (mark - start) / 3) << text;
    }
}

TEST(flow_diagnostics, of_a_long_line_the_part_around_the_place_is_shown) {
    source_map places;
    places.add_file(1, "long.c", std::string(5000, 'a') + "!" + std::string(5000, 'b'));
    diagnostics messages;
    messages.report(message_id::goto_statement, {5001, 5002});
    const std::string text = rendered(messages, places);
    EXPECT_LT(text.size(), 600U);
    EXPECT_NE(text.find("a!b"), std::string::npos);
}

TEST(flow_diagnostics, no_two_rows_have_one_name) {
    std::set<std::string_view> names;
    for (int index = 0; index < message_count; ++index) {
        EXPECT_TRUE(names.insert(row_of(static_cast<message_id>(index)).name).second);
    }
}

TEST(flow_diagnostics, placeholders_without_argument_stay) {
    EXPECT_EQ(filled_in("%1 and %0, 100%", {"a", "b"}), "b and a, 100%");
    EXPECT_EQ(filled_in("%2", {"a"}), "%2");
}

}  // namespace

}  // namespace xfc::flow::test
