#include "flow/emit/datapath.h"
#include "flow/emit/template.h"

namespace xfc::flow {

namespace {

constexpr std::string_view before_ports = R"(module @name@
  (input sysclk, reset, enable,
   input startin,   // the inputs are valid
)";
constexpr std::string_view behind_ports = R"(   output startout);   // the outputs are valid

  reg [@latency@:1] @chain@;
)";
constexpr std::string_view chain_text = R"(
  // Goes with the data: startout is the startin of @latency@ cycles ago.
  always @at@(posedge sysclk or posedge reset)
    if (reset) @chain@ <= {@latency@{1'b0}};
    else if (enable) @chain@ <= @shift@;
  assign startout = @chain@[@latency@];

)";

/// What stands between the ports of an instance.
constexpr std::string_view between_ports = ",\n     .";

void append_group(std::string& text, std::string_view& between, const connection& one) {
    for (const port_bits& port : one.ports->ports) {
        append_all(text, between, port.port, "(", one.signal);
        between = between_ports;
        if (port.single_bit) {
            append_all(text, "[", port.high, "]");
        } else if (port.high != 0) {
            append_all(text, "[", port.high, ":", port.low, "]");
        }
        text += ')';
    }
}

std::size_t count_open(const instance_text& what) {
    std::size_t count = 0;
    for (const connection& one : what.used_connections()) {
        count += one.ports->open.size();
    }
    return count;
}

void append_instance(std::string& text, const instance_text& what) {
    if (!what.comment.empty()) {
        append_all(text, "  // ", what.comment, "\n");
    }
    if (const std::size_t open = count_open(what); open != 0) {
        append_all(text, "  wire [", open, ":1] ", what.unread, ";\n");
    }
    append_all(text, "  ", what.component);
    std::string_view between = "\n    #(.";
    for (const auto& [name, value] : what.kind->generics) {
        append_all(text, between, name, "(", value, ")");
        between = ", .";
    }
    append_all(text, what.kind->generics.empty() ? "" : ")\n   ", " ", what.label, "\n    (");
    between = ".";
    if (what.kind->clocked) {
        text += ".sysclk(sysclk), .reset(reset), .enable(enable)";
        between = between_ports;
    }
    for (const auto& [port, level] :
         {std::pair(what.kind->fixed_low, "(1'b0)"), std::pair(what.kind->fixed_high, "(1'b1)")}) {
        if (!port.empty()) {
            append_all(text, between, port, level);
            between = between_ports;
        }
    }
    for (const connection& one : what.used_connections()) {
        append_group(text, between, one);
    }
    std::size_t unread = 0;
    for (const connection& one : what.used_connections()) {
        for (const std::string& port : one.ports->open) {
            append_all(text, between, port, "(", what.unread, "[", ++unread, "])");
            between = between_ports;
        }
    }
    text += ");\n\n";
}

}  // namespace

void write_verilog(const datapath& what, const text_taker& take) {
    const std::string latency = std::to_string(what.latency);
    const substitutions words{{"name", what.name},
                              {"latency", latency},
                              {"chain", what.start_chain},
                              {"at", "@"},
                              {"shift", what.latency == 1 ? std::string("startin")
                                                          : "{" + what.start_chain + "[" +
                                                                std::to_string(what.latency - 1) + ":1], startin}"}};
    std::string text;
    for (const std::string& line : what.header) {
        text += line.empty() ? "//\n" : "// " + line + "\n";
    }
    text += filled_template(before_ports, words);
    const auto append_port = [&](const bus_text& bus, std::string_view direction) {
        append_all(text, "   ", direction, " [", bus.width, ":1] ", bus.name, ",   // ", bus.comment, "\n");
        take_full_block(text, take);
    };
    for (const bus_text& bus : what.inputs) {
        append_port(bus, "input");
    }
    for (const output_text& output : what.outputs) {
        append_port(output.bus, "output");
    }
    text += filled_template(behind_ports, words);
    for (const auto& [bus, bits] : what.constants) {
        append_all(text, "  wire [", bus.width, ":1] ", bus.name, " = ", bus.width, "'b", bits, ";   // ", bus.comment,
                   "\n");
    }
    what.for_each_signal([&](const bus_text& bus) {
        append_all(text, "  wire [", bus.width, ":1] ", bus.name, ";   // ", bus.comment, "\n");
        take_full_block(text, take);
    });
    text += filled_template(chain_text, words);
    what.for_each_instance([&](const instance_text& one) {
        append_instance(text, one);
        take_full_block(text, take);
    });
    for (const output_text& output : what.outputs) {
        append_all(text, "  assign ", output.bus.name, " = ", output.driver, ";\n");
    }
    take(text += "endmodule\n");
}

std::string verilog_text(const datapath& what) {
    std::string text;
    write_verilog(what, [&](std::string_view piece) { text += piece; });
    return text;
}

}  // namespace xfc::flow
