// The VHDL design unit: library clauses, banner, entity, architecture.

#include <array>

#include "exact/dfg/dfg.h"
#include "exact/emit/connections.h"
#include "exact/emit/constants.h"
#include "exact/emit/emitter.h"
#include "exact/emit/hdl_language.h"
#include "exact/emit/instances.h"
#include "exact/emit/node_name.h"
#include "exact/run/compilation.h"

namespace xfc {

namespace {

/// Kept: the clauses come before the banner.
void write_clauses_and_banner(const emission& to) {
    write_format(to.out,
                 "\nLIBRARY ieee;\nLIBRARY work;\nUSE ieee.std_logic_1164.all;\n"
                 "USE ieee.std_logic_unsigned.all;\nUSE ieee.std_logic_arith.all;\n"
                 "USE work.xfc_package.all;\nUSE work.xfc_library_package.all;\n\n");
    write_banner(to);
}

/// Kept: without output ports the port list ends in a semicolon, which is not legal.
void write_entity(const emission& to) {
    write_format(to.out,
                 "ENTITY %s IS\nPORT (\n      sysclk : IN STD_LOGIC;"
                 "\n      reset : IN STD_LOGIC;\n      enable : IN STD_LOGIC;\n      startin : IN STD_LOGIC;\n",
                 to.entity_name);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (is_primary_input(node)) {
            write_format(to.out, "      %s : IN STD_LOGIC_VECTOR (%ld DOWNTO 1);\n", node.name, node.inputs[0].width);
        }
    }
    write_format(to.out, "\n      startout : OUT STD_LOGIC;\n");
    std::string_view separator;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (is_primary_output(node)) {
            write_format(to.out, "%s      %s : OUT STD_LOGIC_VECTOR (%ld DOWNTO 1)", separator, node.name,
                         node.outputs[0].width);
            separator = ";\n";
        }
    }
}

/// Kept: the architecture is named "gen" and closed as "GEN".
void write_signals(const emission& to) {
    write_format(to.out, "\n     );\nEND %s;\n\nARCHITECTURE gen OF %s IS\n\n", to.entity_name, to.entity_name);
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (node.attributes.is_removed != 0) {
            continue;
        }
        const node_name name(slot);
        write_format(to.out, "  signal %s : STD_LOGIC_VECTOR (%ld DOWNTO 1);\n", name.text(), node.outputs[0].width);
        if (has_constant_operand(node)) {
            write_format(to.out, "  signal const%s : STD_LOGIC_VECTOR (%ld DOWNTO 1);\n", name.text(),
                         constant_signal_width(node));
        }
    }
    write_format(to.out, "\n  signal startff : STD_LOGIC_VECTOR (%ld DOWNTO 1);\n\nBEGIN\n\n", current.max_latency);
}

/// The start pulse travels beside the data, one register a cycle of the pipeline.
void write_processes(const emission& to) {
    write_format(to.out,
                 "  psd: PROCESS (sysclk,reset)\n  BEGIN\n    IF (reset = '1') THEN"
                 "\n      FOR k IN 1 TO %ld LOOP\n"
                 "        startff(k) <= '0';\n      END LOOP;\n"
                 "    ELSIF (rising_edge(sysclk)) THEN\n      IF (enable = '1') THEN\n"
                 "        startff(1) <= startin;\n        FOR k IN 2 TO %ld LOOP\n"
                 "          startff(k) <= startff(k-1);\n        END LOOP;\n      END IF;\n"
                 "    END IF;\n"
                 "  END PROCESS;\n\n",
                 current.max_latency, current.max_latency);
}

void write_end(const emission& to) {
    write_format(to.out, "  startout <= startff(%ld);\n\nEND GEN;\n\n", current.max_latency);
}

constexpr std::array<emission_section, 9> sections{{
    {"", write_clauses_and_banner},
    {"ENTITY", write_entity},
    {"SIGNALS", write_signals},
    {"PROCESSES", write_processes},
    {"CONSTANTS", write_constants},
    {"NODE CONNECTIONS", write_node_connections},
    {"OPERATORS", write_operators},
    {"FUNCTIONS", write_functions},
    {"", write_end},
}};

void open_instance(text_writer& out, const component_row& row, std::string_view label, std::int64_t number) {
    write_format(out, "  %s%ld: %s\n", label, number, row.name);
    if (!row.generics.empty()) {
        write_format(out, "  GENERIC MAP (");
    }
}

void open_ports(text_writer& out, const component_row&, std::string_view, std::int64_t) {
    write_format(out, "  PORT MAP (");
}

void write_number(text_writer& out, std::int64_t value, std::int64_t width) {
    write_format(out, "conv_std_logic_vector(%ld,%ld)", value, width);
}

constexpr hdl_language vhdl{.file_extension = ".vhd",
                            .log_name = "VHDL",
                            .comment = "--",
                            .range_open = "(",
                            .range_to = " DOWNTO ",
                            .range_close = ")",
                            .association_open = "",
                            .association_arrow = "=>",
                            .association_close = "",
                            .open_instance = open_instance,
                            .open_ports = open_ports,
                            .clock_ports = "sysclk=>sysclk,reset=>reset,enable=>enable,\n",
                            .generics_indent = &instance_text::indent,
                            .flag_zero = "'0'",
                            .add = "'0'",
                            .subtract = "'1'",
                            .add_with_blank = "'0'",
                            .subtract_with_blank = "'1'",
                            .assign_open = "  ",
                            .assign_arrow = " <= ",
                            .write_number = write_number,
                            .signed_words = true,
                            .six_zero_bits = "\"000000\"",
                            .sections = sections};

}  // namespace

void emit_vhdl(const std::string& base_name) { emit_design(vhdl, base_name); }

}  // namespace xfc
