#include "exact/emit/emitted.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "exact/emit/emitter.h"
#include "exact/run/compilation.h"
#include "exact/support/compile.h"

namespace xfc::test {

namespace {

namespace fs = std::filesystem;

/// The text between two marks; the first one is not part of it, the second one begins what follows.
std::string between(const std::string& text, std::string_view first, std::string_view second) {
    const std::size_t start = text.find(first);
    const std::size_t end = start == std::string::npos ? start : text.find(second, start + first.size());
    if (end == std::string::npos) {
        ADD_FAILURE() << "no text between " << first << " and " << second << " in\n" << text;
        return {};
    }
    return text.substr(start + first.size(), end - start - first.size());
}

}  // namespace

emitted emit_here(language in, const std::string& base_name) {
    const run_result run = catch_output([&] { (in == language::vhdl ? emit_vhdl : emit_verilog)(base_name); });
    return {.status = run.status, .log = run.standard_output, .error = run.standard_error, .file_name = {}, .text = {}};
}

emitted emit(language in, const std::string& base_name) {
    const working_folder folder;
    emitted result = emit_here(in, base_name);
    for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
        EXPECT_EQ(result.file_name, "") << "a second file was written";
        std::ifstream stream(entry.path(), std::ios::binary);
        result.file_name = entry.path().filename().string();
        result.text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    return result;
}

std::string instances(language in) {
    const bool vhdl = in == language::vhdl;
    // The last connection feeds the only output, y.
    const std::string from_output = between(
        emit(in).text, vhdl ? "\n  y <= " : "\n  assign y = ", vhdl ? "  startout <= " : "  assign startout = ");
    return '\n' + from_output.substr(std::string_view("synth0000;\n\n").size());
}

std::string constants(language in) {
    const bool vhdl = in == language::vhdl;
    return '\n' + between(emit(in).text, vhdl ? "  END PROCESS;\n\n" : "\n    end\n  end\n\n",
                          vhdl ? "  synth0000 <= " : "  assign synth0000 = ");
}

std::string signals(language in) {
    const bool vhdl = in == language::vhdl;
    return '\n' + between(emit(in).text, vhdl ? " OF unit IS\n\n" : "output [32 : 1] y;\n",
                          vhdl ? "\n  signal startff" : "\nreg [");
}

void set_widths(std::int32_t slot, std::int32_t width) {
    dfg_node& node = node_at(slot);
    for (std::int32_t port = 0; port < node.input_count; ++port) {
        node.inputs[port].width = width;
    }
    node.outputs[0].width = width;
}

void start_operands() {
    start_graph();
    current.source_path.clear();
    current.max_latency = 10;
    for (const char* name : {"a", "b", "y"}) {
        set_widths(add_node(name, 1, number_format::single_float), 32);
    }
}

std::int32_t add_instance(std::string_view component, std::string_view name, std::int32_t inputs, std::int32_t width,
                          std::int32_t output_select) {
    const std::int32_t slot = add_node(name, inputs, number_format::none, component);
    set_widths(slot, width);
    node_at(slot).bus_modes.output_select = output_select;
    for (std::int32_t port = 0; port < inputs; ++port) {
        dfg_connect(port % 2, slot, port);
    }
    dfg_connect(slot, 2, 0);
    return slot;
}

void make_constant(std::int32_t slot, std::int32_t port, double value) {
    dfg_input& input = node_at(slot).inputs[port];
    input.is_constant = 1;
    input.constant_type = literal_kind::floating;
    input.constant_value = value;
    input.source = {};
}

void add_constants(std::string_view component, std::int32_t width, number_format format, std::int32_t port,
                   std::span<const double> values) {
    for (const double value : values) {
        const std::int32_t slot = add_instance(component, "op", 2, width);
        attributes_at(slot).format = format;
        make_constant(slot, port, value);
    }
}

void use_distinct_options() {
    current.options.mantissa = 36;
    current.options.doublespeed = 41;
    current.options.inputnormalize = 42;
    current.options.outputscale = 43;
    current.options.roundconvert = 44;
    current.options.roundnormalize = 45;
    current.options.outputpipe = 46;
    current.options.normspeed = 47;
    current.options.shiftspeed = 49;
    current.options.doubleaccuracy = 50;
    current.options.device = 51;
    current.options.optimization = -52;
    current.options.synthesize = 53;
    current.options.fittingregisters = 54;
    current.options.clustersize = 55;
}

void set_mantissa(std::int32_t bits) { current.options.mantissa = bits; }

void use_slowest_normalizer() { current.options.normspeed = 1; }

}  // namespace xfc::test
