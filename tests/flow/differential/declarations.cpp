// Declarations: variables of every type, arrays, structures, unions, pointers and tables. Each gives every number a
// value.

#include <algorithm>
#include <array>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

struct narrow_type {
    std::string_view name;
    kind read_as;
};

constexpr narrow_type narrow_types[] = {
    {"short", kind::whole},          {"signed char", kind::whole}, {"unsigned char", kind::whole},
    {"unsigned short", kind::whole}, {"long", kind::whole},        {"_Bool", kind::whole},
    {"sample", kind::single},        {"word", kind::natural},      {"enum level", kind::natural},
    {"register int", kind::whole},
};

/// How a pointer of that name reaches what follows it in the array, if anything.
constexpr std::array<std::string_view, 4> first_places{"(*@)", "@[0]", "*(@ + 0)", "(*&*@)"};
constexpr std::array<std::string_view, 3> next_places{"@[1]", "(*(@ + 1))", "1[@]"};

}  // namespace

std::string writer::declaration() {
    const kind type = any_kind();
    const std::string name = fresh("v");
    const std::string text =
        chance(80) ? line(name_of(type) + " " + name + " = " + expression(type, 3) + ";")
                   : line(name_of(type) + " " + name + ";") + line(name + " = " + expression(type, 3) + ";");
    now_.readables.push_back({name, type});
    return text;
}

/// Types that are wrapped, and names for types.
std::string writer::narrow_declaration() {
    // Variables of an older program's main may be ports, which are reached by their addresses.
    const narrow_type& drawn = whole_file_ ? narrow_types[below(std::size(narrow_types) - 1)] : one_of(narrow_types);
    const std::string name = fresh("n");
    const std::string value = expression(drawn.read_as, 3);
    now_.readables.push_back({name, drawn.read_as, true, std::string(drawn.name)});
    return line(std::string(drawn.name) + " " + name + " = " + value + ";");
}

std::string writer::array_declaration() {
    const kind type = any_kind();
    const std::string name = fresh("a");
    const int size = static_cast<int>(below(3)) + 2;
    std::string text = name_of(type) + " " + name + "[" + (chance(20) ? "" : std::to_string(size)) + "] = {";
    if (chance(20)) {
        text = in_order({name_of(type), " ", name, "[] = { [", std::to_string(size - 1), "] = ", expression(type, 2),
                         ", [0] = ", expression(type, 1), " }"});
    } else {
        text += listed(std::vector<kind>(static_cast<std::size_t>(size), type), 1) + "}";
    }
    know(array{name, type, 0, size});
    return line(text + ";");
}

std::string writer::plane_declaration() {
    const kind type = any_kind();
    const std::string name = fresh("m");
    const int rows = static_cast<int>(below(2)) + 2;
    const int size = static_cast<int>(below(2)) + 2;
    std::string text;
    for (int row = 0; row < rows; ++row) {
        text += (row == 0 ? "{" : ", {") + listed(std::vector<kind>(static_cast<std::size_t>(size), type), 1) + "}";
    }
    know(array{name, type, rows, size});
    return line(name_of(type) + " " + name + "[" + std::to_string(rows) + "][" + std::to_string(size) + "] = {" + text +
                "};");
}

/// A table of constants inside a function.
std::string writer::table_declaration() {
    const kind type = any_kind();
    const std::string name = fresh("t");
    const int size = static_cast<int>(below(3)) + 2;
    std::string text;
    for (int place = 0; place < size; ++place) {
        text += (place == 0 ? "" : ", ") + constant(type);
    }
    know(array{name, type, 0, size, false});
    return line("static const " + name_of(type) + " " + name + "[" + std::to_string(size) + "] = { " + text + " };");
}

std::string writer::record_declaration() {
    const record_type& type = one_of(record_types_);
    const std::string name = fresh("s");
    const std::string head = "struct " + type.tag + " " + name;
    std::vector<std::string> made;
    for (const maker& one : makers_) {
        if (one.type == &type) {
            made.push_back(fill(one.name + "({s}, {i})", kind::single, 2));
        }
    }
    for (const record& one : now_.records) {
        if (one.type == &type) {
            made.push_back(one.name);
        }
    }
    std::string text;
    if (!made.empty() && chance(50)) {
        text = line(head + " = " + one_of(made) + ";");
    } else if (chance(25)) {
        text = line(head + ";") + line(name + " = (struct " + type.tag + ")" + record_list(type, 2) + ";");
    } else {
        text = line(head + " = " + record_list(type, 2) + ";");
    }
    know(record{name, &type});
    return text;
}

std::string writer::records_declaration() {
    const record_type& type = one_of(record_types_);
    const std::string name = fresh("r");
    const std::string text = line(in_order(
        {"struct ", type.tag, " ", name, "[2] = { ", record_list(type, 1), ", ", record_list(type, 1), " };"}));
    know(record{name + "[0]", &type});
    know(record{name + "[1]", &type});
    return text;
}

/// Read as it was written: by one member alone, or by the integer of the other sign.
std::string writer::union_declaration() {
    const std::string name = fresh("u");
    if (chance(40)) {
        const std::string text = line("union bits " + name + " = { .n = " + expression(kind::whole, 3) + " };");
        now_.readables.push_back({name + ".u", kind::natural});
        now_.readables.push_back({name + ".n", kind::whole});
        return text;
    }
    const bool floating = whole_file_ || chance(50);  // a port is the first member
    const kind type = floating ? kind::single : kind::whole;
    const std::string member = floating ? ".f" : ".i";
    const std::string text =
        line("union either " + name + ";") + line(name + member + " = " + expression(type, 3) + ";");
    now_.readables.push_back({name + member, type});
    return text;
}

/// To a variable, an element or a member; into an array also to what follows.
std::string writer::pointer_declaration() {
    const std::string name = fresh("p");
    std::vector<array> arrays = now_.arrays;
    std::erase_if(arrays, [](const array& one) { return one.rows != 0; });
    if (!arrays.empty() && chance(50)) {
        const array into = one_of(arrays);
        const std::uint64_t first = below(static_cast<std::uint64_t>(into.size) - 1);
        const std::string type = (into.assignable ? "" : "const ") + name_of(into.type);
        const std::string text = chance(50) ? into.name + " + " + std::to_string(first)
                                            : "&" + into.name + "[" + std::to_string(first) + "]";
        now_.readables.push_back({named(one_of(first_places), name), into.type, into.assignable});
        now_.readables.push_back({named(one_of(next_places), name), into.type, into.assignable});
        return line(type + " *" + name + " = " + text + ";");
    }
    const readable* found = any_target();
    if (found == nullptr) {
        return declaration();
    }
    const std::string type = found->declared_as.empty() ? name_of(found->type) : found->declared_as;
    if (type.starts_with("register") || found->text.starts_with("*")) {
        return declaration();
    }
    const bool is_const = chance(20);
    const std::string text = line((is_const ? "const " : "") + type + " *" + name + " = &" + found->text + ";");
    now_.readables.push_back({named(one_of(first_places), name), found->type, !is_const, type});
    return text;
}

std::string writer::record_pointer_declaration() {
    const std::string name = fresh("q");
    if (now_.records.empty() || chance(20)) {
        const record_type& type = one_of(record_types_);
        const std::string text =
            line("struct " + type.tag + " *" + name + " = &(struct " + type.tag + ")" + record_list(type, 1) + ";");
        know(record{"(*" + name + ")", &type});
        return text;
    }
    const record to = one_of(now_.records);
    for (const readable& path : to.type->paths) {
        now_.readables.push_back({name + "->" + path.text.substr(1), path.type});
    }
    return line("struct " + to.type->tag + " *const " + name + " = &" + to.name + ";");
}

/// Whole part and fraction, both results of one call.
std::string writer::parts_declaration() {
    const kind type = allow_wide_ && chance(30) ? kind::wide : kind::single;
    if (!includes_) {
        return declaration();
    }
    const std::string whole = fresh("w");
    const std::string part = fresh("f");
    const std::string text =
        line(name_of(type) + " " + whole + ";") +
        line(name_of(type) + " " + part + " = modf" + suffix(type) + "(" + expression(type, 2) + ", &" + whole + ");");
    now_.readables.push_back({whole, type});
    now_.readables.push_back({part, type});
    return text;
}

}  // namespace xfc::flow::test
