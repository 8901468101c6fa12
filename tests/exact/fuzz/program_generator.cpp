// Programs of the accepted language with all their variety, and with the oddities that a first byte asks for.
//
// Variables have a rank; a statement reads only variables of a lower rank than the one it assigns, so no value depends
// on itself unless that oddity is asked for.
//
// Each choice stands in a statement of its own: compilers may evaluate operands in either order, and every build must
// make the same program.

#include "program_generator.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>

#include "byte_reader.h"

namespace xfc::fuzz {

namespace {

enum class value_type : std::uint8_t { single_float, double_float, long_integer, other };

/// What an expression is to the one around it.
enum class expression_kind : std::uint8_t { constant, value };

struct expression {
    std::string text;
    expression_kind kind;
    value_type type;
};

struct variable {
    std::string name;
    value_type type;
    bool is_assigned = false;
};

/// Oddities that a program may have beyond the plain language.
struct oddities {
    bool second_assignments = false;
    bool cycles = false;
    bool names = false;         // like functions and passes' own nodes, equal in their first 31 characters, undeclared
    bool declarations = false;  // types that cannot be ports, qualifiers, initializers that cannot be evaluated
    bool expressions = false;   // constants only, unknown functions, other operators, statements that are too long
    bool slips = false;         // characters missing, doubled, exchanged

    [[nodiscard]] bool any() const {
        return second_assignments || cycles || names || declarations || expressions || slips;
    }
};

oddities choose_oddities(byte_reader& bytes) {
    // Most programs have none.
    switch (bytes.choose(16)) {
        case 8:
        case 9:
            return {.second_assignments = true};
        case 10:
            return {.second_assignments = true, .cycles = true};
        case 11:
            return {.names = true};
        case 12:
            return {.declarations = true};
        case 13:
            return {.expressions = true};
        case 14:
            return {.slips = true};
        case 15:
            return {true, true, true, true, true, true};
        default:
            return {};
    }
}

constexpr std::array<std::string_view, 28> odd_names{"cast",
                                                     "norm",
                                                     "delay",
                                                     "sqrt",
                                                     "invsqr",
                                                     "inv",
                                                     "exp",
                                                     "log",
                                                     "fabs",
                                                     "ldexp",
                                                     "negate",
                                                     "synth0000",
                                                     "xfc_delay",
                                                     "T:END",
                                                     "sysclk",
                                                     "const",
                                                     "a_name_whose_31_characters_agree1",
                                                     "a_name_whose_31_characters_agree2",
                                                     "_",
                                                     "L",
                                                     "U",
                                                     "main",
                                                     "e3",
                                                     "xfc_normfp1x",
                                                     "xfc_castftox",
                                                     "int",
                                                     "x1",
                                                     "wide"};

constexpr std::array<std::string_view, 6> one_argument_functions{"sqrt", "invsqr", "inv", "exp", "log", "fabs"};

constexpr std::array<std::string_view, 22> valid_switches{
    "-ds",    "-ni",    "-no",   "-rc",   "-rn",   "-op",   "-ps",   "-da",   "-s3",   "-s5",   "-sy",
    "-mm 36", "-mm 32", "-ns 1", "-ns 2", "-xc 2", "-xc 3", "-xc 5", "-mv 0", "-mv 2", "-mv 3", "-mv -1"};

/// Operands and function calls that a statement surely has room for within the translator's 2000 steps.
constexpr std::size_t safe_operands = 18;
constexpr std::size_t safe_functions = 16;

std::string join(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

class generator {
public:
    explicit generator(std::span<const std::uint8_t> bytes) : bytes_(bytes), odd_(choose_oddities(bytes_)) {}

    generated_program run() {
        generated_program program;
        choose_switches(program.switches);
        make_variables();
        declare_outside();
        const std::size_t functions = 1 + bytes_.choose(3);
        for (std::size_t index = 0; index < functions; ++index) {
            write_function(index);
        }
        program.source = std::move(text_);
        if (odd_.slips) {
            make_slips(program.source);
        }
        program.is_valid = !odd_.any() || (odd_.second_assignments && !odd_.cycles && assigned_twice_ == 0);
        program.single_writer = !odd_.slips && !odd_.names && !odd_.declarations && assigned_twice_ == 0;
        return program;
    }

private:
    // ---- Switches and variables ----

    void choose_switches(std::vector<std::string>& switches) {
        for (std::size_t left = bytes_.choose(6); left > 0; --left) {
            const std::string_view text = valid_switches[bytes_.choose(valid_switches.size())];
            const std::size_t blank = text.find(' ');
            switches.emplace_back(text.substr(0, blank));
            if (blank != std::string_view::npos) {
                switches.emplace_back(text.substr(blank + 1));
            }
        }
    }

    void make_variables() {
        const std::size_t style = bytes_.choose(8);
        const std::size_t count = 2 + bytes_.choose(40);
        for (std::size_t index = 0; index < count; ++index) {
            value_type type = value_type::single_float;
            if (style == 1) {
                type = value_type::double_float;
            } else if (style == 2) {
                type = value_type::long_integer;
            } else if (style >= 3) {
                type = std::array{value_type::single_float, value_type::double_float,
                                  value_type::long_integer}[bytes_.choose(style == 3 ? 3 : 2)];
            }
            std::string name = join({"v", std::to_string(index)});
            if (odd_.names && bytes_.once_in(3)) {
                name = odd_names[bytes_.choose(odd_names.size())];
            } else if (bytes_.once_in(16)) {
                name = join({"a_long_name_of_a_signal_", std::to_string(index)});
            }
            variables_.push_back({std::move(name), type});
        }
    }

    void declare_outside() {
        while (declared_ < variables_.size()) {
            if (bytes_.once_in(8)) {
                return;  // the rest is declared in functions
            }
            declare_some();
        }
    }

    /// Declares the next variable and, as they come, followers of the same type.
    void declare_some() {
        const std::size_t first = declared_++;
        const value_type type = variables_[first].type;
        write_filling();
        text_ += specifiers(type);
        text_ += join({" ", variables_[first].name});
        text_ += initializer();
        while (declared_ < variables_.size() && variables_[declared_].type == type && !bytes_.once_in(4)) {
            text_ += join({", ", variables_[declared_].name});
            text_ += initializer();
            ++declared_;
        }
        text_ += ";\n";
    }

    std::string specifiers(value_type type) {
        std::string words = type == value_type::single_float   ? "float"
                            : type == value_type::double_float ? "double"
                                                               : "long";
        if (odd_.declarations && bytes_.once_in(3)) {
            constexpr std::array<std::string_view, 14> others{
                "int",      "short",  "char", "unsigned long", "const float", "const volatile long",   "long double",
                "long int", "signed", "void", "static float",  "float const", "struct s { float q; }", "enum { e1 }"};
            words = others[bytes_.choose(others.size())];
        } else if (bytes_.once_in(16)) {
            words.insert(0, "const ");
        }
        return words;
    }

    std::string initializer() {
        if (odd_.declarations && bytes_.once_in(3)) {
            constexpr std::array<std::string_view, 12> others{" = 1.5",
                                                              " = 7 / 2",
                                                              " = v0",
                                                              " = {1, 2}",
                                                              " = 2147483647 * 2147483647",
                                                              " = 99999999999999999999",
                                                              " = -5",
                                                              " = \"s\"",
                                                              "[3]",
                                                              " = 1 + 2.5",
                                                              " = (4 - 3) * 2 - -7",
                                                              " = 1+1+1+1+1+1+1+1+1+1+1+"
                                                              "1+1+1+1+1+1+1+1+1+1+1+1+1+1+1+1"};
            return std::string(others[bytes_.choose(others.size())]);
        }
        if (!bytes_.once_in(16)) {
            return {};
        }
        std::string value = join({" = ", std::to_string(bytes_.choose(256))});
        for (std::size_t left = bytes_.choose(4); left > 0; --left) {
            value += std::array{" + ", " - ", " * "}[bytes_.choose(3)];
            value += std::to_string(bytes_.choose(256));
        }
        return value;
    }

    // ---- Functions, blocks, statements ----

    void write_function(std::size_t index) {
        write_filling();
        constexpr std::array<std::string_view, 4> heads{"main()", "int f()", "g(a, b)", "void h()"};
        text_ += heads[index == 0 ? 0 : bytes_.choose(heads.size())];
        text_ += " {\n";
        while (declared_ < variables_.size() && (index == 0 || bytes_.once_in(2))) {
            declare_some();
        }
        std::size_t depth = 0;
        while (!bytes_.is_empty() && !bytes_.once_in(40)) {
            write_statement(depth);
        }
        text_.append(depth + 1, '}');
        text_ += '\n';
    }

    void write_statement(std::size_t& depth) {
        write_filling();
        switch (bytes_.choose(24)) {
            case 23:
                text_ += depth < 20 ? "{" : ";";
                depth += depth < 20 ? 1U : 0U;
                break;
            case 22:
                text_ += depth > 0 ? "}" : ";";
                depth -= depth > 0 ? 1U : 0U;
                break;
            case 21:
                write_ignored_statement();
                break;
            default:
                write_assignment();
        }
        text_ += bytes_.once_in(8) ? ' ' : '\n';
    }

    /// Control statements with what belongs to them leave no trace in the datapath.
    void write_ignored_statement() {
        constexpr std::array<std::string_view, 7> statements{"if (v0) v1 = v0;",
                                                             "while (v0) { v1 = v0 * v0; }",
                                                             "for (;;) v1 = v0;",
                                                             "return v0;",
                                                             "break;",
                                                             "switch (v0) { case 1: v1 = v0; default: ; }",
                                                             "do v1 = v0; while (v1);"};
        text_ += statements[bytes_.choose(statements.size())];
    }

    /// Blanks, comments and preprocessor lines between tokens.
    void write_filling() {
        if (!bytes_.once_in(12)) {
            return;
        }
        constexpr std::array<std::string_view, 6> fillings{
            "/* a comment */", "\n\n", "\n#include <anything>\n", "\t ", "/* two\n lines **/", "\n  # 1 \"x.c\"\n"};
        text_ += fillings[bytes_.choose(fillings.size())];
    }

    void write_assignment() {
        const std::size_t target = choose_target();
        if (target == 0) {
            text_ += ';';
            return;
        }
        operands_left_ = safe_operands;
        functions_left_ = safe_functions;
        if (odd_.expressions && bytes_.once_in(8)) {
            operands_left_ = 400;
        }
        expression value = write_expression(target, 1 + bytes_.choose(6));
        if (value.kind == expression_kind::constant && !odd_.expressions) {
            value = {variables_[readable(target)].name, expression_kind::value, value_type::single_float};
        }
        std::string_view assign = " = ";
        if (odd_.expressions && bytes_.once_in(12)) {
            assign = std::array<std::string_view, 4>{" += ", " *= ", " == ", " &= "}[bytes_.choose(4)];
        }
        variables_[target].is_assigned = true;
        text_ += variables_[target].name;
        text_ += assign;
        text_ += join({value.text, ";"});
    }

    /// A variable that may be assigned, or 0 when there is none.
    std::size_t choose_target() {
        if (odd_.second_assignments && bytes_.once_in(4)) {
            const std::size_t target = 1 + bytes_.choose(variables_.size() - 1);
            assigned_twice_ += variables_[target].is_assigned ? 1U : 0U;
            return target;
        }
        const std::size_t first = 1 + bytes_.choose(variables_.size() - 1);
        for (std::size_t distance = 0; distance < variables_.size(); ++distance) {
            const std::size_t target = (first + distance) % variables_.size();
            if (target != 0 && !variables_[target].is_assigned) {
                return target;
            }
        }
        return 0;
    }

    /// A variable that a statement with this target may read.
    std::size_t readable(std::size_t target) {
        const std::size_t bound = odd_.cycles && bytes_.once_in(4) ? variables_.size() : target;
        return bytes_.choose(bound);
    }

    // ---- Expressions ----

    expression write_operand(std::size_t target) {
        if (bytes_.once_in(5)) {
            return write_constant();
        }
        if (odd_.names && bytes_.once_in(10)) {
            return {"undeclared", expression_kind::value, value_type::other};
        }
        const variable& read = variables_[readable(target)];
        return {read.name, expression_kind::value, read.type};
    }

    expression write_constant() {
        constexpr std::array<std::string_view, 16> texts{"2",
                                                         "0",
                                                         "0.5",
                                                         "1.",
                                                         ".25",
                                                         "3.14159265358979323846264338",
                                                         "2147483647",
                                                         "4294967296",
                                                         "-1",
                                                         "-0.0",
                                                         "7u",
                                                         "100000000000000000000.0",
                                                         "0.00000000000000000000000000001",
                                                         "9999999999999999999999999999999",
                                                         "1L",
                                                         "-2.75"};
        std::string text(texts[bytes_.choose(texts.size())]);
        if (text == "2") {
            text = std::to_string(bytes_.choose(256));
        }
        return {std::move(text), expression_kind::constant, value_type::other};
    }

    expression write_expression(std::size_t target, std::size_t depth) {
        --operands_left_;
        if (depth == 0 || operands_left_ < 2) {
            return write_operand(target);
        }
        const std::size_t form = bytes_.choose(16);
        if (form == 0) {
            return write_operand(target);
        }
        if (form >= 12 && functions_left_ > 0) {
            --functions_left_;
            return write_function_call(target, depth, form);
        }
        return write_operation(target, depth);
    }

    expression write_operation(std::size_t target, std::size_t depth) {
        expression left = write_expression(target, depth - 1);
        expression right = operands_left_ > 1 ? write_expression(target, depth - 1) : write_operand(target);
        std::string_view operation = std::array<std::string_view, 5>{" + ", " * ", " - ", " / ", "*"}[bytes_.choose(5)];
        if (!odd_.expressions) {
            if (left.kind == expression_kind::constant && right.kind == expression_kind::constant) {
                const variable& read = variables_[readable(target)];
                left = {read.name, expression_kind::value, read.type};
            }
        } else if (bytes_.once_in(12)) {
            operation =
                std::array<std::string_view, 6>{" % ", " << ", " && ", " , ", " ? 1.0 : ", "-"}[bytes_.choose(6)];
        }
        const value_type type = wider(left, right);
        // Integers are not divided, and a constant has no place in their other operations.
        if (type == value_type::long_integer && !odd_.expressions) {
            operation = operation == " / " ? " * " : operation;
        }
        return {join({"(", left.text, operation, right.text, ")"}), expression_kind::value, type};
    }

    static value_type wider(const expression& left, const expression& right) {
        if (left.kind == expression_kind::constant) {
            return right.type;
        }
        if (right.kind == expression_kind::constant) {
            return left.type;
        }
        for (const value_type type : {value_type::double_float, value_type::single_float, value_type::long_integer}) {
            if (left.type == type || right.type == type) {
                return type;
            }
        }
        return value_type::other;
    }

    expression write_function_call(std::size_t target, std::size_t depth, std::size_t form) {
        expression argument = write_expression(target, depth - 1);
        if (argument.kind == expression_kind::constant && !odd_.expressions) {
            const variable& read = variables_[readable(target)];
            argument = {read.name, expression_kind::value, read.type};
        }
        if (odd_.expressions && bytes_.once_in(6)) {
            constexpr std::array<std::string_view, 6> calls{"sin(",     "ldexp(3, ", "pow(v0, ",
                                                            "(float)(", "sizeof(",   "f()("};
            return {join({calls[bytes_.choose(calls.size())], argument.text, ")"}), expression_kind::value,
                    argument.type};
        }
        if (form == 12) {
            return {join({"-(", argument.text, ")"}), expression_kind::value, argument.type};
        }
        const bool is_float = argument.type == value_type::single_float || argument.type == value_type::double_float;
        if (form == 13 && is_float) {
            return {join({"ldexp(", argument.text, ", ", std::to_string(bytes_.choose(64)), ")"}),
                    expression_kind::value, argument.type};
        }
        const std::string_view name = one_argument_functions[bytes_.choose(one_argument_functions.size())];
        return {join({name, "(", argument.text, ")"}), expression_kind::value, argument.type};
    }

    // ---- Slips of the pen ----

    void make_slips(std::string& source) {
        using namespace std::string_view_literals;
        constexpr std::string_view characters = ";,(){}=+-*/\"'.#\\\n\r&<>!~^|?:[]0aL\0\xff\x80"sv;
        for (std::size_t left = 1 + bytes_.choose(4); left > 0 && !source.empty(); --left) {
            const std::size_t high = bytes_.choose(256);
            const std::size_t place = (high * 256 + bytes_.choose(256)) % source.size();
            const char character = characters[bytes_.choose(characters.size())];
            switch (bytes_.choose(4)) {
                case 0:
                    source.erase(place, 1);
                    break;
                case 1:
                    source.insert(place, 1, character);
                    break;
                case 2:
                    source[place] = character;
                    break;
                default:
                    source.insert(place, source.substr(place, 1 + bytes_.choose(256)));
            }
        }
    }

    byte_reader bytes_;
    oddities odd_;
    std::vector<variable> variables_;
    std::size_t declared_ = 0;
    std::size_t assigned_twice_ = 0;
    std::size_t operands_left_ = 0;
    std::size_t functions_left_ = 0;
    std::string text_;
};

}  // namespace

generated_program generate_program(std::span<const std::uint8_t> bytes) { return generator(bytes).run(); }

}  // namespace xfc::fuzz
