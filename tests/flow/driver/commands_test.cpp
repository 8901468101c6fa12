#include "flow/driver/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "flow/driver/options.h"
#include "flow/simulate/process.h"

namespace xfc::flow::test {

namespace {

struct outcome {
    int status;
    std::string out;
    std::string error;
};

outcome run_with(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream error;
    const int status = run(arguments, out, error, false);
    return {status, out.str(), error.str()};
}

std::string example(const std::string& name) { return std::string(SOURCE_FOLDER) + "/examples/" + name; }

TEST(flow_commands, check_tells_ports_and_operations) {
    const outcome checked = run_with({"check", example("complex_multiply.c")});
    EXPECT_EQ(checked.status, 0);
    EXPECT_EQ(checked.error, "");
    EXPECT_EQ(checked.out, "complex_multiply of " + example("complex_multiply.c") +
                               ", a whole file\n"
                               "\n"
                               "  input   a_re  single   float a_re\n"
                               "  input   a_im  single   float a_im\n"
                               "  input   b_re  single   float b_re\n"
                               "  input   b_im  single   float b_im\n"
                               "  output  p_re  single   float p_re\n"
                               "  output  p_im  single   float p_im\n"
                               "\n"
                               "  latency 17 cycles\n"
                               "\n"
                               "     1 add single\n"
                               "     1 subtract single\n"
                               "     4 multiply single\n");
}

TEST(flow_commands, structures_in_structures_and_arrays_of_arrays_are_ports_by_their_members) {
    const outcome checked =
        run_with({"check", std::string(SOURCE_FOLDER) + "/tests/flow/hdl/programs/nested_ports.c", "--json"});
    ASSERT_EQ(checked.status, 0) << checked.error;
    const auto report = nlohmann::json::parse(checked.out);
    const auto names = [&](const char* way) {
        std::vector<std::string> all;
        for (const auto& port : report[way]) {
            all.push_back(port["name"]);
        }
        return all;
    };
    const std::vector<std::string> inputs = {"b_low_x",    "b_low_y", "b_high_0_x", "b_high_0_y", "b_high_1_x",
                                             "b_high_1_y", "b_tag",   "m_0_0",      "m_0_1",      "m_1_0",
                                             "m_1_1",      "m_1_2",   "moved_x_in"};
    const std::vector<std::string> outputs = {"moved_x_out",     "moved_y",         "result_centre_x",
                                              "result_centre_y", "result_area_0_0", "result_area_0_1",
                                              "result_area_1_0", "result_area_1_1"};
    EXPECT_EQ(names("inputs"), inputs);
    EXPECT_EQ(names("outputs"), outputs);
}

TEST(flow_commands, view_writes_a_page_a_picture_or_a_graph) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "xfcflow_view";
    std::filesystem::create_directories(folder);
    const auto begin_of = [&](const std::string& file) {
        std::string line;
        std::ifstream stream(folder / file);
        std::getline(stream, line);
        return line.substr(0, 15);
    };
    for (const auto& [option, file, begin] :
         {std::tuple("", "c.html", "<!DOCTYPE html>"), std::tuple("--svg", "c.svg", "<svg xmlns=\"htt"),
          std::tuple("--dot", "c.dot", "digraph \"comple")}) {
        std::vector<std::string> arguments = {"view", example("complex_multiply.c"), "-o", (folder / file).string()};
        if (*option != 0) {
            arguments.emplace_back(option);
        }
        const outcome viewed = run_with(arguments);
        EXPECT_EQ(viewed.status, 0) << viewed.error;
        EXPECT_EQ(viewed.out, (folder / file).string() + "\n");
        EXPECT_EQ(begin_of(file), begin);
    }
}

TEST(flow_commands, view_says_what_it_cannot_write) {
    const outcome viewed = run_with({"view", example("complex_multiply.c"), "-o", "/dev/full/x.html"});
    EXPECT_EQ(viewed.status, 1);
    EXPECT_EQ(viewed.out, "");
    EXPECT_NE(viewed.error.find("cannot write '"), std::string::npos) << viewed.error;
}

TEST(flow_commands, synth_tells_what_a_design_takes_and_what_limits_it) {
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "xfcflow_synth.c";
    std::ofstream(path) << "int f(int a, int b) { return a + b; }\n";
    const outcome told = run_with({"synth", path.string(), "--json"});
    ASSERT_EQ(told.status, 0) << told.error;
    const auto report = nlohmann::json::parse(told.out);
    EXPECT_EQ(report["design"], "f");
    EXPECT_GE(report["look_up_tables"], 32);  // an adder of 32 bits in three stages
    EXPECT_GE(report["flip_flops"], 32 * 2);
    EXPECT_EQ(report["multipliers"], 0);
    EXPECT_GT(report["megahertz"], 50.0);
    bool component_seen = false;
    for (const auto& stretch : report["path"]) {
        component_seen = component_seen || stretch["component"] == "xfc_alulong";
    }
    EXPECT_TRUE(component_seen) << report["path"];
    const outcome text = run_with({"synth", path.string(), "--family", "ecp5"});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.out.substr(0, 17), "f for ECP5 by Yos");
}

/// The search path is this folder alone as long as one of these lives.
class only_path {
public:
    explicit only_path(const std::filesystem::path& folder) : before_(std::getenv("PATH")) {
        setenv("PATH", folder.c_str(), 1);
    }
    ~only_path() { setenv("PATH", before_.c_str(), 1); }
    only_path(const only_path&) = delete;
    only_path& operator=(const only_path&) = delete;

private:
    std::string before_;
};

TEST(flow_commands, synth_says_which_tool_is_missing) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "xfcflow_tools";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / "f.c";
    std::ofstream(path) << "int f(int a, int b) { return a + b; }\n";
    {
        const only_path nothing(folder);
        const outcome told = run_with({"synth", path.string()});
        EXPECT_EQ(told.status, 1);
        EXPECT_EQ(told.out, "");
        EXPECT_NE(told.error.find("error: yosys is not installed [no-simulator]"), std::string::npos) << told.error;
    }
    std::filesystem::create_symlink("/usr/bin/yosys", folder / "yosys");
    const only_path yosys_alone(folder);
    const outcome told = run_with({"synth", path.string()});
    EXPECT_EQ(told.status, 0) << told.error;
    EXPECT_NE(told.error.find("warning: nextpnr-ice40 is not installed, so no clock can be told [no-placer]"),
              std::string::npos)
        << told.error;
    EXPECT_EQ(told.out.find("MHz"), std::string::npos) << told.out;
}

TEST(flow_commands, numbers_out_of_range_are_told_with_their_range) {
    for (const std::string option : {"--unroll", "--vectors", "--seed"}) {
        for (const std::string number : {"0", "-1", "1e3", "0x10", "7 ", "99999999999"}) {
            const outcome refused = run_with({"simulate", "x.c", option, number});
            EXPECT_EQ(refused.status, 1);
            EXPECT_EQ(refused.error, option + ": Value " + number +
                                         " is no whole number from 1 to 2147483647\n"
                                         "Run with --help for more information.\n");
        }
    }
}

TEST(flow_commands, numbers_are_decimal_whatever_they_start_with) {
    const outcome told = run_with({"simulate", example("flow/pid_step.c"), "--simulator", "none", "--vectors", "010"});
    EXPECT_EQ(told.status, 0) << told.error;
    EXPECT_NE(told.out.find(" 10 vectors"), std::string::npos) << told.out;
}

TEST(flow_commands, options_that_would_do_nothing_are_refused) {
    const auto error_of = [](const std::vector<std::string>& arguments) { return run_with(arguments).error; };
    const std::string more = "\nRun with --help for more information.\n";
    EXPECT_EQ(error_of({"view", "x.c", "--svg", "--dot"}), "--svg excludes --dot" + more);
    EXPECT_EQ(error_of({"check", "x.c", "--json", "--dump", "program"}), "--dump excludes --json" + more);
    EXPECT_EQ(error_of({"simulate", "x.c", "--inputs", "x.csv", "--vectors", "3"}),
              "--vectors excludes --inputs" + more);
    EXPECT_EQ(error_of({"explore", "x.c", "--csv", "--html"}), "--csv excludes --html" + more);
    EXPECT_EQ(error_of({"explore", "x.c", "--merge", "results", "--point", "3"}), "--merge excludes --point" + more);
    EXPECT_EQ(error_of({"explore", "x.c", "--result", "x.json"}), "--result requires --point" + more);
}

TEST(flow_commands, a_refusal_is_the_same_json_report_from_every_command) {
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "xfcflow_refused.c";
    std::ofstream(path) << "float f(float a) { goto x; x: return a; }\n";
    const outcome checked = run_with({"check", path.string(), "--json"});
    EXPECT_EQ(nlohmann::json::parse(checked.out)["accepted"], false);
    EXPECT_EQ(nlohmann::json::parse(checked.out)["messages"].size(), 1U);
    for (const char* command : {"build", "synth", "explore"}) {
        const outcome refused = run_with({command, path.string(), "--json"});
        EXPECT_EQ(refused.status, 1) << command;
        EXPECT_EQ(refused.out, checked.out) << command;
        EXPECT_EQ(refused.error, "") << command;
    }
}

TEST(flow_commands, all_examples_are_accepted) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(example(""))) {
        if (entry.path().extension() == ".c") {
            EXPECT_EQ(run_with({"check", entry.path().string()}).status, 0) << entry.path();
            ++count;
        }
    }
    EXPECT_GE(count, 12);
}

TEST(flow_commands, the_report_and_the_messages_come_as_json_too) {
    const outcome checked = run_with({"check", example("decibel.c"), "--json"});
    EXPECT_EQ(checked.status, 0);
    const auto report = nlohmann::json::parse(checked.out);
    EXPECT_EQ(report["accepted"], true);
    EXPECT_EQ(report["name"], "decibel");
    EXPECT_EQ(report["inputs"].size(), 3U);
    EXPECT_EQ(report["outputs"][0]["name"], "level");
    EXPECT_EQ(report["messages"][0]["id"], "constant-format");
    EXPECT_EQ(report["messages"][0]["line"], 9);

    const outcome refused = run_with({"check", "/nowhere.c", "--json"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(nlohmann::json::parse(refused.out)["accepted"], false);
}

TEST(flow_commands, check_tells_the_latency_that_build_reaches) {
    for (const char* name : {"biquad.c", "dot_product.c", "normalize.c"}) {
        const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_latency";
        const auto checked = nlohmann::json::parse(run_with({"check", example(name), "--json"}).out);
        const auto made =
            nlohmann::json::parse(run_with({"build", example(name), "--json", "-o", folder.string()}).out);
        EXPECT_EQ(checked["latency"], made["latency"]) << name;
        EXPECT_GT(checked["latency"], 5) << name;
        std::filesystem::remove_all(folder);
    }
}

TEST(flow_commands, reciprocals_are_used_when_asked_for_alone) {
    const std::filesystem::path source = std::filesystem::path(testing::TempDir()) / "xfcflow_reciprocal.c";
    std::ofstream(source) << "#include <math.h>\nfloat f(float a, float b) { return 1.0f / a + 1.0f / sqrtf(b); }\n";
    const std::string plain = run_with({"check", source.string(), "--dump", "components"}).out;
    EXPECT_EQ(plain.find("fp_inv"), std::string::npos) << plain;
    EXPECT_NE(plain.find("xfc_divfp1x"), std::string::npos);
    const std::string fast = run_with({"check", source.string(), "--fast-reciprocal", "--dump", "components"}).out;
    EXPECT_NE(fast.find("fp_inv single #"), std::string::npos) << fast;
    EXPECT_NE(fast.find("fp_invsqr single #"), std::string::npos);
    EXPECT_EQ(fast.find("xfc_divfp1x"), std::string::npos);
}

TEST(flow_commands, options_set_the_generics_of_the_components) {
    const std::filesystem::path source = std::filesystem::path(testing::TempDir()) / "xfcflow_generics.c";
    std::ofstream(source) << "float f(float a, float b) { return (a + b) * (a / b); }\n";
    const auto dumped = [&](const std::vector<std::string>& options) {
        std::vector<std::string> words = {"check", source.string(), "--dump", "components"};
        words.insert(words.end(), options.begin(), options.end());
        return run_with(words).out;
    };
    const std::string plain = dumped({});
    for (const char* generic :
         {"roundconvert=1", "roundnormalize=1", "inputnormalize=1", "outputpipe=1", "shiftspeed=1", "normspeed=2"}) {
        EXPECT_NE(plain.find(generic), std::string::npos) << generic << '\n' << plain;
    }
    const std::string set =
        dumped({"--round-conversions", "off", "--round-normalization", "off", "--normalize-inputs", "off",
                "--output-registers", "off", "--shifter-registers", "off", "--normalizer-speed", "1"});
    for (const char* generic :
         {"roundconvert=0", "roundnormalize=0", "inputnormalize=0", "outputpipe=0", "shiftspeed=0", "normspeed=1"}) {
        EXPECT_NE(set.find(generic), std::string::npos) << generic << '\n' << set;
    }
    EXPECT_NE(dumped({"--low-latency", "--shifter-registers", "on"}).find("shiftspeed=1"), std::string::npos);
    EXPECT_NE(plain.find("synthesize=0"), std::string::npos) << plain;
    EXPECT_NE(dumped({"--multiplier-blocks", "on"}).find("synthesize=1"), std::string::npos);
    EXPECT_EQ(run_with({"check", source.string(), "--normalizer-speed", "4"}).status, 1);
}

TEST(flow_commands, two_compilations_side_by_side_give_the_same_bytes) {
    const auto compiled = [](const char* name) {
        return run_with({"check", example(name), "--dump", "schedule"}).out +
               run_with({"check", example(name), "--json"}).out + run_with({"check", "/nowhere.c", "--json"}).out;
    };
    const std::string fir = compiled("fir.c");
    const std::string biquad = compiled("biquad.c");
    ASSERT_NE(fir, biquad);
    std::vector<int> equal(2, 0);
    constexpr int rounds = 10;
    std::thread other([&] {
        for (int round = 0; round < rounds; ++round) {
            equal[0] += compiled("fir.c") == fir ? 1 : 0;
        }
    });
    for (int round = 0; round < rounds; ++round) {
        equal[1] += compiled("biquad.c") == biquad ? 1 : 0;
    }
    other.join();
    EXPECT_EQ(equal, std::vector<int>(2, rounds));
}

TEST(flow_commands, a_stage_is_dumped) {
    const outcome dumped = run_with({"check", example("dot_product.c"), "--dump", "program"});
    EXPECT_EQ(dumped.status, 0);
    EXPECT_NE(dumped.out.find("multiply single"), std::string::npos);
    EXPECT_NE(dumped.out.find("output single y = %"), std::string::npos);
    EXPECT_EQ(run_with({"check", example("dot_product.c"), "--dump", "nothing"}).status, 1);
}

TEST(flow_commands, wrong_command_lines_are_refused_on_the_error_stream) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"check"}, {"paint", "x.c"}, {"check", "x.c", "--nonsense"}, {"check", "x.c", "--unroll", "0"}}) {
        const outcome refused = run_with(arguments);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_NE(refused.error, "");
    }
}

TEST(flow_commands, help_man_page_and_completion_know_every_option_of_the_rows) {
    std::string help;
    for (const command_row& row : command_rows()) {
        const outcome one = run_with({std::string(row.name), "--help"});
        EXPECT_EQ(one.status, 0);
        help += one.out;
    }
    const std::string man = man_page();
    const std::string completion = bash_completion();
    for (const option_row& row : option_rows()) {
        EXPECT_NE(help.find(row.name), std::string::npos) << row.name;
        EXPECT_NE(completion.find(row.name), std::string::npos) << row.name;
        EXPECT_NE(man.find(row.text), std::string::npos) << row.name;
    }
    for (const command_row& row : command_rows()) {
        EXPECT_NE(run_with({"--help"}).out.find(row.example), std::string::npos);
        EXPECT_NE(man.find(row.example), std::string::npos);
    }
    EXPECT_EQ(run_with({"--man"}).out, man);
    EXPECT_TRUE(run_with({"--version"}).out.starts_with("xfcflow "));
}

/// A file below the folder that tests may write to, with this text.
std::filesystem::path written(const std::string& name, const std::string& text) {
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / name;
    std::ofstream(path) << text;
    return path;
}

TEST(flow_commands, build_writes_both_languages_their_lists_and_what_they_name) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_build_test";
    std::filesystem::remove_all(folder);
    const auto source = written("xfcflow_sum.c", "float sum(float a, float b) { return a + b; }\n");
    const outcome made = run_with({"build", source.string(), "-o", folder.string()});
    EXPECT_EQ(made.status, 0) << made.error;
    EXPECT_NE(made.out.find("sum: latency 14 cycles, 4 components"), std::string::npos) << made.out;
    for (const char* name : {"sum.vhd", "sum.v", "sum.json", "sum.core"}) {
        EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
    }
    for (const char* list : {"sum_vhdl.f", "sum_verilog.f"}) {
        std::ifstream lines(folder / list);
        int count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            EXPECT_TRUE(std::filesystem::exists(folder / line)) << line;
        }
        EXPECT_GT(count, 4);
    }
    const auto report = nlohmann::json::parse(std::ifstream(folder / "sum.json"));
    EXPECT_EQ(report["latency"], 14);
    EXPECT_EQ(report["values"].size(), 4U);

    const auto one = folder / "vhdl_alone";
    EXPECT_EQ(
        run_with({"build", source.string(), "--lang", "vhdl", "--name", "adder", "--low-latency", "-o", one.string()})
            .out.find("adder: latency 9 cycles"),
        0U);
    EXPECT_TRUE(std::filesystem::exists(one / "adder.vhd"));
    EXPECT_FALSE(std::filesystem::exists(one / "adder.v"));
    std::filesystem::remove_all(folder);
}

TEST(flow_commands, a_note_tells_another_name_of_the_design_and_check_knows_it) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_names";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const auto source = written("xfcflow_names/entity.c", "float entity(float a) { return a; }\n");
    const std::string note = "xfcflow: note: design 'entity' is called 'c_entity' in hardware [design-renamed]\n";
    const outcome checked = run_with({"check", source.string()});
    EXPECT_EQ(checked.error, note);
    EXPECT_TRUE(checked.out.starts_with("c_entity of ")) << checked.out;
    const outcome made = run_with({"build", source.string(), "-o", folder.string()});
    EXPECT_EQ(made.error, note);
    EXPECT_TRUE(std::filesystem::exists(folder / "c_entity.v"));
    const auto said = [&](const std::string& name) {
        return run_with({"build", source.string(), "--name", name, "-o", folder.string()}).error;
    };
    EXPECT_EQ(said("a-b"), "xfcflow: note: design 'a-b' is called 'axb' in hardware [design-renamed]\n");
    EXPECT_EQ(said("DP_exp"), "xfcflow: note: design 'DP_exp' is called 'DP_exp_top' in hardware [design-renamed]\n");
    EXPECT_EQ(said("wire_1"), "");
    const auto whole_file = written("xfcflow_names/3-tap.c", "float a, y;\nvoid f() { y = a * 2; }\n");
    EXPECT_EQ(run_with({"check", whole_file.string()}).error,
              "xfcflow: note: design '3-tap' is called 'v3xtap' in hardware [design-renamed]\n");
    const auto underscored = written("xfcflow_names/f.c", "float _f(float a) { return a; }\n");
    EXPECT_EQ(run_with({"check", underscored.string()}).error,
              "xfcflow: note: design '_f' is called 'f' in hardware [design-renamed]\n");
    std::filesystem::remove_all(folder);
}

std::string text_of(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

TEST(flow_commands, comments_of_a_design_are_ascii_and_no_orders_to_a_tool) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_comments";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "u\u00df\nx");
    const auto source = written("xfcflow_comments/u\u00df\nx/verilator.c",
                                "float verilator(float gr\u00f6\u00dfe) { return gr\u00f6\u00dfe * 2 + 1; }\n");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(source.parent_path());
    for (const std::string& path : {source.string(), std::string("verilator.c")}) {
        const outcome made = run_with({"build", path, "--driver", "python", "-o", folder.string()});
        EXPECT_EQ(made.status, 0) << made.error;
        for (const char* name : {"verilator.vhd", "verilator.v", "verilator_model.h", "verilator_model.cpp"}) {
            std::istringstream lines(text_of(folder / name));
            for (std::string line; std::getline(lines, line);) {
                EXPECT_EQ(std::count_if(line.begin(), line.end(), [](char one) { return one < ' ' || one > '~'; }), 0)
                    << name << ": " << line;
                EXPECT_EQ(line.find("-- verilator"), std::string::npos) << line;
                EXPECT_EQ(line.find("// verilator"), std::string::npos) << line;
            }
        }
        EXPECT_NE(text_of(folder / "verilator.v").find("// single, gr????e\n"), std::string::npos);
    }
    std::filesystem::current_path(before);
    EXPECT_NE(text_of(folder / "verilator.v").find("  // ./verilator.c:1:41: gr????e * 2; cycles "), std::string::npos);
    std::filesystem::remove_all(folder);
}

TEST(flow_commands, the_command_in_a_design_builds_it_again) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_command";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "more of it");
    (void)written("xfcflow_command/more of it/half.h", "#define HALF(x) ((x) / 2)\n");
    const auto source = written("xfcflow_command/it's.c",
                                "#include <half.h>\n"
                                "float f(float a) { for (int i = 0; i < N; i++) a = HALF(a) + SUM; return a; }\n");
    const std::vector<std::string> options{"--unroll",
                                           "9",
                                           "--include",
                                           (folder / "more of it").string(),
                                           "--define",
                                           "N=3",
                                           "--define",
                                           "SUM=1 + 2",
                                           "--name",
                                           "halved",
                                           "--mantissa",
                                           "36",
                                           "--low-latency",
                                           "--fast-reciprocal",
                                           "--normalizer-speed",
                                           "2"};
    std::vector<std::string> arguments{"build", source.string(), "-o", (folder / "first").string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const outcome made = run_with(arguments);
    EXPECT_EQ(made.status, 0) << made.error;
    const std::string text = text_of(folder / "first/halved.v");
    const std::string start = "\n//   xfcflow ";
    const std::size_t begin = text.find(start) + start.size();
    const std::string command = text.substr(begin, text.find('\n', begin) - begin);
    const std::string again = XFCFLOW + (" " + command) + " -o " + (folder / "second").string();
    EXPECT_EQ(run_command({"/bin/sh", "-c", again}, folder), 0) << command;
    EXPECT_EQ(text_of(folder / "second/halved.v"), text);
    EXPECT_EQ(text_of(folder / "second/halved.vhd"), text_of(folder / "first/halved.vhd"));
    for (const char* option : {"--unroll", "--mantissa", "--low-latency", "--fast-reciprocal"}) {
        EXPECT_NE(command.find(option), std::string::npos) << command;
    }
    std::filesystem::remove_all(folder);
}

TEST(flow_commands, build_refuses_at_the_place_and_writes_nothing) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "xfcflow_refused";
    const auto source = written("xfcflow_sine.c", "#include <math.h>\nfloat f(float a) { return sinf(a); }\n");
    const outcome refused = run_with({"build", source.string(), "-o", folder.string()});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_NE(refused.error.find("xfcflow_sine.c:2:27: error:"), std::string::npos) << refused.error;
    EXPECT_NE(refused.error.find("[no-component]"), std::string::npos) << refused.error;
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(flow_commands, a_simulator_of_the_other_language_is_refused) {
    const auto source = written("xfcflow_wire.c", "float f(float a) { return a; }\n");
    const outcome refused = run_with({"simulate", source.string(), "--lang", "vhdl", "--simulator", "iverilog"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.error.find("[simulator-language]"), std::string::npos) << refused.error;
}

}  // namespace

}  // namespace xfc::flow::test
