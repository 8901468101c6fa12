// The top: a function with ports of every kind, or a whole file as older sources are written.

#include <array>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

struct narrow_port {
    std::string_view declared;
    std::string_view name;
    kind type;
};

constexpr narrow_port narrow_ports[] = {
    {"short tiny", "tiny", kind::whole},         {"bool flag", "flag", kind::whole},
    {"unsigned char byte", "byte", kind::whole}, {"signed char small", "small", kind::whole},
    {"uint16_t half", "half", kind::whole},      {"long far", "far", kind::whole},
    {"uint32_t bits", "bits", kind::natural},    {"sample heard", "heard", kind::single},
    {"enum level loud", "loud", kind::natural},
};

/// Arrays that are read; the text behind the type, rows and size.
struct array_port {
    std::string_view name;
    std::string_view sizes;
    int rows;
    int size;
};

constexpr array_port array_ports[] = {{"in", "[3]", 0, 3}, {"grid", "[2][2]", 2, 2}, {"taps", "[4]", 0, 4}};

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

}  // namespace

std::string writer::body_of_top() {
    std::string text;
    indent_ = 1;
    for (std::uint64_t count = below(6) + 3; count > 0; --count) {
        text += in_order({statement(2), leave()});
    }
    return text;
}

std::vector<std::string> writer::add_inputs() {
    std::vector<std::string> parameters;
    for (std::uint64_t count = below(3) + 1; count > 0; --count) {
        const kind type = any_kind();
        const std::string name = fresh("x");
        parameters.push_back(name_of(type) + " " + name);
        now_.readables.push_back({name, type});
    }
    if (chance(30)) {
        const narrow_port& row = one_of(narrow_ports);
        parameters.emplace_back(row.declared);
        now_.readables.push_back({std::string(row.name), row.type, false});
    }
    if (chance(50)) {
        const array_port& row = one_of(array_ports);
        const kind type = any_kind();
        parameters.push_back("const " + name_of(type) + " " + std::string(row.name) + std::string(row.sizes));
        know(array{std::string(row.name), type, row.rows, row.size, false});
    }
    if (chance(35)) {
        const record_type& type = one_of(record_types_);
        const bool by_address = chance(40);
        parameters.push_back((by_address ? "const struct " : "struct ") + type.tag + (by_address ? " *" : " ") +
                             "given");
        if (!by_address) {
            know(record{"given", &type});
        }
        for (const readable& path : type.paths) {
            if (by_address) {
                now_.readables.push_back({"given->" + path.text.substr(1), path.type, false});
            }
        }
    }
    if (chance(10)) {
        parameters.emplace_back("const struct pair many_pairs[2]");
        now_.readables.insert(now_.readables.end(), {{"many_pairs[0].x", kind::single, false},
                                                     {"many_pairs[1].x", kind::single, false},
                                                     {"many_pairs[1].n", kind::whole, false}});
    }
    return parameters;
}

/// All outputs are set first, so that the function may return anywhere; what is kept is read and written.
std::vector<std::string> writer::add_outputs(std::string& body) {
    std::vector<std::string> parameters;
    indent_ = 1;
    if (chance(40)) {
        const kind type = any_kind();
        parameters.push_back(name_of(type) + " *out");
        body += line("*out = " + expression(type, 2) + ";");
        now_.readables.push_back({"(*out)", type});
    }
    if (chance(30)) {
        const kind type = any_kind();
        const int size = static_cast<int>(below(2)) + 2;
        parameters.push_back(name_of(type) + " y[" + std::to_string(size) + "]");
        for (int place = 0; place < size; ++place) {
            body += line("y[" + std::to_string(place) + "] = " + expression(type, 2) + ";");
        }
        know(array{"y", type, 0, size});
    }
    if (chance(15)) {
        const kind type = any_kind();
        parameters.push_back(name_of(type) + " plane[2][2]");
        for (const char* place : {"[0][0]", "[0][1]", "[1][0]", "[1][1]"}) {
            body += line("plane" + std::string(place) + " = " + expression(type, 1) + ";");
        }
        know(array{"plane", type, 2, 2});
    }
    if (chance(25)) {
        const record_type& type = one_of(record_types_);
        parameters.push_back("struct " + type.tag + " *all");
        body += line("*all = (struct " + type.tag + ")" + record_list(type, 2) + ";");
        know(record{"(*all)", &type});
    }
    if (chance(20)) {
        const kind type = any_kind();
        parameters.push_back(name_of(type) + " kept[2]");
        know(array{"kept", type, 0, 2});
    }
    return parameters;
}

void writer::write_top_function() {
    now_ = globals_;
    std::vector<std::string> parameters = add_inputs();
    std::string body;
    const std::vector<std::string> outputs = add_outputs(body);
    parameters.insert(parameters.end(), outputs.begin(), outputs.end());
    const bool sets = !body.empty();
    std::string result;
    if (sets && chance(30)) {
        result = "void";
        ways_out_.result = "void";
        body += body_of_top();
    } else if (chance(25)) {
        const record_type& type = one_of(record_types_);
        result = "struct " + type.tag;
        ways_out_.result =
            "(" + result + "){ " + type.paths.back().text + " = " + place_of(type.paths.back().type) + " }";
        body += body_of_top();
        body += line("return (" + result + ")" + record_list(type, 3) + ";");
    } else {
        const kind type = any_kind();
        result = name_of(type);
        ways_out_.result = place_of(type);
        body += body_of_top();
        body += line("return " + expression(type, 4) + ";");
    }
    text_ += result + " top(" + joined(parameters) + ")\n{\n" + body + "}\n";
}

/// Variables outside, functions without parameters that run in the order of the source, main() without a type.
void writer::write_whole_file() {
    now_ = globals_;
    for (std::uint64_t count = below(3) + 2; count > 0; --count) {
        const kind type = any_kind();
        const std::string name = fresh("g");
        text_ += name_of(type) + " " + name + ";\n";
        now_.readables.push_back({name, type, false});
    }
    if (chance(40)) {
        const kind type = any_kind();
        text_ += name_of(type) + " taps[3];\n";
        know(array{"taps", type, 0, 3, false});
    }
    if (chance(30)) {
        text_ += "struct pair given;\n";
        now_.readables.insert(now_.readables.end(),
                              {{"given.x", kind::single, false}, {"given.n", kind::whole, false}});
    }
    const scope outside = now_;
    std::vector<readable> states;
    for (std::uint64_t stage = below(3); stage > 0; --stage) {
        const kind type = any_kind();
        const std::string name = fresh("state");
        now_ = outside;
        now_.readables.insert(now_.readables.end(), states.begin(), states.end());
        indent_ = 1;
        std::string text = line(name + " = " + expression(type, 3) + ";");
        states.push_back({name, type});
        now_.readables.push_back(states.back());
        text += statement(1);
        text_ += name_of(type) + " " + name + ";\n\n" + (chance(50) ? "void " : "") + fresh("stage") + "()\n{\n" +
                 text + "}\n\n";
    }
    now_ = outside;
    now_.readables.insert(now_.readables.end(), states.begin(), states.end());
    const kind type = any_kind();
    text_ += name_of(type) + " result;\n\nmain()\n{\n";
    const std::string inside = body_of_top();
    text_ += inside + line("result = " + expression(type, 3) + ";") + "}\n";
}

}  // namespace xfc::flow::test
