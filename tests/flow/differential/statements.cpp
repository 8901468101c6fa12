// Statements: assignments in all forms, copies, choices, and loops with known ends that are perhaps left early.

#include <algorithm>
#include <array>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

constexpr std::array<std::string_view, 4> of_floats{" += {t}", " -= {t}", " *= {t}", " /= {t}"};
constexpr std::array<std::string_view, 14> of_integers{
    " += {t}",  " -= {t}",       " *= {t}",       " &= {t}", " |= {t}", " ^= {t}",     " <<= {p}",
    " >>= {p}", " <<= {i} & 31", " >>= {i} & 15", " /= {p}", " %= {p}", " /= {i} | 1", " %= {i} & 63 | 1"};

/// A loop: its head and foot, with @ for the counter and # for the number of rounds, and what indexes arrays inside.
struct loop_row {
    std::string_view head;
    std::string_view foot;
    std::string_view index;
    bool counter_outside = false;
};

constexpr loop_row loops[] = {
    {"for (int @ = 0; @ < #; @++) {", "}", "@"},
    {"for (int @ = 0; @ < #; @++) {", "}", "@"},
    {"for (int @ = #; @-- > 0;) {", "}", "@"},
    {"for (unsigned @ = 0; @ != #; @ += 1) {", "}", "@"},
    {"for (short @ = # - 1; @ >= 0; --@) {", "}", "@"},
    {"for (int @ = 0, @_2 = # - 1; @ < #; ++@, @_2--) {", "}", "@_2"},
    {"for (@ = 0; @ < #; ++@) {", "}", "@", true},
    {"while (@++ < #) {", "}", "@ - 1", true},
    {"do {", "} while (++@ < #);", "@", true},
    {"while (@ - # ? ++@, 1 : 0) {", "}", "# - @", true},
    {"for (int @ = 1 << #; @ >>= 1;) {", "}", "@ % #"},
    {"EACH(@, #) {", "}", "@"},
};

/// Numbers @ that are not known, of which a limit # is.
constexpr std::array<std::string_view, 5> limited_numbers{
    "int @ = {i};\nif (@ > #)\n    @ = #;", "int @ = ({i}) % #;", "int @ = {i};\n@ = @ < 0 ? 0 : @ > # ? # : @;",
    "unsigned @ = {i};\nif (@ >= #U)\n    @ = #;", "short @ = ({i}) > 1 ? # : 1;"};

/// The labels of a choice between four, and whether it has a range.
constexpr std::array<std::string_view, 4> labels{"case 0:", "case 1:", "case 2 ... 3:", "case -1:"};

}  // namespace

const readable* writer::any_target() {
    std::vector<const readable*> fitting;
    for (const readable& one : now_.readables) {
        if (one.assignable) {
            fitting.push_back(&one);
        }
    }
    return fitting.empty() ? nullptr : one_of(fitting);
}

std::string writer::assignment() {
    const readable* found = any_target();
    if (found == nullptr) {
        return declaration();
    }
    const readable target = *found;
    const bool integer = target.type == kind::whole || target.type == kind::natural;
    if (integer && chance(12)) {
        constexpr std::array<std::string_view, 4> steps{"@++;", "@--;", "++@;", "--@;"};
        return line(named(one_of(steps), "(" + target.text + ")", ""));
    }
    if (!chance(40)) {
        return line(target.text + " = " + expression(target.type, 3) + ";");
    }
    const std::string_view how = integer ? one_of(of_integers) : one_of(of_floats);
    return line(fill(target.text + std::string(how) + ";", target.type, 3));
}

std::string writer::lines_of(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines += line(std::string(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// A divisor that is tested first.
std::string writer::guarded_assignment() {
    std::vector<readable> divisors;
    for (const readable& one : now_.readables) {
        if (one.type == kind::whole) {
            divisors.push_back(one);
        }
    }
    if (divisors.empty()) {
        return declaration();
    }
    const std::string divisor = one_of(divisors).text;
    const std::string name = fresh("v");
    constexpr std::array<std::string_view, 4> ways{"int @ = {i};\nif (# != 0)\n    @ /= #;",
                                                   "int @ = # != 0 ? {i} / # : {i};", "int @ = # > 0 ? {i} % # : {i};",
                                                   "int @ = {i};\nif (!#)\n    @ = 3;\nelse\n    @ %= #;"};
    const std::string text = fill(named(one_of(ways), name, divisor), kind::whole, 2);
    now_.readables.push_back({name, kind::whole});
    return lines_of(text);
}

/// Several assignments in one statement: by commas, one behind the other, or by parentheses.
std::string writer::chained_assignment() {
    const readable* found = any_target();
    if (found == nullptr) {
        return declaration();
    }
    const readable first = *found;
    const readable second = *any_target();
    const std::string of_first = expression(first.type, 2);
    if (chance(30)) {
        const std::string name = fresh("v");
        now_.readables.push_back({name, first.type});
        return line(name_of(first.type) + " " + name + " = " + first.text + " = " + of_first + ";");
    }
    const std::string of_second = expression(second.type, 2);
    return line(chance(50) ? first.text + " = " + of_first + ", " + second.text + " = " + of_second + ";"
                           : first.text + " = (" + second.text + " = " + of_second + ", " + of_first + ");");
}

/// Whole structures and arrays.
std::string writer::copy() {
    if (now_.records.size() > 1 && chance(50)) {
        const record to = one_of(now_.records);
        const record from = one_of(now_.records);
        if (to.type == from.type && to.name != from.name) {
            return line(chance(50) || !includes_
                            ? to.name + " = " + from.name + ";"
                            : "memmove(&" + to.name + ", &" + from.name + ", sizeof " + to.name + ");");
        }
    }
    std::vector<array> targets = now_.arrays;
    std::erase_if(targets, [](const array& one) { return !one.assignable; });
    if (targets.empty() || !includes_) {
        return assignment();
    }
    const array to = one_of(targets);
    const std::string bytes = std::to_string(std::max(to.rows, 1) * to.size) + " * sizeof(" + name_of(to.type) + ")";
    for (const array& from : now_.arrays) {
        if (from.name != to.name && from.type == to.type && from.size == to.size && from.rows == to.rows) {
            return line((chance(50) ? "memcpy(" : "memmove(") + to.name + ", " + from.name + ", " + bytes + ");");
        }
    }
    return chance(30) ? line("memset(" + to.name + ", 0, " + bytes + ");") : assignment();
}

/// One that writes through its pointers.
std::string writer::call_of_procedure() {
    if (procedures_.empty()) {
        return declaration();
    }
    const procedure& what = one_of(procedures_);
    const std::string through = fresh("v");
    const std::string value = expression(what.through, 1);
    std::string text = line(name_of(what.through) + " " + through + " = " + value + ";");
    now_.readables.push_back({through, what.through});
    std::vector<record> fitting = now_.records;
    std::erase_if(fitting, [&](const record& one) { return one.type != what.type; });
    if (fitting.empty()) {
        const std::string name = fresh("s");
        text += line("struct " + what.type->tag + " " + name + " = " + record_list(*what.type, 1) + ";");
        know(record{name, what.type});
        fitting = {now_.records.back()};
    }
    cost_ += what.cost * weight_;
    return text + line(in_order({what.name, "(&", through, ", &", one_of(fitting).name, ", ",
                                 expression(kind::single, 2), ");"}));
}

/// What is known to hold builds nothing.
std::string writer::assertion() {
    const std::string held = fill("FEW == few || {c}", kind::single, 1);
    return includes_ ? line("assert(" + held + ");") : line("(void)(" + held + ");");
}

/// A pointer that goes through an array.
std::string writer::walk() {
    std::vector<array> arrays = now_.arrays;
    std::erase_if(arrays, [](const array& one) { return one.rows != 0; });
    if (arrays.empty()) {
        return array_declaration();
    }
    const array through = one_of(arrays);
    const std::string type = name_of(through.type);
    const std::string sum = fresh("v");
    const std::string at = fresh("p");
    const std::string end = through.name + " + " + std::to_string(through.size);
    std::string text = line(type + " " + sum + " = " + expression(through.type, 1) + ";");
    const std::string from = "const " + type + " *" + at + " = " + through.name + "; ";
    text += chance(50)
                ? line("for (" + from + at + " != " + end + "; ++" + at + ")") + line("    " + sum + " += *" + at + ";")
                : line("for (" + from + at + " < " + end + ";)") + line("    " + sum + " -= *" + at + "++;");
    now_.readables.push_back({sum, through.type});
    cost_ += through.size * weight_;
    return text;
}

/// Statements in braces; what they declare is gone behind them.
std::string writer::block(int statements, int depth) {
    const std::size_t readables = now_.readables.size();
    const std::size_t arrays = now_.arrays.size();
    const std::size_t records = now_.records.size();
    ++indent_;
    std::string text;
    for (int index = 0; index < statements; ++index) {
        text += statement(depth - 1);
    }
    text += leave();
    --indent_;
    now_.readables.resize(readables, {"", kind::whole});
    now_.arrays.resize(arrays, {"", kind::whole, 0, 0});
    now_.records.resize(records, {"", nullptr});
    return text;
}

/// Leaves the loop, the round or the function under a condition; nothing where that cannot be, and mostly.
std::string writer::leave() {
    std::vector<std::string> ways;
    if (ways_out_.loop) {
        ways.insert(ways.end(), {"break;", "continue;"});
    }
    if (!ways_out_.finish.empty() && indent_ == ways_out_.finish_indent) {
        ways.push_back("{ " + ways_out_.finish + " continue; }");
    }
    if (!ways_out_.result.empty()) {
        ways.push_back(ways_out_.result == "void" ? "return;"
                                                  : "return " + fill(ways_out_.result, kind::whole, 2) + ";");
    }
    if (ways.empty() || !chance(12)) {
        return {};
    }
    const std::string way = one_of(ways);
    ways_out_.finish.clear();
    return in_order({line("if (" + condition(1) + ")"), line("    " + way)});
}

std::string writer::loop(int depth) {
    const loop_row& row = one_of(loops);
    const std::string counter = fresh("i");
    const int rounds = static_cast<int>(below(3)) + 2;
    std::string end = std::to_string(rounds);
    std::string before = row.counter_outside ? line("int " + counter + " = 0;") : "";
    if (row.head == loops[0].head && chance(40)) {
        end = fresh("n");
        before += lines_of(fill(named(one_of(limited_numbers), end, std::to_string(rounds)), kind::whole, 2));
    }
    const scope outside = now_;
    const ways_out ways_before = ways_out_;
    ways_out_.loop = true;
    const auto rises_in = [](std::string_view text) {
        return text.find("@ < #") != std::string_view::npos || text.find("@++ < #") != std::string_view::npos;
    };
    const bool rises = rises_in(row.head) || rises_in(row.foot);
    ways_out_.finish_indent = indent_ + 1;
    const bool is_limited = end != std::to_string(rounds);
    ways_out_.finish = rises && !is_limited ? counter + " = " + std::to_string(rounds) + ";" : "";
    weight_ *= rounds;
    const std::string index = named(row.index, counter, std::to_string(rounds));
    now_.readables.push_back({"(int)(" + index + ")", kind::whole, false});
    for (const array& one : outside.arrays) {
        if (one.size >= rounds && one.rows == 0) {
            now_.readables.push_back({one.name + "[" + index + "]", one.type, one.assignable});
        } else if (one.size >= rounds) {
            now_.readables.push_back({one.name + "[1][" + index + "]", one.type, one.assignable});
        } else if (one.rows >= rounds) {
            now_.readables.push_back({one.name + "[" + index + "][0]", one.type, one.assignable});
        }
    }
    const std::string inside = block(static_cast<int>(below(2)) + 1, depth);
    weight_ /= rounds;
    ways_out_ = ways_before;
    ways_out_.finish.clear();  // the loop may have been left by a return
    now_ = outside;
    if (row.counter_outside) {
        now_.readables.push_back({counter, kind::whole, false});
    }
    return before + line(named(row.head, counter, end)) + inside +
           line(named(row.foot, counter, std::to_string(rounds)));
}

std::string writer::choice(int depth) {
    std::string text = in_order({line("if " + condition(2) + " {"), block(static_cast<int>(below(2)) + 1, depth)});
    if (chance(20)) {
        text += in_order({line("} else if " + condition(1) + " {"), block(1, depth)});
    }
    if (chance(50)) {
        text += line("} else {") + block(1, depth);
    }
    text += line("}");
    return text;
}

/// With default anywhere, and cases that fall through.
std::string writer::selection(int depth) {
    std::string text = line(fill(chance(70) ? "switch ({i} & 3) {" : "switch ({i} % 3) {", kind::whole, 2));
    const std::size_t default_place = below(6);
    for (std::size_t place = 0; place < labels.size(); ++place) {
        if (place == default_place) {
            text += in_order(
                {line("default:"), line("{"), block(1, depth), line("}"), chance(60) ? line("    break;") : ""});
        }
        if (chance(70)) {
            text += line(std::string(labels.at(place)));
            text += chance(80) ? line("{") + block(1, depth) + line("}") : line("    ;");
            text += chance(65) ? line("    break;") : "";
        }
    }
    return text + line("}");
}

std::string writer::statement(int depth) {
    using writing = std::string (writer::*)();
    using nesting = std::string (writer::*)(int);
    constexpr std::array<nesting, 5> nested{&writer::loop, &writer::loop, &writer::choice, &writer::choice,
                                            &writer::selection};
    constexpr std::array<writing, 25> simple{&writer::assignment,
                                             &writer::assignment,
                                             &writer::assignment,
                                             &writer::assignment,
                                             &writer::assignment,
                                             &writer::guarded_assignment,
                                             &writer::chained_assignment,
                                             &writer::copy,
                                             &writer::copy,
                                             &writer::call_of_procedure,
                                             &writer::walk,
                                             &writer::assertion,
                                             &writer::declaration,
                                             &writer::declaration,
                                             &writer::declaration,
                                             &writer::narrow_declaration,
                                             &writer::array_declaration,
                                             &writer::plane_declaration,
                                             &writer::table_declaration,
                                             &writer::record_declaration,
                                             &writer::records_declaration,
                                             &writer::union_declaration,
                                             &writer::pointer_declaration,
                                             &writer::record_pointer_declaration,
                                             &writer::parts_declaration};
    if (depth > 0 && chance(25)) {
        return (this->*one_of(nested))(depth);
    }
    return (this->*one_of(simple))();
}

}  // namespace xfc::flow::test
