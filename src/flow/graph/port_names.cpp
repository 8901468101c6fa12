#include "flow/graph/port_names.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <utility>

namespace xfc::flow {

namespace {

// Words of VHDL up to 2008 with those of PSL in it, of Verilog, SystemVerilog and Icarus, names of the packages and
// types that designs use, the ports and the label that every design has, and words of C++ of which Verilator warns. In
// lower case and in order.
// clang-format off
constexpr std::string_view reserved[] = {
    "abort", "abs", "accept_on", "access", "after", "alias", "alignas", "alignof", "all", "always", "always_comb",
    "always_ff", "always_latch", "and", "and_eq", "architecture", "array", "asm", "assert", "assign", "assume",
    "assume_guarantee", "atomic_cancel", "atomic_commit", "atomic_noexcept", "attribute", "auto", "automatic", "before",
    "begin", "bind", "bins", "binsof", "bit", "bit_vector", "bitand", "bitor", "block", "body", "bool", "boolean",
    "break", "buf", "buffer", "bufif0", "bufif1", "bus", "byte", "case", "casex", "casez", "catch", "cdecl", "cell",
    "chandle", "char", "char16_t", "char32_t", "character", "checker", "class", "clocking", "cmos", "compl", "complex",
    "component", "concept", "config", "configuration", "const", "const_cast", "const_iterator", "constant", "constexpr",
    "constraint", "context", "continue", "cover", "covergroup", "coverpoint", "cross", "deassign", "decltype",
    "default", "defparam", "delay_length", "delete", "deque", "design", "disable", "disconnect", "dist", "do", "double",
    "downto", "dynamic_cast", "edge", "else", "elsif", "enable", "end", "endcase", "endchecker", "endclass",
    "endclocking", "endconfig", "endfunction", "endgenerate", "endgroup", "endinterface", "endmodule", "endpackage",
    "endprimitive", "endprogram", "endproperty", "endsequence", "endspecify", "endtable", "endtask", "entity", "enum",
    "error", "event", "eventually", "exit", "expect", "explicit", "export", "extends", "extern", "failure", "fairness",
    "false", "far", "file", "final", "first_match", "float", "follow_start", "for", "force", "foreach", "forever",
    "fork", "forkjoin", "friend", "function", "generate", "generic", "genvar", "global", "goto", "group", "guarded",
    "highz0", "highz1", "huge", "ieee", "if", "iff", "ifnone", "ignore_bins", "illegal_bins", "implements", "implies",
    "import", "impure", "in", "incdir", "include", "inertial", "inherit", "initial", "inout", "input", "inside",
    "instance", "int", "integer", "interconnect", "interface", "interrupt", "intersect", "is", "join", "join_any",
    "join_none", "label", "large", "let", "liblist", "library", "line", "linkage", "literal", "local", "localparam",
    "logic", "long", "longint", "loop", "macromodule", "mailbox", "map", "matches", "maximum", "medium", "minimum",
    "mod", "modport", "module", "mutable", "namespace", "nand", "natural", "near", "negedge", "nettype", "new", "next",
    "nexttime", "nmos", "nor", "noshowcancelled", "not", "not_eq", "note", "notif0", "notif1", "now", "null", "nullptr",
    "numeric_std", "of", "on", "open", "operator", "or", "others", "out", "output", "package", "packed", "parameter",
    "pascal", "pmos", "port", "posedge", "positive", "postponed", "primitive", "priority", "private", "procedure",
    "process", "program", "property", "protected", "public", "pull0", "pull1", "pulldown", "pullup",
    "pulsestyle_ondetect", "pulsestyle_onevent", "pure", "rand", "randc", "randcase", "randsequence", "range", "rcmos",
    "real", "realtime", "record", "ref", "reg", "register", "reinterpret_cast", "reject", "reject_on", "release", "rem",
    "repeat", "report", "requires", "reset", "resize", "restrict", "restrict_guarantee", "return", "rising_edge",
    "rnmos", "rol", "ror", "rpmos", "rtran", "rtranif0", "rtranif1", "s_always", "s_eventually", "s_nexttime",
    "s_until", "s_until_with", "sc_clock", "sc_in", "sc_inout", "sc_out", "sc_signal", "scalared", "select",
    "semaphore", "sensitive", "sensitive_neg", "sensitive_pos", "sequence", "severity", "shared", "shift_left",
    "shift_right", "short", "shortint", "shortreal", "showcancelled", "signal", "signed", "sizeof", "sla", "sll",
    "small", "soft", "solve", "specify", "specparam", "sra", "srl", "startin", "startout", "static", "static_assert",
    "static_cast", "std", "std_logic", "std_logic_1164", "std_logic_vector", "std_ulogic", "std_ulogic_vector",
    "string", "strong", "strong0", "strong1", "struct", "subtype", "super", "supply0", "supply1", "switch",
    "sync_accept_on", "sync_reject_on", "synchronized", "sysclk", "table", "tagged", "task", "template", "then", "this",
    "thread_local", "throughout", "throw", "time", "timeprecision", "timeunit", "to", "to_integer", "to_signed",
    "to_unsigned", "tran", "tranif0", "tranif1", "transaction_safe", "transaction_safe_dynamic", "transport", "tri",
    "tri0", "tri1", "triand", "trior", "trireg", "true", "try", "type", "type_info", "typedef", "typeid", "typename",
    "uint16_t", "uint32_t", "uint8_t", "unaffected", "union", "unique", "unique0", "units", "unsigned", "until",
    "until_with", "untyped", "use", "using", "uwire", "var", "variable", "vectored", "virtual", "vmode", "void",
    "vprop", "vunit", "wait", "wait_order", "wand", "warning", "wchar_t", "weak", "weak0", "weak1", "when", "while",
    "wildcard", "wire", "with", "within", "wone", "wor", "work", "wreal", "xnor", "xor", "xor_eq",
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

/// Whether two names are one whatever the case.
bool are_one_name(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return a == b || lower(a) == lower(b); });
}

/// A hash that does not see the case.
std::uint32_t hash_of(std::string_view name) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = name.size() * factor;
    while (!name.empty()) {
        // Of letters, digits and underscores this bit tells nothing but the case.
        std::uint64_t word = 0x2020202020202020U;
        const std::size_t count = std::min(name.size(), sizeof word);
        std::memcpy(&word, name.data(), count);
        hash = (hash ^ (hash >> 32U) ^ (word | 0x2020202020202020U)) * factor;
        name.remove_prefix(count);
    }
    return static_cast<std::uint32_t>(hash >> 32U);
}

bool is_letter_or_digit(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
}

/// Whether `legal_letters` leaves the name as it is.
bool has_legal_letters(std::string_view name) {
    if (name.empty() || name.back() == '_' || !is_letter_or_digit(name.front()) ||
        (name.front() >= '0' && name.front() <= '9')) {
        return false;
    }
    char before = 'a';
    for (const char letter : name) {
        if (!is_letter_or_digit(letter) && (letter != '_' || before == '_')) {
            return false;
        }
        before = letter;
    }
    return true;
}

}  // namespace

bool is_reserved(std::string_view word) {
    const std::string plain = in_lower_case(word);
    return plain.starts_with(own_prefix) || std::binary_search(std::begin(reserved), std::end(reserved), plain);
}

std::string legal_letters(std::string name) {
    if (has_legal_letters(name)) {
        return name;
    }
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

name_book::name_book(std::string_view design, arena& texts) : texts_(texts), slots_(1024) {
    for (const std::string_view word : reserved) {
        records_[record_of(word)].reserved = true;
    }
    records_[record_of(design)].taken = true;
}

void name_book::announce(std::string_view name) {
    const bool legal = has_legal_letters(name);
    const std::string changed = legal ? std::string() : legal_letters(std::string(name));
    const std::string_view base = legal ? name : changed;
    const std::uint32_t found = record_of(base);
    record& one = records_[found];
    // Names that are legal as they stand come first, so that no changed one takes them away.
    one.unchanged = one.unchanged || (legal && !one.reserved);
    announced_.push_back({found, legal, one.text == base ? std::string_view() : texts_.copy_text(base)});
}

std::string_view name_book::next() {
    const announced& name = announced_[given_++];
    record& one = records_[name.record];
    const std::string_view base = name.other.empty() ? one.text : name.other;
    if (name.legal && !one.reserved && !one.taken) {
        one.taken = true;
        return base;
    }
    return numbered(name, base);
}

std::string_view name_book::numbered(const announced& name, std::string_view base) {
    std::string chosen(base);
    std::uint32_t found = name.record;
    if (records_[found].reserved) {
        chosen.insert(0, "c_");
        found = record_of(chosen);
    }
    while (records_[found].taken || (records_[found].unchanged && !(name.legal && chosen == base))) {
        char digits[16];
        const std::int32_t number = ++records_[name.record].number;
        chosen.assign(base).append("_").append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        found = record_of(chosen);
    }
    records_[found].taken = true;
    return records_[found].text == chosen ? records_[found].text : texts_.copy_text(chosen);
}

std::uint32_t name_book::record_of(std::string_view text) {
    if ((records_.size() + 1) * 4 > slots_.size() * 3) {
        grow();
    }
    const std::uint32_t tag = hash_of(text);
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = tag & mask;
    for (; slots_[at].record != 0; at = (at + 1) & mask) {
        if (slots_[at].tag == tag && are_one_name(records_[slots_[at].record - 1].text, text)) {
            return slots_[at].record - 1;
        }
    }
    records_.push_back(
        {.text = texts_.copy_text(text), .reserved = are_one_name(text.substr(0, own_prefix.size()), own_prefix)});
    slots_[at] = {tag, static_cast<std::uint32_t>(records_.size())};
    return slots_[at].record - 1;
}

void name_book::grow() {
    std::vector<slot> larger(slots_.size() * 2);
    const std::size_t mask = larger.size() - 1;
    for (const slot& one : slots_) {
        if (one.record != 0) {
            std::size_t at = one.tag & mask;
            while (larger[at].record != 0) {
                at = (at + 1) & mask;
            }
            larger[at] = one;
        }
    }
    slots_ = std::move(larger);
}

std::vector<std::string> legal_names(std::span<const std::string> names, std::string_view design) {
    arena texts;
    name_book book(design, texts);
    for (const std::string& name : names) {
        book.announce(name);
    }
    std::vector<std::string> legal;
    legal.reserve(names.size());
    for (std::size_t count = 0; count < names.size(); ++count) {
        legal.emplace_back(book.next());
    }
    return legal;
}

}  // namespace xfc::flow
