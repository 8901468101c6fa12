#include "flow/emit/names.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <utility>

#include "flow/emit/template.h"
#include "flow/graph/dump.h"
#include "flow/graph/port_names.h"

namespace xfc::flow {

namespace {

constexpr std::size_t longest_comment = 100;  // characters
constexpr std::size_t longest_name = 40;      // characters of a C variable's name

// Some tool takes a comment that begins with one of these for an order to itself.
constexpr std::string_view tools[] = {
    "0in",     "altera",  "ambit",     "cadence",  "coverage", "exemplar", "leda",      "lint",      "pragma",
    "psl",     "quartus", "rtl_synth", "spyglass", "surefire", "synopsys", "synthesis", "translate", "vcs",
    "verible", "verific", "verilator", "verilint", "verilog",  "vhdl",     "xilinx",
};

bool is_name_letter(char letter) { return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_'; }

/// The variable that the text in front of an expression assigns to: "  y[i] += " gives y. Empty when it is none.
std::string assigned_variable(std::string_view front) {
    const auto drop_blanks = [&] {
        while (!front.empty() && (front.back() == ' ' || front.back() == '\t' || front.back() == '(')) {
            front.remove_suffix(1);
        }
    };
    drop_blanks();
    if (front.empty() || front.back() != '=') {
        return {};
    }
    front.remove_suffix(1);
    if (!front.empty() && std::string_view("+-*/").find(front.back()) != std::string_view::npos) {
        front.remove_suffix(1);
    } else if (!front.empty() && std::string_view("=!<>&|^%").find(front.back()) != std::string_view::npos) {
        return {};
    }
    drop_blanks();
    while (!front.empty() && front.back() == ']') {
        const std::size_t open = front.rfind('[');
        if (open == std::string_view::npos) {
            return {};
        }
        front = front.substr(0, open);
        drop_blanks();
    }
    std::size_t begin = front.size();
    while (begin > 0 && is_name_letter(front[begin - 1])) {
        --begin;
    }
    const std::string_view name = front.substr(begin, longest_name);
    return name.empty() || std::isdigit(static_cast<unsigned char>(name[0])) != 0 ? std::string{} : std::string(name);
}

/// What a value is called before names are made legal and unlike each other.
std::string value_name(const graph& values, value_id id, const source_map& places) {
    const value& one = values[id];
    if (one.op == operation::input) {
        return values.inputs()[one.port()].name;
    }
    const source_position place = places.position_of(one.where);
    if (one.op == operation::constant) {
        return "constant";
    }
    if (place.line == 0) {
        return std::string(row_of(one.op).name);
    }
    const std::string variable = assigned_variable(
        place.text.substr(0, std::min(place.text.size(), static_cast<std::size_t>(place.column - 1))));
    return !variable.empty() ? variable : std::string(row_of(one.op).name) + "_line" + std::to_string(place.line);
}

/// Makes the text from `begin` on one line of ASCII.
void make_comment(std::string& text, std::size_t begin) {
    // VHDL-93 knows no bytes 128 to 159. A backslash at the end of a line would continue it in some tools.
    std::replace_if(
        text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(),
        [](char letter) { return letter < ' ' || letter > '~' || letter == '\\'; }, '?');
}

bool begins_with_a_tool(std::string_view text) {
    const auto are_one = [](char letter, char other) {
        return std::tolower(static_cast<unsigned char>(letter)) == other;
    };
    return std::any_of(std::begin(tools), std::end(tools), [&](std::string_view tool) {
        return text.size() >= tool.size() && are_one(text.front(), tool.front()) &&
               std::equal(tool.begin(), tool.end(), text.begin(),
                          [&](char other, char letter) { return are_one(letter, other); });
    });
}

}  // namespace

std::string comment_text(std::string text) {
    make_comment(text, 0);
    return text;
}

design_names names_of(const graph& values, std::string_view design_name, const design& made, const source_map& places) {
    design_names names{.design = std::string(design_name)};
    name_book book(design_name, *names.texts);
    for (const auto ports : {values.inputs(), values.outputs()}) {
        for (const port& one : ports) {
            book.announce(one.name);
        }
    }
    book.announce("start_chain");
    for (const design_node& node : made.nodes) {
        if (node.kind != node_kind::input) {
            book.announce(legal_letters(value_name(values, node.value, places).append(row_of(node.code).suffix)));
        }
    }

    const auto take = [&](std::vector<std::string>& taken, std::size_t count) {
        for (; count > 0; --count) {
            taken.emplace_back(book.next());
        }
    };
    take(names.inputs, values.inputs().size());
    take(names.outputs, values.outputs().size());
    take(names.others, 1);
    names.nodes.reserve(made.size());
    std::vector<std::string_view> ports;
    for (const std::string& name : names.inputs) {
        ports.push_back(names.texts->copy_text(name));
    }
    for (const design_node& node : made.nodes) {
        names.nodes.push_back(node.kind == node_kind::input ? ports[node.port] : book.next());
    }
    return names;
}

void append_source_comment(std::string& text, const graph& values, value_id id, const source_map& places) {
    const value& one = values[id];
    const std::size_t begin = text.size();
    places.append_place(text, one.op == operation::input ? source_range{} : one.where);
    const bool is_placed = text.size() > begin;
    if (begins_with_a_tool(std::string_view(text).substr(begin))) {
        text.insert(begin, "./");
    }
    if (one.op == operation::constant) {
        append_all(text, is_placed ? ": " : "", constant_text(values, id));
    } else if (one.op == operation::input) {
        append_all(text, "input ", values.inputs()[one.port()].name);
    } else if (is_placed) {
        text += ": ";
        places.append_expression(text, one.where, longest_comment);
    } else {
        text += row_of(one.op).name;
    }
    if (text.size() - begin > longest_comment) {
        text.replace(begin + longest_comment - 3, std::string::npos, "...");
    }
    make_comment(text, begin);
}

std::string source_comment(const graph& values, value_id id, const source_map& places) {
    std::string text;
    append_source_comment(text, values, id, places);
    return text;
}

}  // namespace xfc::flow
