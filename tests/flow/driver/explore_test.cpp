#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "flow/driver/commands.h"

// The command explore as people type it; what it finds out is tested beside src/flow/explore.

namespace xfc::flow::test {

namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;

class explore_command : public testing::Test {
protected:
    void SetUp() override {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        std::ofstream(source_) << "float f(float a, float b) { return a * b + 1 / a; }\n"
                                  "float g(float a) { return a + f(a, a); }\n";
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::string told(const std::vector<std::string>& options, int status = 0) {
        std::vector<std::string> arguments{"explore", source_.string(), "--vectors", "30", "--top", "f"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        std::ostringstream out;
        std::ostringstream error;
        EXPECT_EQ(run(arguments, out, error, false), status) << error.str();
        errors_ = error.str();
        return out.str();
    }

    [[nodiscard]] std::string file(const std::string& name) const { return (folder_ / name).string(); }
    static std::string text_of(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    const fs::path folder_ = fs::path(testing::TempDir()) / "xfcflow_explore";
    const fs::path source_ = folder_ / "f.c";
    std::string errors_;
};

TEST_F(explore_command, tells_a_line_a_design) {
    const std::string text = told({});
    EXPECT_EQ(text.substr(0, text.find(':')), "f of " + source_.string() + " for iCE40, 30 vectors");
    EXPECT_NE(text.find(" with --top f\n"), std::string::npos) << text;
    EXPECT_NE(text.find("--mantissa 36"), std::string::npos) << text;
    EXPECT_NE(text.find("--fast-reciprocal"), std::string::npos) << text;
    EXPECT_NE(text.find("\n  *  "), std::string::npos) << text;
    EXPECT_EQ(errors_, "");
}

TEST_F(explore_command, gives_the_same_on_one_core_as_on_many) {
    EXPECT_EQ(told({"--threads", "1", "--json"}), told({"--threads", "5", "--json"}));
}

TEST_F(explore_command, leaves_alone_what_is_given) {
    const json all = json::parse(told({"--output-registers", "off", "--shifter-registers", "on", "--json"}));
    EXPECT_EQ(all["options"], "--top f --output-registers off --shifter-registers on");
    for (const json& point : all["points"]) {
        const auto options = point["options"].get<std::string>();
        EXPECT_EQ(options.find("--output-registers"), std::string::npos);
        EXPECT_EQ(options.find("--shifter-registers"), std::string::npos);
    }
}

TEST_F(explore_command, a_point_is_what_build_makes_with_its_options) {
    const json all = json::parse(told({"--json"}));
    ASSERT_GT(all["points"].size(), 4U);
    for (std::size_t place = 0; place < all["points"].size(); place += 3) {
        const json& point = all["points"][place];
        std::vector<std::string> arguments{"check", source_.string(), "--top", "f", "--json"};
        std::istringstream words(point["options"].get<std::string>());
        for (std::string word; words >> word;) {
            arguments.push_back(word);
        }
        std::ostringstream out;
        std::ostringstream error;
        EXPECT_EQ(run(arguments, out, error, false), 0) << error.str();
        EXPECT_EQ(json::parse(out.str())["latency"], point["latency"]) << point["options"];
    }
}

TEST_F(explore_command, writes_to_a_file_when_asked_to) {
    const std::string csv = told({"--csv"});
    EXPECT_EQ(told({"--csv", "-o", file("points.csv")}), file("points.csv") + "\n");
    EXPECT_EQ(text_of(file("points.csv")), csv);
    EXPECT_EQ(csv.substr(0, 14), "front,latency,");
    EXPECT_EQ(told({"--html", "-o", file("points.html")}), file("points.html") + "\n");
    EXPECT_EQ(text_of(file("points.html")).substr(0, 15), "<!DOCTYPE html>");
    std::ofstream(file("kept")) << "kept";
    EXPECT_EQ(told({"--csv", "-o", file("kept") + "/points.csv"}, 1), "");
    EXPECT_NE(errors_.find("[cannot-write]"), std::string::npos) << errors_;
}

TEST_F(explore_command, lines_to_run_name_every_option_that_matters) {
    fs::create_directories(folder_ / "it's");
    EXPECT_EQ(told({"--jobs-file", file("jobs"), "--define", "A=it's", "--unroll", "7", "--seed", "3", "--family",
                    "ecp5", "--c-constants", "--normalizer-speed", "2"})
                  .substr(0, file("jobs").size()),
              file("jobs"));
    std::istringstream lines(text_of(file("jobs")));
    std::string first;
    std::getline(lines, first);
    EXPECT_EQ(first, "xfcflow explore " + source_.string() +
                         " --top f --c-constants --unroll 7 --define 'A=it'\"'\"'s' --normalizer-speed 2 --vectors 30 "
                         "--seed 3 --family ecp5 --point 1 --result " +
                         file("jobs.results/point_1.json"));
}

TEST_F(explore_command, a_point_alone_tells_its_result) {
    const json result = json::parse(told({"--point", "2"}));
    EXPECT_EQ(result["number"], 2);
    EXPECT_GT(result["latency"], 5);
    EXPECT_EQ(told({"--point", "2", "--result", file("one/two.json")}), "");
    EXPECT_EQ(json::parse(text_of(file("one/two.json"))), result);
    EXPECT_FALSE(fs::exists(file("one/two.json.part")));
}

TEST_F(explore_command, a_merge_is_not_written_over_a_result) {
    const std::string source = file("one.c");
    std::ofstream(source) << "int f(int a, int b) { return a + b; }\n";
    const auto status_of = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"explore", source});
        std::ostringstream out;
        std::ostringstream error;
        const int status = run(arguments, out, error, false);
        errors_ = error.str();
        return status;
    };
    const std::string result = file("point_1.json");
    ASSERT_EQ(status_of({"--point", "1", "--result", result}), 0) << errors_;
    const std::string text = text_of(result);
    EXPECT_EQ(status_of({"--merge", folder_.string(), "--csv", "-o", result}), 1);
    EXPECT_NE(errors_.find("[same-file]"), std::string::npos) << errors_;
    EXPECT_EQ(text_of(result), text);
    EXPECT_EQ(status_of({"--merge", folder_.string(), "--csv", "-o", file("all.csv")}), 0) << errors_;
}

TEST_F(explore_command, a_program_without_hardware_is_refused_as_everywhere) {
    std::ofstream(source_) << "float f(float a) { return sinf(a); }\n";
    EXPECT_EQ(told({}, 1), "");
    EXPECT_NE(errors_.find("error: "), std::string::npos);
}

TEST_F(explore_command, lines_to_run_stand_alone_even_when_json_is_asked_for) {
    fs::create_directories(folder_ / "results");
    EXPECT_EQ(told({"--merge", file("results"), "--json"}, 1).substr(0, 16), "xfcflow explore ");
    EXPECT_NE(errors_.find("[points-missing]"), std::string::npos) << errors_;
}

TEST_F(explore_command, a_program_of_integers_has_one_design) {
    std::ofstream(source_) << "int f(int a) { return a + 1; }\n";
    EXPECT_NE(told({}).find(": 1 design of 1 set of options with --top f\n"), std::string::npos);
}

}  // namespace

}  // namespace xfc::flow::test
