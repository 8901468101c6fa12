#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "flow/frontend/frontend.h"
#include "flow/graph/dump.h"
#include "flow/graph/verifier.h"
#include "flow/support/evaluate.h"

namespace xfc::flow::test {

namespace {

program followed(const std::string& text, const frontend_options& options = {}) {
    diagnostics messages;
    source_map places;
    auto result = read_program({.path = "prog.c", .text = text}, options, messages, places);
    EXPECT_TRUE(result.has_value()) << rendered(messages, places);
    if (!result) {
        return {};
    }
    EXPECT_TRUE(faults_of(result->values).empty());
    return std::move(*result);
}

double result_of(const std::string& text, const port_numbers& inputs, const std::string& output = "result") {
    const port_numbers outputs = evaluate(followed(text).values, inputs);
    const auto found = outputs.find(output);
    EXPECT_NE(found, outputs.end()) << output;
    return found == outputs.end() ? std::nan("") : found->second;
}

TEST(flow_values, loops_with_known_ends_are_unrolled) {
    EXPECT_EQ(
        result_of("float f(const float x[4]) { float s = 0; for (int i = 0; i < 4; i++) s += x[i] * i; return s; }",
                  {{"x_0", 9}, {"x_1", 1}, {"x_2", 2}, {"x_3", 3}}),
        14);
    EXPECT_EQ(result_of("int f(int a) { int n = 5; while (n--) a += n; do a++; while (0); return a; }", {{"a", 1}}),
              12);
}

TEST(flow_values, unknown_conditions_become_selects) {
    const std::string clamp = "float f(float x) { if (x < -1) return -1; if (x > 1) return 1; return x; }";
    EXPECT_EQ(result_of(clamp, {{"x", -7}}), -1);
    EXPECT_EQ(result_of(clamp, {{"x", 7}}), 1);
    EXPECT_EQ(result_of(clamp, {{"x", 0.5}}), 0.5);
}

TEST(flow_values, a_loop_is_left_under_an_unknown_condition) {
    const std::string first =
        "int f(const float x[3]) { int i; for (i = 0; i < 3; i++) { if (x[i] > 0) break; } return i; }";
    EXPECT_EQ(result_of(first, {{"x_0", 1}}), 0);
    EXPECT_EQ(result_of(first, {{"x_2", 1}}), 2);
    EXPECT_EQ(result_of(first, {}), 3);
}

TEST(flow_values, a_switch_falls_through_and_has_a_default) {
    const std::string text =
        "int f(int n) { int y = 0; switch (n) { case 1: y = 1; case 2: y += 10; break; case 5 ... 7: y = 5; break; "
        "default: y = -1; } return y; }";
    EXPECT_EQ(result_of(text, {{"n", 1}}), 11);
    EXPECT_EQ(result_of(text, {{"n", 2}}), 10);
    EXPECT_EQ(result_of(text, {{"n", 6}}), 5);
    EXPECT_EQ(result_of(text, {{"n", 9}}), -1);
}

TEST(flow_values, a_switch_may_pass_over_declarations) {
    const std::string behind =
        "int f(int n, int x) { int r = -1; switch (n) { int t; case 0: t = x; r = t; break; case 1: t = 2 * x; r = t + "
        "1; "
        "} return r; }";
    EXPECT_EQ(result_of(behind, {{"n", 0}, {"x", 7}}), 7);
    EXPECT_EQ(result_of(behind, {{"n", 1}, {"x", 7}}), 15);
    EXPECT_EQ(result_of(behind, {{"n", 2}, {"x", 7}}), -1);
    for (const char* selector : {"1", "n"}) {
        const std::string shared = std::string("int f(int n, int x) { int r = n; switch (") + selector +
                                   ") { case 0:; int t = x; r = t; break; case 1: t = 2 * x; r = t; } return r; }";
        EXPECT_EQ(result_of(shared, {{"n", 1}, {"x", 7}}), 14) << selector;
    }
    const std::string rounds =
        "int f(int n, int x) { int r = 0; for (int i = 0; i < 3; i++) switch (n + i) { case 0:; int t = x; r += t; "
        "break; "
        "default: t = i; r += 10 * t; } return r; }";
    EXPECT_EQ(result_of(rounds, {{"n", -1}, {"x", 7}}), 27);
}

TEST(flow_values, structures_pointers_and_functions) {
    const std::string text =
        "typedef struct { float re, im; } c; static c mul(c a, c b) { c r = {a.re*b.re - a.im*b.im, a.re*b.im + "
        "a.im*b.re}; return r; } void f(const c* a, c b, c* y) { *y = mul(*a, b); }";
    const port_numbers inputs = {{"a_re", 1}, {"a_im", 2}, {"b_re", 3}, {"b_im", 4}};
    EXPECT_EQ(result_of(text, inputs, "y_re"), -5);
    EXPECT_EQ(result_of(text, inputs, "y_im"), 10);
}

TEST(flow_values, narrow_integers_wrap_as_in_c) {
    EXPECT_EQ(result_of("int f(int a) { signed char c = a; unsigned char u = a; return c * 1000 + u; }", {{"a", 200}}),
              -56 * 1000 + 200);
    EXPECT_EQ(result_of("int f(short a) { return a; }", {{"a", 65535}}), -1);
    EXPECT_EQ(result_of("_Bool f(float a) { return a; }", {{"a", 0.25}}), 1);
    const std::string read_twice = "int f(short *p, int *o) { *o = *(unsigned short *)p; return *p; }";
    EXPECT_EQ(result_of(read_twice, {{"p", -27}}), -27);
    EXPECT_EQ(result_of(read_twice, {{"p", -27}}, "o"), 65509);
    EXPECT_EQ(result_of("void f(int a, unsigned char *o) { *(signed char *)o = a; }", {{"a", 217}}, "o"), 217);
}

TEST(flow_values, constants_become_unsigned_as_inputs_do) {
    const std::string of_input = "unsigned f(float x) { return x; }";  // its bits as a signed integer
    for (const auto& [text, number, expected] :
         std::vector<std::tuple<std::string, double, double>>{{"5e9f", 5e9, -1},
                                                              {"3e9f", 3e9, 3e9 - 4294967296.0},
                                                              {"-5.75f", -5.75, -5},
                                                              {"-1e20f", -1e20, -2147483648.0},
                                                              {"-0.5f", -0.5, 0},
                                                              {"1.0f / 0.0f", HUGE_VAL, -1},
                                                              {"0.0f / 0.0f", NAN, 0}}) {
        EXPECT_EQ(result_of(of_input, {{"x", number}}), expected) << text;
        EXPECT_EQ(result_of("unsigned f(int i) { return (unsigned)(" + text + ") + i; }", {{"i", 0}}), expected)
            << text;
    }
}

TEST(flow_values, counters_that_are_set_leave_their_loops) {
    const auto of = [](const std::string& head, const std::string& step) {
        return "int f(const int x[6], int t) { int found = -1; for (" + head + ") { if (x[k] > t) { found = k; " +
               step + "; } } return found; }";
    };
    const port_numbers inputs = {{"x_0", 1}, {"x_1", 5}, {"x_2", 2}, {"x_3", 7}, {"x_4", 9}, {"x_5", 3}};
    const auto found = [&](const std::string& text, double limit) {
        port_numbers all = inputs;
        all["t"] = limit;
        return result_of(text, all);
    };
    for (const std::string& text :
         {of("int k = 0; k < 6; k++", "k = 6"), of("short k = 0; k < 6; ++k", "k = 1000"),
          of("unsigned k = 0; k < 6; k += 1", "k += 6"), of("unsigned char k = 0; k <= 5; k++", "k = 200")}) {
        EXPECT_EQ(found(text, 4), 1) << text;
        EXPECT_EQ(found(text, 7), 4) << text;
        EXPECT_EQ(found(text, 9), -1) << text;
        const program made = followed(text);
        for (value_id id = 0; id < made.values.size(); ++id) {
            EXPECT_NE(made.values[id].op, operation::add) << text;  // nothing counts in hardware
        }
    }
    EXPECT_EQ(found(of("int k = 5; k >= 0; k--", "k = 0"), 4), 4);
    const std::string both =
        "int f(const int x[2][3], int t) { int n = 0; for (int i = 0; i < 2; i++) for (int j = 0; j < 3; j++) { n++; "
        "if "
        "(x[i][j] == t) { j = 3; i = 2; } } return n; }";
    const port_numbers rows = {{"x_0_0", 1}, {"x_0_1", 5}, {"x_0_2", 2}, {"x_1_0", 7}, {"x_1_1", 9}, {"x_1_2", 3}};
    for (const auto& [wanted, rounds] : std::map<double, double>{{1, 1}, {2, 3}, {9, 5}, {4, 6}}) {
        port_numbers all = rows;
        all["t"] = wanted;
        EXPECT_EQ(result_of(both, all), rounds) << wanted;
    }
}

TEST(flow_values, structures_of_mixed_sizes_are_written_under_conditions) {
    const std::string members =
        "struct s { double d; float f; }; double f(struct s a, int k) { if (k > 0) a.d = 1; return a.d + a.f; }";
    EXPECT_EQ(result_of(members, {{"a_d", 7}, {"a_f", 0.5}, {"k", 0}}), 7.5);
    EXPECT_EQ(result_of(members, {{"a_d", 7}, {"a_f", 0.5}, {"k", 1}}), 1.5);
    const std::string either =
        "struct s { int i; short h; }; void f(struct s a[1], int k) { if (k > 0) a->i = 1; else a->h = 3; }";
    EXPECT_EQ(result_of(either, {{"a_0_i_in", 7}, {"a_0_h_in", 5}, {"k", 0}}, "a_0_i_out"), 7);
    EXPECT_EQ(result_of(either, {{"a_0_i_in", 7}, {"a_0_h_in", 5}, {"k", 0}}, "a_0_h_out"), 3);
}

TEST(flow_values, declarations_of_one_array_are_taken_together) {
    EXPECT_EQ(result_of("extern const float c[]; const float c[2] = {1, 4}; float f(float x) { return c[1] * x; }",
                        {{"x", 3}}),
              12);
    EXPECT_EQ(result_of("int u[]; int u[2]; int f(int x) { return u[1] + x; }", {{"x", 3}}), 3);
    EXPECT_EQ(result_of("extern float c[]; float c[3]; float f(float x) { c[2] = x; return c[2]; }", {{"x", 3}}), 3);
    EXPECT_EQ(result_of("extern int t[4]; int t[] = {1, 2, 3, 4}; int f(int x) { return t[3] + x; }", {{"x", 3}}), 7);
    EXPECT_EQ(result_of("int q = 5; int f(int x) { extern int q; return q + x; }", {{"x", 3}}), 8);
}

TEST(flow_values, initializers_of_every_shape) {
    EXPECT_EQ(result_of("static const char t[1][4] = {\"abc\"}; int f(int x) { return t[0][1] + x; }", {{"x", 0}}),
              'b');
    EXPECT_EQ(
        result_of("int f(int x) { char u[2][1][4] = {{\"abc\"}, {\"de\"}}; char v[] = {\"xyz\"}; return u[1][0][1] "
                  "* v[2] + x; }",
                  {{"x", 0}}),
        'e' * 'z');
    EXPECT_EQ(
        result_of("struct i { int a, b; }; struct o { struct i s; int c, d[3]; }; int f(int x) { struct i p = {x, 2}; "
                  "struct o y = {.s = p, .s.b = 5, .c = 7, .d = {1, 2, 3}, .d[1] = x}; return y.s.a * 10000 + y.s.b "
                  "* 1000 + y.c * 100 + y.d[1] * 10 + y.d[2]; }",
                  {{"x", 4}}),
        45743);
    EXPECT_EQ(
        result_of("int f(int x) { int *q[3], i = 0, s = 0; while (i < 3 && (q[i] = &(int){x + i}, ++i)) s = 10 * s + "
                  "*q[0]; return s; }",
                  {{"x", 1}}),
        123);
}

TEST(flow_values, every_call_has_a_literal_of_its_own) {
    EXPECT_EQ(
        result_of(
            "static int g(int n, int x) { int *p = (int[]){n}, r = 0; if (n > 0) r = g(n - 1, x); return 10 * r + "
            "*p + x; } int f(int x) { return g(2, x); }",
            {{"x", 0}}),
        12);
}

TEST(flow_values, the_library_may_be_declared_by_hand) {
    EXPECT_EQ(
        result_of("void *memcpy(void *, const void *, unsigned); int abs(int); int f(int x) { int y; memcpy(&y, &x, "
                  "sizeof y); return abs(y) + __func__[0]; }",
                  {{"x", -3}}),
        3 + 'f');
    EXPECT_EQ(
        result_of("#include <string.h>\nint f(const unsigned x[2]) { int y[2]; long z[2]; memcpy(y, x, sizeof y); "
                  "memcpy(z, y, sizeof z); return z[1] / 2 + y[0]; }",
                  {{"x_0", 1}, {"x_1", -7}}),
        -2);
    EXPECT_EQ(
        result_of("float scalbnf(float, int); float f(float x, int n) { return scalbnf(x, n); }", {{"x", 3}, {"n", 2}}),
        12);
}

TEST(flow_values, an_output_of_a_whole_file_is_what_no_way_reads) {
    const std::string chain =
        "float level, peak, gain; main() { if (level > peak) peak = level; else if (peak > 4) gain = peak; }";
    const port_numbers inputs = {{"level", 3}, {"peak_in", 5}, {"gain_in", 2}};
    EXPECT_EQ(result_of(chain, inputs, "peak_out"), 5);
    EXPECT_EQ(result_of(chain, inputs, "gain_out"), 5);
    EXPECT_EQ(result_of(chain, {{"level", 9}, {"peak_in", 5}, {"gain_in", 2}}, "peak_out"), 9);
    const program inner =
        followed("float a, c, y; main() { float t; if (c > 0) { t = a; y = t; } else { t = 2; y = t; } }");
    ASSERT_EQ(inner.values.outputs().size(), 1U);
    EXPECT_EQ(inner.values.outputs()[0].name, "y");
}

TEST(flow_values, pointers_follow_what_still_exists) {
    EXPECT_EQ(result_of("float f(float x) { float *p = &x; { float y = 2; *p = x + y; } return *p; }", {{"x", 1}}), 3);
    EXPECT_EQ(result_of("static void add(const float k, float *p) { for (int i = 0; i < 3; i++) { float *q = p; *q += "
                        "k; } } float f(float x) { float y = 1; add(x, &y); return y; }",
                        {{"x", 2}}),
              7);
    EXPECT_EQ(
        result_of("struct s { float v; float *p; }; static struct s g(float *p) { struct s a = {*p, p}; return a; "
                  "} float f(float x) { return g(&x).v + *g(&x).p; }",
                  {{"x", 2}}),
        4);
    EXPECT_EQ(result_of("float f(const float x[2]) { const float *p = (float[]){x[1], x[0]}; return *p; }",
                        {{"x_0", 2}, {"x_1", 3}}),
              3);
}

TEST(flow_values, division_is_accepted_where_the_divisor_differs_from_zero) {
    const std::string text = "int f(int a, int b) { return b != 0 ? a / b : 7; }";
    EXPECT_EQ(result_of(text, {{"a", -9}, {"b", 2}}), -4);
    EXPECT_EQ(result_of(text, {{"a", 9}, {"b", 0}}), 7);
}

TEST(flow_values, division_is_accepted_where_a_guard_leaves_no_zero) {
    const auto quotient = [](const std::string& body, double a, double b) {
        return result_of("int f(int a, int b) { " + body + " }", {{"a", a}, {"b", b}});
    };
    const std::string replaced = "int d = b; if (d == 0) d = 1; return a / d;";
    EXPECT_EQ(quotient(replaced, 9, 0), 9);
    EXPECT_EQ(quotient(replaced, 9, -2), -4);
    const std::string raised = "if (b <= 0) b = 1; return a / b;";
    EXPECT_EQ(quotient(raised, 9, -2), 9);
    EXPECT_EQ(quotient(raised, 9, 2), 4);
    const std::string outside = "if (b < -5 || b > 5) return a / b; return 0;";
    EXPECT_EQ(quotient(outside, 60, -6), -10);
    EXPECT_EQ(quotient(outside, 60, 0), 0);
    const std::string flag = "_Bool set = b; if (set) return a / set; return -1;";
    EXPECT_EQ(quotient(flag, 60, 7), 60);
    EXPECT_EQ(quotient(flag, 60, 0), -1);
    const std::string never = "int d = (b > 0 ? 1 : 2) - 8; return d != 0 ? a / d : a;";
    EXPECT_EQ(quotient(never, 60, 1), -8);
    EXPECT_EQ(quotient(never, 60, -1), -10);
    const std::string elsewhere = "int d = a > 0 ? b : 3; if (a > 0 && b == 0) return 0; return a / d;";
    EXPECT_EQ(quotient(elsewhere, 8, 2), 4);
    EXPECT_EQ(quotient(elsewhere, -9, 0), -3);
    EXPECT_EQ(
        result_of("unsigned f(unsigned a, unsigned b) { if (b > 5) return a / b; return 1; }", {{"a", 21}, {"b", 7}}),
        3);
}

TEST(flow_values, a_variable_is_set_where_its_flag_tells_so) {
    for (const char* flag : {"_Bool", "int"}) {
        const std::string last = std::string("int f(const int x[20], int k) { ") + flag +
                                 " found = 0; int at; for (int i = 0; i < 20; i++) if (x[i] == k) { at = i; found = 1; "
                                 "} return found ? at : -1; }";
        EXPECT_EQ(result_of(last, {{"x_3", 5}, {"x_17", 5}, {"k", 5}}), 17);
        EXPECT_EQ(result_of(last, {{"k", 5}}), -1);
        const std::string first = std::string("int f(const int x[1000], int k) { ") + flag +
                                  " found = 0; int at; for (int i = 0; i < 1000; i++) if (x[i] == k) { at = i; found = "
                                  "1; break; } if (found) return at; return -1; }";
        EXPECT_EQ(result_of(first, {{"x_3", 5}, {"x_700", 5}, {"k", 5}}), 3);
        EXPECT_EQ(result_of(first, {{"k", 5}}), -1);
    }
    const std::string state =
        "int f(const int x[20], int k) { int state = 0, at; for (int i = 0; i < 20; i++) if (x[i] == k) { at = i; "
        "state "
        "= 2; } else if (state == 2) state = 3; if (state == 2) return at; if (state == 3) return -at; return 100; }";
    EXPECT_EQ(result_of(state, {{"x_3", 5}, {"k", 5}}), -3);
    EXPECT_EQ(result_of(state, {{"x_19", 5}, {"k", 5}}), 19);
    EXPECT_EQ(result_of(state, {{"k", 5}}), 100);
}

TEST(flow_values, comparisons_that_leave_no_way_out_set_a_variable) {
    const std::string two = "int f(int a, int b) { int r; if (a > 0) r = 1; if (a <= 0) r = b; return r; }";
    EXPECT_EQ(result_of(two, {{"a", 1}, {"b", 7}}), 1);
    EXPECT_EQ(result_of(two, {{"a", 0}, {"b", 7}}), 7);
    const std::string three =
        "int f(int a, int b) { int r; if (a > b) r = 1; if (a == b) r = 2; if (a < b) r = 3; return r; }";
    EXPECT_EQ(result_of(three, {{"a", 4}, {"b", 4}}), 2);
    EXPECT_EQ(result_of(three, {{"a", 3}, {"b", 4}}), 3);
    const std::string cases =
        "int f(int a, int b) { int r; switch (a & 3) { case 0: r = b; break; case 1: r = 10; break; case 2: r = 20; "
        "break; case 3: r = 30; } return r; }";
    EXPECT_EQ(result_of(cases, {{"a", 4}, {"b", 7}}), 7);
    EXPECT_EQ(result_of(cases, {{"a", -1}, {"b", 7}}), 30);
    const std::string left =
        "int f(int a) { switch (a % 2) { case 0: return 5; case 1: return 6; case -1: return 7; } }";
    EXPECT_EQ(result_of(left, {{"a", -3}}), 7);
}

TEST(flow_values, loops_of_many_rounds_are_left_early) {
    const std::string search =
        "int f(const int x[2000], int k) { for (int i = 0; i < 2000; i++) { if (x[i] == k) return i; } return -1; }";
    EXPECT_EQ(result_of(search, {{"x_1234", 5}, {"x_1300", 5}, {"k", 5}}), 1234);
    EXPECT_EQ(result_of(search, {{"k", 5}}), -1);
    const std::string nested =
        "int f(int a, int b) { int s = 0; for (int i = 0; i < 40; i++) { if (a == i * 3) { if (b == -i) break; } s ^= "
        "b; "
        "if (s > 1000) { s -= 500; if (a == i) return s; } } return s; }";
    EXPECT_EQ(result_of(nested, {{"a", 9}, {"b", -3}}), -3);
    EXPECT_EQ(result_of(nested, {{"a", 0}, {"b", 1500}}), 1000);
}

TEST(flow_values, a_constant_without_suffix_takes_the_other_format) {
    const std::string text = "float f(float a) { return a * 0.1; }";
    EXPECT_EQ(dump(followed(text).values),
              "%0 = input single a\n%1 = constant single 0.1\n%2 = multiply single %0 %1\n"
              "output single result = %2\n");
    EXPECT_EQ(dump(followed(text, {.c_constants = true}).values),
              "%0 = input single a\n%1 = convert double %0\n%2 = constant double 0.1\n%3 = multiply double %1 %2\n"
              "%4 = convert single %3\noutput single result = %4\n");
}

TEST(flow_values, known_functions_become_operations) {
    EXPECT_EQ(
        result_of("#include <math.h>\nfloat f(float a) { return sqrtf(a) + fabsf(-a) + powf(a, 3) + ldexpf(a, 2); }",
                  {{"a", 4}}),
        2 + 4 + 64 + 16);
    EXPECT_EQ(result_of("#include <xfc.h>\ndouble f(double a) { return inv(a) + invsqr(a); }", {{"a", 4}}), 0.75);
}

TEST(flow_values, older_sources_have_variables_as_ports) {
    const program older = followed("float a, b, c, y;\nmain() { float t; t = sqrt(a + b); y = t * c; }");
    EXPECT_EQ(older.style, top_style::whole_file);
    EXPECT_EQ(older.name, "prog");
    EXPECT_EQ(evaluate(older.values, {{"a", 7}, {"b", 2}, {"c", 5}}), (port_numbers{{"y", 15}}));
}

}  // namespace

}  // namespace xfc::flow::test
