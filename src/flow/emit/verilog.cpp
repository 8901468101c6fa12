#include "flow/emit/datapath.h"
#include "flow/emit/template.h"

namespace xfc::flow {

namespace {

constexpr std::string_view before_ports = R"(module @name@
  (input sysclk, reset, enable,
   input startin,   // the inputs are valid
)";
constexpr std::string_view input_port = "   input [@width@:1] @port@,   // @comment@\n";
constexpr std::string_view output_port = "   output [@width@:1] @port@,   // @comment@\n";
constexpr std::string_view behind_ports = R"(   output startout);   // the outputs are valid

  reg [@latency@:1] @chain@;
)";
constexpr std::string_view constant_line = "  wire [@width@:1] @signal@ = @width@'b@bits@;   // @comment@\n";
constexpr std::string_view signal_line = "  wire [@width@:1] @signal@;   // @comment@\n";
constexpr std::string_view chain_text = R"(
  // Goes with the data: startout is the startin of @latency@ cycles ago.
  always @at@(posedge sysclk or posedge reset)
    if (reset) @chain@ <= {@latency@{1'b0}};
    else if (enable) @chain@ <= @shift@;
  assign startout = @chain@[@latency@];

)";

std::string slice_text(const connection& one) {
    if (one.high == 0) {
        return one.signal;
    }
    return one.signal + "[" + std::to_string(one.high) + (one.single_bit ? "" : ":" + std::to_string(one.low)) + "]";
}

std::string instance(const instance_text& what) {
    std::string text;
    if (!what.comment.empty()) {
        text += "  // " + what.comment + "\n";
    }
    if (!what.open.empty()) {
        text += "  wire [" + std::to_string(what.open.size()) + ":1] " + what.unread + ";\n";
    }
    std::string generics;
    for (const auto& [name, value] : what.generics) {
        generics += (generics.empty() ? "." : ", .") + std::string(name) + "(" + std::to_string(value) + ")";
    }
    text += "  " + std::string(what.component) + (generics.empty() ? "" : "\n    #(" + generics + ")\n   ") + " " +
            what.label + "\n";
    std::string ports = what.clocked ? ".sysclk(sysclk), .reset(reset), .enable(enable)" : "";
    const auto add = [&](const std::string& port, const std::string& actual) {
        ports += (ports.empty() ? "." : ",\n     .") + port + "(" + actual + ")";
    };
    for (const std::string& port : what.fixed_low) {
        add(port, "1'b0");
    }
    for (const std::string& port : what.fixed_high) {
        add(port, "1'b1");
    }
    for (const connection& one : what.connections) {
        add(one.port, slice_text(one));
    }
    for (std::size_t place = 0; place < what.open.size(); ++place) {
        add(what.open[place], what.unread + "[" + std::to_string(place + 1) + "]");
    }
    return text + "    (" + ports + ");\n\n";
}

}  // namespace

std::string verilog_text(const datapath& what) {
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
    const auto bus_words = [](const bus_text& bus) {
        return substitutions{{"port", bus.name}, {"width", std::to_string(bus.width)}, {"comment", bus.comment}};
    };
    for (const bus_text& bus : what.inputs) {
        text += filled_template(input_port, bus_words(bus));
    }
    for (const output_text& output : what.outputs) {
        text += filled_template(output_port, bus_words(output.bus));
    }
    text += filled_template(behind_ports, words);
    for (const constant_bus& one : what.constants) {
        text += filled_template(constant_line, {{"signal", one.bus.name},
                                                {"width", std::to_string(one.bus.width)},
                                                {"bits", one.bits},
                                                {"comment", one.bus.comment}});
    }
    for (const bus_text& bus : what.signals) {
        text += filled_template(signal_line,
                                {{"signal", bus.name}, {"width", std::to_string(bus.width)}, {"comment", bus.comment}});
    }
    text += filled_template(chain_text, words);
    for (const instance_text& one : what.instances) {
        text += instance(one);
    }
    for (const output_text& output : what.outputs) {
        text += "  assign " + output.bus.name + " = " + output.driver + ";\n";
    }
    return text + "endmodule\n";
}

}  // namespace xfc::flow
