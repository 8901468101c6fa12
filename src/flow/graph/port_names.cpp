#include "flow/graph/port_names.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>

namespace xfc::flow {

namespace {

// Words of VHDL up to 2008, of Verilog and SystemVerilog, names of the packages and types that designs use, and the
// ports that every design has. In lower case and in order.
// clang-format off
constexpr std::string_view reserved[] = {
    "abs", "accept_on", "access", "after", "alias", "all", "always", "always_comb", "always_ff", "always_latch", "and",
    "architecture", "array", "assert", "assign", "assume", "assume_guarantee", "attribute", "automatic", "before",
    "begin", "bind", "bins", "binsof", "bit", "bit_vector", "block", "body", "boolean", "break", "buf", "buffer",
    "bufif0", "bufif1", "bus", "byte", "case", "casex", "casez", "cell", "chandle", "character", "checker", "class",
    "clocking", "cmos", "component", "config", "configuration", "const", "constant", "constraint", "context",
    "continue", "cover", "covergroup", "coverpoint", "cross", "deassign", "default", "defparam", "delay_length",
    "design", "disable", "disconnect", "dist", "do", "downto", "edge", "else", "elsif", "enable", "end", "endcase",
    "endchecker", "endclass", "endclocking", "endconfig", "endfunction", "endgenerate", "endgroup", "endinterface",
    "endmodule", "endpackage", "endprimitive", "endprogram", "endproperty", "endsequence", "endspecify", "endtable",
    "endtask", "entity", "enum", "error", "event", "eventually", "exit", "expect", "export", "extends", "extern",
    "failure", "fairness", "false", "file", "final", "first_match", "for", "force", "foreach", "forever", "fork",
    "forkjoin", "function", "generate", "generic", "genvar", "global", "group", "guarded", "highz0", "highz1", "ieee",
    "if", "iff", "ifnone", "ignore_bins", "illegal_bins", "implements", "implies", "import", "impure", "in", "incdir",
    "include", "inertial", "initial", "inout", "input", "inside", "instance", "int", "integer", "interconnect",
    "interface", "intersect", "is", "join", "join_any", "join_none", "label", "large", "let", "liblist", "library",
    "line", "linkage", "literal", "local", "localparam", "logic", "longint", "loop", "macromodule", "map", "matches",
    "maximum", "medium", "minimum", "mod", "modport", "module", "nand", "natural", "negedge", "nettype", "new", "next",
    "nexttime", "nmos", "nor", "noshowcancelled", "not", "note", "notif0", "notif1", "now", "null", "numeric_std", "of",
    "on", "open", "or", "others", "out", "output", "package", "packed", "parameter", "pmos", "port", "posedge",
    "positive", "postponed", "primitive", "priority", "procedure", "process", "program", "property", "protected",
    "pull0", "pull1", "pulldown", "pullup", "pulsestyle_ondetect", "pulsestyle_onevent", "pure", "rand", "randc",
    "randcase", "randsequence", "range", "rcmos", "real", "realtime", "record", "ref", "reg", "register", "reject",
    "reject_on", "release", "rem", "repeat", "report", "reset", "resize", "restrict", "restrict_guarantee", "return",
    "rising_edge", "rnmos", "rol", "ror", "rpmos", "rtran", "rtranif0", "rtranif1", "s_always", "s_eventually",
    "s_nexttime", "s_until", "s_until_with", "scalared", "select", "sequence", "severity", "shared", "shift_left",
    "shift_right", "shortint", "shortreal", "showcancelled", "signal", "signed", "sla", "sll", "small", "soft", "solve",
    "specify", "specparam", "sra", "srl", "startin", "startout", "static", "std", "std_logic", "std_logic_1164",
    "std_logic_vector", "std_ulogic", "std_ulogic_vector", "string", "strong", "strong0", "strong1", "struct",
    "subtype", "super", "supply0", "supply1", "sync_accept_on", "sync_reject_on", "sysclk", "table", "tagged", "task",
    "then", "this", "throughout", "time", "timeprecision", "timeunit", "to", "to_integer", "to_signed", "to_unsigned",
    "tran", "tranif0", "tranif1", "transport", "tri", "tri0", "tri1", "triand", "trior", "trireg", "true", "type",
    "typedef", "unaffected", "union", "unique", "unique0", "units", "unsigned", "until", "until_with", "untyped", "use",
    "uwire", "var", "variable", "vectored", "virtual", "vmode", "void", "vprop", "vunit", "wait", "wait_order", "wand",
    "warning", "weak", "weak0", "weak1", "when", "while", "wildcard", "wire", "with", "within", "wor", "work", "xnor",
    "xor",
};

// clang-format on
static_assert(std::is_sorted(std::begin(reserved), std::end(reserved)));

constexpr std::string_view own_prefix = "xfc_";  // of the components' names

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

std::string in_lower_case(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), lower);
    return text;
}

bool is_letter_or_digit(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
}

}  // namespace

bool is_reserved(std::string_view word) {
    const std::string plain = in_lower_case(word);
    return plain.starts_with(own_prefix) || std::binary_search(std::begin(reserved), std::end(reserved), plain);
}

std::string legal_letters(std::string_view name) {
    std::string text;
    for (const char letter : name) {
        const char legal = is_letter_or_digit(letter) || letter == '_' ? letter : 'x';
        if (legal != '_' || (!text.empty() && text.back() != '_')) {
            text += legal;
        }
    }
    while (!text.empty() && text.back() == '_') {
        text.pop_back();
    }
    if (text.empty() || (text.front() >= '0' && text.front() <= '9')) {
        text.insert(0, "v");
    }
    return text;
}

std::vector<std::string> legal_names(std::span<const std::string> names, std::string_view design) {
    std::vector<std::string> legal;
    std::unordered_set<std::string> taken = {in_lower_case(design)};
    // Names that are legal as they stand come first, so that no changed one takes them away.
    std::unordered_set<std::string> unchanged;
    for (const std::string& name : names) {
        if (legal_letters(name) == name && !is_reserved(name)) {
            unchanged.insert(in_lower_case(name));
        }
    }
    // What a name was numbered with last: names may be equal by the thousand.
    std::unordered_map<std::string, int> last_number;
    for (const std::string& name : names) {
        const std::string base = legal_letters(name);
        std::string chosen = is_reserved(base) ? "c_" + base : base;
        int& number = last_number.try_emplace(in_lower_case(base), 1).first->second;
        while (taken.contains(in_lower_case(chosen)) || (chosen != name && unchanged.contains(in_lower_case(chosen)))) {
            chosen = base + "_" + std::to_string(++number);
        }
        taken.insert(in_lower_case(chosen));
        legal.push_back(std::move(chosen));
    }
    return legal;
}

}  // namespace xfc::flow
