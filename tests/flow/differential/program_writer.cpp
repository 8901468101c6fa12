#include "flow/differential/program_writer.h"

#include <array>
#include <cstdio>
#include <random>
#include <string_view>
#include <vector>

namespace xfc::flow::test {

namespace {

enum class kind : std::uint8_t { whole, single, wide };

constexpr std::array<std::string_view, 3> type_names{"int", "float", "double"};

/// Something that an expression may read: a variable, an element, a member.
struct readable {
    std::string text;
    kind type;
    bool assignable = true;
};

class program_writer {
public:
    explicit program_writer(std::uint64_t number) : random_(number * 0x9E3779B97F4A7C15U + 1) {
        allow_wide_ = chance(35);
        allow_functions_ = chance(40);
    }

    written_program run() {
        written_program made{.c_constants = chance(50)};
        text_ = "#include <math.h>\n#include <stdbool.h>\n#include <xfc.h>\n\n";
        write_globals();
        const int helpers = static_cast<int>(below(3));
        for (int index = 0; index < helpers; ++index) {
            write_helper(index);
        }
        if (chance(85)) {
            write_top_function();
        } else {
            write_whole_file();
        }
        made.text = text_;
        return made;
    }

private:
    struct helper {
        std::string name;
        kind result;
        std::vector<kind> arguments;
    };

    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    bool chance(unsigned percent) { return below(100) < percent; }
    template <class container>
    const auto& one_of(const container& all) {
        return all[below(all.size())];
    }
    kind any_kind() {
        const std::uint64_t drawn = below(10);
        return drawn < 3 ? kind::whole : drawn < 8 || !allow_wide_ ? kind::single : kind::wide;
    }
    static std::string name_of(kind type) { return std::string(type_names.at(static_cast<std::size_t>(type))); }

    std::string line(const std::string& what) {
        return std::string(static_cast<std::size_t>(indent_) * 4, ' ') + what + "\n";
    }
    std::string fresh(std::string_view stem) { return std::string(stem) + std::to_string(names_++); }

    // ---- expressions ----

    std::string constant(kind type) {
        char text[48];
        if (type == kind::whole) {
            constexpr std::array<std::string_view, 8> some{"0", "1", "3", "(-7)", "255", "1000", "0x7fff", "(-65536)"};
            return std::string(one_of(some));
        }
        const double number = (static_cast<double>(below(20001)) - 10000.0) / static_cast<double>(1U << below(14));
        (void)std::snprintf(text, sizeof text, chance(20) ? "%a" : "%.9g", number);
        std::string result = text;
        if (result.find_first_of(".pe") == std::string::npos) {
            result += ".0";
        }
        return "(" + result + (type == kind::single ? "f)" : ")");
    }

    std::string leaf(kind type) {
        std::vector<std::string> fitting;
        for (const readable& one : readables_) {
            if (one.type == type) {
                fitting.push_back(one.text);
            }
        }
        if (fitting.empty() || chance(15)) {
            if (!readables_.empty() && chance(60)) {
                return "(" + name_of(type) + ")" + cautious(one_of(readables_), type);
            }
            return constant(type);
        }
        return one_of(fitting);
    }

    /// Large floating numbers do not fit into integers, where C says nothing.
    std::string cautious(const readable& from, kind to) {
        if (to != kind::whole || from.type == kind::whole) {
            return from.text;
        }
        return from.type == kind::single ? "fminf(fmaxf(" + from.text + ", -1e6f), 1e6f)"
                                         : "fmin(fmax(" + from.text + ", -1e6), 1e6)";
    }

    std::string condition(int depth) {
        const std::uint64_t drawn = below(10);
        if (drawn == 0 && depth > 0) {
            return "(" + condition(depth - 1) + (chance(50) ? " && " : " || ") + condition(depth - 1) + ")";
        }
        if (drawn == 1 && depth > 0) {
            return "(!" + condition(depth - 1) + ")";
        }
        constexpr std::array<std::string_view, 6> comparisons{"<", "<=", ">", ">=", "==", "!="};
        const kind type = any_kind();
        return "(" + expression(type, depth - 1) + " " + std::string(one_of(comparisons)) + " " +
               expression(type, depth - 1) + ")";
    }

    std::string floating_call(kind type, int depth) {
        const std::string f = type == kind::single ? "f" : "";
        const auto inner = [&] { return expression(type, depth - 1); };
        if (chance(8)) {
            return "(" + std::string(type == kind::single ? "float" : "double") + ")(unsigned)" +
                   expression(kind::whole, depth - 1);
        }
        switch (below(allow_functions_ ? 12 : 6)) {
            case 0:
                return "fabs" + f + "(" + inner() + ")";
            case 1:
                return "sqrt" + f + "(fabs" + f + "(" + inner() + "))";
            case 2:
                return "fmin" + f + "(" + inner() + ", " + inner() + ")";
            case 3:
                return "fmax" + f + "(" + inner() + ", " + inner() + ")";
            case 4:
                return "ldexp" + f + "(" + inner() + ", " + std::to_string(static_cast<int>(below(9)) - 4) + ")";
            case 5:
                return "copysign" + f + "(" + inner() + ", " + inner() + ")";
            case 6:
                return "exp" + f + "(" + inner() + ")";
            case 7:
                return "log" + f + "(fabs" + f + "(" + inner() + "))";
            case 8:
                return "pow" + f + "(" + inner() + ", " + std::to_string(static_cast<int>(below(7)) - 2) + ")";
            case 9:
                return "inv" + f + "(" + inner() + ")";
            case 10:
                return std::string(chance(50) ? "floor" : "round") + f + "(" + inner() + ")";
            default:
                return std::string(chance(50) ? "ceil" : "trunc") + f + "(" + inner() + ")";
        }
    }

    std::string unsigned_expression(int depth) {
        constexpr std::array<std::string_view, 12> operators{"+", "-", "*",  "&", "|",  "^",
                                                             "+", "<", "<=", ">", ">=", "<"};
        const auto inner = [&] { return "(unsigned)" + expression(kind::whole, depth - 1); };
        if (chance(20)) {
            return "(int)(" + inner() + (chance(50) ? " / " : " % ") + std::to_string(below(4000000000U) + 1) + "u)";
        }
        if (chance(10)) {
            return "(int)(" + inner() + (chance(50) ? " / (" : " % (") + inner() + " | 1u))";
        }
        return "(int)(" + inner() + " " + std::string(one_of(operators)) + " " + inner() + ")";
    }

    std::string whole_expression(int depth) {
        constexpr std::array<std::string_view, 8> operators{"+", "-", "*", "&", "|", "^", "+", "-"};
        const auto inner = [&] { return expression(kind::whole, depth - 1); };
        switch (below(9)) {
            case 0:
                return "(" + inner() + (chance(50) ? " << " : " >> ") + std::to_string(below(9)) + ")";
            case 1:
                return "(" + std::string(chance(50) ? "~" : "-") + inner() + ")";
            case 2:
                return "(int)(" + std::string(chance(50) ? "short" : "signed char") + ")" + inner();
            case 3:
                return condition(depth - 1);
            case 4:
                return "(" + inner() + (chance(50) ? " / " : " % ") + std::to_string(below(30) + 2) + ")";
            case 5:
                return unsigned_expression(depth);
            default:
                return "(" + inner() + " " + std::string(one_of(operators)) + " " + inner() + ")";
        }
    }

    std::string expression(kind type, int depth) {
        if (depth <= 0 || chance(15)) {
            return leaf(type);
        }
        const std::uint64_t drawn = below(20);
        if (drawn < 2) {
            return "(" + condition(depth - 1) + " ? " + expression(type, depth - 1) + " : " +
                   expression(type, depth - 1) + ")";
        }
        if (drawn == 2 && !helpers_.empty()) {
            return call(one_of(helpers_), type, depth);
        }
        if (type == kind::whole) {
            return whole_expression(depth);
        }
        if (drawn < 6) {
            return floating_call(type, depth);
        }
        if (drawn == 6) {
            return "(-" + expression(type, depth - 1) + ")";
        }
        // Operands of other types are converted as C does it; one of them has the result's.
        const kind other = type == kind::wide ? any_kind() : chance(20) ? kind::whole : type;
        constexpr std::array<std::string_view, 8> operators{"+", "-", "*", "+", "-", "*", "*", "/"};
        std::string a = expression(type, depth - 1);
        std::string b = expression(other, depth - 1);
        if (chance(50)) {
            std::swap(a, b);
        }
        return "(" + a + " " + std::string(one_of(operators)) + " " + b + ")";
    }

    std::string call(const helper& what, kind type, int depth) {
        std::string text = what.name + "(";
        for (std::size_t place = 0; place < what.arguments.size(); ++place) {
            text += (place == 0 ? "" : ", ") + expression(what.arguments[place], depth - 2);
        }
        text += ")";
        if (what.result == type) {
            return text;
        }
        return "(" + name_of(type) + ")" + cautious({text, what.result, false}, type);
    }

    // ---- statements ----

    const readable* any_target() {
        std::vector<const readable*> fitting;
        for (const readable& one : readables_) {
            if (one.assignable) {
                fitting.push_back(&one);
            }
        }
        return fitting.empty() ? nullptr : one_of(fitting);
    }

    std::string assignment() {
        const readable* found = any_target();
        if (found == nullptr) {
            return declaration();
        }
        const readable target = *found;
        if (target.type == kind::whole && chance(15)) {
            return line(target.text + (chance(50) ? "++;" : "--;"));
        }
        constexpr std::array<std::string_view, 3> compound{" += ", " -= ", " *= "};
        const std::string how = chance(35) ? std::string(one_of(compound)) : " = ";
        return line(target.text + how + expression(target.type, 3) + ";");
    }

    std::string declaration() {
        const kind type = any_kind();
        const std::string name = fresh("v");
        const std::string text = line(name_of(type) + " " + name + " = " + expression(type, 3) + ";");
        readables_.push_back({name, type});
        return text;
    }

    std::string array_declaration() {
        const kind type = any_kind();
        const std::string name = fresh("a");
        const std::uint64_t size = below(3) + 2;
        std::string text = name_of(type) + " " + name + "[" + std::to_string(size) + "] = {";
        for (std::uint64_t index = 0; index < size; ++index) {
            text += (index == 0 ? "" : ", ") + expression(type, 1);
        }
        for (std::uint64_t index = 0; index < size; ++index) {
            readables_.push_back({name + "[" + std::to_string(index) + "]", type});
        }
        return line(text + "};");
    }

    std::string structure_declaration() {
        const std::string name = fresh("s");
        const std::string text = line("struct pair " + name + " = { " + expression(kind::single, 2) + ", " +
                                      expression(kind::whole, 2) + " };");
        readables_.push_back({name + ".x", kind::single});
        readables_.push_back({name + ".n", kind::whole});
        return text;
    }

    std::string pointer_declaration() {
        const readable* found = any_target();
        if (found == nullptr) {
            return declaration();
        }
        const std::string name = fresh("p");
        const kind type = found->type;
        const std::string text = line(name_of(type) + " *" + name + " = &" + found->text + ";");
        readables_.push_back({"(*" + name + ")", type});
        return text;
    }

    /// Statements in braces; what they declare is gone behind them.
    std::string block(int statements, int depth) {
        const std::size_t outside = readables_.size();
        ++indent_;
        std::string text;
        for (int index = 0; index < statements; ++index) {
            text += statement(depth - 1);
        }
        --indent_;
        readables_.resize(outside);
        return text;
    }

    int some() { return static_cast<int>(below(2)) + 1; }

    std::string loop(int depth) {
        const std::string counter = fresh("i");
        const std::string rounds = std::to_string(below(3) + 2);
        readables_.push_back({counter, kind::whole, false});
        std::string leave;
        if (chance(15)) {
            ++indent_;
            leave = line("if (" + condition(1) + ")") + line(chance(50) ? "    break;" : "    continue;");
            --indent_;
        }
        const std::string head =
            chance(70) ? "for (int " + counter + " = 0; " + counter + " < " + rounds + "; " + counter + "++) {"
                       : "for (int " + counter + " = " + rounds + "; " + counter + "-- > 0;) {";
        const std::string inside = block(some(), depth);
        std::string text = line(head) + leave + inside + line("}");
        std::erase_if(readables_, [&](const readable& one) { return one.text == counter; });
        return text;
    }

    std::string choice(int depth) {
        std::string text = line("if " + condition(2) + " {") + block(some(), depth);
        if (chance(50)) {
            text += line("} else {") + block(some(), depth);
        }
        return text + line("}");
    }

    std::string selection(int depth) {
        std::string text = line("switch (" + expression(kind::whole, 2) + " & 3) {");
        for (int label = 0; label < 2; ++label) {
            text += line("case " + std::to_string(label) + ":") + line("{") + block(1, depth) + line("}");
            text += chance(80) ? line("    break;") : "";
        }
        return text + line("default:") + line("{") + block(1, depth) + line("}") + line("}");
    }

    std::string statement(int depth) {
        const std::uint64_t drawn = below(16);
        if (depth > 0 && drawn == 0) {
            return loop(depth);
        }
        if (depth > 0 && drawn < 3) {
            return choice(depth);
        }
        if (depth > 0 && drawn == 3 && chance(50)) {
            return selection(depth);
        }
        switch (drawn) {
            case 4:
            case 5:
            case 6:
                return declaration();
            case 7:
                return array_declaration();
            case 8:
                return structure_declaration();
            case 9:
                return pointer_declaration();
            default:
                return assignment();
        }
    }

    // ---- functions ----

    void write_globals() {
        text_ += "struct pair { float x; int n; };\n";
        text_ += "enum { few = 3, many = 12 };\n";
        text_ += "static const float table[4] = { 0.5f, -1.25f, 3.0f, 0x1.8p-3f };\n\n";
        globals_ = {{"table[1]", kind::single, false},
                    {"table[few]", kind::single, false},
                    {"many", kind::whole, false},
                    {"(int)sizeof(struct pair)", kind::whole, false}};
    }

    void write_helper(int index) {
        helper made{.name = "helper" + std::to_string(index), .result = any_kind(), .arguments = {}};
        readables_ = globals_;
        std::string parameters;
        for (std::uint64_t count = below(2) + 1; count > 0; --count) {
            const kind type = any_kind();
            const std::string name = fresh("h");
            parameters += (parameters.empty() ? "" : ", ") + name_of(type) + " " + name;
            readables_.push_back({name, type});
            made.arguments.push_back(type);
        }
        std::string body;
        indent_ = 1;
        if (chance(40)) {
            body += line("if " + condition(1)) + line("    return " + expression(made.result, 1) + ";");
        }
        body += statement(0) + line("return " + expression(made.result, 2) + ";");
        text_ += "static " + name_of(made.result) + " " + made.name + "(" + parameters + ")\n{\n" + body + "}\n\n";
        helpers_.push_back(made);
    }

    std::string body_of_top() {
        std::string body;
        indent_ = 1;
        for (std::uint64_t count = below(6) + 2; count > 0; --count) {
            body += statement(2);
        }
        return body;
    }

    void write_top_function() {
        readables_ = globals_;
        std::string parameters;
        const auto add = [&](const std::string& declared) {
            parameters += (parameters.empty() ? "" : ", ") + declared;
        };
        for (std::uint64_t count = below(3) + 1; count > 0; --count) {
            const kind type = any_kind();
            const std::string name = fresh("x");
            add(name_of(type) + " " + name);
            readables_.push_back({name, type});
        }
        if (chance(20)) {
            add("short tiny, bool flag");
            readables_.push_back({"tiny", kind::whole, false});
            readables_.push_back({"flag", kind::whole, false});
        }
        if (chance(40)) {
            add("const float in[3]");
            for (const char* place : {"in[0]", "in[1]", "in[2]"}) {
                readables_.push_back({place, kind::single, false});
            }
        }
        if (chance(30)) {
            add("struct pair given");
            readables_.push_back({"given.x", kind::single});
            readables_.push_back({"given.n", kind::whole});
        }
        const bool has_outputs = chance(40);
        const kind through = any_kind();
        if (has_outputs) {
            add(name_of(through) + " *out, struct pair *both");
        }
        const kind result = any_kind();
        std::string body = body_of_top();
        if (has_outputs) {
            body += line("*out = " + expression(through, 3) + ";") +
                    line("both->x = " + expression(kind::single, 2) + ";") +
                    line("both->n = " + expression(kind::whole, 2) + ";");
        }
        body += line("return " + expression(result, 4) + ";");
        text_ += name_of(result) + " top(" + parameters + ")\n{\n" + body + "}\n";
    }

    /// Variables outside, main() without a type.
    void write_whole_file() {
        readables_ = globals_;
        for (std::uint64_t count = below(3) + 2; count > 0; --count) {
            const kind type = any_kind();
            const std::string name = fresh("g");
            text_ += name_of(type) + " " + name + ";\n";
            readables_.push_back({name, type, false});
        }
        const kind type = any_kind();
        text_ += name_of(type) + " output;\n\nmain()\n{\n";
        const std::string body = body_of_top();
        text_ += body + line("output = " + expression(type, 3) + ";") + "}\n";
    }

    std::mt19937_64 random_;
    bool allow_wide_ = false;
    bool allow_functions_ = false;
    std::string text_;
    std::vector<readable> globals_;
    std::vector<readable> readables_;
    std::vector<helper> helpers_;
    int names_ = 0;
    int indent_ = 1;
};

}  // namespace

written_program write_program(std::uint64_t number) { return program_writer(number).run(); }

}  // namespace xfc::flow::test
