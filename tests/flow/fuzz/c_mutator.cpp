#include "flow/fuzz/c_mutator.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <random>

namespace xfc::flow::fuzz {

namespace {

using random_source = std::mt19937_64;

// What stands in C programs, and what stands at the edges of them.
constexpr std::string_view words[] = {
    "if",
    "else",
    "for",
    "while",
    "do",
    "switch",
    "case",
    "default:",
    "break;",
    "continue;",
    "return",
    "goto",
    "struct",
    "union",
    "enum",
    "typedef",
    "static",
    "const",
    "volatile",
    "unsigned",
    "signed",
    "char",
    "short",
    "int",
    "long",
    "float",
    "double",
    "void",
    "_Bool",
    "bool",
    "sizeof",
    "_Generic",
    "_Alignof",
    "_Atomic",
    "inline",
    "extern",
    "register",
    "restrict",
    "__typeof__",
    "__attribute__((packed))",
    "__attribute__((aligned(8)))",
    "__builtin_nan(\"\")",
    "__builtin_inf()",
    "__builtin_expect",
    "__builtin_offsetof",
    "_Static_assert",
    "{0}",
    "{",
    "}",
    "(",
    ")",
    "[",
    "]",
    "{}",
    "()",
    "[0]",
    "[1]",
    "[-1]",
    "[9]",
    "[i]",
    "[n]",
    "(int)",
    "(float)",
    "(double)",
    "(char)",
    "(unsigned)",
    "(short)",
    "(void)",
    "(int*)",
    "(float[2]){1, 2}",
    "*",
    "&",
    "~",
    "!",
    "-",
    "+",
    "++",
    "--",
    "0",
    "1",
    "2",
    "-1",
    "7",
    "31",
    "32",
    "2147483647",
    "4294967295u",
    "0x80000000",
    "1e400",
    "1e-400f",
    "0x1p-1074",
    "0x1p-149f",
    "1e38f",
    "3.4e38f",
    "1e-38f",
    "'a'",
    "\"text\"",
    "3.5",
    "0.1f",
    "0.0",
    "-0.0f",
    "1.0L",
    "1LL",
    "=",
    "+=",
    "-=",
    "*=",
    "/=",
    "%=",
    "<<=",
    ">>=",
    "&=",
    "|=",
    "^=",
    "==",
    "!=",
    "<",
    "<=",
    ">",
    ">=",
    "&&",
    "||",
    "?",
    ":",
    ",",
    ";",
    ".",
    "->",
    "/",
    "%",
    "<<",
    ">>",
    "|",
    "^",
    "...",
    "#",
    "##",
    "#define M ",
    "#if 0\n",
    "#if 1\n",
    "#else\n",
    "#endif\n",
    "#include <math.h>\n",
    "#include <stdint.h>\n",
    "#undef M\n",
    "__LINE__",
    "//",
    "/*",
    "*/",
    "\\\n",
    "\n",
    "NAN",
    "INFINITY",
    "sqrt(",
    "sqrtf(",
    "exp(",
    "logf(",
    "fabs(",
    "ldexp(",
    "fmin(",
    "fmaxf(",
    "copysign(",
    "pow(",
    "pow(x, 3)",
    "exp2(",
    "log10f(",
    "floor(",
    "roundf(",
    "inv(",
    "invsqr(",
    "f(",
    "main()",
    "x",
    "y",
    "a",
    "b",
    "i",
    "n",
    "p",
    "s",
    "M",
    "L:",
    "int32_t",
    "uint8_t",
    "for (int i = 0; i < 3; i++)",
    "if (x > 0)",
    "float x[4]",
    "float* p = &x;",
    "return x;",
    "struct s { float a; int b; }",
    "enum e { A, B = 5 }",
    "typedef float T;",
    "static const float t[3] = {1, 2, 3};",
    "x = x + 1;",
    "switch (x) { case 1: y = 2; break; }",
};

// Letters of the first line, which flow_target.cpp takes for options.
constexpr std::string_view switches[] = {"//%\n", "//%l\n", "//%r\n", "//%c\n", "//%m\n", "//%lrcm\n"};

bool is_name_letter(char letter) { return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_'; }

std::size_t length_of_run(std::string_view text, bool (*belongs)(char)) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), belongs) - text.begin());
}

/// Bytes of the token at the front of a text that is not empty.
std::size_t token_length(std::string_view text) {
    const char first = text.front();
    const auto is_blank = [](char letter) { return letter == ' ' || letter == '\t'; };
    if (is_blank(first)) {
        return length_of_run(text, is_blank);
    }
    if (is_name_letter(first)) {
        return length_of_run(text, [](char letter) { return is_name_letter(letter) || letter == '.'; });
    }
    if (text.starts_with("//")) {
        return std::min(text.find('\n'), text.size());
    }
    if (text.starts_with("/*")) {
        const std::size_t end = text.find("*/", 2);
        return end == std::string_view::npos ? text.size() : end + 2;
    }
    if (first == '"' || first == '\'') {
        const std::size_t end = text.find_first_of(first == '"' ? "\"\n" : "'\n", 1);
        return end == std::string_view::npos ? text.size() : end + 1;
    }
    for (const std::string_view one : {"<<=", ">>=", "..."}) {
        if (text.starts_with(one)) {
            return one.size();
        }
    }
    for (const std::string_view one : {"->", "++", "--", "&&", "||", "<<", ">>", "##"}) {
        if (text.starts_with(one)) {
            return one.size();
        }
    }
    const bool assigns = text.size() > 1 && text[1] == '=' && std::string_view("-+*/%&|^<>=!").find(first) < 12;
    return assigns ? 2 : 1;
}

/// One text of tokens on its way to another one.
class mutation {
public:
    mutation(std::string_view text, std::uint64_t seed) : random_(seed) {
        for (const std::string_view token : tokens_of(text)) {
            tokens_.emplace_back(token);
        }
    }

    std::string run() {
        for (std::size_t left = 1 + below(below(6) + 1); left > 0; --left) {
            change();
        }
        if (below(20) == 0) {
            if (!tokens_.empty() && tokens_.front().starts_with("//%")) {
                tokens_.erase(tokens_.begin(), tokens_.begin() + std::min<std::ptrdiff_t>(2, length()));
            }
            tokens_.insert(tokens_.begin(), std::string(switches[below(std::size(switches))]));
        }
        return joined();
    }

    std::string run_with(std::string_view other) {
        const std::vector<std::string_view> theirs = tokens_of(other);
        if (!theirs.empty()) {
            const std::size_t from = below(theirs.size());
            const std::size_t behind = std::min(theirs.size(), from + 1 + below(below(4) == 0 ? 200 : 20));
            const std::size_t at = below(tokens_.size() + 1);
            tokens_.insert(tokens_.begin() + static_cast<std::ptrdiff_t>(at),
                           theirs.begin() + static_cast<std::ptrdiff_t>(from),
                           theirs.begin() + static_cast<std::ptrdiff_t>(behind));
        }
        return joined();
    }

private:
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
    [[nodiscard]] std::ptrdiff_t length() const { return static_cast<std::ptrdiff_t>(tokens_.size()); }

    [[nodiscard]] std::string joined() const {
        std::string text;
        for (const std::string& token : tokens_) {
            text += token;
        }
        return text;
    }

    std::string word() { return " " + std::string(words[below(std::size(words))]) + " "; }

    /// The number of a token that is no blank, if some tries find one.
    std::size_t place() {
        std::size_t at = below(tokens_.size());
        for (int tries = 0; tries < 5 && tokens_[at].front() == ' '; ++tries) {
            at = below(tokens_.size());
        }
        return at;
    }

    /// A stretch of tokens from a place on, mostly a short one.
    std::vector<std::string> stretch(std::size_t at) {
        const std::size_t longest = below(4) == 0 ? 60 : 6;
        const std::size_t count = std::min(tokens_.size() - at, 1 + below(longest));
        const auto begin = tokens_.begin() + static_cast<std::ptrdiff_t>(at);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }

    void insert(std::size_t at, const std::vector<std::string>& what) {
        tokens_.insert(tokens_.begin() + static_cast<std::ptrdiff_t>(at), what.begin(), what.end());
    }

    void change() {
        if (tokens_.empty()) {
            tokens_.push_back(word());
            return;
        }
        const std::size_t at = place();
        switch (below(9)) {
            case 0: {
                const auto begin = tokens_.begin() + static_cast<std::ptrdiff_t>(at);
                tokens_.erase(begin, begin + static_cast<std::ptrdiff_t>(stretch(at).size()));
                break;
            }
            case 1:
                insert(at, {word()});
                break;
            case 2:
                tokens_[at] = word();
                break;
            case 3: {
                const std::vector<std::string> copied = stretch(at);
                for (std::size_t times = 1 + below(3); times > 0; --times) {
                    insert(at, copied);
                }
                break;
            }
            case 4:
                std::swap(tokens_[at], tokens_[place()]);
                break;
            case 5:
                tokens_[at] = tokens_[place()];
                break;
            case 6:
                insert(place(), stretch(at));
                break;
            case 7:
                wrap(at);
                break;
            default:
                change_letter(at);
                break;
        }
    }

    /// Puts a stretch into parentheses, a cast, a loop, a condition or a call.
    void wrap(std::size_t at) {
        constexpr std::string_view fronts[] = {
            " ( ",     " (int)( ", " (float)( ",     " -( ",
            " sqrt( ", " { ",      " if (x > 0) { ", " for (int i = 0; i < 2; i++) { ",
            " x[ ",    " *&( ",    " (x > 1 ? 2 : "};
        constexpr std::string_view backs[] = {" ) ", " ) ", " ) ", " ) ", " ) ", " } ",
                                              " } ", " } ", " ] ", " ) ", " ) "};
        static_assert(std::size(fronts) == std::size(backs));
        const std::size_t behind = at + stretch(at).size();
        const std::size_t which = below(std::size(fronts));
        insert(behind, {std::string(backs[which])});
        insert(at, {std::string(fronts[which])});
    }

    void change_letter(std::size_t at) {
        constexpr char letters[] = {0, '\n', '"', '\'', '\\', '{', '}', '(', ')', ';', '0', '9', 'e', '.', '\xc8', '#'};
        std::string& token = tokens_[at];
        token[below(token.size())] = letters[below(std::size(letters))];
    }

    random_source random_;
    std::vector<std::string> tokens_;
};

}  // namespace

std::vector<std::string_view> tokens_of(std::string_view text) {
    std::vector<std::string_view> tokens;
    while (!text.empty()) {
        const std::size_t length = token_length(text);
        tokens.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return tokens;
}

std::string mutated(std::string_view text, std::uint64_t seed) { return mutation(text, seed).run(); }

std::string crossed(std::string_view first, std::string_view second, std::uint64_t seed) {
    return mutation(first, seed).run_with(second);
}

}  // namespace xfc::flow::fuzz
