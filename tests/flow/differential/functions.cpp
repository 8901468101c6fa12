// What stands in front of the top: macros, types, tables, and functions that the top may call.

#include <array>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

constexpr std::string_view includes =
    "#include <assert.h>\n#include <iso646.h>\n#include <math.h>\n#include <stdbool.h>\n#include <stddef.h>\n#include "
    "<stdint.h>\n#include <stdlib.h>\n"
    "#include <string.h>\n#include <xfc.h>\n\n";

constexpr std::string_view macros =
    "#define FEW 3\n"
    "#define SQUARE(x) ((x) * (x))\n"
    "#define MIX(a, b, t) ((a) + ((b) - (a)) * (t))\n"
    "#define CLAMP(x, low, high) ((x) > (low) ? (x) < (high) ? (x) : (high) : (low))\n"
    "#define EACH(i, count) for (int i = 0; i < (count); i++)\n"
    "#define JOIN(a, b) a##b\n"
    "#define TEXT(x) #x\n"
    "#if FEW < 3 || !defined SQUARE\n#error \"few\"\n#endif\n\n";

constexpr std::string_view types =
    "typedef float sample;\n"
    "typedef unsigned word;\n"
    "enum level { low, middle = 5, high };\n"
    "enum { few = FEW, many = 12, JOIN(as_, few) = -(few << 1) };\n"
    "union either { float f; int i; };\n"
    "union bits { int n; unsigned u; };\n"
    "_Static_assert(as_few == -6, TEXT(few));\n";

constexpr std::string_view tables =
    "static const float table[4] = { 0.5f, -1.25f, [few] = 0x1.8p-3f };\n"
    "static const int codes[2][3] = { { 1, -2, 3 }, { [1] = 40 } };\n\n";

/// Operations that a function in front of the top may take.
constexpr int cost_before = 170;

/// With @ for the function itself, a for its operand and n for the rounds that are left.
constexpr std::array<std::string_view, 4> recursions{
    "    if (n <= 0)\n        return {t};\n    return {t} + @({t}, n - 1);\n",
    "    return n == 0 ? a : @({t} * a, n - 1);\n",
    "    {T} half = n > 1 ? @(a, n >> 1) : a;\n    return n & 1 ? half * {t} : half + half;\n",
    "    switch (n) {\n    case 0:\n        return a;\n    case 1:\n        return {t};\n    default:\n"
    "        return @(a, n - 1) - @({t}, n - 2);\n    }\n"};

}  // namespace

void writer::draw_record_types() {
    record_types_ = {{"pair", "float x; int n;", {{".x", kind::single}, {".n", kind::whole}}}};
    const kind a = any_kind();
    const kind b = any_kind();
    record_types_.push_back({"nest",
                             "struct pair p; " + name_of(a) + " w[2]; " + name_of(b) + " u;",
                             {{".p.x", kind::single}, {".p.n", kind::whole}, {".w[0]", a}, {".w[1]", a}, {".u", b}}});
    const kind c = any_kind();
    const kind d = any_kind();
    record_types_.push_back(
        {"inner",
         "struct { " + name_of(c) + " re, im; } each[2]; struct { " + name_of(d) + " rest; };",
         {{".each[0].re", c}, {".each[0].im", c}, {".each[1].re", c}, {".each[1].im", c}, {".rest", d}}});
}

void writer::write_globals() {
    text_ = std::string(includes_ ? includes : "") + std::string(macros) + std::string(types);
    draw_record_types();
    for (const record_type& one : record_types_) {
        text_ += "struct " + one.tag + " { " + one.members + " };\n";
    }
    text_ += tables;
    now_ = {};
    now_.readables = {{"many", kind::whole, false},
                      {"as_few", kind::whole, false},
                      {"(unsigned)high", kind::natural, false},
                      {"(int)sizeof(struct pair)", kind::whole, false},
                      {"(int)sizeof TEXT(few)", kind::whole, false},
                      {"_Generic(table[0], float : 2, default : 9)", kind::whole, false}};
    if (includes_) {
        now_.readables.push_back({"(int)offsetof(struct pair, n)", kind::whole, false});
    }
    know(array{"table", kind::single, 0, 4, false});
    know(array{"codes", kind::whole, 2, 3, false});
    globals_ = now_;
}

/// Statements that may return early, between braces.
std::string writer::body(int statements, const std::string& result) {
    ways_out_ = {.result = result};
    std::string text;
    indent_ = 1;
    for (int count = 0; count < statements; ++count) {
        text += in_order({statement(1), chance(30) ? leave() : ""});
    }
    ways_out_ = {};
    return text;
}

void writer::write_helper() {
    helper made{.name = fresh("helper"), .result = any_kind(), .arguments = {}};
    now_ = globals_;
    cost_ = cost_before;
    const bool old_style = chance(10);
    std::string parameters;
    std::string declared;
    for (std::uint64_t count = below(2) + 1; count > 0; --count) {
        const kind type = any_kind();
        const std::string name = fresh("h");
        parameters += (parameters.empty() ? "" : ", ") + (old_style ? "" : name_of(type) + " ") + name;
        declared += old_style ? name_of(type) + " " + name + "; " : "";
        now_.readables.push_back({name, type});
        made.arguments.push_back(place_of(type));
    }
    std::string inside = body(static_cast<int>(below(2)) + 1, place_of(made.result));
    inside += line("return " + expression(made.result, 2) + ";");
    made.cost = cost_ - cost_before + 1;
    text_ += "static " + std::string(chance(30) ? "inline " : "") + name_of(made.result) + " " + made.name + "(" +
             parameters + ")\n" + declared + "{\n" + inside + "}\n\n";
    helpers_.push_back(made);
}

/// Calls itself with a number that is known and falls.
void writer::write_recursion() {
    helper made{.name = fresh("again"), .result = any_kind(), .arguments = {"{t}", chance(50) ? "{z}" : "3"}};
    now_ = globals_;
    now_.readables.insert(now_.readables.end(), {{"a", made.result, false}, {"n", kind::whole, false}});
    cost_ = cost_before;
    const std::string inside = fill(named(one_of(recursions), made.name), made.result, 2);
    made.cost = 5 * (cost_ - cost_before + 1);
    text_ += "static " + name_of(made.result) + " " + made.name + "(" + name_of(made.result) + " a, int n)\n{\n" +
             inside + "}\n\n";
    helpers_.push_back(made);
}

/// Halves an array until one element is left.
void writer::write_sum() {
    const kind type = any_kind();
    const std::string name = fresh("sum");
    const std::string word = name_of(type);
    const std::string how = chance(50) ? " + " : " - ";
    text_ += "static " + word + " " + name + "(const " + word + " *p, int n)\n{\n    return n == 1 ? *p : " + name +
             "(p, n / 2)" + how + name + "(p + n / 2, n - n / 2);\n}\n\n";
    helpers_.push_back({name, type, {"(" + word + "[]){{t}, {t}, {t}}", "3"}, 3});
}

/// Two functions of one operand, a table of them, and one that is given a function.
void writer::write_table_of_functions() {
    const kind type = any_kind();
    const std::string word = name_of(type);
    std::array<std::string, 2> names;
    int cost = 0;
    for (std::string& name : names) {
        name = fresh("one");
        now_ = globals_;
        now_.readables.push_back({"x", type, false});
        cost_ = cost_before + 25;
        text_ += "static " + word + " " + name + "(" + word + " x)\n{\n    return " + expression(type, 2) + ";\n}\n\n";
        cost += cost_ - cost_before - 24;
    }
    const std::string table = fresh("both");
    const std::string map = fresh("map");
    const std::string twice = fresh("twice");
    text_ += "typedef " + word + " (*" + map + ")(" + word + ");\n";
    text_ += chance(50) ? "static const " + map : "static " + word + " (*const ";
    text_ += text_.ends_with("const ") ? table + "[2])(" + word + ")" : " " + table + "[2]";
    text_ += " = { " + names[0] + ", &" + names[1] + " };\n\n";
    text_ += "static " + word + " " + twice + "(" + map + " f, " + word + " x)\n{\n    return (*f)(f(x));\n}\n\n";
    helpers_.push_back({table + "[1]", type, {"{t}"}, cost});
    helpers_.push_back({"(*" + table + "[few - 3])", type, {"{t}"}, cost});
    helpers_.push_back({"(many > FEW ? " + names[1] + " : " + names[0] + ")", type, {"{t}"}, cost});
    helpers_.push_back({twice, type, {table + "[0]", "{t}"}, 2 * cost});
    helpers_.push_back({twice, type, {names[1], "{t}"}, 2 * cost});
}

/// A structure by value.
void writer::write_maker() {
    const record_type& type = one_of(record_types_);
    maker made{.name = fresh("make"), .type = &type};
    now_ = globals_;
    now_.readables.insert(now_.readables.end(), {{"h", kind::single}, {"k", kind::whole}});
    cost_ = cost_before;
    indent_ = 1;
    std::string inside;
    if (chance(50)) {
        inside = line("return (struct " + type.tag + ")" + record_list(type, 2) + ";");
    } else {
        inside = line("struct " + type.tag + " all = " + record_list(type, 2) + ";");
        know(record{"all", &type});
        inside += body(1, "all") + line("return all;");
    }
    made.cost = cost_ - cost_before + 1;
    text_ += "static struct " + type.tag + " " + made.name + "(float h, int k)\n{\n" + inside + "}\n\n";
    makers_.push_back(made);
}

/// Results through pointers.
void writer::write_procedure() {
    const record_type& type = one_of(record_types_);
    procedure made{.name = fresh("step"), .through = any_kind(), .type = &type};
    now_ = globals_;
    now_.readables.insert(now_.readables.end(), {{"h", kind::single}, {"(*to)", made.through}});
    for (const readable& path : type.paths) {
        now_.readables.push_back({"all->" + path.text.substr(1), path.type});
    }
    cost_ = cost_before;
    indent_ = 1;
    const std::string inside = in_order({line("*to = " + expression(made.through, 2) + ";"), body(2, "void")});
    made.cost = cost_ - cost_before + 1;
    text_ += "static void " + made.name + "(" + name_of(made.through) + " *to, struct " + type.tag +
             " *all, float h)\n{\n" + inside + "}\n\n";
    procedures_.push_back(made);
}

}  // namespace xfc::flow::test
