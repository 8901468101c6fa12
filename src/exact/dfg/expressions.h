#pragma once

namespace xfc {

/// Creates the dataflow graph: a node per declared variable, then the nodes and edges of every assignment statement
/// in the label list. Prints the phase's own banner. A statement that cannot be translated ends the run.
void make_expressions();

/// Makes a node for every declared name, in declaration order, with the format of its last known type.
void create_variable_nodes();

/// Translates the statement on whose label the cursor stands; leaves the cursor on the statement's end.
void translate_statement();

}  // namespace xfc
