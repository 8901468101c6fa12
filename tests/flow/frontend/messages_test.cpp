#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "flow/frontend/frontend.h"

// Each program in messages/ provokes one message; what a person reads stands beside it. With XFC_ACCEPT set in the
// environment the texts are written anew. The driver's tests see to it that no message is left out.

namespace xfc::flow::test {

namespace {

std::string text_of(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string messages_of(const std::string& name, const std::string& program, const frontend_options& options = {}) {
    diagnostics messages;
    source_map places;
    (void)read_program({.path = name, .text = program}, options, messages, places);
    return rendered(messages, places);
}

TEST(flow_messages, of_each_program_read_as_written_down) {
    const std::filesystem::path folder = std::filesystem::path(SOURCE_FOLDER) / "tests/flow/frontend/messages";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".c") {
            continue;
        }
        const std::string text = messages_of(entry.path().filename().string(), text_of(entry.path()));
        std::filesystem::path expected = entry.path();
        expected.replace_extension(".txt");
        if (std::getenv("XFC_ACCEPT") != nullptr) {
            std::ofstream(expected) << text;
        }
        EXPECT_EQ(text, text_of(expected)) << entry.path();
    }
}

bool refused(const std::string& program, const std::string& message) {
    return messages_of("x.c", program).find("[" + message + "]") != std::string::npos;
}

TEST(flow_messages, what_no_longer_exists_or_is_const_is_refused_through_pointers) {
    for (const std::string text : {
             "static float *own(float a) { float b = a; return &b; } float f(float x) { return *own(x); }",
             "static float *own(float a) { return &a; } float f(float x) { return *own(x); }",
             "float f(float x) { float *p; for (float y = x, i = 0; i < 2; i++) p = &y; return *p; }",
             "float f(float x) { float *p; for (int i = 0; i < 2; i++) { float y = x; p = &y; } return *p; }",
             "float f(float x, int k) { float *p = &x; if (k) { float y = 1; p = &y; *p = 2; } else { float y = 2; p = "
             "&y; return *p; } *p = x; return x; }",
             "float f(float x) { float *p; switch (3) { case 3:; float y = x; p = &y; } *p = 1; return x; }",
             "struct s { float *p; }; float f(float x) { struct s a; { float y = x; struct s b = {&y}; a = b; } return "
             "*a.p; }",
             "float f(float x) { float *p; { p = (float[]){x, 1}; } return p[1]; }",
         }) {
        EXPECT_EQ(refused(text, "ended"), text.find("if (k)") == std::string::npos) << text;
        EXPECT_EQ(refused(text, "unknown-pointer"), text.find("if (k)") != std::string::npos) << text;
    }
    for (const std::string text : {
             "float f(float x) { const float k = 2; *(float *)&k = x; return k; }",
             "float f(const float k) { *(float *)&k = 2; return k; }",
             "static float g(const float k) { *(float *)&k = 2; return k; } float f(float x) { return g(x); }",
             "int f(int x) { char *t = \"abc\"; t[1] = x; return t[1]; }",
             "int f(int x) { int *t = (int *)(const int[]){1, 2}; *t = x; return *t; }",
             "#include <string.h>\nint f(int x) { const int a[2] = {1, 2}; int b[2] = {x, x}; memcpy((int *)a, b, "
             "sizeof b); return a[1]; }",
             "#include <string.h>\nint f(int x) { const int a[2] = {1, 2}; memset((int *)a, 0, sizeof a); return x; }",
         }) {
        EXPECT_TRUE(refused(text, "const")) << text;
    }
}

TEST(flow_messages, what_is_not_what_its_name_says_is_refused) {
    for (const std::string head : {"int inv(int);", "float floor(int);", "int fmax(int, int);", "long sqrt();",
                                   "float ldexp(float, float);", "_Bool fabs(_Bool);", "int pow(int, int);"}) {
        const std::string name = head.substr(head.find(' ') + 1, head.find('(') - head.find(' ') - 1);
        const std::string arguments = head.find(',') != std::string::npos ? "(x, x)" : "(x)";
        EXPECT_TRUE(refused(head + " int f(int x) { return " + name + arguments + "; }", "no-body")) << head;
    }
    for (const std::string text : {"float abs(float x); float f(float x) { return abs(x); }",
                                   "int abs(void); int f(int x) { return abs() + x; }",
                                   "void *memcpy(); void f(int x, int *y) { int t = x; memcpy(y, &t); }",
                                   "float memset(float x, float y); float f(float x) { return memset(x, x); }"}) {
        EXPECT_TRUE(refused(text, "no-body")) << text;
    }
    for (const std::string text :
         {"static int get(int w, const int m[][w]) { return m[1][2]; } int f(const int m[2][3]) { return get(3, m); }",
          "int f(const int m[2][3]) { int n = 3; const int (*p)[n] = m; p++; return (*p)[1]; }",
          "int f(const int m[2][3]) { int n = 3; const int (*p)[n] = m, (*q)[n] = m; return p - q; }"}) {
        EXPECT_TRUE(refused(text, "variable-size")) << text;
    }
    for (const std::string text : {"int *p = (int[]){0, 1}; int f(int x) { p[0] += x; return p[0]; }",
                                   "static struct { int n, *b; } q = {0, (int[4]){0}}; int f(int x) { int old = "
                                   "q.b[0]; q.b[0] = x; return old; }"}) {
        EXPECT_TRUE(refused(text, "kept-between-calls")) << text;
    }
    EXPECT_TRUE(refused("void f(const float *x, float *y) { *(float *)x = 1; *y = *x; }", "const"));
    const std::string at_target = messages_of("x.c", "int f(int x) { int *p = 0; *p = x + 1; return x; }");
    EXPECT_TRUE(at_target.starts_with("x.c:1:28: error: this pointer points nowhere")) << at_target;
}

TEST(flow_messages, what_only_seems_to_be_guarded_is_refused) {
    for (const std::string body : {
             "if (b <= 0) b = 0; return a / b;",
             "if (b < -5 || b > -1) return a / b; return 0;",
             "if (b + 1 > 0) return a / b; return 0;",
             "int d = b; if (d == 1) d = 2; return a / d;",
             "int d = a > 0 ? b : 3; if (a > 1 && b == 0) return 0; return a / d;",
             "unsigned u = b; if (u >= 0x80000000u || u < 7) return a / u; return 0;",
         }) {
        EXPECT_TRUE(refused("int f(int a, int b) { " + body + " }", "division-by-unknown")) << body;
    }
    for (const std::string body : {
             "int r; if (a > 0) r = 1; if (a < 0) r = b; return r;",
             "int r; if (a > b) r = 1; if (a < b) r = 3; return r;",
             "int r; switch (a & 3) { case 0: r = 1; break; case 1: r = b; break; case 3: r = 3; } return r;",
             "int found = 0, r; for (int i = 0; i < 9; i++) if (a == i) { found = 1; if (i < 8) r = i; } "
             "return found ? r : -1;",
             "int r = 0; switch (a) { case 0:; int t = b; case 1: r = t; } return r;",
         }) {
        EXPECT_TRUE(refused("int f(int a, int b) { " + body + " }", "not-always-assigned")) << body;
    }
    EXPECT_TRUE(
        refused("int f(int a, int b) { for (int i = 0; i < 30; i++) { if (a == i) return i; if (b == i) break; } "
                "if (a > b) return 3; }",
                "not-always-returned"));
    const std::string no_number = "int f(float x) { int r; if (x > 0) r = 1; if (x <= 0) r = 2; return r; }";
    EXPECT_TRUE(refused(no_number, "not-always-assigned"));
}

TEST(flow_messages, a_loop_that_may_be_left_early_is_too_long_all_the_same) {
    const std::string search =
        "int f(int a) { int i; for (i = 0; i < 200; i++) { if (a == i) break; a += i; } return i; }";
    EXPECT_TRUE(messages_of("x.c", search, {.unroll_limit = 100})
                    .starts_with("x.c:1:35: error: this loop has more than 100 rounds, and each becomes hardware"));
    // A limit that is not known is none, but a number that was limited is.
    EXPECT_TRUE(refused("int f(int n) { int s = 0; while (n > 0) s += n--; return s; }", "loop-without-end"));
    EXPECT_FALSE(refused("int f(int n) { int s = 0; n &= 7; while (n > 0) s += n--; return s; }", "loop-without-end"));
}

TEST(flow_messages, so_many_values_are_told) {
    const std::string program = "float f(float a) { for (int i = 0; i < 1000; i++) a = a * i + a; return a; }";
    EXPECT_EQ(messages_of("x.c", program, {.most_values = 100}),
              "x.c:1:51: error: more than 100 operations [values]\n"
              "    1 | float f(float a) { for (int i = 0; i < 1000; i++) a = a * i + a; return a; }\n"
              "      |                                                   ^~~~~~~~~~~~~\n"
              "      hint: unroll less\n");
}

TEST(flow_messages, a_missing_file_and_a_missing_top_are_told) {
    diagnostics messages;
    source_map places;
    EXPECT_FALSE(read_program({.path = "/nowhere/x.c"}, {}, messages, places));
    EXPECT_EQ(rendered(messages, places),
              "xfcflow: error: cannot read '/nowhere/x.c': No such file or directory [cannot-read]\n      hint: name a "
              "file that is there and may be read\n");
    EXPECT_EQ(messages_of("x.c", "float f(float a) { return a; }", {.top = "g"}),
              "xfcflow: error: --top names 'g', but no function of that name has a body [unknown-top]\n"
              "      hint: name one of the functions of the file\n");
}

std::string repeated(const std::string& what, int count) {
    std::string text;
    for (int index = 0; index < count; ++index) {
        text += what;
    }
    return text;
}

TEST(flow_messages, a_hundred_thousand_levels_of_anything_end_in_a_message) {
    constexpr int count = 100000;
    const std::string start = "float f(float a) { ";
    const std::string programs[] = {
        start + "return " + repeated("(", count) + "a" + repeated(")", count) + "; }",
        start + "return " + repeated("- ", count) + "a; }",
        start + "return a" + repeated("+a", count) + "; }",
        start + "return " + repeated("a=", count) + "a; }",
        start + "return a" + repeated("<a", count) + "; }",
        start + "return a" + repeated("<<1", count) + "; }",
        start + repeated("__attribute__((unused)) ", count) + "float b; return a; }",
        start + "return " + repeated("a>0?a:", count) + "a; }",
        start + "return " + repeated("(float)", count) + "a; }",
        start + repeated("{", count) + repeated("}", count) + "return a; }",
        start + repeated("if(a>0)", count) + "a=1; return a; }",
        start + repeated("if(a>0)a=1;else ", count) + "a=2; return a; }",
        start + repeated("for(;;)", count) + ";return a; }",
        start + repeated("while(0)", count) + ";return a; }",
        start + "float x" + repeated("[1]", count) + "; return a; }",
        start + "float " + repeated("*", count) + "x; return a; }",
        start + "float x[1] = " + repeated("{", count) + "0" + repeated("}", count) + "; return a; }",
        start + "return a*0." + repeated("1", count) + "; }",
        start + "return a*" + repeated("1", count) + "; }",
        "float g(float x) { return x; } " + start + "return " + repeated("g(", count) + "a" + repeated(")", count) +
            "; }",
        "#define M(x) x\n" + start + "return " + repeated("M(", count) + "a" + repeated(")", count) + "; }",
        repeated("struct s {", count) + "int x;" + repeated("};", count) + start + "return a; }",
        "#define A A B\n#define B A A\n#define C0 B B B B B B B B B B\n#define C1 C0 C0 C0 C0 C0 C0 C0 C0 C0 C0\n"
        "#define C2 C1 C1 C1 C1 C1 C1 C1 C1 C1 C1\n#define C3 C2 C2 C2 C2 C2 C2 C2 C2 C2 C2\n" +
            start + "return C3; }",
        std::string(count, '\0'),
    };
    for (const std::string& program : programs) {
        diagnostics messages;
        source_map places;
        EXPECT_FALSE(read_program({.path = "deep.c", .text = program}, {}, messages, places)) << program.substr(0, 60);
        EXPECT_TRUE(messages.has_errors()) << program.substr(0, 60);
    }
}

}  // namespace

}  // namespace xfc::flow::test
