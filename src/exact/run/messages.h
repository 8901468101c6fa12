#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace xfc {

enum class message_stream { standard_output, standard_error };

/// What becomes of the run after a message.
enum class message_effect { run_goes_on, run_ends_with_status_1 };

/// Every message that reports a mistake or a failure, in the order of the phases that print them.
enum class message_id : std::size_t {
    cannot_open_source,
    mm_out_of_range,
    ns_out_of_range,
    xc_out_of_range,
    mv_out_of_range,
    postnormalization_redundant,
    error_count_line,
    scanner_buffer_overflowed,
    scanner_read_failed,
    scanner_saw_end_twice,
    scanner_internal_error,
    parse_error_line,
    qualifier_already_exists,
    initializer_without_constant,
    initializer_too_long,
    initializer_not_reducible,
    no_variable_declared,
    assignment_missing,
    assignment_not_plain,
    invalid_type,
    constant_argument,
    constant_operand,
    reduction_endless,
    expression_too_long,
    expression_without_value,
    unknown_type,
    cyclic_value,
    unsupported_io_type,
    constant_drives_variable,
    operand_without_driver,
    output_overwrites_source,
    cannot_open_output,
    cannot_write_output,
    cannot_write_standard_output,
    out_of_memory,
    count_of_messages
};

struct message {
    message_id id;
    std::string_view text;  ///< with %s, %d and %ld placeholders; the line end is part of it where there is one
    message_stream stream;
    message_effect effect;
};

/// The catalogue. Kept: many texts have no line end, and the texts of the range checks, the expression translator and
/// the type checks go to the standard output.
inline constexpr auto message_catalogue = [] {
    using enum message_id;
    constexpr auto out = message_stream::standard_output;
    constexpr auto err = message_stream::standard_error;
    constexpr auto goes_on = message_effect::run_goes_on;
    constexpr auto ends = message_effect::run_ends_with_status_1;
    return std::to_array<message>({
        {cannot_open_source, "Can't open source program file %s\n", err, ends},
        {mm_out_of_range, "mm switch must be 32 or 36", out, ends},
        {ns_out_of_range, "ns switch must be 1, 2, or 3", out, ends},
        {xc_out_of_range, "xc switch must be between 2 and 16", out, ends},
        {mv_out_of_range, "mv must be 0, 1, 2, or 3", out, ends},
        {postnormalization_redundant,
         "Info: Multiplier Post-normalizations are redundant with input normalizations, switch ignored\n", out,
         goes_on},
        {error_count_line, "\n\n %d error%s found by the parser  \n\n\n", err, goes_on},
        {scanner_buffer_overflowed, "L0029: PCLEX input buffer overflowed\n", err, ends},
        {scanner_read_failed, "L0048: fread() in PCLEX scanner failed\n", err, ends},
        {scanner_saw_end_twice, "L0030: PCLEX scanner saw EOF twice - shouldn't happen\n", err, ends},
        {scanner_internal_error, "L0028: fatal PCLEX scanner internal error\n", err, ends},
        {parse_error_line, "line %ld error %s at %s\n", out, goes_on},
        {qualifier_already_exists, "type qualifier already exists", out, goes_on},
        {initializer_without_constant, "Initializer of %s has no integer constant\n", err, ends},
        {initializer_too_long, "Initializer of %s is too long\n", err, ends},
        {initializer_not_reducible, "Initializer of %s cannot be evaluated\n", err, ends},
        {no_variable_declared, "No variable is declared\n", err, ends},
        {assignment_missing, "DFG3: Error in Expression", out, ends},
        {assignment_not_plain, "DFG4: Error in Expression", out, ends},
        {invalid_type, "DFG4: Invalid Type", out, ends},
        {constant_argument, "Cannot process constant arguments for this function", out, ends},
        {constant_operand, "Constants not supported for this operand", out, ends},
        {reduction_endless, "DFG5: endless loop in stack", out, ends},
        {expression_too_long, "Expression assigned to %s has more than 1000 tokens\n", err, ends},
        {expression_without_value, "Expression assigned to %s has no value\n", err, ends},
        {unknown_type, "Unknown Type %s", out, ends},
        {cyclic_value, "%s depends on its own value\n", err, ends},
        {unsupported_io_type, "Unsupported I/O Type", out, ends},
        {constant_drives_variable, "%s is only a constant, which cannot drive a variable\n", err, ends},
        {operand_without_driver, "%s has an operand without a driver\n", err, ends},
        {output_overwrites_source, "Output file %s would overwrite the source program\n", err, ends},
        {cannot_open_output, "Can't open output file %s\n", err, ends},
        {cannot_write_output, "Can't write output file %s\n", err, ends},
        {cannot_write_standard_output, "Can't write to the standard output\n", err, ends},
        {out_of_memory, "Out of memory\n", err, ends},
    });
}();

constexpr bool messages_stand_at_their_id() {
    std::size_t index = 0;
    for (const message& row : message_catalogue) {
        if (static_cast<std::size_t>(row.id) != index++) {
            return false;
        }
    }
    return index == static_cast<std::size_t>(message_id::count_of_messages);
}
static_assert(messages_stand_at_their_id());

constexpr const message& catalogue_entry(message_id id) { return message_catalogue[static_cast<std::size_t>(id)]; }

}  // namespace xfc
