#include "exact/emit/expected_instances.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace xfc::test {

namespace {

constexpr std::uint32_t norm_ports = empty_line_behind_operands | blank_behind_sat;
constexpr auto as_operands = constants_as::operands;
constexpr auto nothing = constants_as::nothing;

// clang-format off
constexpr expected_instance table[] = {
    {"xfc_alulong", "", bus::word, bus::word, bus::word, "0", as_operands, adder_select},
    {"xfc_mullong", "", bus::word, bus::word, bus::word, "0", as_operands},
    {"xfc_alufp1_dot", "mantissa,shiftspeed,outputpipe", bus::xfloat, bus::xfloat, bus::xfloat, "0", nothing,
     adder_select_with_blank | double_blank},
    {"xfc_alufp1x", "mantissa,shiftspeed,outputpipe", bus::xfloat, bus::xfloat, bus::xfloat, "0", as_operands,
     adder_select_with_blank},
    {"xfc_mulfp1_dot", "mantissa,device,optimization,synthesize", bus::word, bus::word, bus::xfloat},
    {"xfc_mulfp1x", "mantissa,ieeeoutput:0,xoutput:1,multoutput:2,divoutput:3,|outputscale,synthesize",
     bus::xfloat, bus::xfloat, bus::single_by_select, "01234", as_operands, plain, 12, 12},
    {"xfc_divfp1x", "mantissa,ieeeoutput:0,xoutput:1,multoutput:2,divoutput:3,|roundconvert,synthesize",
     bus::xfloat, bus::xfloat, bus::single_by_select, "01234", as_operands},
    {"xfc_normfp1x", "mantissa,inputnormalize:at_select_0,roundnormalize,|normspeed:at_most_2,target:select",
     bus::xfloat, bus::none, bus::xfloat, "012", nothing, norm_ports},

    {"xfc_alufp2x", "shiftspeed,doublespeed,synthesize", bus::ydouble, bus::ydouble, bus::ydouble, "0", as_operands,
     adder_select},
    {"xfc_mulfp2x",
     "ieeeoutput:0,xoutput:1,multoutput:2,|roundconvert,roundnormalize,doublespeed,|"
     "outputpipe,doubleaccuracy,|device,synthesize",
     bus::multiplier, bus::multiplier, bus::double_by_select, "0123", as_operands, break_then_none},
    {"xfc_divfp2x",
     "ieeeoutput:0,xoutput:1,divoutput:2,|roundconvert,doublespeed,|doubleaccuracy,device,synthesize",
     bus::multiplier, bus::multiplier, bus::double_by_select, "0123", as_operands, break_then_none},
    {"xfc_normfp2x", "roundconvert,roundnormalize,normspeed,|doublespeed,target:select,synthesize",
     bus::ydouble, bus::none, bus::target, "01", nothing, norm_ports | break_then_none},

    {"xfc_delay", "width:width,delay:latency,synthesize", bus::bits, bus::none, bus::bits},

    {"xfc_castftox", "target:select,roundconvert,mantissa,outputpipe", bus::word, bus::none, bus::xfloat, "012",
     nothing, break_then_none},
    {"xfc_castxtof", "mantissa,normspeed:at_most_2", bus::xfloat, bus::none, bus::word},
    {"castftoy", "target:select,roundconvert,mantissa", bus::word, bus::none, bus::target, "01"},
    {"xfc_castdtoy", "target:select,roundconvert,outputpipe,|doublespeed,synthesize", bus::ieee_double, bus::none,
     bus::target, "01", nothing, break_then_none},
    {"castdtox", "target:select,roundconvert,doublespeed", bus::ieee_double, bus::none, bus::xfloat, "012", nothing,
     break_then_none},
    {"castxtod", "mantissa|roundconvert,doublespeed", bus::xfloat, bus::none, bus::ieee_double, "0", nothing, plain,
     0, 0},
    {"castxtoy", "target:one,mantissa", bus::xfloat, bus::none, bus::ydouble, "01", nothing,
     not_clocked | semicolon_behind_result},
    {"xfc_castytod", "roundconvert,normspeed,|doublespeed,synthesize", bus::ydouble, bus::none, bus::ieee_double, "0",
     nothing, break_then_none, 15, 0},
    {"xfc_castytof", "roundconvert", bus::ydouble, bus::none, bus::word_with_flags, "0", nothing,
     empty_line_behind_operands},
    {"xfc_castytox", "roundconvert,mantissa", bus::ydouble, bus::none, bus::xfloat, "0", nothing,
     empty_line_behind_operands | double_dot},
    {"xfc_castdtof", "roundconvert", bus::ieee_double, bus::none, bus::xfloat_value},
    {"xfc_castftod", "", bus::word, bus::none, bus::ieee_double},
    {.name = "xfc_castltof", .generics = "", .oddities = without_instance},
    {.name = "xfc_castltod", .generics = "", .oddities = without_instance},
    {.name = "xfc_castltox", .generics = "", .oddities = without_instance},
    {.name = "xfc_castltoy", .generics = "", .oddities = without_instance},
    {.name = "xfc_castftol", .generics = "", .oddities = without_instance},
    {.name = "xfc_castdtol", .generics = "", .oddities = without_instance},
    {.name = "xfc_castxtol", .generics = "", .oddities = without_instance},
    {.name = "xfc_castytol", .generics = "", .oddities = without_instance},

    {"fp_sqr", "", bus::unpacked_single, bus::none, bus::unpacked_single, "0", nothing, joined_line},
    {"fp_invsqr", "synthesize", bus::unpacked_single, bus::none, bus::unpacked_single, "0", nothing, break_then_two},
    {"fp_inv", "synthesize", bus::unpacked_single, bus::none, bus::unpacked_single, "0", nothing, break_then_two},
    {"fp_exp", "synthesize", bus::unpacked_single, bus::none, bus::unpacked_single, "0", nothing, break_then_two},
    {"fp_log", "", bus::unpacked_single, bus::none, bus::unpacked_single},
    {"fp_ldexp", "", bus::unpacked_single, bus::word, bus::unpacked_single},
    {"fp_fabs", "", bus::unpacked_single, bus::none, bus::unpacked_single},
    {"fp_neg", "", bus::unpacked_single, bus::none, bus::unpacked_single},

    {"dp_sqr", "", bus::unpacked_double, bus::none, bus::unpacked_double},
    {"dp_invsqr", "doubleaccuracy,doublespeed,|device,synthesize", bus::unpacked_double, bus::none,
     bus::unpacked_double, "0", nothing, break_then_two, 15, 2},
    {"dp_inv", "roundconvert,doubleaccuracy,|doublespeed,device,|synthesize", bus::unpacked_double, bus::none,
     bus::unpacked_double, "0", nothing, break_then_two, 15, 2},
    {"dp_exp", "roundconvert,doubleaccuracy,|doublespeed,device,|synthesize", bus::unpacked_double, bus::none,
     bus::unpacked_double, "0", nothing, break_then_two, 15, 2},
    {"dp_log", "device:doubleaccuracy,doublespeed,|synthesize", bus::unpacked_double, bus::none,
     bus::unpacked_double, "0", nothing, break_then_two, 15, 2},
    {"dp_ldexp", "", bus::unpacked_double, bus::word, bus::unpacked_double},
    {"dp_fabs", "", bus::unpacked_double, bus::none, bus::unpacked_double},
    {"dp_neg", "", bus::unpacked_double, bus::none, bus::unpacked_double},
};
// clang-format on

/// An option with its default and with the value that `use_distinct_options` gives it.
struct option {
    std::string_view name;
    std::int32_t by_default;
    std::int32_t changed;
};

constexpr option options[] = {
    {"mantissa", 32, 36},    {"doublespeed", 0, 41},    {"inputnormalize", 0, 42}, {"outputscale", 0, 43},
    {"roundconvert", 0, 44}, {"roundnormalize", 0, 45}, {"outputpipe", 1, 46},     {"normspeed", 3, 47},
    {"shiftspeed", 1, 49},   {"doubleaccuracy", 1, 50}, {"device", 0, 51},         {"optimization", 1, -52},
    {"synthesize", 0, 53},
};

std::int32_t option_named(std::string_view name, const instance_case& built) {
    const auto* const found =
        std::find_if(std::begin(options), std::end(options), [&](const option& one) { return one.name == name; });
    if (found == std::end(options)) {
        ADD_FAILURE() << "no option " << name;
        return -1;
    }
    if (built.slowest_normalizer && name == "normspeed") {
        return 1;
    }
    return built.options_changed ? found->changed : found->by_default;
}

/// The parts of a text between separators.
std::vector<std::string_view> parts(std::string_view text, char separator) {
    std::vector<std::string_view> found;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        found.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return found;
}

/// Value bits of a bus and the lowest flag's bit, 0 without flags; no value bits: not connected.
struct layout {
    std::int32_t value;
    std::int32_t flags;
};

layout layout_of_bus(bus form, const expected_instance& row, const instance_case& built) {
    const std::int32_t xfloat = option_named("mantissa", built) + 10;
    const auto selected = [&](bus by_select_0, bus by_select_1, bus by_select_2) {
        const std::int32_t select = built.selector;
        const bus forms[] = {by_select_0, by_select_1, by_select_2, bus::none};
        return layout_of_bus(forms[std::min(select, 3)], row, built);
    };
    switch (form) {
        case bus::word:
            return {32, 0};
        case bus::ieee_double:
            return {64, 0};
        case bus::xfloat:
            return {xfloat, xfloat + 1};
        case bus::xfloat_value:
            return {xfloat, 0};
        case bus::word_with_flags:
            return {32, xfloat + 1};
        case bus::ydouble:
            return {77, 78};
        case bus::multiplier:
            return {67, 68};
        case bus::bits:
            return {built.options_changed ? 80 : 45, 0};
        case bus::single_by_select:
            return built.selector == 0 ? layout{32, 0} : layout{xfloat, xfloat + 1};
        case bus::double_by_select:
            return selected(bus::ieee_double, bus::ydouble, bus::multiplier);
        case bus::target:
            return selected(bus::multiplier, bus::ydouble, bus::none);
        case bus::unpacked_single:
            return {32, 0};
        case bus::unpacked_double:
            return {64, 0};
        default:
            return {0, 0};
    }
}

/// Composes the text in one language.
class composer {
public:
    composer(const expected_instance& row, const instance_case& built, language in)
        : row_(row), built_(built), vhdl_(in == language::vhdl) {}

    std::string compose() {
        const std::string label = row_.is_function() ? "lib0" : "cmp0";
        text_ = vhdl_ ? "\n  " + label + ": " + std::string(row_.name) + '\n' : "\n  " + std::string(row_.name);
        add_generics();
        if (vhdl_) {
            text_ += "  PORT MAP (";
        } else {
            text_ += row_.has(joined_line) ? "  " : row_.generics.empty() ? "\n  " : "  ";
            text_ += label + (row_.has(double_blank) ? "  (" : " (");
        }
        std::vector<std::string> lines = row_.is_function() ? function_ports() : operator_ports();
        if (!row_.has(not_clocked)) {
            lines.insert(lines.begin(),
                         of("sysclk", "sysclk") + ',' + of("reset", "reset") + ',' + of("enable", "enable") + ',');
        }
        for (std::size_t line = 0; line < lines.size(); ++line) {
            text_ += (line == 0 || lines[line].empty() ? "" : "            ") + lines[line] + '\n';
        }
        if (lines.back().ends_with(");")) {
            text_ += '\n';
        }
        return text_;
    }

private:
    [[nodiscard]] std::string of(const std::string& name, const std::string& value) const {
        return vhdl_ ? name + "=>" + value : '.' + name + '(' + value + ')';
    }
    [[nodiscard]] std::string range(const std::string& signal, std::int32_t high, std::int32_t low) const {
        return vhdl_ ? signal + '(' + std::to_string(high) + " DOWNTO " + std::to_string(low) + ')'
                     : signal + '[' + std::to_string(high) + " : " + std::to_string(low) + ']';
    }
    [[nodiscard]] std::string bit(const std::string& signal, std::int32_t number) const {
        return signal + (vhdl_ ? '(' : '[') + std::to_string(number) + (vhdl_ ? ')' : ']');
    }

    [[nodiscard]] bool selector_is_named() const {
        return row_.generics.find(":" + std::to_string(built_.selector)) != std::string_view::npos;
    }

    [[nodiscard]] std::int32_t value_of(std::string_view name, std::string_view source) const {
        if (source.empty()) {
            return option_named(name, built_);
        }
        if (source[0] >= '0' && source[0] <= '9') {
            return source[0] - '0' == built_.selector ? 1 : 0;
        }
        if (source == "select") {
            return built_.selector;
        }
        if (source == "one") {
            return 1;
        }
        if (source == "width") {
            return built_.options_changed ? 80 : 45;
        }
        if (source == "latency") {
            return built_.latency;
        }
        if (source == "at_most_2") {
            return std::min(2, option_named(name, built_));
        }
        if (source == "at_select_0") {
            return built_.selector == 0 ? option_named(name, built_) : 1;
        }
        return option_named(source, built_);
    }

    void add_generics() {
        if (row_.generics.empty()) {
            return;
        }
        text_ += vhdl_                       ? "  GENERIC MAP ("
                 : row_.has(break_then_none) ? " # (\n"
                 : row_.has(break_then_two)  ? " # (\n  "
                                             : " # (";
        const std::string indent(static_cast<std::size_t>(vhdl_ ? row_.vhdl_indent : row_.verilog_indent), ' ');
        bool breaks = false;
        for (const std::string_view line : parts(row_.generics, '|')) {
            text_ += breaks ? "\n" : "";
            text_ += line.data() == row_.generics.data() ? "" : indent;
            breaks = true;
            std::string separator;
            for (const std::string_view generic : parts(line, ',')) {
                const std::string name(generic.substr(0, generic.find(':')));
                const std::string_view source = generic.substr(std::min(name.size() + 1, generic.size()));
                if (!source.empty() && source[0] >= '0' && source[0] <= '9' && !selector_is_named()) {
                    breaks = false;  // The selectors are left out with their line's end.
                    continue;
                }
                text_ += separator;
                separator = ",";
                text_ += name.empty() ? "" : of(name, std::to_string(value_of(name, source)));
            }
        }
        text_ += ")\n";
    }

    std::vector<std::string> operator_ports() {
        std::vector<std::string> lines;
        if (row_.has(adder_select) || row_.has(adder_select_with_blank)) {
            const std::string digit = built_.node == "+" ? "0" : "1";
            const std::string blank = row_.has(adder_select_with_blank) ? " " : "";
            lines.push_back(of("addsub", vhdl_ ? "'" + digit + "'" : "1'b" + blank + digit) + ',');
        }
        add_operand(lines, "aa", row_.aa, built_.aa);
        add_operand(lines, "bb", row_.bb, built_.bb);
        if (row_.has(empty_line_behind_operands)) {
            lines.emplace_back();
        }
        const layout result = layout_of_bus(row_.cc, row_, built_);
        if (result.value != 0) {
            const bool flags = result.flags != 0;
            const std::string dot = !vhdl_ && row_.has(double_dot) ? "." : "";
            lines.push_back(dot + of("cc", range("synth0003", result.value, 1)) +
                            (!flags                              ? ");"
                             : row_.has(semicolon_behind_result) ? ";"
                                                                 : ","));
            if (flags) {
                lines.push_back(flags_of("cc", "synth0003", result.flags, row_.has(blank_behind_sat) ? ", " : ",") +
                                ");");
            }
        }
        return lines;
    }

    void add_operand(std::vector<std::string>& lines, const std::string& port, bus form, const std::string& signal) {
        const layout bits = layout_of_bus(form, row_, built_);
        if (bits.value == 0) {
            return;
        }
        lines.push_back(of(port, range(signal, bits.value, 1)) + ',');
        if (bits.flags != 0) {
            lines.push_back(flags_of(port, signal, bits.flags, ",") + ',');
        }
    }

    /// The flags of a constant are zero.
    std::string flags_of(const std::string& port, const std::string& signal, std::int32_t first,
                         const std::string& behind_sat) {
        std::string line;
        for (const char* name : {"sat", "zip", "nan"}) {
            const std::string value = !signal.starts_with("const") ? bit(signal, first) : vhdl_ ? "'0'" : "0";
            line += of(port + name, value) + (name[0] == 's' ? behind_sat : name[0] == 'z' ? "," : "");
            ++first;
        }
        return line;
    }

    std::vector<std::string> function_ports() {
        std::vector<std::string> lines;
        add_unpacked(lines, "in", built_.aa);
        if (row_.bb != bus::none) {
            lines.push_back(of("bb", range(built_.bb, 32, 1)) + ',');
        }
        add_unpacked(lines, "out", "synth0003");
        lines.back() = lines.back().substr(0, lines.back().size() - 1) + ");";
        return lines;
    }

    void add_unpacked(std::vector<std::string>& lines, const std::string& direction, const std::string& signal) {
        const bool single = row_.aa == bus::unpacked_single;
        lines.push_back(of("sign" + direction, bit(signal, single ? 32 : 64)) + ',');
        lines.push_back(of("exponent" + direction, range(signal, single ? 31 : 63, single ? 24 : 53)) + ',');
        lines.push_back(of("mantissa" + direction, range(signal, single ? 23 : 52, 1)) + ',');
    }

    const expected_instance& row_;
    const instance_case& built_;
    bool vhdl_;
    std::string text_;
};

}  // namespace

std::span<const expected_instance> expected_instances() { return table; }

std::int32_t result_width(const expected_instance& row, const instance_case& built) {
    const layout bits = layout_of_bus(row.cc, row, built);
    return bits.flags != 0 ? bits.flags + 2 : bits.value;
}

std::string expected_text(const expected_instance& row, const instance_case& built, language in) {
    return row.has(without_instance) ? "\n" : composer(row, built, in).compose();
}

}  // namespace xfc::test
