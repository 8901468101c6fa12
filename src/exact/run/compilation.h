#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/arena.h"
#include "exact/run/compile_options.h"
#include "exact/run/graph_records.h"
#include "exact/run/scanner_records.h"
#include "exact/run/symbol_records.h"
#include "exact/run/tree_records.h"

namespace xfc {

/// The output while it is being written.
struct open_output {
    const char* name = nullptr;  ///< null while there is none
    int descriptor = -1;         ///< of the open file
};

/// Everything that one run of the compiler knows, in the order in which the phases fill it. The phases are functions
/// without arguments over the one record; `current = {}` forgets an earlier run.
struct compilation {
    arena texts;  ///< texts of tokens, which tree, labels, symbols and graph refer to

    compile_option_record options;

    // The source program and how far it was read.
    std::string source_path;        ///< as the command line names it
    source_stream source;           ///< open from the command line's check to the end of the parse
    std::int32_t line_number = -1;  ///< Kept: -1 until the parse starts at 1.
    std::int32_t error_count = 0;   ///< syntax errors
    scanner_state scanner;
    read_ahead ahead;

    parse_tree tree;
    /// The labels and token texts of the parse tree in pre-order, each at most 31 characters; the last one is empty.
    /// For shift, additive and multiplicative operators the right operand stands before the left one.
    std::vector<std::string_view> labels;
    std::size_t label_cursor = 0;  ///< the label that the declaration pass or the translator has reached

    symbol_table symbols;
    dfg_graph graph;
    std::int32_t max_latency = 0;  ///< depth of the pipeline in cycles

    open_output unfinished_output;
};

/// The run of this process.
extern compilation current;

/// Whether the output's name stands for the very file that the run opened, and that is a regular one: what the user put
/// there, a symbolic link to a device say, is not ours to remove. Allocates nothing.
[[nodiscard]] bool is_unfinished_output_removable();

/// Removes the output that could not be written whole, if it may be removed. Allocates nothing.
void remove_unfinished_output();

}  // namespace xfc
