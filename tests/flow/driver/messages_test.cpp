#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "flow/diagnostics/catalogue.h"
#include "flow/driver/commands.h"

// What the program says beyond what a C source alone provokes, and that every row of the catalogue is provoked by some
// test that compares its text.

namespace xfc::flow::test {

namespace {

namespace fs = std::filesystem;

std::string text_of(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// A folder for one test, empty at its start and gone at its end.
class test_folder {
public:
    explicit test_folder(const std::string& name) : path_(fs::path(testing::TempDir()) / ("xfcflow_" + name)) {
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~test_folder() { fs::remove_all(path_); }
    test_folder(const test_folder&) = delete;
    test_folder& operator=(const test_folder&) = delete;

    [[nodiscard]] const fs::path& path() const { return path_; }
    std::string write(const std::string& name, const std::string& text) const {
        fs::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << text;
        return (path_ / name).string();
    }

private:
    fs::path path_;
};

/// The environment's PATH as a test wants it, until the end of the scope.
class search_path {
public:
    explicit search_path(const std::string& wanted) : before_(std::getenv("PATH")) {
        setenv("PATH", wanted.c_str(), 1);
    }
    ~search_path() { setenv("PATH", before_.c_str(), 1); }
    search_path(const search_path&) = delete;
    search_path& operator=(const search_path&) = delete;

private:
    std::string before_;
};

std::string errors_of(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run(arguments, out, error, false), 1);
    EXPECT_EQ(out.str(), "");
    return error.str();
}

/// What the installed program says when a shell starts it like this; it must end with status 1.
std::string errors_of_program(const test_folder& folder, const std::string& command) {
    const std::string file = (folder.path() / "errors.txt").string();
    EXPECT_EQ(std::system(("( " + command + " ) >/dev/null 2>" + file).c_str()), 1 << 8U) << text_of(file);
    return text_of(file);
}

constexpr std::string_view wire = "float f(float a) { return a; }\n";

// ---- Texts. Each stands in the list at the end too. ----

constexpr std::string_view unreadable =
    "xfcflow: error: cannot read '/nowhere/x.c': No such file or directory [cannot-read]\n      hint: name a file that "
    "is there and may be read\n";
constexpr std::string_view no_top =
    "xfcflow: error: --top names 'g', but no function of that name has a body [unknown-top]\n"
    "      hint: name one of the functions of the file\n";
constexpr std::string_view no_memory = "xfcflow: error: out of memory [memory]\n      hint: split the program\n";
constexpr std::string_view failed_parser =
    "xfcflow: error: the C parser failed on this program [parser]\n"
    "      hint: simplify the program until it passes; the program text would help to mend the parser\n";
constexpr std::string_view no_library =
    "xfcflow: error: the component library is not complete in 'FOLDER/share/xfc/library' [library-missing]\n"
    "      hint: install xfcflow anew, its library beside it\n";
constexpr std::string_view no_folder =
    "xfcflow: error: cannot write 'FOLDER/file/library': Not a directory [cannot-write]\n      hint: make room there, "
    "or name another place\n";
constexpr std::string_view no_ghdl =
    "xfcflow: error: ghdl is not installed [no-simulator]\n      hint: install it with: apt-get install ghdl\n";
constexpr std::string_view no_iverilog =
    "xfcflow: error: iverilog is not installed [no-simulator]\n      hint: install it with: apt-get install iverilog\n";
constexpr std::string_view left_out =
    "xfcflow: note: ghdl is not installed: the design in VHDL is not simulated [left-out]\n"
    "      hint: install it with: apt-get install ghdl\n";
constexpr std::string_view refused_by_host =
    "xfcflow: warning: nothing is compared with the C program: cc refuses the program: x.c:1:2: error: no day for C "
    "[host-refuses]\n"
    "      hint: the results are held against the exact ones all the same\n";
constexpr std::string_view wrong_language =
    "xfcflow: error: iverilog does not simulate the language of --lang vhdl [simulator-language]\n"
    "      hint: ghdl simulates VHDL, iverilog and verilator simulate Verilog\n";
constexpr std::string_view no_waveforms =
    "xfcflow: error: --simulator none makes no waveforms for --wave [no-waveforms]\n"
    "      hint: name a simulator, or leave --wave out\n";
constexpr std::string_view failed_simulator =
    "xfcflow: error: ghdl failed: ghdl ended with status 3\nno licence today\n [simulation-failed]\n      hint: run it "
    "with --simulator and another one, to see whose fault it is\n";

/// The text with this folder in the place of FOLDER.
std::string in_folder(std::string_view text, const test_folder& folder) {
    constexpr std::string_view word = "FOLDER";
    std::string result(text);
    const std::size_t at = result.find(word);
    return at == std::string::npos ? result : result.replace(at, word.size(), folder.path().string());
}

TEST(flow_program_messages, a_missing_file_and_a_missing_top_are_told) {
    const test_folder folder("sources");
    EXPECT_EQ(errors_of({"check", "/nowhere/x.c"}), unreadable);
    EXPECT_EQ(errors_of({"check", folder.write("x.c", std::string(wire)), "--top", "g"}), no_top);
}

TEST(flow_program_messages, memory_that_is_used_up_is_told) {
    const test_folder folder("memory");
    const std::string large = folder.write(
        "x.c",
        "float f(float a) { for (int i = 0; i < 90000; i++) { a = a*a+a*i+i*a*a+i; a = a+a*a*a+i; } return a; }");
    // A stack and little more, and not even that.
    for (const char* kilobytes : {"1100000", "300000"}) {
        EXPECT_EQ(errors_of_program(folder, std::string("ulimit -v ") + kilobytes + "; " + XFCFLOW + " check " + large),
                  no_memory)
            << kilobytes;
    }
}

TEST(flow_program_messages, failures_inside_the_parser_are_contained) {
    const test_folder folder("parser");
    for (const char* way : {"crash", "llvm_fatal_error", "parser_crash"}) {
        const std::string source =
            folder.write("x.c", "#pragma clang __debug " + std::string(way) + "\n" + std::string(wire));
        EXPECT_EQ(errors_of_program(folder, std::string(XFCFLOW) + " check " + source), failed_parser) << way;
    }
}

TEST(flow_program_messages, a_library_that_lacks_files_is_told) {
    const test_folder folder("library");
    const std::string source = folder.write("x.c", "float f(float a) { return a + a; }\n");
    fs::create_directories(folder.path() / "bin");
    fs::create_directories(folder.path() / "share/xfc/library");
    fs::copy_file(XFCFLOW, folder.path() / "bin/xfcflow");
    const std::string program = (folder.path() / "bin/xfcflow").string();
    const std::string made = (folder.path() / "made").string();
    EXPECT_EQ(errors_of_program(folder, program + " build " + source + " -o " + made), in_folder(no_library, folder));
    EXPECT_FALSE(fs::exists(made));
}

TEST(flow_program_messages, a_folder_that_cannot_be_written_to_is_told) {
    const test_folder folder("unwritable");
    const std::string source = folder.write("x.c", std::string(wire));
    const std::string file = folder.write("file", "kept");
    EXPECT_EQ(errors_of({"build", source, "-o", file}), in_folder(no_folder, folder));
    EXPECT_EQ(text_of(file), "kept");
}

TEST(flow_program_messages, a_simulator_that_is_missing_fails_or_speaks_another_language_is_told) {
    const test_folder folder("simulators");
    const std::string source = folder.write("x.c", std::string(wire));
    EXPECT_EQ(errors_of({"simulate", source, "--lang", "vhdl", "--simulator", "iverilog"}), wrong_language);
    EXPECT_EQ(errors_of({"simulate", source, "--simulator", "none", "--wave", (folder.path() / "w.vcd").string()}),
              no_waveforms);
    {
        const search_path nothing((folder.path() / "nothing").string());
        EXPECT_EQ(errors_of({"simulate", source, "--lang", "vhdl"}), no_ghdl);
        EXPECT_EQ(errors_of({"simulate", source}), std::string(no_ghdl) + std::string(no_iverilog));
    }
    const std::string stand_in = folder.write("bin/ghdl", "#!/bin/sh\necho no licence today\nexit 3\n");
    fs::permissions(stand_in, fs::perms::owner_all);
    const search_path first((folder.path() / "bin").string() + ":/usr/bin:/bin");
    const fs::path outputs = folder.path() / "out.csv";
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run({{"simulate", source, "--lang", "vhdl", "--vectors", "5", "--outputs", outputs.string()}}, out, error,
                  false),
              1);
    EXPECT_EQ(error.str(), failed_simulator);
    EXPECT_EQ(out.str().find(outputs.string()), std::string::npos) << out.str();
    EXPECT_FALSE(fs::exists(outputs));
    std::ostringstream json;
    EXPECT_EQ(run({{"simulate", source, "--lang", "vhdl", "--vectors", "5", "--json"}}, json, error, false), 1);
    const auto report = nlohmann::json::parse(json.str());
    EXPECT_FALSE(report["agrees"]);
    EXPECT_EQ(report["accuracy"][0]["bits_equal"], 0);
}

/// A folder of programs as a search path: links to the machine's own, and scripts.
class tool_folder {
public:
    explicit tool_folder(const test_folder& folder, const std::vector<std::string>& installed)
        : folder_(folder), path_(folder.path() / "tools") {
        fs::create_directories(path_);
        for (const std::string& name : installed) {
            for (const char* from : {"/usr/local/bin", "/usr/bin", "/bin"}) {
                if (fs::exists(fs::path(from) / name) && !fs::exists(path_ / name)) {
                    fs::create_symlink(fs::path(from) / name, path_ / name);
                }
            }
        }
    }
    void add_script(const std::string& name, const std::string& text) const {
        fs::permissions(folder_.write("tools/" + name, text), fs::perms::owner_all);
    }
    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    const test_folder& folder_;
    fs::path path_;
};

TEST(flow_program_messages, a_language_without_a_simulator_is_left_out_unless_it_is_asked_for) {
    const test_folder folder("left_out");
    const std::string source = folder.write("x.c", std::string(wire));
    const tool_folder tools(folder, {"iverilog", "vvp", "cc"});
    const search_path only(tools.path().string());
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run({{"simulate", source, "--vectors", "5"}}, out, error, false), 0);
    EXPECT_TRUE(error.str().starts_with(left_out)) << error.str();
    EXPECT_NE(out.str().find("iverilog: every output bit as the model has it"), std::string::npos) << out.str();
    for (const char* languages : {"both", "vhdl"}) {
        EXPECT_EQ(errors_of({"simulate", source, "--vectors", "5", "--lang", languages}), no_ghdl) << languages;
    }
    EXPECT_EQ(errors_of({"simulate", source, "--vectors", "5", "--simulator", "ghdl"}), no_ghdl);
}

TEST(flow_program_messages, a_program_that_the_hosts_compiler_refuses_is_told_and_costs_no_agreement) {
    const test_folder folder("host_refuses");
    const std::string source = folder.write("x.c", std::string(wire));
    const tool_folder tools(folder, {});
    tools.add_script("cc",
                     "#!/bin/sh\necho 'x.c: In function f:'\necho 'x.c:1:2: error: no day for C'\n"
                     "echo 'x.c:1:3: error: nor for anything else'\nexit 1\n");
    const search_path only(tools.path().string());
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run({{"simulate", source, "--simulator", "none", "--vectors", "5"}}, out, error, false), 0);
    EXPECT_EQ(error.str(), refused_by_host);
    EXPECT_NE(out.str().find("no figures of C: cc refuses the program: x.c:1:2: error: no day for C\n"),
              std::string::npos)
        << out.str();
    std::ostringstream json;
    EXPECT_EQ(run({{"simulate", source, "--simulator", "none", "--vectors", "5", "--json"}}, json, error, false), 0);
    const auto report = nlohmann::json::parse(json.str());
    EXPECT_TRUE(report["agrees"]);
    EXPECT_FALSE(report["host"]["ran"]);
    ASSERT_EQ(report["messages"].size(), 1U);
    EXPECT_EQ(report["messages"][0]["severity"], "warning");
    EXPECT_EQ(report["messages"][0]["id"], "host-refuses");
}

constexpr std::string_view empty_table =
    "FOLDER/in.csv:1:1: error: the table has no line of numbers [csv-empty]\n"
    "    1 | a\n"
    "      | ^\n"
    "      hint: write a header with the names of the input ports, then a line a cycle\n";
constexpr std::string_view unknown_column =
    "FOLDER/in.csv:1:3: error: no input port is called 'c' [csv-port]\n"
    "    1 | a,c\n"
    "      |   ^\n"
    "      hint: xfcflow check lists the ports\n";
constexpr std::string_view second_column =
    "FOLDER/in.csv:1:3: error: port 'a' has a second column [csv-twice]\n"
    "    1 | a,a\n"
    "      |   ^\n"
    "      hint: give every input port one column\n";
constexpr std::string_view missing_column =
    "FOLDER/in.csv:1:1: error: input port 'b' has no column [csv-missing]\n"
    "    1 | a\n"
    "      | ^\n"
    "      hint: give every input port one column\n";
constexpr std::string_view wrong_fields =
    "FOLDER/in.csv:2:1: error: 3 fields under a header of 2 [csv-fields]\n"
    "    2 | 1,2,3\n"
    "      | ^~~~~\n"
    "      hint: write one number for each column\n";
constexpr std::string_view no_number =
    "FOLDER/in.csv:2:3: error: 'two' is no single number [csv-number]\n"
    "    2 | 1,two\n"
    "      |   ^~~\n"
    "      hint: numbers are written as in C: 1.5, 0x1.8p+0, nan, inf; "
    "integers as 12, -3 or 0x1F, booleans as 0 or 1\n";
constexpr std::string_view out_of_range =
    "FOLDER/in.csv:3:1: error: '300' does not fit into port 'a', which is char in C [csv-range]\n"
    "    3 | 300\n"
    "      | ^~~\n"
    "      hint: write a number from -128 to 127\n";
constexpr std::string_view same_file =
    "xfcflow: error: 'FOLDER/in.csv' would be written over what is read [same-file]\n"
    "      hint: choose another name\n";

TEST(flow_program_messages, tables_that_do_not_fit_are_told_at_their_place) {
    struct table {
        std::string_view program;
        std::string_view text;
        std::string_view told;
    };
    constexpr std::string_view two = "float f(float a, float b) { return a > b ? a : b; }\n";
    const table tables[] = {{wire, "a\n", empty_table},
                            {two, "a,c\n1,2\n", unknown_column},
                            {two, "a,a\n1,2\n", second_column},
                            {two, "a\n1\n", missing_column},
                            {two, "a,b\n1,2,3\n", wrong_fields},
                            {two, "a,b\n1,two\n", no_number},
                            {"int f(char a) { return a; }\n", "a\n-128\n300\n", out_of_range}};
    const test_folder folder("tables");
    for (const table& one : tables) {
        const std::string source = folder.write("x.c", std::string(one.program));
        const std::string input = folder.write("in.csv", std::string(one.text));
        EXPECT_EQ(errors_of({"simulate", source, "--inputs", input}), in_folder(one.told, folder));
    }
    const std::string source = folder.write("x.c", std::string(wire));
    const std::string input = folder.write("in.csv", "a\n1\n");
    EXPECT_EQ(errors_of({"simulate", source, "--inputs", input, "--outputs", input}), in_folder(same_file, folder));
}

constexpr std::string_view other_program =
    "xfcflow: error: the host's compiler gives output 'result' another value: "
    "a=0x1.8p+0 b=0x1p-1: C 0x1p+0, understood 0x1p+1 [c-differs]\n"
    "      hint: either the program leaves C's defined ground there, or it was misunderstood; please report the "
    "latter\n";

TEST(flow_program_messages, a_program_that_asks_who_reads_it_and_differs_for_the_hosts_compiler) {
    const test_folder folder("c_differs");
    const std::string source = folder.write("x.c",
                                            "float f(float a, float b)\n{\n#ifdef __XFCFLOW__\n    return a + b;\n"
                                            "#else\n    return a - b;\n#endif\n}\n");
    const std::string input = folder.write("in.csv", "a,b\n1,0\n1.5,0.5\n");
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(
        run(std::vector<std::string>{"simulate", source, "--simulator", "none", "--inputs", input}, out, error, false),
        1);
    EXPECT_EQ(error.str(), other_program);
}

// ---- Explorations ----

constexpr std::string_view beyond_the_points =
    "xfcflow: error: there is no point 2: the program has 1 [no-such-point]\n      hint: write the lines anew with "
    "--jobs-file\n";
constexpr std::string_view missing_points =
    "xfcflow: error: 1 of 1 points have no result in 'FOLDER/results': 1 (defaults) [points-missing]\n"
    "      hint: run the lines on the standard output, then merge again\n";

TEST(flow_program_messages, points_that_do_not_exist_or_have_no_result_are_told) {
    const test_folder folder("points");
    const std::string source = folder.write("x.c", "int f(int a) { return a + 1; }\n");
    EXPECT_EQ(errors_of({"explore", source, "--point", "2"}), beyond_the_points);
    fs::create_directories(folder.path() / "results");
    const std::string results = (folder.path() / "results").string();
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run({{"explore", source, "--merge", results}}, out, error, false), 1);
    EXPECT_EQ(error.str(), in_folder(missing_points, folder));
    EXPECT_EQ(out.str(), "xfcflow explore " + source + " --vectors 1000 --seed 1 --family ice40 --point 1 --result " +
                             results + "/point_1.json\n");
    EXPECT_EQ(
        errors_of({"explore", source, "--merge", results + "/none"}),
        "xfcflow: error: cannot read '" + results +
            "/none': No such file or directory [cannot-read]\n      hint: name a file that is there and may be read\n");
}

// ---- The whole catalogue ----

/// A row's text as an expression: what differs from case to case may be anything.
std::regex pattern_of(std::string_view text) {
    std::string pattern;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool placeholder = text[at] == '%' && at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9';
        if (placeholder) {
            pattern += ".*";
            ++at;
        } else {
            pattern += std::string(std::string_view("^$\\.*+?()[]{}|").find(text[at]) < 14 ? "\\" : "") + text[at];
        }
    }
    return std::regex(pattern);
}

TEST(flow_program_messages, every_row_of_the_catalogue_is_provoked_by_a_test_that_compares_its_text) {
    // The texts above and beside the programs are those that tests compare.
    std::string told;
    for (const std::string_view text :
         {unreadable,      no_top,         no_memory,     failed_parser,     no_library,    no_folder,
          no_ghdl,         wrong_language, no_waveforms,  failed_simulator,  empty_table,   unknown_column,
          second_column,   missing_column, wrong_fields,  no_number,         out_of_range,  left_out,
          refused_by_host, same_file,      other_program, beyond_the_points, missing_points}) {
        told += text;
    }
    const fs::path tests = fs::path(SOURCE_FOLDER) / "tests/flow";
    for (const auto& entry : fs::directory_iterator(tests / "frontend/messages")) {
        told += entry.path().extension() == ".txt" ? text_of(entry.path()) : "";
    }
    // Texts that tests of a single part compare, as C strings of their source.
    for (const char* source : {"frontend/messages_test.cpp", "passes/design_test.cpp", "driver/commands_test.cpp",
                               "simulate/accuracy_test.cpp"}) {
        told += text_of(tests / source);
    }
    for (int index = 0; index < message_count; ++index) {
        const message_row& row = row_of(static_cast<message_id>(index));
        const std::string_view severity = severity_name(row.level);
        EXPECT_TRUE(std::regex_search(told, pattern_of(std::string(severity) + ": " + std::string(row.text))))
            << row.name << ": " << row.text;
    }
}

}  // namespace

}  // namespace xfc::flow::test
