#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/text_writer.h"
#include "exact/emit/instance_texts.h"

namespace xfc {

struct hdl_language;

/// One output file being written.
struct emission {
    text_writer& out;
    const hdl_language& language;
    std::string_view entity_name;  ///< of the entity or module, at most 31 characters
};

/// A section of the output file and the name under which the log announces it; empty: it is not announced.
struct emission_section {
    std::string_view log_name;
    void (*write)(const emission&);
};

/// How one language writes what both outputs contain. Everything else is shared.
struct hdl_language {
    std::string_view file_extension;  ///< written over the base name's terminator
    std::string_view log_name;        ///< in the section lines of the log
    std::string_view comment;         ///< begins a comment

    // A range or a bit of a signal: "(7 DOWNTO 1)" and "(8)", "[7 : 1]" and "[8]".
    std::string_view range_open;
    std::string_view range_to;
    std::string_view range_close;

    // A generic or port with its value: "aa=>value", ".aa(value)".
    std::string_view association_open;
    std::string_view association_arrow;
    std::string_view association_close;

    // An instance: what precedes its generics, and what opens its port list. `label` is "cmp" or "lib".
    void (*open_instance)(text_writer& out, const component_row& row, std::string_view label, std::int64_t number);
    void (*open_ports)(text_writer& out, const component_row& row, std::string_view label, std::int64_t number);
    std::string_view clock_ports;                        ///< first line of a port list
    const std::int32_t instance_text::*generics_indent;  ///< blanks in front of a continued generic line

    // Values of ports.
    std::string_view flag_zero;
    std::string_view add;
    std::string_view subtract;
    std::string_view add_with_blank;
    std::string_view subtract_with_blank;

    // An assignment and the numbers assigned to constant fields.
    std::string_view assign_open;
    std::string_view assign_arrow;
    void (*write_number)(text_writer& out, std::int64_t value, std::int64_t width);
    bool signed_words;  ///< 32-bit words are written as signed numbers
    std::string_view six_zero_bits;

    /// The sections of the file in order.
    std::span<const emission_section> sections;
};

/// Writes "name(high DOWNTO low)" in the language's form.
inline void write_range(const emission& to, std::int64_t high, std::int64_t low) {
    to.out.append(to.language.range_open);
    to.out.append_integer(high);
    to.out.append(to.language.range_to);
    to.out.append_integer(low);
    to.out.append(to.language.range_close);
}

/// Writes a single bit's selection.
inline void write_bit(const emission& to, std::int64_t bit) {
    to.out.append(to.language.range_open);
    to.out.append_integer(bit);
    to.out.append(to.language.range_close);
}

/// Writes the whole file in `language`; see `emit_vhdl`.
void emit_design(const hdl_language& language, const std::string& base_name);

/// The banner that both outputs carry.
void write_banner(const emission& to);

}  // namespace xfc
