#pragma once

#include <cstdint>
#include <string_view>

namespace xfc::flow {

/// How grave a message is. Only errors stop a compilation.
enum class severity : std::uint8_t { note, warning, error };

[[nodiscard]] std::string_view severity_name(severity level);

/// Everything that xfcflow itself says about a program. The order is that of the rows in catalogue.cpp.
enum class message_id : std::uint8_t {
    // the top
    no_function,
    unknown_top,
    several_tops,
    parameter_size,
    parameter_type,
    result_type,
    no_output,
    // types
    long_long,
    long_double,
    bit_field,
    volatile_object,
    other_type,
    variable_size,
    read_as_other_type,
    // statements
    goto_statement,
    inline_assembly,
    case_inside,
    loop_without_end,
    loop_too_long,
    recursion_without_end,
    // expressions
    unknown_index,
    outside_object,
    outside_if_reached,
    unknown_pointer,
    null_pointer,
    ended_object,
    constant_object,
    pointer_arithmetic,
    division_by_unknown,
    division_by_zero,
    shift_too_far,
    other_expression,
    // calls
    no_body,
    host_function,
    no_component,
    power_exponent,
    unknown_callee,
    assertion_fails,
    assertion_fails_if_reached,
    too_few_arguments,
    copy_of_other_type,
    copy_size,
    set_to_bytes,
    // values of variables
    not_assigned,
    not_always_assigned,
    not_always_returned,
    too_many_conditions,
    kept_between_calls,
    // limits
    cannot_read,
    nesting_too_deep,
    token_too_long,
    too_many_tokens,
    too_many_values,
    too_large,
    large_range,
    too_many_steps,
    out_of_memory,
    parser_failed,
    // hardware
    component_missing,
    library_missing,
    cannot_write,
    no_simulator,
    no_placer,
    simulator_language,
    no_waveforms,
    simulation_failed,
    no_such_point,
    points_missing,
    // tables of vectors and what simulations find
    csv_empty,
    csv_port,
    csv_twice,
    csv_missing,
    csv_fields,
    csv_number,
    csv_range,
    same_file,
    result_outside,
    c_differs,
    // warnings
    unused_variable,
    input_without_effect,
    elements_without_effect,
    host_refuses,
    // notes
    constant_format,
    functions_in_order,
    input_and_output,
    port_renamed,
    design_renamed,
    language_left_out,
    // additions to another message
    set_only_here,
    called_from,
    declared_here,
    written_here,
    candidate_top,
};

inline constexpr int message_count = static_cast<int>(message_id::candidate_top) + 1;

/// One message: %0, %1 ... stand for what differs from case to case.
struct message_row {
    message_id id;
    std::string_view name;  ///< in brackets behind the text, in JSON, and in the documentation
    severity level;
    std::string_view text;
    std::string_view hint;  ///< what to do about it; empty where there is nothing to do
};

[[nodiscard]] const message_row& row_of(message_id id);

}  // namespace xfc::flow
