#include "flow/simulate/csv.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "flow/support/graphs.h"

namespace xfc::flow {
namespace {

using test::graph_writer;

/// Ports a (single), d (double) and n (integer).
graph three_inputs() {
    graph_writer w;
    w.output("y", w.input("a"));
    w.output("z", w.input("d", number_format::double_float));
    w.output("m", w.input("n", number_format::integer));
    return w.made;
}

std::vector<std::vector<std::uint64_t>> vectors_of(const std::string& text) {
    diagnostics messages;
    const auto vectors = vectors_from_csv(text, 1, three_inputs(), messages);
    EXPECT_FALSE(messages.has_errors()) << messages.messages().front().text;
    return vectors;
}

/// The message and its place: "csv-number 2:5".
std::string complaint(const std::string& text) {
    diagnostics messages;
    source_map places;
    places.add_file(1, "in.csv", text);
    EXPECT_TRUE(vectors_from_csv(text, 1, three_inputs(), messages).empty());
    if (messages.messages().size() != 1) {
        return "not one message";
    }
    const source_position at = places.position_of(messages.messages().front().where);
    return messages.messages().front().name + " " + std::to_string(at.line) + ":" + std::to_string(at.column);
}

std::uint64_t single(float number) { return std::bit_cast<std::uint32_t>(number); }
std::uint64_t wide(double number) { return std::bit_cast<std::uint64_t>(number); }

TEST(csv, columns_stand_in_any_order_with_blanks_quotes_and_either_line_end) {
    const auto vectors = vectors_of("n, d ,\"a\"\r\n1,2.5,-0.5\r\n\r\n -3 , 0x1.8p+1, \"1e2\"");
    ASSERT_EQ(vectors.size(), 2U);
    EXPECT_EQ(vectors[0], (std::vector<std::uint64_t>{single(-0.5F), wide(2.5), 1}));
    EXPECT_EQ(vectors[1], (std::vector<std::uint64_t>{single(100.0F), wide(3.0), 0xFFFFFFFD}));
}

TEST(csv, numbers_are_those_of_c_rounded_once) {
    const auto vectors = vectors_of(
        "a,d,n\n0x1.000002p-3f,0x1.fp-1000,0xFFFFFFFF\nnan,-inf,-2147483648\n-0.0,inf,4294967295\n"
        "1.00000005960464484f,7,+5\n");
    ASSERT_EQ(vectors.size(), 4U);
    EXPECT_EQ(vectors[0], (std::vector<std::uint64_t>{single(0x1.000002p-3F), wide(0x1.fp-1000), 0xFFFFFFFF}));
    EXPECT_EQ(vectors[1], (std::vector<std::uint64_t>{0x7FC00000, wide(-INFINITY), 0x80000000}));
    EXPECT_EQ(vectors[2], (std::vector<std::uint64_t>{0x80000000, wide(INFINITY), 0xFFFFFFFF}));
    // Just above the middle between 1 and its neighbour: rounding to double first would fall back to 1.
    EXPECT_EQ(vectors[3][0], single(0x1.000002p+0F));
    EXPECT_EQ(vectors[3][2], 5U);
}

TEST(csv, every_malformed_table_has_a_message_at_its_place) {
    EXPECT_EQ(complaint(""), "csv-empty 1:1");
    EXPECT_EQ(complaint("\n\n"), "csv-empty 1:1");
    EXPECT_EQ(complaint("a,d,n\n"), "csv-empty 1:1");
    EXPECT_EQ(complaint("a,b,n\n1,2,3\n"), "csv-port 1:3");
    EXPECT_EQ(complaint("a,d,n,a\n1,2,3,4\n"), "csv-twice 1:7");
    EXPECT_EQ(complaint("a,d\n1,2\n"), "csv-missing 1:1");
    EXPECT_EQ(complaint("a,d,n\n1,2\n"), "csv-fields 2:1");
    EXPECT_EQ(complaint("a,d,n\n1,2,3\n1,2,3,4\n"), "csv-fields 3:1");
    EXPECT_EQ(complaint("a,d,n\n1,,3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1,2,3.5\n"), "csv-number 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,2,4294967296\n"), "csv-number 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,2,-2147483649\n"), "csv-number 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,two,3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1e39,2,3\n"), "csv-number 2:1");
    EXPECT_EQ(complaint("a,d,n\n1,1e309,3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1x,2,3\n"), "csv-number 2:1");
    EXPECT_EQ(complaint(std::string("a,d,n\n1\0,2,3\n", 13)), "csv-number 2:1");
    EXPECT_EQ(complaint("a,d,n\n1,nan(5),3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1,2,- 3\n"), "csv-number 2:5");
}

TEST(csv, outputs_are_written_so_that_they_read_back) {
    const graph source = three_inputs();
    const std::vector<std::vector<std::uint64_t>> results = {{single(0.1F), wide(-0.0), 0xFFFFFFFF},
                                                             {0x7FC00001, wide(INFINITY), 7}};
    EXPECT_EQ(csv_of_outputs(source, results), "y,z,m\n0x1.99999ap-4,-0x0p+0,-1\nnan,inf,7\n");
}

}  // namespace
}  // namespace xfc::flow
