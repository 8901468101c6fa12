#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Source programs made from a number: the same number gives the same program on every machine.

namespace xfc::test {

enum class program_kind : std::uint8_t { single_precision, double_precision, integer, mixed };

struct program_request {
    std::uint64_t seed = 0;
    program_kind kind = program_kind::single_precision;
    bool reassigns = false;  ///< variables may be assigned more than once and after they were read
    bool odd_names = false;  ///< some variables are named like functions and inserted nodes
};

/// Writes one program: a few inputs, then statements of several shapes. Without `reassigns` every variable is
/// assigned at most once and before it is read, so no value depends on itself. Without `odd_names` too every program
/// can be compiled: no statement assigns a bare literal and no operation has two literals as operands.
class program_generator {
public:
    explicit program_generator(const program_request& request)
        : request_(request),
          state_(request.seed * 4 + static_cast<std::uint64_t>(request.kind) + (request.reassigns ? 0x5000 : 0) +
                 (request.odd_names ? 0xA0000 : 0)) {}

    std::string run() {
        add_inputs();
        std::string statements;
        for (std::size_t count = 1 + below(7); count != 0; --count) {
            statements += statement();
        }
        return declarations() + "main()\n{\n" + statements + "}\n";
    }

private:
    struct variable {
        std::string name;
        std::string_view type;
        bool is_used = false;
    };

    static constexpr std::array<std::string_view, 8> odd_names{"norm",   "cast", "delay", "sqrt",
                                                               "negate", "inv",  "ldexp", "fabs"};
    static constexpr std::array<std::string_view, 6> functions{"sqrt", "invsqr", "inv", "exp", "log", "fabs"};
    static constexpr std::array<std::string_view, 5> constants{"2", "0.5", "3", "1.25", "7.0"};

    // ---- Choices ----

    /// The splitmix64 generator.
    std::uint64_t random() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(random() % count); }
    bool chance(std::size_t percent) { return below(100) < percent; }
    template <class list>
    std::string one_of(const list& texts) {
        return std::string(texts[below(texts.size())]);
    }

    // ---- Variables ----

    std::string_view type() {
        switch (request_.kind) {
            case program_kind::single_precision:
                return "float";
            case program_kind::double_precision:
                return "double";
            case program_kind::integer:
                return "long";
            default:
                return std::array<std::string_view, 5>{"float", "float", "double", "double", "long"}[below(5)];
        }
    }

    std::size_t add_variable(std::string_view prefix) {
        std::string name = std::string(prefix) + std::to_string(variables_.size());
        if (request_.odd_names && next_odd_name_ < odd_names.size() && chance(50)) {
            name = odd_names[next_odd_name_++];
        }
        variables_.push_back({std::move(name), type(), false});
        return variables_.size() - 1;
    }

    void add_inputs() {
        inputs_ = 2 + below(5);
        for (std::size_t count = 0; count < inputs_; ++count) {
            add_variable("a");
        }
    }

    std::string read(std::size_t index) {
        variables_[index].is_used = true;
        return variables_[index].name;
    }

    /// A variable that may be read. Late ones are read more often, so that chains of statements arise.
    std::string value() {
        const std::size_t readable = only_inputs_ ? inputs_ : readable_;
        return read(!only_inputs_ && chance(40) ? readable - 1 - below(readable < 3 ? readable : 3) : below(readable));
    }

    std::string declarations() {
        std::string text;
        for (const std::string_view kind : {"float", "double", "long"}) {
            std::string names;
            for (const variable& declared : variables_) {
                if (declared.type == kind && declared.is_used) {
                    names += (names.empty() ? " " : ", ") + declared.name;
                }
            }
            if (!names.empty()) {
                text += std::string(kind) + names + ";\n";
            }
        }
        return text;
    }

    // ---- Statements ----

    std::string statement() {
        readable_ = variables_.size();
        const bool again = request_.reassigns && chance(45);
        only_inputs_ = again && chance(50);
        std::string right = right_side();
        only_inputs_ = false;
        const std::size_t target = again ? inputs_ + below(variables_.size() - inputs_ + 1) : variables_.size();
        if (target == variables_.size()) {
            add_variable("t");
        }
        return "  " + read(target) + " = " + right + ";\n";
    }

    std::string right_side() {
        switch (below(8)) {
            case 0:
                return sum(2 + below(5), true);
            case 1:
                return sum(3 + below(38), false);
            case 2:
                return right_leaning_sum(3 + below(12));
            case 3:
                return horner(2 + below(5));
            case 4:
                return chance(30) ? value() : negations(1 + below(4)) + value();
            default:
                return expression(4);
        }
    }

    /// A chain of sums; of products of variables or of plain operands, some of them literals.
    std::string sum(std::size_t operands, bool products) {
        std::string text;
        for (std::size_t count = 0; count < operands; ++count) {
            if (count != 0) {
                text += chance(75) ? " + " : " - ";
            }
            if (products) {
                text += value() + " * " + value();
            } else {
                text += count > 0 && chance(10) ? one_of(constants) : value();
            }
        }
        return text;
    }

    std::string right_leaning_sum(std::size_t operands) {
        return operands < 2 ? value()
                            : value() + (chance(75) ? " + (" : " - (") + right_leaning_sum(operands - 1) + ")";
    }

    std::string horner(std::size_t degree) {
        std::string text = value();
        const std::string x = value();
        for (; degree != 0; --degree) {
            text = "(" + text + ") * " + x + " + " + (chance(50) ? one_of(constants) : value());
        }
        return text;
    }

    static std::string negations(std::size_t count) { return count == 0 ? "" : "-" + opened(negations(count - 1)); }
    /// Keeps two minus signs from being read as a decrement.
    static std::string opened(std::string text) { return text.empty() ? text : " " + text; }

    std::string expression(std::size_t depth) {
        if (depth == 0 || chance(15)) {
            return value();
        }
        if (request_.kind != program_kind::integer && chance(20)) {
            return function(depth - 1);
        }
        if (chance(10)) {
            return "(" + negations(1 + below(2)) + "(" + expression(depth - 1) + "))";
        }
        const bool constant_left = chance(10);
        const bool constant_right = !constant_left && chance(10);
        const std::string left = constant_left ? constant() : operand(depth - 1);
        const std::string right = constant_right ? constant() : operand(depth - 1);
        const std::string chosen = operation();
        // An integer division has no component, so that a literal dividend would stand without a driver.
        return left + (constant_left && may_be_integer() && chosen == " / " ? " - " : chosen) + right;
    }

    std::string operand(std::size_t depth) {
        const std::string text = expression(depth);
        return text.find(' ') == std::string::npos ? text : "(" + text + ")";
    }

    std::string operation() {
        if (request_.kind == program_kind::integer) {
            return one_of(std::array{" + ", " - ", " * "});
        }
        return one_of(std::array{" + ", " + ", " - ", " * ", " * ", " / "});
    }

    [[nodiscard]] bool may_be_integer() const {
        return request_.kind == program_kind::integer || request_.kind == program_kind::mixed;
    }

    std::string constant() { return (chance(25) ? "-" : "") + one_of(constants); }

    std::string function(std::size_t depth) {
        // A scaled integer has no component either.
        if (!may_be_integer() && chance(20)) {
            return "ldexp(" + expression(depth) + ", " + (chance(80) ? constant() : value()) + ")";
        }
        return one_of(functions) + "(" + expression(depth) + ")";
    }

    program_request request_;
    std::uint64_t state_;
    std::vector<variable> variables_;
    std::size_t inputs_ = 0;
    std::size_t readable_ = 0;
    bool only_inputs_ = false;
    std::size_t next_odd_name_ = 0;
};

inline std::string generate_program(const program_request& request) { return program_generator(request).run(); }

/// The switches that a generated program of that number is compiled with; number 0 gives none.
inline std::vector<std::string> generate_switches(std::uint64_t number) {
    static const std::vector<std::vector<std::string>> choices{
        {},
        {"-xc", "2"},
        {"-mv", "2", "-xc", "5"},
        {"-mm", "36", "-ni", "-rc"},
        {"-ds", "-rn", "-rc", "-xc", "3"},
        {"-op", "-ps", "-mv", "0"},
        {"-s5", "-mv", "3", "-ns", "1"},
        {"-s3", "-no", "-ds", "-xc", "8"},
        {"-sy", "-da", "-op", "-rc", "-ns", "2"},
    };
    return choices[static_cast<std::size_t>(number % choices.size())];
}

}  // namespace xfc::test
