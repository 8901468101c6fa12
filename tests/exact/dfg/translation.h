#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "exact/dfg/dfg.h"
#include "exact/support/compile.h"

// What the tests of the expression translation share.

namespace xfc::test {

constexpr std::string_view translation_banner = "***MAKE EXPRESSIONS***\n";

/// Translates the statements behind float a to d, x, y and z (slots 0 to 6), double e, f (7, 8), long m, n (9, 10)
/// and the typeless i, j (11, 12).
inline run_result translate(const std::string& statements) {
    return translate_text("float a, b, c, d, x, y, z;\ndouble e, f;\nlong m, n;\nint i, j;\nmain()\n{\n" + statements +
                          "\n}\n");
}

constexpr std::int32_t slot_a = 0;
constexpr std::int32_t slot_b = 1;
constexpr std::int32_t slot_c = 2;
constexpr std::int32_t slot_x = 4;
constexpr std::int32_t slot_y = 5;
constexpr std::int32_t slot_z = 6;
constexpr std::int32_t slot_e = 7;
constexpr std::int32_t slot_m = 9;
constexpr std::int32_t slot_i = 11;
/// The first node that a statement makes.
constexpr std::int32_t first_made = 13;

inline std::string_view name_at(std::int32_t slot) { return node_at(slot).name; }
inline std::string_view format_at(std::int32_t slot) { return format_row(attributes_at(slot).format).text; }

inline void expect_constant(std::int32_t slot, std::int32_t port, std::string_view type, double value) {
    const dfg_input& input = node_at(slot).inputs[port];
    EXPECT_EQ(input.is_constant, 1) << slot << "." << port;
    EXPECT_EQ(literal_kind_text(input.constant_type), type);
    EXPECT_EQ(input.constant_value, value);
    EXPECT_EQ(input.source.node, no_slot);
}

/// The statements translate, and print nothing of their own.
inline void expect_translated(const std::string& statements) {
    const run_result result = translate(statements);
    EXPECT_EQ(result.status, 0) << result.standard_output << result.standard_error;
    EXPECT_EQ(result.standard_output, translation_banner);
    EXPECT_EQ(result.standard_error, "");
}

/// The run ends with that message on the standard output, without a line end.
inline void expect_message(const std::string& statements, std::string_view message) {
    const run_result result = translate(statements);
    EXPECT_EQ(result.status, 1) << statements;
    EXPECT_EQ(result.standard_output, std::string(translation_banner) + std::string(message)) << statements;
    EXPECT_EQ(result.standard_error, "");
}

/// The run ends with that line on the standard error.
inline void expect_error_line(const std::string& statements, std::string_view line) {
    const run_result result = translate(statements);
    EXPECT_EQ(result.status, 1) << statements;
    EXPECT_EQ(result.standard_output, translation_banner) << statements;
    EXPECT_EQ(result.standard_error, line) << statements;
}

/// The text that many times, with a separator between.
inline std::string repeated(std::string_view text, std::size_t count, std::string_view separator = {}) {
    std::string all;
    for (std::size_t done = 0; done < count; ++done) {
        all.append(done == 0 ? std::string_view{} : separator).append(text);
    }
    return all;
}

}  // namespace xfc::test
