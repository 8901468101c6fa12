#include "flow/diagnostics/catalogue.h"

#include <iterator>

namespace xfc::flow {

namespace {

using id = message_id;
constexpr auto error = severity::error;
constexpr auto warning = severity::warning;
constexpr auto note = severity::note;

constexpr message_row rows[] = {
    {id::no_function, "no-function", error, "no function has a body, so there is nothing to build",
     "write a function: its parameters become inputs, its result and what it writes become outputs"},
    {id::unknown_top, "unknown-top", error, "--top names '%0', but no function of that name has a body",
     "name one of the functions of the file"},
    {id::several_tops, "several-tops", error, "several functions could be the top",
     "choose one with --top NAME, or make the others static"},
    {id::parameter_size, "parameter-size", error, "the number of elements of parameter '%0' is not known",
     "give the size in the declaration, as in float x[8]"},
    {id::parameter_type, "parameter-type", error, "parameter '%0' of type '%1' cannot be a port",
     "use numbers, arrays and structures of numbers, and pointers to these; --top chooses another function"},
    {id::result_type, "result-type", error, "a result of type '%0' cannot be a port",
     "return a number or a structure of numbers"},
    {id::no_output, "no-output", error, "nothing leaves the program: it has no output",
     "return a value, write through a pointer or array parameter, or leave a variable unread"},

    {id::long_long, "long-long", error, "'%0' has 64 bits; integers in hardware have 32",
     "use int or long (32 bits here), or double for larger whole numbers"},
    {id::long_double, "long-double", error, "'%0' has no format in hardware", "use double"},
    {id::bit_field, "bit-field", error, "'%0' is a bit-field", "use a member of its own and mask with &"},
    {id::volatile_object, "volatile", error, "'%0' is volatile: hardware reads nothing that changes by itself",
     "drop volatile"},
    {id::other_type, "type", error, "type '%0' has no format in hardware",
     "use float, double, integers of up to 32 bits, or bool"},
    {id::variable_size, "variable-size", error, "the size of '%0' is not known at compile time",
     "give the array a constant size"},
    {id::read_as_other_type, "read-as-other-type", error, "what is read here as '%0' was not written as that type",
     "read members and objects as they were written; convert values with casts"},

    {id::goto_statement, "goto", error, "goto has no counterpart in a pipeline",
     "use if, a loop, break, continue or return"},
    {id::inline_assembly, "assembly", error, "assembly has no counterpart in hardware", "write it in C"},
    {id::case_inside, "case-inside", error, "a case label inside another statement of the switch",
     "put case labels directly into the braces of the switch"},
    {id::loop_without_end, "loop-without-end", error,
     "the end of this loop is not known at compile time: it still ran after %0 rounds",
     "bound it by a counter, as in for (i = 0; i < 8 && more; i++); --unroll N changes the limit"},
    {id::loop_too_long, "loop-too-long", error, "this loop has more than %0 rounds, and each becomes hardware",
     "make it shorter, or raise the limit with --unroll N"},
    {id::recursion_without_end, "recursion", error, "'%0' calls itself %1 deep without a known end",
     "let the recursion end on a value that is known at compile time, or write a loop"},

    {id::unknown_index, "unknown-index", error, "this index is not known at compile time",
     "index with constants and loop counters, or choose among the elements with comparisons"},
    {id::outside_object, "outside", error, "this reaches outside '%0', which has %1",
     "stay inside; an array parameter needs its size, as in float x[8]"},
    {id::outside_if_reached, "outside-if-reached", error, "if this is reached, it is outside '%0', which has %1",
     "let the condition keep it inside too, as in i < n && i < 8, or bound what it is compared with"},
    {id::unknown_pointer, "unknown-pointer", error, "where this pointer points depends on unknown values",
     "choose among values, not among pointers: y = c ? a : b"},
    {id::null_pointer, "null-pointer", error, "this pointer points nowhere", "let it point to a variable first"},
    {id::ended_object, "ended", error, "'%0' is reached through a pointer behind the end of its block",
     "declare it outside the block"},
    {id::constant_object, "const", error, "'%0' is const, and written here through a pointer",
     "leave const out of its declaration"},
    {id::pointer_arithmetic, "pointer-arithmetic", error, "pointers to different objects have no order or distance",
     "compare indices"},
    {id::division_by_unknown, "division-by-unknown", error,
     "the divisor is not known at compile time and could be zero",
     "divide where it is known to differ from zero, as in n != 0 ? a / n : 0, or divide floating numbers"},
    {id::division_by_zero, "division-by-zero", error, "division of an integer by zero", "correct the divisor"},
    {id::shift_too_far, "shift", error, "a shift by %0 bits; integers have 32", "shift by 0 to 31 bits"},
    {id::other_expression, "expression", error, "%0 has no counterpart in hardware", "write it in plain C"},

    {id::no_body, "no-body", error, "'%0' has no body here, and no component computes it",
     "define the function in this file or in one that it includes"},
    {id::host_function, "host-function", error, "'%0' works on a host only: hardware has no counterpart",
     "leave it out under #ifndef __XFCFLOW__, or choose the function for hardware with --top"},
    {id::no_component, "no-component", error, "no component computes '%0'",
     "approximate it by a polynomial or a table; sqrt, exp, log, exp2, log2, log10 and pow with a constant whole "
     "exponent are there"},
    {id::power_exponent, "power", error, "pow needs a constant whole exponent from -64 to 64",
     "write exp(y * log(x)) for x > 0, or sqrt(x) for an exponent of 0.5"},
    {id::unknown_callee, "unknown-callee", error, "which function is called here depends on unknown values",
     "call the functions by name and choose among their results"},
    {id::assertion_fails, "assertion", error, "this assertion is known to fail", "correct it, or what it is about"},
    {id::assertion_fails_if_reached, "assertion-if-reached", warning,
     "this assertion fails whenever it is reached; nothing is built for it", "keep such operands away from the design"},
    {id::too_few_arguments, "few-arguments", error, "'%0' has %1 parameters, but this call passes %2",
     "call it through a type that has all of its parameters"},
    {id::copy_of_other_type, "copy-of-other-type", error, "memory of '%0' is copied here to '%1'",
     "copy between objects of one type; convert values with casts"},
    {id::copy_size, "copy-size", error, "the number of bytes is not a known multiple of the size of '%0'",
     "write it with sizeof, as in n * sizeof x[0]"},
    {id::set_to_bytes, "set-to-bytes", error, "memory can be set to zero only", "assign the elements in a loop"},

    {id::not_assigned, "not-assigned", error, "'%0' is read before anything is assigned to it", "assign to it first"},
    {id::not_always_assigned, "not-always-assigned", error,
     "'%0' is read here, but not every way to here assigns to it", "assign to it before the branch"},
    {id::not_always_returned, "not-always-returned", error, "not every way through the function gives '%0'",
     "return a value on every way, with all of its members set"},
    {id::too_many_conditions, "conditions", error,
     "'%0' is read here, but whether every way to here assigns to it depends on too many conditions to tell",
     "assign to it before the branches"},
    {id::kept_between_calls, "kept-between-calls", error,
     "'%0' keeps its value from one call to the next; a pipeline has no such memory",
     "make the old value a parameter and the new one an output"},

    {id::cannot_read, "cannot-read", error, "cannot read '%0': %1", "name a file that is there and may be read"},
    {id::nesting_too_deep, "nesting", error, "nested too deeply", "split the statement or use a loop"},
    {id::token_too_long, "token", error, "a token of more than %0 characters", "shorten it"},
    {id::too_many_tokens, "tokens", error, "more than %0 %1 in preprocessing",
     "look for a macro that multiplies itself, or split the program"},
    {id::too_many_values, "values", error, "more than %0 operations", "unroll less"},
    {id::too_large, "large", error, "'%0' has more than %1 bytes", "make it smaller"},
    {id::large_range, "range", error, "a range of elements whose end has more than %0 digits", "make it smaller"},
    {id::too_many_steps, "steps", error, "still running after %0 steps", "let loops end sooner"},
    {id::out_of_memory, "memory", error, "out of memory", "split the program"},
    {id::parser_failed, "parser", error, "the C parser failed on this program",
     "simplify the program until it passes; the program text would help to mend the parser"},

    {id::component_missing, "component-missing", error, "this needs the component '%0', which the library lacks",
     "docs/components.md lists what the library has"},
    {id::library_missing, "library-missing", error, "the component library is not complete in '%0'",
     "install xfcflow anew, its library beside it"},
    {id::cannot_write, "cannot-write", error, "cannot write '%0': %1", "make room there, or name another place"},
    {id::no_simulator, "no-simulator", error, "%0 is not installed", "install it with: apt-get install %1"},
    {id::no_placer, "no-placer", warning, "%0 is not installed, so no clock can be told",
     "install it with: apt-get install %0"},
    {id::simulator_language, "simulator-language", error, "%0 does not simulate the language of --lang %1",
     "ghdl simulates VHDL, iverilog and verilator simulate Verilog"},
    {id::no_waveforms, "no-waveforms", error, "--simulator none makes no waveforms for --wave",
     "name a simulator, or leave --wave out"},
    {id::simulation_failed, "simulation-failed", error, "%0 failed: %1",
     "run it with --simulator and another one, to see whose fault it is"},
    {id::no_such_point, "no-such-point", error, "there is no point %0: the program has %1",
     "write the lines anew with --jobs-file"},
    {id::points_missing, "points-missing", error, "%0 of %1 points have no result in '%2': %3",
     "run the lines on the standard output, then merge again"},

    {id::csv_empty, "csv-empty", error, "the table has no line of numbers",
     "write a header with the names of the input ports, then a line a cycle"},
    {id::csv_port, "csv-port", error, "no input port is called '%0'", "xfcflow check lists the ports"},
    {id::csv_twice, "csv-twice", error, "port '%0' has a second column", "give every input port one column"},
    {id::csv_missing, "csv-missing", error, "input port '%0' has no column", "give every input port one column"},
    {id::csv_fields, "csv-fields", error, "%0 fields under a header of %1", "write one number for each column"},
    {id::csv_number, "csv-number", error, "'%0' is no %1 number",
     "numbers are written as in C: 1.5, 0x1.8p+0, nan, inf; integers as 12, -3 or 0x1F, booleans as 0 or 1"},
    {id::csv_range, "csv-range", error, "'%0' does not fit into port '%1', which is %2 in C",
     "write a number from %3 to %4"},
    {id::same_file, "same-file", error, "'%0' would be written over what is read", "choose another name"},
    {id::result_outside, "result-outside", error,
     "output '%0' is farther from the exact result than its operations allow: %1",
     "this is a fault of xfcflow or of its library; the program and these operands would help to mend it"},
    {id::c_differs, "c-differs", error, "the host's compiler gives output '%0' another value: %1",
     "either the program leaves C's defined ground there, or it was misunderstood; please report the latter"},

    {id::unused_variable, "unused", warning, "'%0' is never used and becomes no port", "leave it out, or use it"},
    {id::input_without_effect, "no-effect", warning, "no output depends on '%0': it becomes no port",
     "leave it out, or let an output depend on it"},
    {id::elements_without_effect, "no-effect-of", warning, "no output depends on %0: %1",
     "leave out what is not needed, or let an output depend on it"},
    {id::host_refuses, "host-refuses", warning, "nothing is compared with the C program: %0",
     "the results are held against the exact ones all the same"},

    {id::constant_format, "constant-format", note,
     "this constant without suffix takes the other operand's format, single, where C computes in double%0",
     "write the suffix f to say so, or use --c-constants for C's meaning"},
    {id::functions_in_order, "order", note, "functions without parameters run in the order of the source: %0", ""},
    {id::input_and_output, "in-out", note, "'%0' is read before it is written: ports %1 and %2", ""},
    {id::port_renamed, "renamed", note, "port '%0' is called '%1' in hardware", ""},
    {id::design_renamed, "design-renamed", note, "design '%0' is called '%1' in hardware", ""},
    {id::language_left_out, "left-out", note, "%0 is not installed: the design in %1 is not simulated",
     "install it with: apt-get install %2"},

    {id::set_only_here, "only-here", note, "depends on this condition", ""},
    {id::called_from, "called", note, "in the call of '%0'", ""},
    {id::declared_here, "declared", note, "'%0' is declared here", ""},
    {id::written_here, "written", note, "and written here", ""},
    {id::candidate_top, "candidate", note, "'%0' is one", ""},
};

constexpr bool rows_stand_in_order() {
    for (int index = 0; index < message_count; ++index) {
        if (static_cast<int>(rows[index].id) != index) {
            return false;
        }
    }
    return true;
}

static_assert(std::size(rows) == message_count);
static_assert(rows_stand_in_order());

}  // namespace

std::string_view severity_name(severity level) {
    constexpr std::string_view names[] = {"note", "warning", "error"};
    return names[static_cast<unsigned>(level)];
}

const message_row& row_of(message_id id) { return rows[static_cast<unsigned>(id)]; }

}  // namespace xfc::flow
