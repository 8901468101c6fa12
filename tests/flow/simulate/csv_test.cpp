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

/// One port of a C type, in and out.
graph one_input(number_format format, const std::string& c_type, std::uint32_t bytes, bool is_signed) {
    graph_writer w;
    w.output("y", w.input("a", format));
    std::vector<port> inputs(w.made.inputs().begin(), w.made.inputs().end());
    std::vector<port> outputs(w.made.outputs().begin(), w.made.outputs().end());
    for (port* one : {&inputs[0], &outputs[0]}) {
        one->c_type = c_type;
        one->c_bytes = bytes;
        one->c_signed = is_signed;
    }
    return extracted(w.made, inputs, outputs);
}

/// What becomes of one number: its text behind the design, or the message.
std::string through(const graph& source, const std::string& number) {
    diagnostics messages;
    const auto vectors = vectors_from_csv("a\n" + number + "\n", 1, source, messages);
    if (messages.has_errors()) {
        const diagnostic& one = messages.messages().front();
        return one.name + ": " + one.text + "; " + one.hint;
    }
    const std::string table = csv_of_outputs(source, vectors);
    return table.substr(2, table.size() - 3);
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
    EXPECT_EQ(complaint("a,d,n\n1,2,4294967296\n"), "csv-range 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,2,-2147483649\n"), "csv-range 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,2,99999999999999999999\n"), "csv-range 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,2,99999999999999999999x\n"), "csv-number 2:5");
    EXPECT_EQ(complaint("a,d,n\n1,two,3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1e39,2,3\n"), "csv-number 2:1");
    EXPECT_EQ(complaint("a,d,n\n1,1e309,3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1x,2,3\n"), "csv-number 2:1");
    EXPECT_EQ(complaint(std::string("a,d,n\n1\0,2,3\n", 13)), "csv-number 2:1");
    EXPECT_EQ(complaint("a,d,n\n1,nan(5),3\n"), "csv-number 2:3");
    EXPECT_EQ(complaint("a,d,n\n1,2,- 3\n"), "csv-number 2:5");
}

TEST(csv, integers_go_in_and_come_out_by_the_c_type_of_their_port) {
    struct type {
        const char* name;
        std::uint32_t bytes;
        bool is_signed;
        const char* least;
        const char* most;
        const char* below;
        const char* above;
    };
    const type types[] = {{"short", 2, true, "-32768", "32767", "-32769", "32768"},
                          {"unsigned short", 2, false, "0", "65535", "-1", "65536"},
                          {"char", 1, true, "-128", "127", "-129", "300"},
                          {"unsigned char", 1, false, "0", "255", "-1", "256"}};
    for (const type& one : types) {
        const graph source = one_input(number_format::integer, one.name, one.bytes, one.is_signed);
        const std::string hint = std::string("write a number from ") + one.least + " to " + one.most;
        const auto refusal = [&](const std::string& number) {
            return "csv-range: '" + number + "' does not fit into port 'a', which is " + one.name + " in C; " + hint;
        };
        EXPECT_EQ(through(source, one.least), one.least) << one.name;
        EXPECT_EQ(through(source, one.most), one.most) << one.name;
        EXPECT_EQ(through(source, one.below), refusal(one.below));
        EXPECT_EQ(through(source, one.above), refusal(one.above));
    }
    // Of 32 bits both readings are taken, and that of the C type comes out.
    for (const bool is_signed : {true, false}) {
        const graph word = one_input(number_format::integer, is_signed ? "int" : "unsigned int", 4, is_signed);
        EXPECT_EQ(through(word, "0xFFFFFFFF"), is_signed ? "-1" : "4294967295");
        EXPECT_EQ(through(word, "-2147483648"), is_signed ? "-2147483648" : "2147483648");
        EXPECT_EQ(through(word, "4294967295"), is_signed ? "-1" : "4294967295");
        EXPECT_NE(through(word, "4294967296").find("write a number from -2147483648 to 4294967295"), std::string::npos);
        EXPECT_NE(through(word, "-2147483649").find("csv-range"), std::string::npos);
    }
    const graph truth = one_input(number_format::boolean, "_Bool", 1, false);
    EXPECT_EQ(through(truth, "1"), "1");
    EXPECT_EQ(through(truth, "-0"), "0");
    EXPECT_EQ(through(truth, "2"),
              "csv-range: '2' does not fit into port 'a', which is bool in C; write a number from 0 to 1");
    EXPECT_EQ(through(truth, "-1"),
              "csv-range: '-1' does not fit into port 'a', which is bool in C; write a number from 0 to 1");
}

TEST(csv, outputs_are_written_so_that_they_read_back) {
    const graph source = three_inputs();
    const std::vector<std::vector<std::uint64_t>> results = {{single(0.1F), wide(-0.0), 0xFFFFFFFF},
                                                             {0x7FC00001, wide(INFINITY), 7}};
    EXPECT_EQ(csv_of_outputs(source, results), "y,z,m\n0x1.99999ap-4,-0x0p+0,-1\nnan,inf,7\n");
}

}  // namespace
}  // namespace xfc::flow
