#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "flow/driver/commands.h"
#include "flow/driver/progress.h"
#include "flow/simulate/host_program.h"
#include "flow/simulate/process.h"

namespace xfc::flow::test {

namespace {

namespace fs = std::filesystem;

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

/// A folder of its own for each test's files.
class flow_simulate : public testing::Test {
protected:
    std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
    std::string written(const std::string& name, const std::string& text) const {
        std::ofstream(path(name)) << text;
        return path(name);
    }
    /// The report of a program over a table of vectors, through the model alone.
    nlohmann::json report(const std::string& program, const std::string& table,
                          const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = {
            "simulate", written("prog.c", program), "--simulator", "none", "--json", "--outputs", path("out.csv")};
        if (!table.empty()) {
            arguments.insert(arguments.end(), {"--inputs", written("in.csv", table)});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return nlohmann::json::parse(run_with(arguments).out);
    }
    std::string outputs() const { return read_file(path("out.csv")); }

private:
    temporary_folder folder_;
};

const std::string sum = "float sum(float a, float b) { return a + b; }\n";

TEST_F(flow_simulate, a_table_goes_in_and_a_table_comes_out_of_every_simulator) {
    const std::string program = written("sum.c", sum);
    const std::string table = written("in.csv", "b,a\n2.5,1\n-1,0x1p-3\nnan,0\ninf,1\n");
    for (const char* simulator : {"ghdl", "iverilog", "verilator", "none"}) {
        const outcome done =
            run_with({"simulate", program, "--inputs", table, "--outputs", path("out.csv"), "--simulator", simulator,
                      "--lang", std::string(simulator) == "ghdl" ? "vhdl" : "verilog"});
        EXPECT_EQ(done.status, 0) << done.error;
        EXPECT_EQ(outputs(), "result\n0x1.cp+1\n-0x1.cp-1\nnan\ninf\n") << simulator;
    }
}

TEST_F(flow_simulate, a_malformed_table_is_told_with_line_and_column_and_nothing_is_written) {
    const outcome done = run_with({"simulate", written("sum.c", sum), "--inputs", written("in.csv", "a,b\n1,2\n3,x4\n"),
                                   "--outputs", path("out.csv")});
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(done.out, "");
    EXPECT_EQ(done.error, path("in.csv") +
                              ":3:3: error: 'x4' is no single number [csv-number]\n"
                              "    3 | 3,x4\n"
                              "      |   ^~\n"
                              "      hint: numbers are written as in C: 1.5, 0x1.8p+0, nan, inf; integers as 12, "
                              "-3 or 0x1F, booleans as 0 or 1\n");
    EXPECT_FALSE(fs::exists(path("out.csv")));
    EXPECT_EQ(run_with({"simulate", path("sum.c"), "--inputs", path("nowhere.csv")}).status, 1);
    EXPECT_EQ(run_with({"simulate", path("sum.c"), "--inputs", path("")}).status, 1);
}

TEST_F(flow_simulate, a_byte_order_mark_belongs_to_no_column) {
    const std::string program = written("sum.c", sum);
    const std::string table = written("in.csv",
                                      "\xEF\xBB\xBF"
                                      "a,b\r\n1,2\r\n");
    const outcome done =
        run_with({"simulate", program, "--inputs", table, "--outputs", path("out.csv"), "--simulator", "none"});
    EXPECT_EQ(done.status, 0) << done.error;
    EXPECT_EQ(outputs(), "result\n0x1.8p+1\n");
    const outcome refused = run_with({"simulate", program, "--simulator", "none", "--inputs",
                                      written("c.csv",
                                              "\xEF\xBB\xBF"
                                              "c,b\n1,2\n")});
    EXPECT_TRUE(refused.error.starts_with(path("c.csv") + ":1:1: error: no input port is called 'c'")) << refused.error;
}

TEST_F(flow_simulate, nothing_that_is_read_is_written_over) {
    const std::string program = written("sum.c", sum);
    const std::string table = written("in.csv", "a,b\n1,2\n");
    for (const std::vector<std::string>& more : std::vector<std::vector<std::string>>{
             {"--outputs", program},
             {"--wave", program},
             {"--inputs", table, "--outputs", table},
             {"--outputs", path("new"), "--wave", path("new")},
             {"--inputs", table, "--outputs", (fs::path(table).parent_path() / "." / "in.csv").string()}}) {
        std::vector<std::string> arguments = {"simulate", program, "--simulator", "none"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const outcome done = run_with(arguments);
        EXPECT_EQ(done.status, 1);
        EXPECT_NE(done.error.find("[same-file]"), std::string::npos) << done.error;
    }
    const std::string header = written("k.h", "#define K 2\n");
    const std::string includes = written("inc.c", "#include \"k.h\"\nfloat f(float a) { return a * K; }\n");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"simulate", includes, "--simulator", "none", "--outputs", header},
             {"view", includes, "-o", includes},
             {"view", includes, "--svg", "-o", header},
             {"explore", includes, "--vectors", "1", "--csv", "-o", includes},
             {"explore", includes, "--vectors", "1", "-o", header},
             {"explore", includes, "--vectors", "1", "--point", "1", "--result", header},
             {"explore", includes, "--jobs-file", header}}) {
        const outcome done = run_with(arguments);
        EXPECT_EQ(done.status, 1) << arguments[0];
        EXPECT_EQ(done.out, "") << arguments[0];
        EXPECT_NE(done.error.find("[same-file]"), std::string::npos) << arguments[0] << ": " << done.error;
    }
    EXPECT_EQ(read_file(header), "#define K 2\n");
    EXPECT_EQ(read_file(includes), "#include \"k.h\"\nfloat f(float a) { return a * K; }\n");
    EXPECT_EQ(read_file(program), sum);
    EXPECT_EQ(read_file(table), "a,b\n1,2\n");
    const outcome unwritable = run_with({"simulate", program, "--simulator", "none", "--outputs", path("no/out.csv")});
    EXPECT_EQ(unwritable.status, 1);
    EXPECT_NE(unwritable.error.find("[cannot-write]"), std::string::npos) << unwritable.error;
}

TEST_F(flow_simulate, waveforms_have_the_ports_and_the_design_but_not_its_components_insides) {
    const std::string program = written("sum.c", sum);
    for (const char* language : {"vhdl", "verilog"}) {
        const outcome done =
            run_with({"simulate", program, "--vectors", "20", "--lang", language, "--wave", path("wave.vcd")});
        EXPECT_EQ(done.status, 0) << done.error;
        const std::string wave = read_file(path("wave.vcd"));
        EXPECT_NE(wave.find("$enddefinitions"), std::string::npos) << language;
        EXPECT_NE(wave.find(" startout "), std::string::npos) << language;
        EXPECT_NE(wave.find(" under_test "), std::string::npos) << language;
        EXPECT_EQ(wave.find("mantissa_high"), std::string::npos) << language;
        fs::remove(path("wave.vcd"));
    }
}

TEST_F(flow_simulate, the_table_names_outputs_errors_and_where_the_worst_was) {
    const outcome done =
        run_with({"simulate", written("root.c", "#include <math.h>\nfloat f(float a) { return sqrtf(a) / 3; }\n"),
                  "--simulator", "iverilog", "--lang", "verilog", "--vectors", "200"});
    EXPECT_EQ(done.status, 0) << done.error;
    EXPECT_NE(done.out.find("iverilog: every output bit as the model has it"), std::string::npos) << done.out;
    EXPECT_NE(done.out.find("output   format   vectors   bits equal   largest ulp"), std::string::npos) << done.out;
    EXPECT_NE(done.out.find("worst in vector "), std::string::npos) << done.out;
}

TEST_F(flow_simulate, the_c_program_runs_with_structures_arrays_and_pointers) {
    const auto done = report(
        "typedef struct { float re, im; } c;\n"
        "c f(const float x[2], c a, const float *k, float *out, float both[2]) {\n"
        "    c r = { a.re * x[0], a.im + *k };\n    *out = x[1] - x[0];\n    both[0] += 1;\n    both[1] = 2;\n"
        "    return r;\n}\n",
        "");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
    for (const auto& row : done["accuracy"]) {
        EXPECT_TRUE(row.contains("largest_ulp_of_c")) << row;
        EXPECT_EQ(row["c_differs"], 0) << row;
    }
}

TEST_F(flow_simulate, the_c_program_of_the_older_style_starts_anew_for_every_vector) {
    const auto done =
        report("float a, y;\nint count = 1;\nmain() { count = count + 2; y = a * count; }\n", "a\n1\n2\n3\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
    EXPECT_EQ(outputs(), "y\n0x1.8p+1\n0x1.8p+2\n0x1.2p+3\n");
}

TEST_F(flow_simulate, ports_may_be_variables_inside_an_older_program) {
    const auto done =
        report("main() { float a, b, y; double w[2]; long n, m;\n  y = a + b; w[0] = b; w[1] = a; m = n * 3L; }\n", "");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
    EXPECT_EQ(done["accuracy"].size(), 4U);
}

TEST_F(flow_simulate, an_older_program_may_stand_on_one_line) {
    for (const char* program : {"float a, b, y; main() { y = a - b; }", "float a, b; main() { float y; y = a - b; }",
                                "main() { float a, b, y; y = a - b; }", "a() { float a, b, y; y = a - b; }"}) {
        const auto done = report(program, "");
        EXPECT_EQ(done["agrees"], true) << program << done;
        EXPECT_EQ(done["host"]["ran"], true) << program << done;
        EXPECT_EQ(done["accuracy"].size(), 1U) << program;
    }
}

TEST_F(flow_simulate, a_parameter_may_be_called_like_the_result) {
    for (const char* program : {"float f(float x, float *result) { *result = x * 2; return x + 1; }",
                                "float f(float result[2]) { result[0] = 3; return result[1]; }",
                                "typedef struct { float re, im; } c; c f(c *result) { c r = { result->re, 1 }; "
                                "result->im = 3; return r; }"}) {
        const auto done = report(program, "");
        EXPECT_EQ(done["agrees"], true) << program << done;
        EXPECT_EQ(done["host"]["ran"], true) << program << done;
    }
    const auto done = report("float f(float results[2]) { results[0] = 3; return results[1]; }", "results_1\n5\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(outputs(), "results_0,result\n0x1.8p+1,0x1.4p+2\n");
}

TEST_F(flow_simulate, sizes_have_32_bits_on_the_host_too) {
    for (const char* program : {"float f(int a) { return (a + sizeof(int)) / 2; }",
                                "float f(int a) { return sizeof a - 5 + _Alignof(double) + sizeof(long[3]); }",
                                "struct s { char c; double d; }; int f(int a) {\n"
                                "    return (a + __builtin_offsetof(struct s, d)) / 2 + sizeof(struct s); }"}) {
        const auto done = report(program, "");
        EXPECT_EQ(done["agrees"], true) << program << done;
        EXPECT_EQ(done["host"]["ran"], true) << program << done;
    }
}

TEST_F(flow_simulate, what_follows_from_the_size_of_pointers_is_not_held_against_the_host) {
    const std::string node = "struct node { struct node *next; int n; };\n";
    for (const std::string& program :
         {std::string("int f(int a) { return a + sizeof(int *) + sizeof(&a); }"),
          node + "int f(int a) { return a + sizeof(struct node[2]); }",
          node + "int f(int a) { struct node x[sizeof(struct node)]; return a + sizeof x; }",
          node + "int f(int a) { static const int k[] = {1, _Alignof(int (*)(void))}; return a + k[1]; }",
          node + "int f(int a) { return a + __builtin_offsetof(struct node, n); }"}) {
        const auto done = report(program, "");
        EXPECT_EQ(done["agrees"], true) << program << done;
        EXPECT_EQ(done["host"]["ran"], false) << program << done;
        EXPECT_EQ(done["host"]["why_not"], "the program asks for sizes of pointers, which this machine has otherwise");
    }
    // Where the sizes lead to the same, the comparison stands.
    const auto same = report("int f(int a) { int *x[3]; return a * (sizeof x / sizeof x[0]); }", "");
    EXPECT_EQ(same["agrees"], true) << same;
    EXPECT_EQ(same["host"]["ran"], true) << same;
    const auto other = report(
        "#ifdef __XFCFLOW__\n#define N 1\n#else\n#define N 2\n#endif\n"
        "int f(int *a) { return *a + N * sizeof(int); }",
        "");
    EXPECT_EQ(other["agrees"], false) << other;
    EXPECT_EQ(other["accuracy"][0]["c_differs"], other["accuracy"][0]["vectors"]);
}

TEST_F(flow_simulate, the_host_knows_files_by_the_names_that_were_given) {
    (void)written("own.h", "static const int own = sizeof(__FILE__);\n");
    fs::create_directories(path("more"));
    (void)written("more/other.h", "static const int other = sizeof(__FILE__);\n");
    const std::string program =
        "#include \"own.h\"\n#include <other.h>\n"
        "int f(int a) { return a + sizeof(__FILE__) + 100 * own + 10000 * other; }\n";
    const fs::path before = fs::current_path();
    const fs::path folder = fs::path(written("prog.c", program)).parent_path();
    fs::current_path(folder);
    std::vector<outcome> all;
    for (const std::string& source : {std::string("prog.c"), std::string("./prog.c"), path("prog.c")}) {
        all.push_back(run_with({"simulate", source, "--simulator", "none", "--json", "--include", "more"}));
    }
    fs::current_path(before);
    for (const outcome& one : all) {
        const auto done = nlohmann::json::parse(one.out);
        EXPECT_EQ(done["agrees"], true) << done;
        EXPECT_EQ(done["host"]["ran"], true) << done;
    }
}

/// Runs and agrees with the C program, whatever its names and types are.
#define EXPECT_COMPARED(program, done)                             \
    do {                                                           \
        const auto seen = (done);                                  \
        EXPECT_EQ(seen["host"]["ran"], true) << (program) << seen; \
        EXPECT_EQ(seen["agrees"], true) << (program) << seen;      \
    } while (false)

TEST_F(flow_simulate, whatever_parameters_are_the_c_program_is_compared) {
    for (const char* program :
         {"float f(const float x[static 3], float y[restrict 4], signed char c[const 2]) {\n"
          "    y[3] = x[2] + c[1];\n    return x[0] + y[1];\n}",
          "float f(const float m[restrict 2][3], const float n[static 2][3]) { return m[1][2] + n[0][1]; }",
          "typedef const float row[3]; float f(row x, row y[2], float (*const p)[2]) {\n"
          "    (*p)[1] = x[2];\n    return x[0] + y[1][2];\n}",
          "struct s { const float a[2]; const struct { int n; } k; float b; };\n"
          "float f(struct s p, const struct s *q, struct s r[2]) { return p.a[1] + q->b + r[1].a[0] + p.k.n; }",
          "union u { const float a; int b; }; float f(const union u x) { return x.a; }",
          "int f(enum { A, B } e, enum own { C = 3 } o, int x) { return e == B ? x : o; }",
          "float f(struct { float a; struct { int n[2]; } in; } p) { return p.a + p.in.n[1]; }",
          "struct r { float z[2]; int n; } f(struct s { float a, b; } p, const struct s *q, struct s t[2]) {\n"
          "    struct r x = {{p.a + q->b, p.b + t[1].a}, 3};\n    return x;\n}",
          "struct { float a, b; } g; void f(__typeof__(g) p, __typeof__(p.a) *y) { *y = p.a + p.b; }",
          "float f(float a, float, struct { int n; } *, float b[2]) { return a + b[1]; }",
          "long f(long a[3], const long *b, unsigned long c[2], struct { long a; } d) {\n"
          "    a[0] = *b;\n    return a[1] + a[2] + c[1] + d.a;\n}",
          "float f(a, b, n) register float a, b; register n; { register m = n; return a + b * m; }"}) {
        EXPECT_COMPARED(program, report(program, ""));
    }
}

TEST_F(flow_simulate, whatever_functions_are_the_c_program_is_compared) {
    for (const char* program :
         {"inline float f(const float a[4]) { float s = 0; for (int i = 0; i < 4; i++) { s += a[i] * a[i]; if (s > 3) "
          "s -= a[i] / 2; else s += a[i] * 3; } return s; }",
          "struct { float re, im; } f(float a) { __typeof__(f(a)) r = { a, -a }; return r; }",
          "enum { Q, R = 5 } f(int a) { return a > 2 ? R : Q; }", "const float f(const float a) { return a * 2; }",
          "typedef int bool; bool f(bool b, bool *o) { *o = b + 2; return b * 3; }",
          "#include <stdbool.h>\nbool f(float a, bool b, bool c[2]) { return (a > 1 && b) || c[1]; }",
          "float a, b; float f(void) { return a + 1; } int g(void) { return b > 2; }",
          "main() { register float a, y; register n, m; y = a * 3; m = n + 1; }",
          "struct s { const float a; float b; } x; float y; main() { y = x.a * x.b; }",
          "struct s { const float a; float b; }; main() { struct s x; float y; y = x.a * x.b; }"}) {
        EXPECT_COMPARED(program, report(program, ""));
    }
    const char* one_of_two = "static float g(float a) { return a * 2; } float h(float a) { return g(a) + 1; }";
    EXPECT_COMPARED(one_of_two, report(one_of_two, "", {"--top", "g"}));
    const char* with_main =
        "#include <stdio.h>\nfloat f(float a) { return a + 1; }\n"
        "int main(void) { printf(\"%g\\n\", f(1)); return 0; }\n";
    EXPECT_COMPARED(with_main, report(with_main, "", {"--top", "f"}));
}

TEST_F(flow_simulate, whatever_names_a_program_has_it_is_compared) {
    for (const char* program :
         {"float in(float in, float b) { return in + b; }",
          "typedef float in; in f(in in, float out) { return in + out; }",
          "float f(float xfc_host_given, float xfc_host_in, float xfc_host_result, float xfc_host_one) {\n"
          "    return xfc_host_given + xfc_host_in * xfc_host_result - xfc_host_one;\n}",
          "float malloc(float a) { return a + 1; }", "float fopen(float a, float b) { return a + b; }",
          "int fork(int a) { return a + 1; }", "float _init(float a) { return a + 1; }",
          "float mmap, printf, y; main() { y = mmap + printf; }",
          "double round(double a) { return a + 1; } double f(double a) { return round(2.25) * a; }",
          "float inv, negate, y; main() { y = sqrt(inv) + invsqr(negate); }"}) {
        EXPECT_COMPARED(program, report(program, ""));
    }
    // Headers of the program that are called like what stands around it.
    (void)written("host_main.c", "#define K 2\n");
    (void)written("host_program.c", "#define L 3\n");
    (void)written("stdio.h", "#define M 4\n");
    const char* program =
        "#include \"host_main.c\"\n#include \"host_program.c\"\n#include \"stdio.h\"\n"
        "float f(float a) { return a * K + a * L + M; }\n";
    EXPECT_COMPARED(program, report(program, "", {"--include", path("")}));
}

TEST_F(flow_simulate, integers_stand_in_tables_and_reports_as_their_c_types_have_them) {
    const std::string program =
        "unsigned f(unsigned a, unsigned char b, short c, unsigned char *y) { *y = b + 1; return a + (c > 7); }\n";
    const auto done = report(program, "a,b,c\n4294967295,255,-32768\n");
    EXPECT_COMPARED(program, done);
    EXPECT_EQ(outputs(), "y,result\n0,4294967295\n");
    const auto differs = report(
        "unsigned f(unsigned a, unsigned char b) {\n#ifdef __XFCFLOW__\n    return a - 1 + (b > 250);\n#else\n"
        "    return a - 2 + (b > 250);\n#endif\n}\n",
        "a,b\n4294967295,200\n");
    ASSERT_EQ(differs["agrees"], false) << differs;
    EXPECT_NE(differs["messages"].back()["text"].get<std::string>().find(
                  "a=4294967295 b=200: C 4294967293, understood 4294967294"),
              std::string::npos)
        << differs;
}

TEST_F(flow_simulate, a_sum_that_is_zero_may_have_either_sign_in_c) {
    // gcc takes it for -n.
    const auto done = report("double f(int n) { return 0.0 - n; }\n", "n\n0\n1\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
}

TEST_F(flow_simulate, a_product_of_what_is_open_and_zero_is_open) {
    const auto done =
        report("int f(int a, int r, float y, float z) { return y * z < 1 ? r : a * (int)(y * z + 30) * 3 * 40; }\n",
               "a,r,y,z\n2147483647,0,0x1.000002p0,0x1.fffffcp-1\n");
    EXPECT_EQ(done["agrees"], true) << done;
}

TEST_F(flow_simulate, a_long_has_32_bits_in_the_library_too) {
    const auto done = report("long labs(long); void top(int x, int *y) { *y = labs(x); }\n", "x\n-7\n5\n-2147483647\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
}

TEST_F(flow_simulate, names_that_a_host_defines_are_names) {
    const auto done = report("float f(float unix, float linux, float i386) { return unix * linux + i386; }\n",
                             "unix,linux,i386\n2,3,4\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["host"]["ran"], true) << done;
}

TEST_F(flow_simulate, an_interrupted_run_leaves_no_files_and_no_simulator) {
    const std::string program = written("long.c", "float f(float x) { return x / 3; }\n");
    fs::create_directories(path("tools"));
    const fs::path number = path("number");  // of the process that stands for a simulator
    const std::string endless =
        written("tools/iverilog", "#!/bin/sh\n/bin/sleep 1000 &\necho $! >'" + number.string() + ".new'\n/bin/mv '" +
                                      number.string() + ".new' '" + number.string() + "'\nwait\n");
    fs::permissions(endless, fs::perms::owner_all);
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT}) {
        const fs::path scratch = path("scratch");
        fs::create_directories(scratch);
        fs::remove(number);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            setenv("TMPDIR", scratch.c_str(), 1);
            setenv("PATH", path("tools").c_str(), 1);
            run_with({"simulate", program, "--simulator", "iverilog", "--lang", "verilog", "--vectors", "5"});
            _exit(0);
        }
        int status = 0;
        while (!fs::exists(number)) {
            ASSERT_EQ(waitpid(child, &status, WNOHANG), 0) << status;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_FALSE(fs::is_empty(scratch));
        kill(child, signal);
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_TRUE(fs::is_empty(scratch));
        const std::string state = "/proc/" + std::to_string(std::stoi(read_file(number))) + "/stat";
        const std::string found = read_file(state);
        EXPECT_TRUE(found.empty() || found.find(") Z ") != std::string::npos) << found;
    }
}

TEST_F(flow_simulate, a_design_may_be_called_like_anything_in_the_test_bench) {
    const std::string body = "(float inputs, float outputs, float *vectors) { *vectors = inputs; return -outputs; }\n";
    for (const char* name : {"bench", "xfc_bench", "under_test", "stimulus", "test", "value_of", "results", "textio"}) {
        const std::string program = written("names.c", std::string("float ") + name + body);
        for (const char* language : {"vhdl", "verilog"}) {
            const outcome done = run_with({"simulate", program, "--lang", language, "--vectors", "5"});
            EXPECT_EQ(done.status, 0) << name << done.error;
        }
    }
}

TEST_F(flow_simulate, messages_are_as_in_every_json_report) {
    const std::string program = written("bad.c", "float f(float a) { goto x; x: return a; }\n");
    const auto simulated = nlohmann::json::parse(run_with({"simulate", program, "--json"}).out);
    EXPECT_EQ(simulated["messages"], nlohmann::json::parse(run_with({"check", program, "--json"}).out)["messages"]);
    ASSERT_EQ(simulated["messages"].size(), 1U);
    EXPECT_EQ(simulated["messages"][0]["severity"], "error");
    EXPECT_TRUE(simulated["messages"][0].contains("hint"));
}

TEST_F(flow_simulate, long_has_32_bits_on_the_host_too) {
    const auto done = report("long f(long a, unsigned long b) { long int c = a * a; return c + (long)b * 3L; }\n",
                             "a,b\n100000,4000000000\n-2147483648,1\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(done["accuracy"][0]["c_differs"], 0);
}

TEST_F(flow_simulate, what_the_program_leaves_undefined_costs_no_agreement) {
    const auto done = report("int f(double a) { return (int)a; }\n", "a\n1e20\nnan\n-7.5\n");
    EXPECT_EQ(done["agrees"], true) << done;
    EXPECT_EQ(outputs(), "result\n2147483647\n0\n-7\n");
}

TEST_F(flow_simulate, a_constant_without_suffix_is_measured_but_not_compared_with_c) {
    const auto single = report("float f(float a) { return a * 0.1; }\n", "a\n3\n7\n");
    EXPECT_EQ(single["agrees"], true) << single;
    const auto as_c = report("float f(float a) { return a * 0.1f; }\n", "a\n3\n7\n", {"--c-constants"});
    EXPECT_EQ(as_c["agrees"], true) << as_c;
}

TEST_F(flow_simulate, the_number_of_inputs_may_be_zero) {
    const std::string program = written("constant.c", "float y;\nmain() { y = 2.5f; }\n");
    for (const char* language : {"vhdl", "verilog"}) {
        const outcome done = run_with({"simulate", program, "--lang", language, "--vectors", "20"});
        EXPECT_EQ(done.status, 0) << done.error;
    }
}

TEST(program_for_host, writes_long_as_int_and_renames_main) {
    std::vector<local_variable> none;
    EXPECT_EQ(program_for_host("long a; unsigned long int b; long double c; long long d;", "x.c", none),
              "int a; unsigned  int b; long double c; long long d;");
    EXPECT_EQ(program_for_host("main() { char* s = \"long main\"; x = 3L + 0x1FUL - 1.5L; }", "x.c", none),
              "xfc_host_main() { char* s = \"long main\"; x = 3 + 0x1FU - 1.5L; }");
}

TEST(program_for_host, puts_code_behind_declarations_inside_braces_only) {
    std::vector<local_variable> locals = {{.name = "a", .line = 2, .code = " A"},
                                          {.name = "g", .line = 1, .code = " G"}};
    EXPECT_EQ(program_for_host("# 1 \"/x/p.c\"\nint g;\nf() { int a = (1), b; a; }", "/x/p.c", locals),
              "# 1 \"/x/p.c\"\nint g;\nf() { int a = (1), b; A a; }");
    EXPECT_TRUE(locals[0].found);
    EXPECT_FALSE(locals[1].found);
}

TEST(program_for_host, tells_globals_from_locals_on_the_same_line) {
    std::vector<local_variable> locals = {{.name = "a", .line = 1, .code = " A"},
                                          {.name = "g", .line = 1, .code = " G"}};
    EXPECT_EQ(program_for_host("struct { int g; } g; a() { int a; a = g.g; }", "x.c", locals),
              "struct { int g; } g; a() { int a; A a = g.g; }");
    EXPECT_TRUE(locals[0].found);
    EXPECT_FALSE(locals[1].found);
}

TEST(program_for_host, makes_sizes_unsigned) {
    std::vector<local_variable> none;
    EXPECT_EQ(program_for_host("sizeof(long) + _Alignof(int) + sizes", "x.c", none),
              "(unsigned)sizeof(int) + (unsigned)_Alignof(int) + sizes");
}

TEST(progress, shows_nothing_without_a_terminal_or_for_short_work) {
    std::ostringstream silent;
    {
        progress_bar bar(silent, false);
        progress_bar quick(silent, true);
        bar.show("work", 1, 2);
        quick.show("work", 1, 2);
    }
    EXPECT_EQ(silent.str(), "");
}

TEST(progress, shows_how_far_long_work_is_and_goes_away) {
    std::ostringstream terminal;
    {
        progress_bar bar(terminal, true);
        std::this_thread::sleep_for(std::chrono::milliseconds(550));
        bar.show("ghdl", 1, 2);
        bar.show("ghdl", 2, 2);  // too soon to be drawn again
    }
    EXPECT_EQ(terminal.str(), "\r\x1b[K[############            ] 50 % ghdl\r\x1b[K");
}

TEST(processes, tell_their_status_and_what_they_said) {
    const temporary_folder folder;
    EXPECT_EQ(run_command({"sh", "-c", "echo word; exit 3"}, folder.path()), 3);
    EXPECT_EQ(end_of_log(folder.path()), "word\n");
    EXPECT_EQ(run_command({"no_such_program_at_all"}, folder.path()), 127);
    EXPECT_EQ(run_command({"sh", "-c", "kill -9 $$"}, folder.path()), -1);
    int calls = 0;
    EXPECT_EQ(run_command({"sleep", "0.2"}, folder.path(), [&] { ++calls; }), 0);
    EXPECT_GT(calls, 1);
}

}  // namespace

}  // namespace xfc::flow::test
