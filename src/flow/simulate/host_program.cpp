#include "flow/simulate/host_program.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstring>
#include <fstream>
#include <sstream>

#include "flow/simulate/process.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 4> compilers{"cc", "gcc", "clang", "clang-19"};
/// C as the front end reads it: words that hosts define are names that a program may use.
constexpr std::array<const char*, 4> dialect{"-std=gnu17", "-Uunix", "-Ulinux", "-Ui386"};

/// What older sources call without a declaration and C's library lacks.
struct missing_function {
    std::string_view name;
    std::string_view text;
};
constexpr std::array<missing_function, 3> missing_functions{
    {{"inv", "static double inv(double x) { return 1.0 / x; }\n"},
     {"invsqr", "static double invsqr(double x) { return 1.0 / __builtin_sqrt(x); }\n"},
     {"negate", "static double negate(double x) { return -x; }\n"}}};

/// Stands in front of the program: bits to numbers and back, and what stores a local variable when its scope ends.
constexpr std::string_view host_prelude = R"(typedef unsigned long long xfc_host_word;
static const xfc_host_word* xfc_host_in;
static xfc_host_word* xfc_host_out;
static float xfc_host_to_float(xfc_host_word bits) {
    union { unsigned word; float number; } both;
    both.word = (unsigned)bits;
    return both.number;
}
static double xfc_host_to_double(xfc_host_word bits) {
    union { xfc_host_word word; double number; } both;
    both.word = bits;
    return both.number;
}
static xfc_host_word xfc_host_of_float(float number) {
    union { unsigned word; float number; } both;
    both.number = number;
    return both.word;
}
static xfc_host_word xfc_host_of_double(double number) {
    union { xfc_host_word word; double number; } both;
    both.number = number;
    return both.word;
}
struct xfc_host_local { const void* from; int to, size, is_signed, is_whole; };
static void xfc_host_store(struct xfc_host_local* one) {
    xfc_host_word word = 0;
    __builtin_memcpy(&word, one->from, one->size);
    if (one->is_whole) {
        const int unused = 32 - 8 * one->size;
        const unsigned high = (unsigned)word << unused;
        word = one->is_signed ? (unsigned)((int)high >> unused) : high >> unused;
    }
    xfc_host_out[one->to] = word;
}
)";

/// In front of the definition: the one name that the outside sees, so that no other one of the program's stands for a
/// function of the libraries.
constexpr std::string_view host_entry =
    "\n;\n# 1 \"the call\"\n__attribute__((visibility(\"default\"))) void xfc_host_run(const xfc_host_word*, "
    "xfc_host_word*);\n";

/// Runs the program over vectors.bin in children, so that a trap costs one vector, and a program whose variables keep
/// their values starts anew for each. A word 1 and the outputs a vector, or a word 0.
constexpr std::string_view host_main = R"(#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

typedef unsigned long long word;

void xfc_host_run(const word* in, word* out);

/* Integers of the program have 32 bits, long ones too. */
int xfc_host_labs(int) __asm__("labs");
int xfc_host_labs(int x) { return x < 0 ? (int)(0u - (unsigned)x) : x; }

int main(int count, char** words) {
    const size_t vectors = strtoul(words[1], 0, 10);
    const size_t inputs = strtoul(words[2], 0, 10);
    const size_t outputs = strtoul(words[3], 0, 10) + 1;
    const int one_each = words[4][0] == '1';
    const size_t words_in = vectors * inputs;
    word* in = malloc((words_in + 1) * sizeof *in);
    word* out = mmap(0, (vectors * outputs + 1) * sizeof *out, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    FILE* file = fopen("vectors.bin", "rb");
    if (count != 5 || in == 0 || out == MAP_FAILED || file == 0 || fread(in, sizeof *in, words_in, file) != words_in) {
        return 1;
    }
    fclose(file);
    volatile word* next = out + vectors * outputs;
    while (*next < vectors) {
        const pid_t child = fork();
        if (child < 0) {
            return 1;
        }
        if (child == 0) {
            do {
                word* here = out + *next * outputs;
                xfc_host_run(in + *next * inputs, here + 1);
                *here = 1;
                ++*next;
            } while (!one_each && *next < vectors);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        *next += WIFEXITED(status) ? 0 : 1;
    }
    file = fopen("outputs.bin", "wb");
    return file == 0 || fwrite(out, sizeof *out, vectors * outputs, file) != vectors * outputs || fclose(file) != 0;
}
)";

bool is_word_letter(char letter) { return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_'; }

/// One token of preprocessed C, or the blanks and line marks between two.
struct token {
    std::string_view text;
    bool is_word = false;
    bool is_number = false;
    bool is_space = false;
};

/// The end of the string or character constant that begins at `at`.
std::size_t end_of_quoted(std::string_view text, std::size_t at) {
    const char quote = text[at];
    for (++at; at < text.size() && text[at] != quote; ++at) {
        at += text[at] == '\\' ? 1U : 0U;
    }
    return std::min(at + 1, text.size());
}

std::vector<token> tokens_of(std::string_view text) {
    std::vector<token> tokens;
    std::size_t at = 0;
    bool line_start = true;
    while (at < text.size()) {
        const std::size_t begin = at;
        const char letter = text[at];
        token one;
        if (letter == '#' && line_start) {
            at = std::min(text.find('\n', at), text.size());
            one.is_space = true;
        } else if (std::isspace(static_cast<unsigned char>(letter)) != 0) {
            line_start = line_start || letter == '\n';
            ++at;
            one.is_space = true;
        } else if (letter == '"' || letter == '\'') {
            at = end_of_quoted(text, at);
        } else if (std::isdigit(static_cast<unsigned char>(letter)) != 0 ||
                   (letter == '.' && at + 1 < text.size() &&
                    std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0)) {
            one.is_number = true;
            while (at < text.size() && (is_word_letter(text[at]) || text[at] == '.' ||
                                        ((text[at] == '+' || text[at] == '-') &&
                                         std::string_view("eEpP").find(text[at - 1]) != std::string_view::npos))) {
                ++at;
            }
        } else if (is_word_letter(letter)) {
            one.is_word = true;
            while (at < text.size() && is_word_letter(text[at])) {
                ++at;
            }
        } else {
            ++at;
        }
        line_start = line_start && one.is_space;
        one.text = text.substr(begin, at - begin);
        tokens.push_back(one);
    }
    return tokens;
}

/// A whole constant without its suffix l; hexadecimal floating ones and the suffix of long doubles stay.
std::string narrow_number(std::string_view number) {
    const bool hexadecimal = number.starts_with("0x") || number.starts_with("0X");
    const bool floating = number.find_first_of(hexadecimal ? ".pP" : ".eE") != std::string_view::npos;
    std::string text(number);
    if (!floating) {
        std::erase_if(text, [](char letter) { return letter == 'l' || letter == 'L'; });
    }
    return text;
}

/// Sizes have 32 bits, as all integers. What every program has of its own gets another name.
std::string word_for_host(std::string_view word) {
    constexpr std::array<std::string_view, 5> sizes{"sizeof", "_Alignof", "__alignof__", "__alignof",
                                                    "__builtin_offsetof"};
    const bool is_size = std::find(sizes.begin(), sizes.end(), word) != sizes.end();
    const bool is_taken = word == "main" || word == "_init" || word == "_fini";
    return (is_taken ? "xfc_host_" : is_size ? "(unsigned)" : "") + std::string(word);
}

bool is_inline(std::string_view word) { return word == "inline" || word == "__inline" || word == "__inline__"; }

bool is_specifier(std::string_view word) {
    constexpr std::array<std::string_view, 13> specifiers{"long",   "int",        "unsigned", "signed",   "short",
                                                          "double", "const",      "static",   "volatile", "register",
                                                          "extern", "__signed__", "char"};
    return is_inline(word) || std::find(specifiers.begin(), specifiers.end(), word) != specifiers.end();
}

/// Of the specifiers those that say which number it is.
bool is_number_type(std::string_view word) {
    constexpr std::array<std::string_view, 8> types{"long",  "int",    "unsigned", "signed",
                                                    "short", "double", "char",     "__signed__"};
    return std::find(types.begin(), types.end(), word) != types.end();
}

/// How an input port's number is written in C.
std::string given_number(const port& one, std::size_t number) {
    const std::string word = "xfc_host_in[" + std::to_string(number) + "]";
    return one.format == number_format::single_float   ? "xfc_host_to_float(" + word + ")"
           : one.format == number_format::double_float ? "xfc_host_to_double(" + word + ")"
           : one.format == number_format::boolean      ? word + " & 1"
                                                       : "(int)" + word;
}

/// The bits of a number that is reached so.
std::string bits_of(const port& one, const std::string& access) {
    return one.format == number_format::single_float   ? "xfc_host_of_float(" + access + ")"
           : one.format == number_format::double_float ? "xfc_host_of_double(" + access + ")"
                                                       : "(unsigned)(int)" + access;
}

/// A statement that sets what is reached so, members that are const too.
std::string setting(const std::string& access, const std::string& given) {
    return " { __typeof__(" + access + ") xfc_host_one = " + given + "; __builtin_memcpy((void*)&" + access +
           ", &xfc_host_one, sizeof xfc_host_one); }";
}

/// The variable of an access: x of x[1].re.
std::string variable_of(const port& one) { return one.c_access.substr(0, one.c_access.find_first_of("[.")); }

/// Ports of the older style, as they would be handled if they stood inside a function.
std::vector<local_variable> possible_locals(const program& what, const source_map& places) {
    std::vector<local_variable> locals;
    const auto code_of = [&](const port& one) -> std::string& {
        const std::string name = variable_of(one);
        const int line = places.position_of(one.where).line;
        auto found = std::find_if(locals.begin(), locals.end(), [&](const local_variable& local) {
            return local.name == name && local.line == line;
        });
        if (found == locals.end()) {
            locals.push_back({.name = name, .line = line});
            found = locals.end() - 1;
        }
        return found->code;
    };
    if (what.style == top_style::whole_file) {
        std::size_t number = 0;
        for (const port& one : what.values.inputs()) {
            code_of(one) += setting(one.c_access, given_number(one, number++));
        }
        number = 0;
        for (const port& one : what.values.outputs()) {
            const std::string index = std::to_string(number++);
            const std::string& access = one.c_access;
            std::string& code = code_of(one);
            code.append(" struct xfc_host_local xfc_host_local_").append(index);
            code.append(" __attribute__((cleanup(xfc_host_store))) = { &").append(access).append(", ").append(index);
            code.append(", sizeof ").append(access).append(", (__typeof__(").append(access).append("))-1 < 0, ");
            code.append(is_floating(one.format) ? "0" : "1").append(" };");
        }
    }
    return locals;
}

bool is_local(const port& one, const std::vector<local_variable>& locals, const source_map& places) {
    return std::any_of(locals.begin(), locals.end(), [&](const local_variable& local) {
        return local.found && local.name == variable_of(one) && local.line == places.position_of(one.where).line;
    });
}

constexpr std::string_view of_parameter = "xfc_host_parameter_";

/// The types of parameters and result where the whole definition of one is all that there is: an earlier one's again
/// where they are the same.
class type_names {
public:
    explicit type_names(const std::vector<parameter>& parameters) : parameters_(parameters) {}

    [[nodiscard]] std::string of(const std::string& element, std::size_t earlier_than) const {
        for (std::size_t place = 0; place < earlier_than; ++place) {
            const parameter& one = parameters_[place];
            if (one.has_own_type && one.element == element) {
                std::string first = "__typeof__(" + name_of(place);
                for (const char letter : one.sizes) {
                    first += letter == '[' ? "[0]" : "";
                }
                return first + ")";
            }
        }
        return element;
    }

    [[nodiscard]] std::string name_of(std::size_t place) const {
        const std::string& name = parameters_[place].name;
        return name.empty() ? "xfc_host_unnamed_" + std::to_string(place) : std::string(of_parameter) + name;
    }

private:
    const std::vector<parameter>& parameters_;
};

/// The function that is put behind the program and hands over the ports. All its names begin with xfc_host_.
std::string host_call_text(const program& what, const source_map& places, const std::vector<local_variable>& locals) {
    std::string text(host_entry);
    text +=
        "void xfc_host_run(const xfc_host_word* xfc_host_given, xfc_host_word* xfc_host_taken) {\n"
        "    xfc_host_in = xfc_host_given;\n    xfc_host_out = xfc_host_taken;\n";
    const bool is_function = what.style == top_style::function;
    const type_names types(what.parameters);
    std::string arguments;
    std::string argument_types;
    bool has_own_type = false;
    for (std::size_t place = 0; place < what.parameters.size(); ++place) {
        const parameter& one = what.parameters[place];
        const std::string name = types.name_of(place);
        const std::string argument = (one.by_address ? "&" : "") + name;
        text += "    " + types.of(one.element, place) + " " + name + one.sizes + " = {0};\n";
        arguments += (place == 0 ? "" : ", ") + argument;
        argument_types += (place == 0 ? "" : ", ") + std::string("__typeof__(") +
                          (one.sizes.empty() || one.by_address ? argument : "&" + name + "[0]") + ")";
        has_own_type = has_own_type || one.has_own_type;
    }
    const auto result_of = [](std::size_t function) { return "xfc_host_result_" + std::to_string(function); };
    const auto access_of = [&](const port& one) {
        return one.returned  ? result_of(one.returned_by) + one.c_access.substr(std::strlen("result"))
               : is_function ? std::string(of_parameter) + one.c_access
                             : one.c_access;
    };
    std::size_t number = 0;
    for (const port& one : what.values.inputs()) {
        const std::string given = given_number(one, number++);
        text += is_local(one, locals, places) ? "" : "   " + setting(access_of(one), given) + "\n";
    }
    for (std::size_t place = 0; place < what.functions.size(); ++place) {
        const std::string& function = what.functions[place];
        const auto outputs = what.values.outputs();
        const bool returns = std::any_of(outputs.begin(), outputs.end(),
                                         [&](const port& one) { return one.returned && one.returned_by == place; });
        std::string called = function;
        std::string result = "__typeof__(";
        result.append(called).append("(").append(arguments).append("))");
        if (has_own_type) {  // by way of a pointer, since the types are the same in their members only
            result = what.result_type.empty() ? "void" : types.of(what.result_type, what.parameters.size());
            text.append("    typedef ").append(result).append(" xfc_host_type;\n    xfc_host_type (*volatile ");
            text.append("xfc_host_called)(").append(argument_types).append(") = (void*)").append(called).append(";\n");
            called = "xfc_host_called";
            result = "xfc_host_type";
        }
        text.append("    ").append(returns ? result + " " + result_of(place) + " = " : "");
        text.append(called).append("(").append(arguments).append(");\n");
    }
    number = 0;
    for (const port& one : what.values.outputs()) {
        const std::string place = "    xfc_host_out[" + std::to_string(number++) + "] = ";
        text += is_local(one, locals, places) ? "" : place + bits_of(one, access_of(one)) + ";\n";
    }
    std::vector<local_variable> none;
    return program_for_host(text + "}\n", "the call", none);
}

/// The first error that a command tells, or the first line when none says so.
std::string first_error(const fs::path& folder) {
    std::istringstream lines(read_file(folder / "run.log"));
    std::string first;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("error") != std::string::npos || line.find("undefined reference") != std::string::npos) {
            return line;
        }
        first = first.empty() ? line : first;
    }
    return first;
}

/// Makes the program and what runs it two files, so that no name of one can be taken for the other's. Empty when all is
/// well, else what the compiler says.
std::string compile(const std::string& compiler, const std::vector<std::string>& options, const std::string& program,
                    const fs::path& folder) {
    std::ofstream(folder / "host_program.c") << program;
    std::vector<std::string> words = {compiler,
                                      "-Wno-error=implicit-int",
                                      "-Wno-error=implicit-function-declaration",
                                      "-O1",
                                      "-fwrapv",
                                      "-fsigned-char",
                                      "-ffp-contract=off",
                                      "-fPIC",
                                      "-fvisibility=hidden",
                                      "-shared",
                                      "-o",
                                      "libhost_program.so",
                                      "host_program.c",
                                      "-lm"};
    words.insert(words.begin() + 1, dialect.begin(), dialect.end());
    words.insert(words.end(), options.begin(), options.end());
    if (run_command(words, folder) != 0) {
        return first_error(folder);
    }
    return run_command({compiler, "-O1", "-o", "host", "host_main.c", "./libhost_program.so", "-lm"}, folder) == 0
               ? ""
               : first_error(folder);
}

/// Whether a function of this name is called or defined.
bool has_function(const std::vector<token>& tokens, std::string_view name) {
    const token* before = nullptr;
    for (const token& one : tokens) {
        if (one.is_space) {
            continue;
        }
        if (one.text == "(" && before != nullptr && before->text == name) {
            return true;
        }
        before = &one;
    }
    return false;
}

}  // namespace

namespace {

/// Where in the source the tokens are that are read.
struct reading_place {
    explicit reading_place(std::string_view of) : file(of) {}

    /// Keeps the line of the source; marks look like: # 12 "prog.c" 2
    void follow_lines(std::string_view space) {
        if (!space.starts_with('#')) {
            line += static_cast<int>(std::count(space.begin(), space.end(), '\n'));
            return;
        }
        const std::size_t digit = space.find_first_of("0123456789");
        const std::size_t quote = space.find('"');
        if (digit != std::string_view::npos && quote != std::string_view::npos) {
            // The mark's own line end counts too.
            (void)std::from_chars(space.data() + digit, space.data() + space.size(), line);
            --line;
            in_file = space.substr(quote + 1).starts_with(file);
        }
    }

    void follow_braces(const token& one) {
        depth += one.text == "{" || one.text == "(" ? 1 : one.text == "}" || one.text == ")" ? -1 : 0;
    }

    std::string_view file;
    int line = 1;
    int depth = 0;  ///< of braces and parentheses
    bool in_file = true;
};

/// Goes through the tokens and writes them anew.
class host_writer {
public:
    host_writer(std::string_view preprocessed, std::string_view file, std::vector<local_variable>& locals)
        : tokens_(tokens_of(preprocessed)), file_(file), locals_(locals), place_(file) {}

    std::string run() {
        find_globals();
        while (at_ < tokens_.size()) {
            const token& one = tokens_[at_];
            if (one.is_word && is_specifier(one.text)) {
                write_specifiers();
                continue;
            }
            ++at_;
            text_ += one.is_number ? narrow_number(one.text)
                     : one.is_word ? word_for_host(one.text)
                                   : std::string(one.text);
            if (one.is_space) {
                place_.follow_lines(one.text);
            } else {
                follow_braces(one);
            }
        }
        return text_;
    }

private:
    /// A run of specifiers, blanks between them. Nothing is `inline`, which would leave no function to call, nor
    /// `register`, which would leave no address.
    void write_specifiers() {
        std::size_t end = at_;
        int longs = 0;
        bool has_int = false;
        bool has_double = false;
        bool has_type = false;
        while (end < tokens_.size() &&
               (tokens_[end].is_space || (tokens_[end].is_word && is_specifier(tokens_[end].text)))) {
            longs += tokens_[end].text == "long" ? 1 : 0;
            has_int = has_int || tokens_[end].text == "int";
            has_double = has_double || tokens_[end].text == "double";
            has_type = has_type || is_number_type(tokens_[end].text);
            ++end;
        }
        const bool is_implicit = !has_type && !names_type(end);
        for (; at_ < end; ++at_) {
            const std::string_view word = tokens_[at_].text;
            if (word == "long" && longs == 1 && !has_double) {
                text_ += has_int ? "" : "int";
            } else if (word == "register") {
                text_ += is_implicit ? "int" : "";
            } else {
                text_ += is_inline(word) ? std::string_view() : word;
            }
            place_.follow_lines(tokens_[at_].is_space ? word : std::string_view());
        }
    }

    /// The token behind `at` that is no blank; the number of all tokens at the end.
    [[nodiscard]] std::size_t next_token(std::size_t at) const {
        for (++at; at < tokens_.size() && tokens_[at].is_space; ++at) {
        }
        return at;
    }

    /// Whether the token at `at` is a type's name in front of what it declares, and not what is declared.
    [[nodiscard]] bool names_type(std::size_t at) const {
        const std::size_t next = next_token(at);
        return next < tokens_.size() && tokens_[at].is_word &&
               (tokens_[next].is_word || tokens_[next].text == "*" || tokens_[next].text == "(");
    }

    void follow_braces(const token& one) {
        place_.follow_braces(one);
        if (one.text == ";" && place_.depth == pending_depth_) {
            text_ += pending_;
            pending_.clear();
            pending_depth_ = -1;
        } else if (one.is_word && place_.in_file && place_.depth > 0) {
            for (local_variable& local : locals_) {
                if (!local.global && !local.found && place_.line == local.line && local.name == one.text) {
                    local.found = true;
                    pending_ += local.code;
                    pending_depth_ = pending_depth_ < 0 ? place_.depth : pending_depth_;
                }
            }
        }
    }

    /// A global is used inside braces on its own line too, when the whole program stands on one.
    void find_globals() {
        reading_place place(file_);
        for (std::size_t at = 0; at < tokens_.size(); ++at) {
            const token& one = tokens_[at];
            if (one.is_space) {
                place.follow_lines(one.text);
                continue;
            }
            place.follow_braces(one);
            const bool outside = one.is_word && place.in_file && place.depth == 0 && !is_called(at);
            for (local_variable& local : locals_) {
                local.global = local.global || (outside && place.line == local.line && local.name == one.text);
            }
        }
    }

    /// A function may be called like a variable inside it.
    [[nodiscard]] bool is_called(std::size_t at) const {
        const std::size_t next = next_token(at);
        return next < tokens_.size() && tokens_[next].text == "(";
    }

    std::vector<token> tokens_;
    std::string_view file_;
    std::vector<local_variable>& locals_;
    std::string text_;
    std::string pending_;  ///< to be put behind the next end of a declaration
    int pending_depth_ = -1;
    reading_place place_;
    std::size_t at_ = 0;
};

}  // namespace

std::string program_for_host(std::string_view preprocessed, std::string_view file,
                             std::vector<local_variable>& locals) {
    return host_writer(preprocessed, file, locals).run();
}

host_results run_on_host(const program& what, const source_map& places, const host_options& options,
                         const stimulus& applied, const fs::path& folder) {
    host_results results;
    const auto* compiler = std::find_if(compilers.begin(), compilers.end(), is_on_path);
    if (compiler == compilers.end()) {
        results.why_not = "no C compiler is installed (apt-get install gcc)";
        return results;
    }
    results.compiler = *compiler;
    fs::create_directories(folder / "headers");
    for (const auto& [name, text] : options.headers) {
        std::ofstream(folder / "headers" / name) << text;
    }
    std::error_code failed;
    std::vector<std::string> words = {results.compiler, "-E", "-nostdinc", "-o", "preprocessed.c"};
    words.insert(words.end(), dialect.begin(), dialect.end());
    for (const std::string& include : options.include_folders) {
        words.insert(words.end(), {"-I", fs::absolute(include, failed).string()});
    }
    for (const std::string& definition : options.definitions) {
        words.insert(words.end(), {"-D", definition});
    }
    const std::string path = fs::absolute(options.source, failed).string();
    // __FILE__ as it was given; the last one that fits counts.
    const auto name_as_given = [&](const std::string& absolute, const std::string& given) {
        words.push_back("-fmacro-prefix-map=" + absolute + "=" + given);
    };
    const std::string beside = fs::path(options.source).parent_path().string();
    name_as_given(fs::path(path).parent_path().string(), beside.empty() ? "." : beside);
    for (const std::string& include : options.include_folders) {
        name_as_given(fs::absolute(include, failed).string(), include);
    }
    name_as_given(path, options.source);
    words.insert(words.end(), {"-I", "headers", "-x", "c", path});
    if (run_command(words, folder) != 0) {
        results.failed = true;
        results.why_not = results.compiler + " refuses the program: " + first_error(folder);
        return results;
    }
    std::ofstream(folder / "host_main.c") << host_main;
    std::vector<local_variable> locals = possible_locals(what, places);
    const std::string source = program_for_host(read_file(folder / "preprocessed.c"), path, locals);
    const std::string call = host_call_text(what, places, locals);
    const std::string prelude(host_prelude);
    // A function of the program that is called like one of C's is the program's.
    std::string refusal = compile(results.compiler, {"-Werror=implicit-function-declaration", "-fno-builtin"},
                                  prelude + source + call, folder);
    if (!refusal.empty()) {
        // What has no declaration has one inside the compiler, as far as that knows it.
        results.undeclared_calls = true;
        refusal = compile(results.compiler, {"-w"}, prelude + source + call, folder);
    }
    if (!refusal.empty()) {
        std::string missing;
        const std::vector<token> tokens = tokens_of(source);
        for (const missing_function& one : missing_functions) {
            missing += has_function(tokens, one.name) ? one.text : "";
        }
        refusal = compile(results.compiler, {"-w"}, prelude + missing + source + call, folder);
    }
    if (!refusal.empty()) {
        results.failed = true;
        results.why_not = results.compiler + " refuses the program: " + refusal;
        return results;
    }
    {
        std::ofstream vectors(folder / "vectors.bin", std::ios::binary);
        for (const std::vector<std::uint64_t>& inputs : applied.vectors) {
            vectors.write(reinterpret_cast<const char*>(inputs.data()),  // NOLINT: bytes of whole words
                          static_cast<std::streamsize>(inputs.size() * sizeof(std::uint64_t)));
        }
    }
    const std::size_t outputs = what.values.outputs().size();
    const int status =
        run_command({"./host", std::to_string(applied.vectors.size()), std::to_string(what.values.inputs().size()),
                     std::to_string(outputs), what.style == top_style::whole_file ? "1" : "0"},
                    folder);
    const std::string bytes = read_file(folder / "outputs.bin");
    std::vector<std::uint64_t> all(bytes.size() / sizeof(std::uint64_t));
    if (status != 0 || all.size() != applied.vectors.size() * (outputs + 1)) {
        results.failed = true;
        results.why_not = "the compiled program does not run to its end";
        return results;
    }
    std::memcpy(all.data(), bytes.data(), bytes.size());
    for (std::size_t number = 0; number < applied.vectors.size(); ++number) {
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(number * (outputs + 1));
        results.outputs.emplace_back();
        if (*begin != 0) {
            results.outputs.back().assign(begin + 1, begin + 1 + static_cast<std::ptrdiff_t>(outputs));
        }
    }
    return results;
}

}  // namespace xfc::flow
