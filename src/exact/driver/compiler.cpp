#include "exact/driver/compiler.h"

#include <array>
#include <cstdio>

#include "exact/dfg/dfg.h"
#include "exact/dfg/expressions.h"
#include "exact/dfg/symbol_table.h"
#include "exact/driver/switches.h"
#include "exact/driver/usage.h"
#include "exact/emit/emitter.h"
#include "exact/frontend/label_list.h"
#include "exact/frontend/parse_tree.h"
#include "exact/frontend/parser.h"
#include "exact/frontend/scanner.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

constexpr std::size_t name_buffer_size = 32;

int explain_usage() {
    write_format(standard_output, "\nCompiler Version MVTK - October 12 2010\n\n");
    print_usage();
    return 1;
}

void open_source(const char* name) {
    current.source_path = name;
    current.source.reset(std::fopen(name, "r"));
    if (current.source == nullptr) {
        fail(message_id::cannot_open_source, current.source_path);
    }
}

void read_source() {
    current.line_number = 1;
    // A parse that gives up leaves the tree built so far; its errors are counted and decide the verdict at the end.
    static_cast<void>(parse());
    current.source.reset();
}

/// The phases in order. Each works on what the one before left in `current`.
void compile(const char* source) {
    // The whole source is parsed before anything else is printed.
    read_source();
    // Kept: compiling runs show this older date; the newer one stands above the usage text only.
    write_format(standard_output, "\nCompiler Version MVTK - May 6 2009\n\n");
    write_format(standard_output, "\n*****************\n***   PARSE   ***\n*****************\n\n");
    flatten_tree();          // later passes read labels in a row, not the tree
    release_parse_tree();    // its memory serves the graph
    process_declarations();  // the translator needs every name's type
    make_expressions();      // statements become the dataflow graph
    write_format(standard_output, "\n**************\n***   DFG  ***\n**************\n\n");
    optimize_datapath();  // formats, components, widths and delays
    const std::string base_name = derive_base_name(source);
    write_format(standard_output, "\n********************\n***   EMIT CODE  ***\n********************\n\n");
    (current.options.verilog == 1 ? emit_verilog : emit_vhdl)(base_name);
    write_format(standard_output,
                 "\n**************************\n* REPORT                 *\n**************************\n\n");
    write_format(standard_output, " Maximum Latency %ld    \n", current.max_latency);
}

/// The parser's verdict comes last on purpose: the output file is written even for a source with syntax errors.
int give_verdict() {
    if (current.error_count != 0) {
        report(message_id::error_count_line, current.error_count, current.error_count == 1 ? "" : "s");
        write_format(standard_output, "linenumber %d\n", current.line_number);
        return 1;
    }
    write_format(standard_output, "\n\n\nNo syntax error was found by the parser\n\n\n");
    return 0;
}

}  // namespace

std::string derive_base_name(std::string_view source_argument) {
    std::string name(source_argument.substr(0, name_buffer_size - 1));
    name.resize(name_buffer_size);
    if (const std::size_t dot = name.find('.'); dot != std::string::npos) {
        name[dot] = '\0';
    }
    return name;
}

namespace {

int run(std::span<const char* const> arguments) {
    if (arguments.empty()) {
        return explain_usage();
    }
    const char* source = arguments.front();
    open_source(source);
    // The source argument is read as a switch too.
    if (read_switches(arguments) == argument_result::value_missing) {
        return explain_usage();
    }
    compile(source);
    return give_verdict();
}

}  // namespace

int run_compiler(std::span<const char* const> arguments) {
    current = {};
    try {
        return run(arguments);
    } catch (const run_failure& failure) {
        return failure.status;
    }
}

}  // namespace xfc
