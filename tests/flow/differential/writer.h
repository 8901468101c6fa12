#pragma once

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "flow/differential/program_writer.h"

namespace xfc::flow::test {

enum class kind : std::uint8_t { whole, natural, single, wide };

/// Something that an expression may read: a variable, an element, a member.
struct readable {
    std::string text;
    kind type;
    bool assignable = true;
    std::string declared_as = {};  ///< where it is not the kind's own type
};

/// One or two dimensions; an array of one has no rows.
struct array {
    std::string name;
    kind type;
    int rows;
    int size;
    bool assignable = true;
};

/// A structure: its members' text, and the way to each number in it, in order.
struct record_type {
    std::string tag;
    std::string members;
    std::vector<readable> paths;
};

struct record {
    std::string name;
    const record_type* type;
};

/// What is known at a place of the program.
struct scope {
    std::vector<readable> readables = {};
    std::vector<array> arrays = {};
    std::vector<record> records = {};
};

/// When a production may be taken.
enum class needs : std::uint8_t {
    nothing,
    functions,  ///< a program with functions that are not correctly rounded
    headers     ///< a program that includes math.h
};

/// A production is a text with places in braces to fill: {t} {o} expressions of the wanted kind and of any, {i} {u} {s}
/// {w} of int, unsigned, float and double, {c} a condition, {n} {p} {e} {z} small known numbers, {l} a leaf, {f} the
/// suffix of the kind's functions, {T} the kind's type.
struct production {
    std::string_view text;
    unsigned weight = 1;
    needs what = needs::nothing;
};

/// A pattern with `name` in the place of each @ and `second` of each #.
[[nodiscard]] std::string named(std::string_view pattern, const std::string& name, const std::string& second = "#");

/// Writes one program; what it draws is in tables, a table in the file of its kind.
class writer {
public:
    explicit writer(std::uint64_t number);
    written_program run();

private:
    struct helper {
        std::string name;
        kind result;
        std::vector<std::string> arguments;  ///< as productions
        int cost = 0;
    };
    struct procedure {
        std::string name;
        kind through;
        const record_type* type;
        int cost = 0;
    };
    struct maker {
        std::string name;
        const record_type* type;
        int cost = 0;
    };
    /// How a block that is being written may be left.
    struct ways_out {
        bool loop = false;
        /// Sets the loop's counter to its end; nothing behind another way out, where the counter would not be known.
        std::string finish = {};
        int finish_indent = 0;    ///< of the loop's own statements: not under a second condition
        std::string result = {};  ///< a production, or void; none, no return
    };

    // program_writer.cpp: dice, names, scopes
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    bool chance(unsigned percent) { return below(100) < percent; }
    template <class container>
    const auto& one_of(const container& all) {
        return all[below(std::size(all))];
    }
    const production& draw(std::span<const production> rows);
    kind any_kind();
    [[nodiscard]] static std::string name_of(kind type);
    [[nodiscard]] std::string suffix(kind type) const;
    [[nodiscard]] std::string line(const std::string& what) const;
    std::string fresh(std::string_view stem) { return std::string(stem) + std::to_string(names_++); }
    /// One behind the other; a list's parts are drawn from left to right by every compiler, a sum's are not.
    [[nodiscard]] static std::string in_order(std::initializer_list<std::string> parts);
    void know(const array& one);
    void know(const record& one);
    std::vector<std::string> draw_options();

    // expressions.cpp
    std::string fill(std::string_view text, kind type, int depth);
    std::string filled_place(char what, kind type, int depth);
    std::string constant(kind type);
    std::string leaf(kind type);
    std::string converted(const readable& from, kind to);
    std::string condition(int depth);
    std::string expression(kind type, int depth);
    std::string call(const helper& what, kind type, int depth);
    std::string member_of_made(kind type, int depth);
    std::string listed(const std::vector<kind>& types, int depth);
    std::string record_list(const record_type& type, int depth);
    [[nodiscard]] static std::string place_of(kind type);

    // declarations.cpp
    std::string declaration();
    std::string narrow_declaration();
    std::string array_declaration();
    std::string plane_declaration();
    std::string table_declaration();
    std::string record_declaration();
    std::string records_declaration();
    std::string union_declaration();
    std::string pointer_declaration();
    std::string record_pointer_declaration();
    std::string parts_declaration();

    // statements.cpp
    const readable* any_target();
    std::string assignment();
    std::string lines_of(std::string_view text);
    std::string guarded_assignment();
    std::string chained_assignment();
    std::string copy();
    std::string call_of_procedure();
    std::string assertion();
    std::string walk();
    std::string block(int statements, int depth);
    std::string leave();
    std::string loop(int depth);
    std::string choice(int depth);
    std::string selection(int depth);
    std::string statement(int depth);

    // functions.cpp
    void draw_record_types();
    void write_globals();
    std::string body(int statements, const std::string& result);
    void write_helper();
    void write_recursion();
    void write_sum();
    void write_table_of_functions();
    void write_maker();
    void write_procedure();

    // tops.cpp
    std::string body_of_top();
    std::vector<std::string> add_inputs();
    std::vector<std::string> add_outputs(std::string& body);
    void write_top_function();
    void write_whole_file();

    std::mt19937_64 random_;
    bool allow_wide_ = false;
    bool allow_functions_ = false;
    bool bare_constants_ = false;  ///< constants without suffix, which xfcflow may take as singles
    bool whole_file_ = false;
    bool includes_ = true;
    std::string text_;
    scope globals_;
    scope now_;
    std::vector<record_type> record_types_;
    std::vector<helper> helpers_;
    std::vector<procedure> procedures_;
    std::vector<maker> makers_;
    ways_out ways_out_;
    int names_ = 0;
    int indent_ = 1;
    int cost_ = 0;    ///< operations so far, each as often as its loops have rounds
    int weight_ = 1;  ///< rounds of the loops around
};

}  // namespace xfc::flow::test
