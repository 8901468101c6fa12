#include <gtest/gtest.h>

#include "exact/driver/compiler.h"
#include "exact/driver/workspace.h"

namespace xfc::test {

namespace {

const std::vector<std::string> verilog{"-vlg"};

std::string many(std::size_t count) { return std::string(count, 'a'); }

TEST(base_name, is_cut_to_31_characters_and_ended_at_the_first_point) {
    const auto name = [](const std::string& source) {
        const std::string buffer = derive_base_name(source);
        EXPECT_EQ(buffer.size(), 32U);
        return buffer.substr(0, buffer.find('\0'));
    };
    EXPECT_EQ(name("prog.c"), "prog");
    EXPECT_EQ(name("prog"), "prog");
    EXPECT_EQ(name("filter.old.c"), "filter");
    EXPECT_EQ(name("work/filter.c"), "work/filter");
    EXPECT_EQ(name("./filter.c"), "");
    EXPECT_EQ(name("../filter.c"), "");
    EXPECT_EQ(name(".c"), "");
    EXPECT_EQ(name(many(30) + ".c"), many(30));
    EXPECT_EQ(name(many(31) + ".c"), many(31));
    EXPECT_EQ(name(many(32) + ".c"), many(31));
    EXPECT_EQ(name(many(80)), many(31));
}

TEST(base_name, keeps_what_stood_behind_the_point) {
    EXPECT_EQ(derive_base_name("filter.old.c"), std::string("filter\0old.c", 12) + std::string(20, '\0'));
    EXPECT_EQ(derive_base_name(many(26) + ".cxxxx"), many(26) + std::string("\0cxxx\0", 6));
}

TEST(output_file_names, replace_an_extension_of_up_to_three_letters) {
    EXPECT_EQ(output_name("prog.c"), "prog.vhd");
    EXPECT_EQ(output_name("prog.cc"), "prog.vhd");
    EXPECT_EQ(output_name("prog.cpp"), "prog.vhd");
    EXPECT_EQ(output_name("prog."), "prog.vhd");
    EXPECT_EQ(output_name("prog"), "prog.vhd");
    EXPECT_EQ(output_name("prog.c", verilog), "prog.v");
    EXPECT_EQ(output_name("prog.", verilog), "prog.v");
    EXPECT_EQ(output_name("prog", verilog), "prog.v");
}

TEST(output_file_names, keep_the_tail_of_a_longer_extension) {
    EXPECT_EQ(output_name("prog.cxxxx"), "prog.vhdxx");
    EXPECT_EQ(output_name("filter.old.c"), "filter.vhd.c");
    EXPECT_EQ(output_name("prog.cpp", verilog), "prog.vpp");
    EXPECT_EQ(output_name("prog.cxxxx", verilog), "prog.vxxxx");
    EXPECT_EQ(output_name("filter.old.c", verilog), "filter.vld.c");
}

TEST(output_file_names, of_a_source_that_begins_with_a_point) {
    EXPECT_EQ(output_name("./x"), ".vhd");
    EXPECT_EQ(output_name("./x.c"), ".vhdc");
    EXPECT_EQ(output_name("./filter.c"), ".vhdlter.c");
    EXPECT_EQ(output_name(".c"), ".vhd");
    EXPECT_EQ(output_name("./x", verilog), ".vx");
    EXPECT_EQ(output_name("./x.c", verilog), ".vx.c");
    EXPECT_EQ(output_name(".c", verilog), ".v");
}

TEST(output_file_names, of_long_sources_get_the_whole_extension) {
    EXPECT_EQ(output_name(many(40)), many(31) + ".vhd");
    EXPECT_EQ(output_name(many(40) + ".c"), many(31) + ".vhd");
    EXPECT_EQ(output_name(many(31)), many(31) + ".vhd");
    EXPECT_EQ(output_name(many(31) + ".c"), many(31) + ".vhd");
    EXPECT_EQ(output_name(many(30) + ".c"), many(30) + ".vhd");
    EXPECT_EQ(output_name(many(29) + ".c"), many(29) + ".vhd");
    EXPECT_EQ(output_name(many(28) + ".cxxx"), many(28) + ".vhd");
    EXPECT_EQ(output_name(many(40), verilog), many(31) + ".v");
    EXPECT_EQ(output_name(many(30) + ".c", verilog), many(30) + ".v");
    EXPECT_EQ(output_name(many(29) + ".c", verilog), many(29) + ".v");
}

TEST(output_file_names, of_long_sources_keep_the_tail_within_31_characters) {
    // Of the extension four letters are within the first 31 characters; the last of them is behind the new one.
    EXPECT_EQ(output_name(many(26) + ".cxxxx"), many(26) + ".vhdx");
    EXPECT_EQ(output_name(many(26) + ".cxxxxxxxx"), many(26) + ".vhdx");
    EXPECT_EQ(output_name(many(26) + ".cxxxx", verilog), many(26) + ".vxxx");
    EXPECT_EQ(output_name(many(28) + ".cxxx", verilog), many(28) + ".vx");
}

TEST(output_file_names, keep_the_folders_of_the_source) {
    const workspace folder;
    std::filesystem::create_directory("work");
    write_file("work/filter.c", small_program);
    EXPECT_EQ(run_here({"work/filter.c"}).status, 0);
    EXPECT_NE(read_file("work/filter.vhd").find("\nENTITY work/filter IS\n"), std::string::npos);
    EXPECT_EQ(folder_entries(), (std::set<std::string>{"work"}));
}

TEST(entity_name, has_neither_extension_nor_tail) {
    EXPECT_NE(compile({.source = small_program, .source_name = "filter.old.c"})
                  .files.at("filter.vhd.c")
                  .find("\nENTITY filter IS\n"),
              std::string::npos);
    EXPECT_NE(compile({.source = small_program, .source_name = many(40) + ".c"})
                  .files.at(many(31) + ".vhd")
                  .find("\nENTITY " + many(31) + " IS\n"),
              std::string::npos);
    EXPECT_NE(compile({.source = small_program, .source_name = ".c"}).files.at(".vhd").find("\nENTITY  IS\n"),
              std::string::npos);
}

TEST(output_file, is_replaced) {
    const workspace folder;
    write_file("prog.c", small_program);
    write_file("prog.vhd", std::string(100000, 'x'));
    EXPECT_EQ(run_here({"prog.c"}).status, 0);
    EXPECT_EQ(read_file("prog.vhd"), compile({.source = small_program}).files.at("prog.vhd"));
}

/// The run ends at the opening of the output with this line; nothing but the source remains.
void expect_overwrite_refused(const std::vector<std::string>& arguments, const std::string& output) {
    const std::set<std::string> before = folder_entries();
    const run_result result = run_here(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "Output file " + output + " would overwrite the source program\n");
    EXPECT_TRUE(ends_with(result.standard_output,
                          "\n********************\n***   EMIT CODE  ***\n"
                          "********************\n\n"))
        << result.standard_output;
    EXPECT_EQ(read_file(arguments.front()), small_program);
    EXPECT_EQ(folder_entries(), before);
}

TEST(source_program, is_not_overwritten) {
    const workspace folder;
    write_file("prog.vhd", small_program);
    expect_overwrite_refused({"prog.vhd"}, "prog.vhd");
    // With the shorter extension the rest of the name remains.
    expect_overwrite_refused({"prog.vhd", "-vlg"}, "prog.vhd");
    write_file("other.v", small_program);
    expect_overwrite_refused({"other.v", "-vlg"}, "other.v");
    EXPECT_EQ(run_here({"other.v"}).status, 0);
    EXPECT_EQ(read_file("other.v"), small_program);
}

TEST(source_program, is_not_overwritten_through_a_symbolic_link) {
    const workspace folder;
    write_file("prog.c", small_program);
    std::filesystem::create_symlink("prog.c", "prog.vhd");
    expect_overwrite_refused({"prog.c"}, "prog.vhd");
    EXPECT_TRUE(std::filesystem::is_symlink("prog.vhd"));
}

TEST(source_program, is_not_overwritten_when_it_is_a_symbolic_link) {
    const workspace folder;
    write_file("prog.vhd", small_program);
    std::filesystem::create_symlink("prog.vhd", "prog.c");
    expect_overwrite_refused({"prog.c"}, "prog.vhd");
}

TEST(source_program, is_not_overwritten_through_a_second_name) {
    const workspace folder;
    write_file("prog.c", small_program);
    std::filesystem::create_hard_link("prog.c", "prog.vhd");
    expect_overwrite_refused({"prog.c"}, "prog.vhd");
}

TEST(source_program, is_not_overwritten_by_a_name_in_a_folder) {
    const workspace folder;
    std::filesystem::create_directory("work");
    write_file("work/prog.vhd", small_program);
    expect_overwrite_refused({"work/prog.vhd"}, "work/prog.vhd");
}

TEST(output_file, that_cannot_be_opened_ends_the_run) {
    const workspace folder;
    write_file("prog.c", small_program);
    std::filesystem::create_directory("prog.vhd");
    const run_result result = run_here({"prog.c"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "Can't open output file prog.vhd\n");
    EXPECT_TRUE(ends_with(result.standard_output, "***   EMIT CODE  ***\n********************\n\n"));
    EXPECT_TRUE(std::filesystem::is_directory("prog.vhd"));
    EXPECT_EQ(run_here({"prog.c", "-vlg"}).status, 0);
}

TEST(output_file, that_is_a_link_of_the_user_stays_when_it_cannot_be_written) {
    for (const std::string name : {"prog.vhd", "prog.v"}) {
        const workspace folder;
        write_file("prog.c", small_program);
        std::filesystem::create_symlink("/dev/full", name);
        const run_result result = name == "prog.v" ? run_here({"prog.c", "-vlg"}) : run_here({"prog.c"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.standard_error, "Can't write output file " + name + "\n");
        EXPECT_EQ(result.standard_output.find("* REPORT"), std::string::npos);
        EXPECT_EQ(result.standard_output.find("No syntax error"), std::string::npos);
        EXPECT_EQ(folder_entries(), (std::set<std::string>{"prog.c", name}));
        EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    }
}

}  // namespace

}  // namespace xfc::test
