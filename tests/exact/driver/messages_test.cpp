// Every message that the command line, the scanner, the parser, the declarations and the opening of the output can
// print is provoked by an input here.

#include "exact/run/messages.h"

#include <gtest/gtest.h>

#include <functional>

#include "exact/driver/workspace.h"

namespace xfc::test {

namespace {

/// What a message must look like: where it stands, its text with the line end, and what becomes of the run.
struct provoked_message {
    message_id id;
    std::function<run_result()> provoke;
    message_stream stream;
    std::string text;
    int status;
};

run_result with_switches(const std::vector<std::string>& switches) {
    return compile({.source = small_program, .switches = switches});
}

run_result with_source(const std::string& source) { return compile({.source = source}); }

run_result with_entry(const std::function<void()>& prepare, const std::string& source_name = "prog.c") {
    const workspace folder;
    prepare();
    return run_here({source_name});
}

std::string declared(const std::string& initializer) {
    return "long n = " + initializer + ";\nfloat a, y;\nmain() { y = a; }\n";
}

std::string sum_of(std::size_t count) {
    std::string sum = "1";
    for (std::size_t index = 1; index < count; ++index) {
        sum += "+1";
    }
    return sum;
}

constexpr auto out = message_stream::standard_output;
constexpr auto err = message_stream::standard_error;

const std::vector<provoked_message> rows{
    {message_id::cannot_open_source, [] { return run_with_arguments({"missing.c"}); }, err,
     "Can't open source program file missing.c\n", 1},
    {message_id::mm_out_of_range,
     [] {
         return with_switches({"-mm", "33"});
     },
     out, "mm switch must be 32 or 36", 1},
    {message_id::ns_out_of_range,
     [] {
         return with_switches({"-ns", "4"});
     },
     out, "ns switch must be 1, 2, or 3", 1},
    {message_id::xc_out_of_range,
     [] {
         return with_switches({"-xc", "1"});
     },
     out, "xc switch must be between 2 and 16", 1},
    {message_id::mv_out_of_range,
     [] {
         return with_switches({"-mv", "4"});
     },
     out, "mv must be 0, 1, 2, or 3", 1},
    {message_id::postnormalization_redundant,
     [] {
         return with_switches({"-ni", "-no"});
     },
     out, "Info: Multiplier Post-normalizations are redundant with input normalizations, switch ignored\n", 0},
    {message_id::error_count_line, [] { return with_source("float a, y; main() { y = a; ) ; }"); }, err,
     "\n\n 1 error found by the parser  \n\n\n", 1},
    {message_id::scanner_buffer_overflowed, [] { return with_source(std::string(600, 'a')); }, err,
     "L0029: PCLEX input buffer overflowed\n", 1},
    {message_id::scanner_read_failed, [] { return with_entry([] { std::filesystem::create_directory("prog.c"); }); },
     err, "L0048: fread() in PCLEX scanner failed\n", 1},
    {message_id::parse_error_line, [] { return with_source("float a, y; main() { y = a;\n ) ; }"); }, out,
     "line 2 error syntax error at )\n", 1},
    {message_id::qualifier_already_exists,
     [] { return with_source("const volatile float a; float y; main() { y = a; }"); }, out,
     "type qualifier already exists", 0},
    {message_id::initializer_without_constant, [] { return with_source(declared("2.5")); }, err,
     "Initializer of n has no integer constant\n", 1},
    {message_id::initializer_too_long, [] { return with_source(declared(sum_of(17))); }, err,
     "Initializer of n is too long\n", 1},
    {message_id::initializer_not_reducible, [] { return with_source(declared("6 / 2")); }, err,
     "Initializer of n cannot be evaluated\n", 1},
    {message_id::output_overwrites_source,
     [] { return with_entry([] { write_file("prog.vhd", small_program); }, "prog.vhd"); }, err,
     "Output file prog.vhd would overwrite the source program\n", 1},
    {message_id::cannot_open_output,
     [] {
         return with_entry([] {
             write_file("prog.c", small_program);
             std::filesystem::create_directory("prog.vhd");
         });
     },
     err, "Can't open output file prog.vhd\n", 1},
    {message_id::cannot_write_output,
     [] {
         return with_entry([] {
             write_file("prog.c", small_program);
             std::filesystem::create_symlink("/dev/full", "prog.vhd");
         });
     },
     err, "Can't write output file prog.vhd\n", 1},
};

TEST(messages, each_is_provoked_on_its_stream_with_its_status) {
    for (const provoked_message& row : rows) {
        const run_result result = row.provoke();
        EXPECT_EQ(result.status, row.status) << row.text;
        if (row.stream == err) {
            EXPECT_EQ(result.standard_error, row.text);
            EXPECT_EQ(result.standard_output.find(row.text), std::string::npos);
        } else {
            EXPECT_NE(result.standard_output.find(row.text), std::string::npos) << row.text;
            EXPECT_EQ(result.standard_error.find(row.text), std::string::npos);
        }
    }
}

TEST(messages, those_that_end_the_run_are_its_last_words) {
    for (const provoked_message& row : rows) {
        if (catalogue_entry(row.id).effect != message_effect::run_ends_with_status_1) {
            continue;
        }
        const run_result result = row.provoke();
        EXPECT_TRUE(ends_with(row.stream == err ? result.standard_error : result.standard_output, row.text))
            << row.text;
        EXPECT_EQ(result.standard_output.find("* REPORT"), std::string::npos) << row.text;
        EXPECT_TRUE(result.files.empty()) << row.text;
    }
}

TEST(messages, the_catalogue_agrees_with_what_is_seen) {
    for (const provoked_message& row : rows) {
        const message& entry = catalogue_entry(row.id);
        EXPECT_EQ(entry.stream, row.stream) << row.text;
        EXPECT_EQ(ends_with(std::string(entry.text), "\n"), ends_with(row.text, "\n")) << row.text;
    }
}

TEST(messages, every_early_one_is_among_them) {
    std::set<message_id> seen;
    for (const provoked_message& row : rows) {
        seen.insert(row.id);
    }
    for (std::size_t index = 0; index < static_cast<std::size_t>(message_id::no_variable_declared); ++index) {
        const auto id = static_cast<message_id>(index);
        // The scanner never reads behind the end of the input, and every character has a rule.
        const bool unreachable = id == message_id::scanner_saw_end_twice || id == message_id::scanner_internal_error;
        EXPECT_EQ(seen.contains(id), !unreachable) << catalogue_entry(id).text;
    }
}

TEST(messages, those_that_no_source_provokes_are_whole) {
    EXPECT_EQ(catalogue_entry(message_id::scanner_saw_end_twice).text,
              "L0030: PCLEX scanner saw EOF twice - shouldn't happen\n");
    EXPECT_EQ(catalogue_entry(message_id::scanner_internal_error).text, "L0028: fatal PCLEX scanner internal error\n");
    for (const message_id id : {message_id::scanner_saw_end_twice, message_id::scanner_internal_error}) {
        EXPECT_EQ(catalogue_entry(id).stream, err);
        EXPECT_EQ(catalogue_entry(id).effect, message_effect::run_ends_with_status_1);
    }
}

TEST(messages, a_scanner_failure_stops_before_the_banner) {
    const run_result result = with_source("float a;\n" + std::string(1200, 'a'));
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "L0029: PCLEX input buffer overflowed\n");
    const run_result after_error = with_source("float a; ) ;\n" + std::string(1200, 'a'));
    EXPECT_EQ(after_error.standard_output, "line 1 error syntax error at )\n");
    EXPECT_EQ(after_error.standard_error, "L0029: PCLEX input buffer overflowed\n");
}

}  // namespace

}  // namespace xfc::test
