#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "exact/emit/emitted.h"

// What instances of every component must look like, written down a second time: nothing here comes from the compiler's
// own tables, so a wrong row of theirs cannot be taken over with the texts.

namespace xfc::test {

/// A bus: its value bits and, for the internal forms, the three flags above them.
enum class bus : std::uint8_t {
    none,
    word,              ///< 32 bits, an integer or an IEEE single
    ieee_double,       ///< 64 bits
    xfloat,            ///< mantissa and 10 bits, flags
    ydouble,           ///< 77 bits, flags
    multiplier,        ///< 67 bits, flags
    bits,              ///< as wide as the node
    single_by_select,  ///< selector 0: word, else xfloat
    double_by_select,  ///< selector 0: ieee_double, 1: ydouble, 2: multiplier, else not connected
    target,            ///< selector 0: multiplier, 1: ydouble
    word_with_flags,   ///< 32 bits, flags where an xfloat has them
    xfloat_value,      ///< an xfloat without its flags
    unpacked_single,   ///< bit 32, bits 31 to 24, bits 23 to 1 on ports of their own
    unpacked_double,   ///< bit 64, bits 63 to 53, bits 52 to 1
};

/// Which constants an operator takes as operands.
enum class constants_as : std::uint8_t { nothing, operands };

/// Oddities of the text, to be combined.
enum oddity : std::uint32_t {
    plain = 0,
    adder_select = 1U << 0,             ///< no oddity: the port addsub stands before the operands
    adder_select_with_blank = 1U << 1,  ///< the same; Verilog writes "1'b 0"
    empty_line_behind_operands = 1U << 2,
    blank_behind_sat = 1U << 3,
    semicolon_behind_result = 1U << 4,
    not_clocked = 1U << 5,       ///< no clock ports; the first operand stands on their line
    double_dot = 1U << 6,        ///< Verilog: "..cc("
    double_blank = 1U << 7,      ///< Verilog: two blanks behind the label
    joined_line = 1U << 8,       ///< Verilog: label on the module's line
    break_then_none = 1U << 9,   ///< Verilog: " # (" and a line end
    break_then_two = 1U << 10,   ///< Verilog: " # (", a line end and two blanks
    without_instance = 1U << 11  ///< the value is passed on as it stands
};

struct expected_instance {
    std::string_view name;
    /// Generics in order. A bar is a line end. Behind a colon: N (1 when the selector is N, else 0), or where a value
    /// comes from that is not the option of that name: `select`, `one`, `width`, `latency`, the option of another name,
    /// `at_most_2` (the option, no more than 2), `at_select_0` (the option, and 1 with another selector).
    std::string_view generics;
    bus aa = bus::none;
    bus bb = bus::none;
    bus cc = bus::none;
    std::string_view selectors = "0";  ///< a digit each
    constants_as constants = constants_as::nothing;
    std::uint32_t oddities = plain;
    std::int32_t vhdl_indent = 15;  ///< blanks behind a bar of `generics`
    std::int32_t verilog_indent = 15;

    [[nodiscard]] bool has(oddity what) const { return (oddities & what) != 0; }
    [[nodiscard]] bool is_function() const { return aa == bus::unpacked_single || aa == bus::unpacked_double; }
};

std::span<const expected_instance> expected_instances();

/// How the only instance (slot 3) of a graph is built, and what its operands then are.
struct instance_case {
    std::string node = "op";  ///< name of the node
    std::int32_t selector = 0;
    bool options_changed = false;     ///< those of `use_distinct_options`
    bool slowest_normalizer = false;  ///< normspeed 1
    std::string aa = "synth0000";     ///< signal of the first operand
    std::string bb = "synth0001";
    std::int32_t latency = 0;  ///< cycles
};

/// Bits of the result's whole bus, flags included.
std::int32_t result_width(const expected_instance& row, const instance_case& built);

/// The text that the instance must have, from a line end in front to the empty line behind it.
std::string expected_text(const expected_instance& row, const instance_case& built, language in);

}  // namespace xfc::test
