#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "flow/frontend/frontend.h"
#include "flow/support/evaluate.h"

// Every function in programs/ gives what it gives when the host's compiler compiles it. A function that is not static
// stands in one line with its parameters, all of them numbers.

namespace xfc::flow::test {

namespace {

namespace fs = std::filesystem;

struct parameter {
    std::string type;
    std::string name;
};

struct tested_function {
    std::string type;
    std::string name;
    std::vector<parameter> parameters;
    std::vector<std::vector<double>> vectors;
};

std::string text_of(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::vector<tested_function> functions_of(const std::string& program) {
    static const std::regex head(R"(^((?:unsigned |signed )?\w+) (\w+)\(([^)]*)\) \{)");
    static const std::regex one(R"(((?:unsigned |signed )?\w+) (\w+))");
    std::vector<tested_function> functions;
    std::istringstream lines(program);
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (line.starts_with("static ") || !std::regex_search(line, found, head)) {
            continue;
        }
        tested_function function{.type = found[1], .name = found[2], .parameters = {}, .vectors = {}};
        const std::string list = found[3];
        for (std::sregex_iterator next(list.begin(), list.end(), one), end; next != end; ++next) {
            function.parameters.push_back({(*next)[1], (*next)[2]});
        }
        functions.push_back(function);
    }
    return functions;
}

/// Numbers where something changes first, then random ones.
double number_for(const std::string& type, std::size_t place, std::mt19937& random) {
    if (type == "float" || type == "double") {
        constexpr std::array corners = {0.0, 1.0,  -1.0, 0.5,  -0.5, 2.5,  -2.5, 3.75,
                                        7.0, -7.0, 1e9,  -1e9, 1e-9, 99.5, 1e30, -123.456};
        if (place < corners.size()) {
            return type == "float" ? static_cast<double>(static_cast<float>(corners.at(place))) : corners.at(place);
        }
        const double number = std::ldexp(std::uniform_real_distribution<>(-1, 1)(random),
                                         std::uniform_int_distribution<>(-20, 20)(random));
        return type == "float" ? static_cast<double>(static_cast<float>(number)) : number;
    }
    constexpr std::array corners = {0,     1,    -1,    2,      3,     5,     7,   -8,  127,        128,
                                    -128,  -129, 255,   256,    1000,  32767, 100, 101, -32768,     32768,
                                    65535, 6,    65536, -65536, 99999, 10,    4,   64,  2147483647, -2147483647};
    if (place < corners.size()) {
        return corners.at(place);
    }
    return static_cast<std::int32_t>(random()) >> std::uniform_int_distribution<>(0, 30)(random);
}

void add_vectors(tested_function& function) {
    constexpr std::size_t count = 200;
    std::mt19937 random(1);
    for (std::size_t vector = 0; vector < count; ++vector) {
        std::vector<double> numbers;
        for (std::size_t place = 0; place < function.parameters.size(); ++place) {
            // The first numbers meet each other in changing pairs.
            const std::size_t corner = vector < 120 ? (vector * (place == 0 ? 1 : 7 * place) + vector / 30) % 31 : 1000;
            numbers.push_back(number_for(function.parameters[place].type, corner, random));
        }
        function.vectors.push_back(numbers);
    }
}

std::string written(double number) {
    char text[64];
    (void)std::snprintf(text, sizeof text, "%a", number);
    return text;
}

/// What the host's compiler makes of them, a line a result.
std::vector<std::string> results_on_host(const fs::path& source, const std::vector<tested_function>& functions) {
    const fs::path folder = fs::path(testing::TempDir()) / ("xfcflow_host_" + source.stem().string());
    fs::create_directories(folder);
    std::ofstream main(folder / "main.c");
    main << "#include \"" << source.string() << "\"\n#include <stdio.h>\nint main(void) {\n";
    for (const tested_function& function : functions) {
        const bool is_unsigned = function.type == "unsigned";
        for (const std::vector<double>& numbers : function.vectors) {
            main << R"(printf("%a\n", (double))" << (is_unsigned ? "(int)" : "") << function.name << '(';
            for (std::size_t place = 0; place < numbers.size(); ++place) {
                const std::string& type = function.parameters[place].type;
                main << (place == 0 ? "(" : ", (") << type << ')';
                type == "float" || type == "double" ? main << written(numbers[place])
                                                    : main << '(' << static_cast<long>(numbers[place]) << ')';
            }
            main << "));\n";
        }
    }
    main << "}\n";
    main.close();
    const std::string program = (folder / "main").string();
    const std::string command = std::string(HOST_COMPILER) +
                                " -x c -w -O0 -std=gnu17 -fwrapv -fsigned-char -ffp-contract=off -o " + program + " " +
                                (folder / "main.c").string() + " -lm && " + program + " >" + program + ".txt";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::vector<std::string> results;
    std::istringstream lines(text_of(program + ".txt"));
    for (std::string line; std::getline(lines, line);) {
        results.push_back(line);
    }
    fs::remove_all(folder);
    return results;
}

std::string shown(const tested_function& function, const std::vector<double>& numbers) {
    std::ostringstream text;
    text.precision(17);
    text << function.name << '(';
    for (std::size_t place = 0; place < numbers.size(); ++place) {
        text << (place == 0 ? "" : ", ") << numbers[place];
    }
    text << ')';
    return text.str();
}

bool is_not_a_number(const std::string& text) { return text.find("nan") != std::string::npos; }

/// The first vector that differs, or nothing.
std::string difference(const tested_function& function, const graph& values, const std::string* on_host) {
    for (std::size_t vector = 0; vector < function.vectors.size(); ++vector) {
        const std::vector<double>& numbers = function.vectors[vector];
        port_numbers inputs;
        for (std::size_t place = 0; place < numbers.size(); ++place) {
            inputs[function.parameters[place].name] = numbers[place];
        }
        const std::string here = written(evaluate(values, inputs).at("result"));
        if (here != on_host[vector] && !(is_not_a_number(here) && is_not_a_number(on_host[vector]))) {
            return shown(function, numbers) + " is " + here + ", on the host " + on_host[vector];
        }
    }
    return {};
}

class flow_host : public testing::TestWithParam<const char*> {};

TEST_P(flow_host, functions_give_what_the_host_gives) {
    const fs::path source = fs::path(SOURCE_FOLDER) / "tests/flow/frontend/programs" / (std::string(GetParam()) + ".c");
    std::vector<tested_function> functions = functions_of(text_of(source));
    ASSERT_GE(functions.size(), 10U);
    std::size_t count = 0;
    for (tested_function& function : functions) {
        add_vectors(function);
        count += function.vectors.size();
    }
    const std::vector<std::string> on_host = results_on_host(source, functions);
    ASSERT_EQ(on_host.size(), count);
    const std::string* expected = on_host.data();
    for (const tested_function& function : functions) {
        diagnostics messages;
        source_map places;
        const auto what = read_program({.path = source.string()}, {.top = function.name}, messages, places);
        EXPECT_TRUE(what.has_value()) << function.name << '\n' << rendered(messages, places);
        if (what) {
            EXPECT_EQ(difference(function, what->values, expected), "");
        }
        expected += function.vectors.size();
    }
}

INSTANTIATE_TEST_SUITE_P(programs, flow_host,
                         testing::Values("control", "floats", "generic", "globals", "headers", "limits", "narrow",
                                         "passing", "structures"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace

}  // namespace xfc::flow::test
