// Expressions: tables of productions for each kind, and how their places are filled.

#include <algorithm>
#include <array>
#include <cstdio>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

/// Operations that a function or the top may take; behind that leaves alone are drawn.
constexpr int most_operations = 220;

constexpr production of_whole[] = {
    {"({i} + {i})", 4},
    {"({i} - {i})", 4},
    {"({i} * {i})", 3},
    {"({i} & {i})", 2},
    {"({i} | {i})", 2},
    {"({i} ^ {i})", 2},
    {"({i} << {p})", 1},
    {"({i} >> {p})", 1},
    {"({i} << ({i} & 31))", 1},
    {"({i} >> ({i} & 31))", 1},
    {"(~{i})", 1},
    {"(-{i})", 1},
    {"(+{i})", 1},
    {"(!{i})", 1},
    {"(int)(short){i}", 1},
    {"(int)(signed char){i}", 1},
    {"(int)(unsigned char){i}", 1},
    {"(int)(unsigned short){i}", 1},
    {"(int)(bool){o}", 1, needs::headers},
    {"(int){u}", 2},
    {"({i} / {p})", 1},
    {"({i} % {p})", 1},
    {"({i} / -{p})", 1},
    {"({i} / ({i} | 1))", 1},
    {"({i} % ({i} & 255 | 1))", 1},
    {"abs({i} >> 1)", 1, needs::headers},
    {"div({i}, {p}).rem", 1, needs::headers},
    {"{c}", 2},
    {"\"wxyz\"[{z}]", 1},
    {"(int)ldiv({i}, {p}).quot", 1, needs::headers},
    {"(int)lroundf(fminf(fmaxf({s}, -1e6f), 1e6f))", 1, needs::headers},
    {"(int)CLAMP({s}, -1e5f, 1e5f)", 1},
    {"CLAMP({i}, -100, 100)", 1},
};

constexpr production of_natural[] = {
    {"({u} + {u})", 4},
    {"({u} - {u})", 3},
    {"({u} * {u})", 2},
    {"({u} + {i})", 1},
    {"({u} & {u})", 2},
    {"({u} | {i})", 1},
    {"({u} ^ {u})", 2},
    {"(~{u})", 1},
    {"(-{u})", 1},
    {"({u} << {p})", 1},
    {"({u} >> {p})", 2},
    {"({u} << ({i} & 31))", 1},
    {"({u} >> ({u} & 15))", 1},
    {"({u} / {p}u)", 1},
    {"({u} % {p}u)", 1},
    {"({u} / ({u} | 1u))", 1},
    {"({u} % ({u} & 63u | 1u))", 1},
    {"(unsigned){i}", 3},
    {"(unsigned)(unsigned short){i}", 1},
    {"(unsigned){c}", 1},
    {"({u} / 4000000000u)", 1},
    {"CLAMP({u}, 7u, 90000u)", 1},
    {"(unsigned)CLAMP({s}, 0.0f, 4e9f)", 1},
};

constexpr production of_floats[] = {
    {"({t} + {t})", 8},
    {"({t} - {t})", 8},
    {"({t} * {t})", 10},
    {"({t} / {t})", 3},
    {"({t} * {l})", 2},
    {"({l} - {t})", 2},
    {"(-{t})", 2},
    {"(+{t})", 1},
    {"({T}){u}", 1},
    {"SQUARE({t})", 1},
    {"MIX({t}, {t}, {t})", 1},
    {"CLAMP({t}, {l}, {l})", 1},
    {"fabs{f}({t})", 1},
    {"sqrt{f}(fabs{f}({t}))", 1},
    {"fmin{f}({t}, {t})", 1},
    {"fmax{f}({t}, {t})", 1},
    {"ldexp{f}({t}, {n})", 1},
    {"ldexp{f}({t}, ({i} & 7) - 3)", 1, needs::headers},
    {"scalbn{f}({t}, {i} % 5)", 1, needs::headers},
    {"copysign{f}({t}, {t})", 1},
    {"scalbln{f}({t}, {n})", 1, needs::headers},
    {"__builtin_fabs{f}({t})", 1, needs::headers},
    {"fdim{f}({t}, {t})", 1, needs::headers},
    {"floor{f}({t})", 1},
    {"ceil{f}({t})", 1},
    {"trunc{f}({t})", 1},
    {"round{f}({t})", 1},
    {"(({T}[]){{t}, {t}, {t}})[{z}]", 1},
    {"((struct pair){ .n = {i}, .x = {s} }).x", 1},
    {"exp{f}({t})", 2, needs::functions},
    {"exp2{f}({t})", 2, needs::functions},
    {"log{f}(fabs{f}({t}))", 1, needs::functions},
    {"log2{f}(fabs{f}({t}))", 1, needs::functions},
    {"log10{f}(fabs{f}({t}))", 1, needs::functions},
    {"pow{f}({t}, {e})", 2, needs::functions},
    {"inv{f}({t})", 1, needs::functions},
    {"invsqr{f}(fabs{f}({t}))", 1, needs::functions},
    {"(1.0{F} / {t})", 1},
    {"(1.0{F} / sqrt{f}(fabs{f}({t})))", 1},
};

constexpr production of_conditions[] = {
    {"({t} < {t})", 3},
    {"({t} <= {t})", 2},
    {"({t} > {t})", 3},
    {"({t} >= {t})", 2},
    {"({t} == {t})", 2},
    {"({t} != {t})", 2},
    {"({t} < {l})", 2},
    {"({l} >= {t})", 1},
    {"({c} && {c})", 2},
    {"({c} || {c})", 2},
    {"(!{c})", 1},
    {"({c} != {c})", 1},
    {"({c} and not {c})", 1, needs::headers},
    {"({t} not_eq {t})", 1, needs::headers},
    {"({i}, {c})", 1},
    {"({i} & 1)", 1},
    {"(({i} >> {p}) != {z})", 1},
    {"(isnan({s}) != 0)", 1, needs::headers},
    {"(isinf({s}) != 0)", 1, needs::headers},
    {"(isfinite({s}) != 0)", 1, needs::headers},
    {"(isnormal({s}) || {c})", 1, needs::headers},
    {"(fpclassify({s}) == FP_NAN)", 1, needs::headers},
    {"(isless({s}, {s}) != 0)", 1, needs::headers},
    {"(isgreaterequal({s}, {s}) != 0)", 1, needs::headers},
    {"(islessgreater({s}, {s}) != 0)", 1, needs::headers},
    {"(isunordered({s}, {s}) != 0)", 1, needs::headers},
};

bool is_floating(kind type) { return type == kind::single || type == kind::wide; }

}  // namespace

std::string writer::filled_place(char what, kind type, int depth) {
    switch (what) {
        case 't':
            return expression(type, depth - 1);
        case 'o':
            return expression(any_kind(), depth - 1);
        case 'l':
            return leaf(chance(50) || type == kind::natural ? type : type == kind::wide ? any_kind() : kind::whole);
        case 'i':
            return expression(kind::whole, depth - 1);
        case 'u':
            return expression(kind::natural, depth - 1);
        case 's':
            return expression(kind::single, depth - 1);
        case 'w':
            return expression(kind::wide, depth - 1);
        case 'c':
            return condition(depth - 1);
        case 'n':
            return std::to_string(static_cast<int>(below(9)) - 4);
        case 'p':
            return std::to_string(below(30) + 2);
        case 'e':
            return std::to_string(static_cast<int>(below(11)) - 4);
        case 'z':
            return std::to_string(below(3));
        case 'f':
            return suffix(type);
        case 'F':
            return type == kind::single ? "f" : "";
        case 'T':
            return name_of(type);
        default:
            return {};
    }
}

std::string writer::fill(std::string_view text, kind type, int depth) {
    std::string filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool is_place = text[at] == '{' && at + 2 < text.size() && text[at + 2] == '}';
        filled += is_place ? filled_place(text[at + 1], type, depth) : std::string(1, text[at]);
        at += is_place ? 2 : 0;
    }
    return filled;
}

/// The place that an expression of the kind fills.
std::string writer::place_of(kind type) {
    constexpr std::string_view letters = "iusw";
    return std::string("{") + letters[static_cast<std::size_t>(type)] + "}";
}

std::string writer::constant(kind type) {
    constexpr std::array<std::string_view, 10> some{"0",    "1",      "3",        "(-7)", "255",
                                                    "1000", "0x7fff", "(-65536)", "FEW",  "'A'"};
    if (type == kind::whole) {
        return std::string(one_of(some));
    }
    if (type == kind::natural) {
        return std::to_string(below(5) == 0 ? below(0x100000000U) : below(1000)) + "u";
    }
    const double number = (static_cast<double>(below(20001)) - 10000.0) / static_cast<double>(1U << below(14));
    char text[48];
    (void)std::snprintf(text, sizeof text, chance(20) ? "%a" : "%.9g", number);
    std::string result = text;
    if (result.find_first_of(".pe") == std::string::npos) {
        result += ".0";
    }
    return "(" + result + (type == kind::single && !(bare_constants_ && chance(50)) ? "f)" : ")");
}

/// Later variables are read more often, since they have more in them, and what is known at compile time seldom.
std::string writer::leaf(kind type) {
    const std::size_t known = globals_.readables.size();
    const std::size_t from = now_.readables.size() > known && chance(85) ? known : 0;
    std::vector<std::string> fitting;
    for (std::size_t place = from; place < now_.readables.size(); ++place) {
        if (now_.readables[place].type == type) {
            fitting.push_back(now_.readables[place].text);
        }
    }
    if (fitting.empty() || chance(12)) {
        return chance(30) ? constant(type)
                          : converted(now_.readables[from + below(now_.readables.size() - from)], type);
    }
    const std::uint64_t one = below(fitting.size());
    return fitting[std::max(one, below(fitting.size()))];
}

/// Floating numbers that integers do not have, where C says nothing, are kept out.
std::string writer::converted(const readable& from, kind to) {
    const std::string cast = "(" + name_of(to) + ")";
    if (is_floating(to) || !is_floating(from.type)) {
        return cast + from.text;
    }
    const std::string f = suffix(from.type);
    const std::string lowest = to == kind::whole ? "-1e6" : "0.0";
    return cast + "fmin" + f + "(fmax" + f + "(" + from.text + ", " + lowest + f + "), 1e6" + f + ")";
}

std::string writer::condition(int depth) {
    const production& row = draw(of_conditions);
    return fill(row.text, any_kind(), depth);
}

std::string writer::expression(kind type, int depth) {
    if (depth <= 0 || cost_ > most_operations || chance(12)) {
        return leaf(type);
    }
    cost_ += weight_;
    const std::uint64_t drawn = below(20);
    if (drawn < 2) {
        return fill("({c} ? {t} : {t})", type, depth);
    }
    if (drawn == 2 && !helpers_.empty()) {
        return call(one_of(helpers_), type, depth);
    }
    if (drawn == 3 && !makers_.empty() && chance(40)) {
        return member_of_made(type, depth);
    }
    if (type == kind::whole) {
        return fill(draw(of_whole).text, type, depth);
    }
    return fill(draw(type == kind::natural ? std::span<const production>(of_natural) : of_floats).text, type, depth);
}

std::string writer::call(const helper& what, kind type, int depth) {
    if (cost_ + what.cost * weight_ > most_operations) {
        return leaf(type);
    }
    cost_ += what.cost * weight_;
    std::string text = what.name + "(";
    for (const std::string& argument : what.arguments) {
        text += (text.back() == '(' ? "" : ", ") + fill(argument, what.result, depth - 1);
    }
    text += ")";
    return what.result == type ? text : converted({text, what.result, false}, type);
}

/// A member of what a function returns by value.
std::string writer::member_of_made(kind type, int depth) {
    const maker& what = one_of(makers_);
    cost_ += what.cost * weight_;
    const readable& path = one_of(what.type->paths);
    const std::string text = fill(what.name + "({s}, {i})", type, depth - 1) + path.text;
    return path.type == type ? text : converted({text, path.type, false}, type);
}

std::string writer::listed(const std::vector<kind>& types, int depth) {
    std::string text;
    for (const kind type : types) {
        text += (text.empty() ? "" : ", ") + expression(type, depth);
    }
    return text;
}

/// In order, or by designators in any order; members that are left out are zero.
std::string writer::record_list(const record_type& type, int depth) {
    std::vector<readable> paths = type.paths;
    const bool designated = chance(50);
    for (std::size_t place = paths.size() - 1; designated && place > 0; --place) {
        std::swap(paths[place], paths[below(place + 1)]);
    }
    paths.resize(chance(70) ? paths.size() : below(paths.size()) + 1);
    std::string text;
    for (const readable& path : paths) {
        text += (text.empty() ? "{ " : ", ") + (designated ? path.text + " = " : "") + expression(path.type, depth);
    }
    return text + " }";
}

}  // namespace xfc::flow::test
