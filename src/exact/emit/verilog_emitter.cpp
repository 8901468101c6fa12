// The Verilog module: banner, module header, port declarations, body.

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

/// Writes a line for every output port, with `separator` between two of them.
template <class writer>
void write_output_ports(const emission& to, std::string_view separator, writer write_port) {
    std::string_view before;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (is_primary_output(node_at(slot))) {
            to.out.append(before);
            write_port(node_at(slot));
            before = separator;
        }
    }
}

template <class writer>
void write_input_ports(writer write_port) {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (is_primary_input(node_at(slot))) {
            write_port(node_at(slot));
        }
    }
}

/// Kept: without output ports the header ends in a comma, which is not legal.
void write_module_header(const emission& to) {
    write_format(to.out,
                 "`timescale 1 ps / 1 ps\n\n"
                 "module %s (\n      sysclk,"
                 "\n      reset,\n      enable,\n      startin,\n",
                 to.entity_name);
    write_input_ports([&](const dfg_node& node) { write_format(to.out, "      %s,\n", node.name); });
    write_format(to.out, "      startout,\n");
    write_output_ports(to, ",\n", [&](const dfg_node& node) { write_format(to.out, "      %s", node.name); });
    write_format(to.out, "\n);\n\n");
}

void write_port_declarations(const emission& to) {
    write_format(to.out, "input sysclk;\ninput reset;\ninput enable;\ninput startin;\n");
    write_input_ports(
        [&](const dfg_node& node) { write_format(to.out, "input [%ld : 1] %s;\n", node.inputs[0].width, node.name); });
    write_format(to.out, "\noutput startout;\n");
    write_output_ports(to, "\n", [&](const dfg_node& node) {
        write_format(to.out, "output [%ld : 1] %s;", node.outputs[0].width, node.name);
    });
}

void write_signals(const emission& to) {
    to.out.append('\n');
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        const dfg_node& node = node_at(slot);
        if (node.attributes.is_removed != 0) {
            continue;
        }
        const node_name name(slot);
        write_format(to.out, "wire [%ld : 1] %s;\n", node.outputs[0].width, name.text());
        if (has_constant_operand(node)) {
            write_format(to.out, "wire [%ld : 1] const%s;\n", constant_signal_width(node), name.text());
            if (!text_of(node.attributes.component).verilog_constants_close_ranks) {
                to.out.append('\n');
            }
        }
    }
    write_format(to.out, "\nreg [%ld : 1] startff;\n\n", current.max_latency);
}

/// The start pulse travels beside the data, one register a cycle of the pipeline.
void write_processes(const emission& to) {
    write_format(to.out,
                 "integer k;\n"
                 "  always @ (posedge sysclk or posedge reset)\n  begin\n    if (reset == 1'b1) begin"
                 "\n        startff <= %ld'b0;\n    end"
                 " else begin\n      if (enable == 1'b1) begin\n"
                 "        startff[1] <= startin;\n        for (k=2; k <= %ld; k = k + 1) begin\n"
                 "          startff[k] <= startff[k-1];\n        end\n      end\n"
                 "    end\n"
                 "  end\n\n",
                 current.max_latency, current.max_latency);
}

void write_end(const emission& to) {
    write_format(to.out, "  assign startout = startff[%ld];\n\nendmodule\n\n", current.max_latency);
}

constexpr std::array<emission_section, 10> sections{{
    {"", write_banner},
    {"ENTITY", write_module_header},
    {"PORTS", write_port_declarations},
    {"SIGNALS", write_signals},
    {"PROCESSES", write_processes},
    {"CONSTANTS", write_constants},
    {"NODE CONNECTIONS", write_node_connections},
    {"OPERATORS", write_operators},
    {"FUNCTIONS", write_functions},
    {"", write_end},
}};

void open_instance(text_writer& out, const component_row& row, std::string_view, std::int64_t) {
    write_format(out, "  %s", row.name);
    if (!row.generics.empty()) {
        out.append(text_of(row.id).verilog_opening);
    } else if (!text_of(row.id).verilog_joined_line) {
        out.append('\n');
    }
}

void open_ports(text_writer& out, const component_row& row, std::string_view label, std::int64_t number) {
    write_format(out, "  %s%ld", label, number);
    out.append(text_of(row.id).verilog_double_blank ? "  (" : " (");
}

void write_number(text_writer& out, std::int64_t value, std::int64_t width) {
    write_format(out, "%ld'd%ld", width, value);
}

constexpr hdl_language verilog{.file_extension = ".v",
                               .log_name = "VLG",
                               .comment = "//",
                               .range_open = "[",
                               .range_to = " : ",
                               .range_close = "]",
                               .association_open = ".",
                               .association_arrow = "(",
                               .association_close = ")",
                               .open_instance = open_instance,
                               .open_ports = open_ports,
                               .clock_ports = ".sysclk(sysclk),.reset(reset),.enable(enable),\n",
                               .generics_indent = &instance_text::verilog_indent,
                               .flag_zero = "0",
                               .add = "1'b0",
                               .subtract = "1'b1",
                               .add_with_blank = "1'b 0",
                               .subtract_with_blank = "1'b 1",
                               .assign_open = "  assign ",
                               .assign_arrow = " = ",
                               .write_number = write_number,
                               .signed_words = false,
                               .six_zero_bits = "6'b000000",
                               .sections = sections};

}  // namespace

void emit_verilog(const std::string& base_name) { emit_design(verilog, base_name); }

}  // namespace xfc
