#include "entity_text.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "generic_sets.h"

namespace xfc::proof {

namespace {

using words = std::vector<std::string>;

/// Names and punctuation marks, without comments, in lower case.
words words_of(std::string_view text, std::string_view comment) {
    words found;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto each = static_cast<unsigned char>(text[at]);
        if (text.substr(at, comment.size()) == comment) {
            at = std::min(text.find('\n', at), text.size());
        } else if (std::isalnum(each) != 0 || each == '_') {
            std::string word;
            for (; at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '_');
                 ++at) {
                word += static_cast<char>(std::tolower(static_cast<unsigned char>(text[at])));
            }
            found.push_back(std::move(word));
        } else {
            if (std::isspace(each) == 0) {
                found.emplace_back(1, text[at]);
            }
            ++at;
        }
    }
    return found;
}

/// The words between the parenthesis at `at` and its partner; `at` moves behind it.
words inside_parentheses(const words& all, std::size_t& at) {
    words inside;
    std::int32_t depth = 0;
    for (; at < all.size(); ++at) {
        if (all[at] == "(" && depth++ == 0) {
            continue;
        }
        if (all[at] == ")" && --depth == 0) {
            ++at;
            break;
        }
        inside.push_back(all[at]);
    }
    return inside;
}

/// Splits at a mark that stands outside all brackets.
std::vector<words> split(const words& all, std::string_view mark) {
    std::vector<words> parts(1);
    std::int32_t depth = 0;
    for (const std::string& word : all) {
        depth += word == "(" || word == "[" ? 1 : word == ")" || word == "]" ? -1 : 0;
        if (depth == 0 && word == mark) {
            parts.emplace_back();
        } else {
            parts.back().push_back(word);
        }
    }
    return parts;
}

std::size_t find_pair(const words& all, std::string_view first, std::string_view second) {
    for (std::size_t at = 0; at + 1 < all.size(); ++at) {
        if (all[at] == first && all[at + 1] == second) {
            return at + 2;
        }
    }
    return all.size();
}

/// "a, b : in type; c : out type" as names with their direction.
std::vector<entity_port> vhdl_declarations(const words& list) {
    std::vector<entity_port> declared;
    for (const words& declaration : split(list, ";")) {
        const auto colon = std::find(declaration.begin(), declaration.end(), ":");
        const bool output = colon != declaration.end() && colon + 1 != declaration.end() && *(colon + 1) == "out";
        for (auto name = declaration.begin(); name != colon; ++name) {
            if (*name != ",") {
                declared.push_back({*name, output});
            }
        }
    }
    return declared;
}

}  // namespace

entity_head read_vhdl_head(std::string_view text, std::string_view name) {
    const words all = words_of(text, "--");
    entity_head head;
    std::size_t at = find_pair(all, "entity", name);
    while (at < all.size() && all[at] != "end" && all[at] != "begin") {
        if (all[at] == "generic") {
            ++at;
            for (const entity_port& generic : vhdl_declarations(inside_parentheses(all, at))) {
                head.generics.push_back(generic.name);
            }
        } else if (all[at] == "port") {
            ++at;
            head.ports = vhdl_declarations(inside_parentheses(all, at));
        } else {
            ++at;
        }
    }
    return head;
}

entity_head read_verilog_head(std::string_view text, std::string_view name) {
    const words all = words_of(text, "//");
    entity_head head;
    std::size_t at = find_pair(all, "module", name);
    if (at < all.size() && all[at] == "#") {
        ++at;
        for (const words& declaration : split(inside_parentheses(all, at), ",")) {
            const auto equals = std::find(declaration.begin(), declaration.end(), "=");
            if (equals != declaration.begin()) {
                head.generics.push_back(*(equals - 1));
            }
        }
    }
    if (at >= all.size() || all[at] != "(") {
        return head;
    }
    bool output = false;
    for (const words& declaration : split(inside_parentheses(all, at), ",")) {
        if (!declaration.empty()) {
            output = declaration.front() == "output" || (declaration.front() != "input" && output);
            head.ports.push_back({declaration.back(), output});
        }
    }
    return head;
}

entity_head head_of(const component_row& row) {
    entity_head head;
    for (const generic_row& generic : row.generics) {
        head.generics.emplace_back(generic.name);
    }
    if (row.clocked) {
        for (const char* name : {"sysclk", "reset", "enable"}) {
            head.ports.push_back({name, false});
        }
    }
    if (const std::string_view control = control_port_of(row); !control.empty()) {
        head.ports.push_back({std::string(control), false});
    }
    // A result that may be IEEE has its flags in every set of generics; an instance leaves them open.
    component_generics widest;
    widest.output_select = 1;
    const std::pair<port_shape, const char*> buses[] = {{row.aa, "aa"}, {row.bb, "bb"}, {row.cc, "cc"}};
    for (const auto& [shape, prefix] : buses) {
        for (const port_connection& port : ports_of(shape, widest, prefix)) {
            head.ports.push_back({port.name, std::strcmp(prefix, "cc") == 0});
        }
    }
    return head;
}

std::string difference_of(const entity_head& found, const entity_head& wanted) {
    for (std::size_t i = 0; i < std::max(found.generics.size(), wanted.generics.size()); ++i) {
        const std::string is = i < found.generics.size() ? found.generics[i] : "nothing";
        const std::string shall = i < wanted.generics.size() ? wanted.generics[i] : "nothing";
        if (is != shall) {
            return "generic " + std::to_string(i + 1) + " is " + is + ", the row says " + shall;
        }
    }
    const auto text = [](const std::vector<entity_port>& ports, std::size_t i) {
        return i < ports.size() ? (ports[i].output ? "output " : "input ") + ports[i].name : std::string("nothing");
    };
    for (std::size_t i = 0; i < std::max(found.ports.size(), wanted.ports.size()); ++i) {
        if (i >= found.ports.size() || i >= wanted.ports.size() || found.ports[i] != wanted.ports[i]) {
            return "port " + std::to_string(i + 1) + " is " + text(found.ports, i) + ", the row says " +
                   text(wanted.ports, i);
        }
    }
    return {};
}

}  // namespace xfc::proof
