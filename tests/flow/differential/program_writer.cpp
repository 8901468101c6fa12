// The program as a whole, and what all productions share: dice, names, and what a place of the program may use.

#include "flow/differential/program_writer.h"

#include <algorithm>
#include <array>

#include "flow/differential/writer.h"

namespace xfc::flow::test {

namespace {

constexpr std::array<std::string_view, 4> type_names{"int", "unsigned", "float", "double"};

struct drawn_option {
    unsigned percent;
    std::string_view name;
    std::string_view value;
};

constexpr drawn_option drawn_options[] = {
    {20, "--low-latency", ""},           {15, "--mantissa", "36"},
    {15, "--fast-reciprocal", ""},       {5, "--round-conversions", "off"},
    {5, "--round-normalization", "off"}, {5, "--normalize-inputs", "off"},
    {5, "--output-registers", "off"},    {5, "--shifter-registers", "off"},
    {5, "--normalizer-speed", "1"},      {5, "--multiplier-blocks", "on"},
};

}  // namespace

writer::writer(std::uint64_t number) : random_(number * 0x9E3779B97F4A7C15U + 1) {
    allow_wide_ = chance(35);
    allow_functions_ = chance(40);
    bare_constants_ = chance(35);
    whole_file_ = chance(15);
    includes_ = !whole_file_ || chance(60);
}

written_program writer::run() {
    written_program made{.options = draw_options()};
    write_globals();
    for (std::uint64_t count = below(4); count > 0; --count) {
        using writing = void (writer::*)();
        constexpr std::array<writing, 8> functions{&writer::write_helper,
                                                   &writer::write_helper,
                                                   &writer::write_recursion,
                                                   &writer::write_sum,
                                                   &writer::write_table_of_functions,
                                                   &writer::write_maker,
                                                   &writer::write_maker,
                                                   &writer::write_procedure};
        cost_ = 0;
        (this->*one_of(functions))();
    }
    cost_ = 0;
    if (whole_file_) {
        write_whole_file();
    } else {
        write_top_function();
    }
    made.text = text_;
    return made;
}

std::vector<std::string> writer::draw_options() {
    std::vector<std::string> options;
    if (chance(bare_constants_ ? 60 : 30)) {
        options.emplace_back("--c-constants");
    }
    for (const drawn_option& row : drawn_options) {
        if (chance(row.percent)) {
            options.emplace_back(row.name);
            if (!row.value.empty()) {
                options.emplace_back(row.value);
            }
        }
    }
    return options;
}

const production& writer::draw(std::span<const production> rows) {
    const auto weight_of = [&](const production& row) {
        const bool possible = row.what == needs::nothing || (row.what == needs::functions && allow_functions_) ||
                              (row.what == needs::headers && includes_);
        return possible ? row.weight : 0U;
    };
    std::uint64_t all = 0;
    for (const production& row : rows) {
        all += weight_of(row);
    }
    std::uint64_t drawn = below(all);
    std::size_t at = 0;
    while (drawn >= weight_of(rows[at])) {
        drawn -= weight_of(rows[at]);
        ++at;
    }
    return rows[at];
}

kind writer::any_kind() {
    const std::uint64_t drawn = below(20);
    return drawn < 5 ? kind::whole : drawn < 7 ? kind::natural : drawn < 16 || !allow_wide_ ? kind::single : kind::wide;
}

std::string named(std::string_view pattern, const std::string& name, const std::string& second) {
    std::string text;
    for (const char letter : pattern) {
        text += letter == '@' ? name : letter == '#' ? second : std::string(1, letter);
    }
    return text;
}

std::string writer::name_of(kind type) { return std::string(type_names.at(static_cast<std::size_t>(type))); }

/// Called without a declaration, functions work in their operands' format.
std::string writer::suffix(kind type) const { return type == kind::single && includes_ ? "f" : ""; }

std::string writer::line(const std::string& what) const {
    return std::string(static_cast<std::size_t>(indent_) * 4, ' ') + what + "\n";
}

std::string writer::in_order(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += part;
    }
    return text;
}

void writer::know(const array& one) {
    now_.arrays.push_back(one);
    for (int place = 0; place < std::max(one.rows, 1) * one.size; ++place) {
        const std::string row = one.rows == 0 ? "" : "[" + std::to_string(place / one.size) + "]";
        now_.readables.push_back(
            {one.name + row + "[" + std::to_string(place % one.size) + "]", one.type, one.assignable});
    }
}

void writer::know(const record& one) {
    now_.records.push_back(one);
    for (const readable& path : one.type->paths) {
        now_.readables.push_back({one.name + path.text, path.type});
    }
}

written_program write_program(std::uint64_t number) { return writer(number).run(); }

}  // namespace xfc::flow::test
