#include <gtest/gtest.h>

#include "exact/driver/workspace.h"
#include "exact/run/compilation.h"

namespace xfc::test {

namespace {

const std::string banner = "\nCompiler Version MVTK - May 6 2009\n\n";
const std::string parse_banner = "\n*****************\n***   PARSE   ***\n*****************\n\n";
const std::string dfg_banner = "\n**************\n***   DFG  ***\n**************\n\n";
const std::string emit_banner = "\n********************\n***   EMIT CODE  ***\n********************\n\n";
const std::string report_banner =
    "\n**************************\n* REPORT                 *\n**************************\n\n";
const std::string success_line = "\n\n\nNo syntax error was found by the parser\n\n\n";

const std::string usage_text =
    "\nUsage:xfc <program.c>\n"
    "Options: -ds : Pipeline longer additions)\n"
    "Options: -mm : Single precision mantissa expansion (32,36)\n"
    "Options: -fd : Insert fitting registers - (1+)\n"
    "Options: -ni : Fully pre-normalize single precision multipliers\n"
    "Options: -no : Post-normalize single precision multipliers\n"
    "Options: -rc : Round all conversions between signed and unsigned numbers\n"
    "Options: -rn : Round all normalizations\n"
    "Options: -op : optimize away registers on simple internal output nodes\n"
    "Options: -ns : normalization block performance (1,2 or 3)\n"
    "Options: -ps : remove pipelines out of large alignments\n"
    "Options: -xc : Maximum Cluster Size (2-16)\n"
    "Options: -da : Double Precision Multiplier LSB Accuracy (prune multiplier)\n"
    "Options: -s3 : Double Precision Morvane 3 optimized\n"
    "Options: -mv : Single Precision Dot Product Optimization (0 = off,1,2,3)\n"
    "Options: -s5 : Single Precision Dot Product Morvane 5 optimized\n"
    "Options: -sy : Synthesize Arithmetic Components (behavioral model otherwise)\n";

TEST(usage, is_explained_without_arguments) {
    const run_result result = run_with_arguments({});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "\nCompiler Version MVTK - October 12 2010\n\n");
    EXPECT_EQ(result.standard_error, usage_text);
    EXPECT_TRUE(result.files.empty());
    EXPECT_EQ(current.source, nullptr);
}

TEST(source, that_cannot_be_opened_ends_the_run_before_the_switches_are_read) {
    const run_result result = run_with_arguments({"missing.c", "-mm", "33"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "Can't open source program file missing.c\n");
    EXPECT_TRUE(result.files.empty());
}

TEST(source, a_long_name_is_shown_whole_when_it_cannot_be_opened) {
    const std::string name(90, 'n');
    EXPECT_EQ(run_with_arguments({name}).standard_error, "Can't open source program file " + name + "\n");
    EXPECT_EQ(run_with_arguments({""}).standard_error, "Can't open source program file \n");
}

TEST(source, a_folder_cannot_be_read) {
    const workspace folder;
    std::filesystem::create_directory("prog.c");
    const run_result result = run_here({"prog.c"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_output, "");
    EXPECT_EQ(result.standard_error, "L0048: fread() in PCLEX scanner failed\n");
    EXPECT_EQ(folder_entries(), (std::set<std::string>{"prog.c"}));
}

TEST(source, a_name_of_more_than_63_characters_compiles) {
    EXPECT_EQ(output_name(std::string(70, 'n') + ".c"), std::string(31, 'n') + ".vhd");
}

TEST(log, the_phases_print_their_banners_in_order) {
    const run_result result = compile({.source = small_program});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standard_error, "");
    const std::string& text = result.standard_output;
    EXPECT_TRUE(begins_with(text, banner + parse_banner + "***MAKE EXPRESSIONS***\n" + dfg_banner)) << text;
    const std::size_t emission = text.find(emit_banner);
    const std::size_t report = text.find(report_banner);
    ASSERT_NE(emission, std::string::npos);
    ASSERT_NE(report, std::string::npos);
    EXPECT_LT(text.find(dfg_banner), emission);
    EXPECT_LT(emission, report);
    EXPECT_EQ(text.substr(report),
              report_banner + " Maximum Latency " + std::to_string(current.max_latency) + "    \n" + success_line);
    EXPECT_EQ(text.find("October"), std::string::npos);
}

TEST(log, the_passes_over_the_tree_speak_behind_the_parse_banner) {
    const run_result result = compile({.source = "long n = 3;\nfloat a, y;\nmain() { y = a; }\n"});
    EXPECT_TRUE(begins_with(result.standard_output, banner + parse_banner + "Value : 3***MAKE EXPRESSIONS***\n"));
}

TEST(log, a_parse_error_is_said_before_the_banner) {
    const run_result result = compile({.source = "float a, y;\nmain() { y = a; y = ; }\n"});
    EXPECT_TRUE(begins_with(result.standard_output, "line 2 error syntax error at ;\n" + banner + parse_banner));
}

TEST(language, is_verilog_with_the_switch_only) {
    const run_result vhdl = compile({.source = small_program});
    EXPECT_EQ(vhdl.files.size(), 1U);
    EXPECT_TRUE(vhdl.files.contains("prog.vhd"));
    const run_result verilog = compile({.source = small_program, .switches = {"-vlg"}});
    EXPECT_EQ(verilog.files.size(), 1U);
    EXPECT_TRUE(verilog.files.contains("prog.v"));
}

TEST(verdict, one_error_is_counted_in_the_singular) {
    const run_result result = compile({.source = "float a, y;\nmain() {\n y = a;\n y = ;\n}\n"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "\n\n 1 error found by the parser  \n\n\n");
    // Five newlines were read.
    EXPECT_TRUE(ends_with(result.standard_output, report_banner + " Maximum Latency " +
                                                      std::to_string(current.max_latency) + "    \nlinenumber 6\n"));
    ASSERT_EQ(result.files.size(), 1U);
    EXPECT_EQ(result.files.begin()->first, "prog.vhd");
    EXPECT_NE(result.files.begin()->second.find("END "), std::string::npos);
}

TEST(verdict, the_erroneous_statement_changes_nothing_else) {
    const run_result sound = compile({.source = small_program});
    const run_result erroneous = compile({.source = "float a, y;\nmain() {\n y = a;\n y = ;\n}\n"});
    EXPECT_EQ(erroneous.files, sound.files);
}

TEST(verdict, more_errors_are_counted_in_the_plural) {
    const run_result result = compile({.source = "float a, y;\nmain() { y = a;\n y = ;\n y = ; }"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "\n\n 2 errors found by the parser  \n\n\n");
    EXPECT_TRUE(ends_with(result.standard_output, "    \nlinenumber 4\n"));
    EXPECT_EQ(result.standard_output.find(success_line), std::string::npos);
    EXPECT_EQ(result.files.size(), 1U);
}

TEST(verdict, an_empty_source_has_one_error_and_an_output_file) {
    const run_result result = compile({.source = ""});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(begins_with(result.standard_output, "line 1 error syntax error at \n" + banner));
    EXPECT_EQ(result.standard_error, "\n\n 1 error found by the parser  \n\n\n");
    EXPECT_TRUE(ends_with(result.standard_output, "linenumber 1\n"));
    EXPECT_TRUE(result.files.contains("prog.vhd"));
}

TEST(verdict, a_full_parser_stack_is_no_syntax_error) {
    const run_result result =
        compile({.source = "float a, y;\nmain() { y = " + std::string(250, '(') + "a" + std::string(250, ')') + "; }"});
    EXPECT_TRUE(begins_with(result.standard_output, "line 2 error pcyacc internal stack overflow at (\n" + banner));
    EXPECT_TRUE(ends_with(result.standard_output, success_line));
    EXPECT_EQ(result.standard_error, "");
    EXPECT_EQ(result.status, 0);
}

TEST(state, the_line_is_minus_1_before_the_parse) {
    static_cast<void>(run_with_arguments({}));
    EXPECT_EQ(current.line_number, -1);
    static_cast<void>(compile({.source = small_program}));
    EXPECT_EQ(current.line_number, 5);
    static_cast<void>(compile({.source = small_program, .switches = {"-mm", "1"}}));
    EXPECT_EQ(current.line_number, -1);
}

TEST(state, the_source_is_closed_after_the_parse) {
    static_cast<void>(compile({.source = small_program}));
    EXPECT_EQ(current.source, nullptr);
}

TEST(state, a_run_forgets_the_run_before) {
    const run_result first = compile({.source = small_program});
    static_cast<void>(compile({.source = "double p, q; f() { q = p + ; } /* open"}));
    static_cast<void>(compile({.source = small_program, .switches = {"-mm", "36", "-vlg", "-ds"}}));
    const run_result again = compile({.source = small_program});
    EXPECT_EQ(again.standard_output, first.standard_output);
    EXPECT_EQ(again.standard_error, first.standard_error);
    EXPECT_EQ(again.files, first.files);
}

TEST(line_ends, of_two_characters_compile_like_those_of_one) {
    const run_result plain = compile({.source = "float a, y;\nmain()\n{ y = a; }\n"});
    const run_result returns = compile({.source = "float a, y;\r\nmain()\r\n{ y = a; }\r\n"});
    EXPECT_EQ(returns.standard_output, plain.standard_output);
    EXPECT_EQ(returns.files, plain.files);
    EXPECT_EQ(returns.status, 0);
}

TEST(line_ends, a_lone_carriage_return_is_a_syntax_error) {
    const run_result result = compile({.source = "float a, y;\r main() { y = a; }\n"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(begins_with(result.standard_output, "line 1 error syntax error at \r\n"));
}

TEST(statement_ends, a_statement_without_an_assigned_name_is_an_error) {
    const run_result result = compile({.source = "float y; main() { 5; }"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(ends_with(result.standard_output, "DFG3: Error in Expression"));
    EXPECT_EQ(result.standard_error, "");
    EXPECT_TRUE(result.files.empty());
}

TEST(statement_ends, a_minus_before_nothing_ends_with_the_statement) {
    const run_result result = compile({.source = "float a, y, z; main() { y = -\"s\"; z = a; }"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standard_error, "Expression assigned to y has no value\n");
}

}  // namespace

}  // namespace xfc::test
