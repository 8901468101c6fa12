#include "exact/emit/output_file.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "exact/emit/emitted.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

namespace fs = std::filesystem;

/// What the driver hands over: 32 characters, the name up to its first dot, a terminator, and what stood behind.
std::string name_buffer(std::string source) {
    source.resize(31);
    source.resize(32);
    source[source.find('.')] = '\0';
    return source;
}

void one_adder() {
    start_operands();
    add_instance("xfc_alulong", "+", 2, 32);
}

void write_file(const std::string& name, std::string_view text) { std::ofstream(name, std::ios::binary) << text; }

std::string read_file(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(output_file, the_extension_overwrites_the_terminator_and_what_stood_behind_it) {
    one_adder();
    for (const auto& [source, vhdl, verilog] : {std::array{"prog.c", "prog.vhd", "prog.v"},
                                                {"prog.cpp", "prog.vhd", "prog.vpp"},
                                                {"prog.cxxxx", "prog.vhdxx", "prog.vxxxx"},
                                                {"filter.old.c", "filter.vhd.c", "filter.vld.c"},
                                                {"prog.", "prog.vhd", "prog.v"},
                                                {"prog.ab", "prog.vhd", "prog.vb"},
                                                {".c", ".vhd", ".v"}}) {
        EXPECT_EQ(emit(language::vhdl, name_buffer(source)).file_name, vhdl);
        EXPECT_EQ(emit(language::verilog, name_buffer(source)).file_name, verilog);
    }
}

TEST(output_file, a_name_without_a_dot_of_31_characters_gets_its_whole_extension) {
    one_adder();
    std::string buffer(31, 'n');
    buffer.push_back('\0');
    const emitted vhdl = emit(language::vhdl, buffer);
    EXPECT_EQ(vhdl.file_name, std::string(31, 'n') + ".vhd");
    EXPECT_NE(vhdl.text.find("ENTITY " + std::string(31, 'n') + " IS\n"), std::string::npos);
    const emitted verilog = emit(language::verilog, buffer);
    EXPECT_EQ(verilog.file_name, std::string(31, 'n') + ".v");
    EXPECT_NE(verilog.text.find("module " + std::string(31, 'n') + " (\n"), std::string::npos);
}

TEST(output_file, an_extension_that_passes_the_end_of_the_buffer_is_written_whole) {
    one_adder();
    const std::string base(29, 'n');
    EXPECT_EQ(emit(language::vhdl, name_buffer(base + ".c")).file_name, base + ".vhd");
    EXPECT_EQ(emit(language::verilog, name_buffer(base + ".c")).file_name, base + ".v");
}

TEST(output_file, the_entity_and_the_module_have_the_base_name) {
    one_adder();
    const std::string vhdl = emit(language::vhdl, name_buffer("filter.old.c")).text;
    EXPECT_NE(vhdl.find("\nENTITY filter IS\nPORT (\n"), std::string::npos);
    EXPECT_NE(vhdl.find("\nEND filter;\n\nARCHITECTURE gen OF filter IS\n\n"), std::string::npos);
    EXPECT_NE(emit(language::verilog, name_buffer("filter.old.c")).text.find("\nmodule filter (\n"), std::string::npos);
}

TEST(output_file, an_older_file_of_that_name_is_replaced) {
    one_adder();
    const emitted fresh = emit(language::vhdl);
    const working_folder folder;
    write_file("unit.vhd", std::string(100000, 'x'));
    EXPECT_EQ(emit_here(language::vhdl).status, 0);
    EXPECT_EQ(read_file("unit.vhd"), fresh.text);
}

TEST(output_file, one_that_cannot_be_opened_ends_the_run_before_anything_is_logged) {
    one_adder();
    const working_folder folder;
    fs::create_directory("unit.vhd");
    fs::create_directory("unit.v");
    const emitted vhdl = emit_here(language::vhdl);
    EXPECT_EQ(vhdl.status, 1);
    EXPECT_EQ(vhdl.log, "");
    EXPECT_EQ(vhdl.error, "Can't open output file unit.vhd\n");
    const emitted verilog = emit_here(language::verilog);
    EXPECT_EQ(verilog.status, 1);
    EXPECT_EQ(verilog.log, "");
    EXPECT_EQ(verilog.error, "Can't open output file unit.v\n");
}

TEST(output_file, one_in_a_folder_that_does_not_exist_cannot_be_opened) {
    one_adder();
    const working_folder folder;
    const emitted result = emit_here(language::vhdl, "nowhere/unit");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "Can't open output file nowhere/unit.vhd\n");
}

TEST(output_file, the_source_program_is_not_overwritten) {
    one_adder();
    const working_folder folder;
    write_file("unit.vhd", "float a;\n");
    current.source_path = "./unit.vhd";
    const emitted result = emit_here(language::vhdl);
    current.source_path.clear();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "Output file unit.vhd would overwrite the source program\n");
    EXPECT_EQ(read_file("unit.vhd"), "float a;\n");
}

TEST(output_file, a_link_to_the_source_program_is_the_source_program) {
    one_adder();
    const working_folder folder;
    write_file("prog.c", "float a;\n");
    fs::create_symlink("prog.c", "unit.v");
    current.source_path = "prog.c";
    const emitted result = emit_here(language::verilog);
    current.source_path.clear();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "Output file unit.v would overwrite the source program\n");
    EXPECT_EQ(read_file("prog.c"), "float a;\n");
}

TEST(output_file, one_that_cannot_be_written_whole_is_removed) {
    one_adder();
    const working_folder folder;
    ASSERT_TRUE(fs::exists("/dev/full"));
    fs::create_symlink("/dev/full", "unit.vhd");
    const emitted result = emit_here(language::vhdl);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "Can't write output file unit.vhd\n");
    EXPECT_FALSE(fs::is_symlink("unit.vhd"));
}

}  // namespace

}  // namespace xfc::test
