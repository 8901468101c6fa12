#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "components/number_format.h"
#include "exact/support/temporary_folder.h"

// What the tests of the emitters share: graphs of single instances, and the output file or a section of it.

namespace xfc::test {

enum class language { vhdl, verilog };

/// What an emitter left behind.
struct emitted {
    int status = 0;
    std::string log;
    std::string error;
    std::string file_name;  ///< empty when there is no file
    std::string text;
};

/// A new folder that is the current one while the object lives.
using working_folder = temporary_folder;

/// Writes the graph in a fresh folder; `base_name` as the driver hands it over, a 32-character buffer or its start.
emitted emit(language in, const std::string& base_name = "unit");

/// The same without a folder of its own; only the two streams and the status are filled.
emitted emit_here(language in, const std::string& base_name = "unit");

// Sections of the output of a graph made with `start_operands`. Each begins with a line end of its own, so that the
// expected text can start on a line of its own.

std::string instances(language in);
std::string constants(language in);
std::string signals(language in);

/// A graph with the inputs a (slot 0) and b (slot 1) and the output y (slot 2). Instances follow from slot 3 on.
void start_operands();

/// A node of that component whose inputs are driven by a, b, a, ... in this order and which y reads.
std::int32_t add_instance(std::string_view component, std::string_view name, std::int32_t inputs, std::int32_t width,
                          std::int32_t output_select = 0);

/// Puts a literal on the input in place of its driver.
void make_constant(std::int32_t slot, std::int32_t port, double value = 0);

/// For each value an instance (slots 3, 4, ...) with that value as a literal on the input `port` of two.
void add_constants(std::string_view component, std::int32_t width, number_format format, std::int32_t port,
                   std::span<const double> values);

void set_widths(std::int32_t slot, std::int32_t width);

/// Gives every option a value that no other option and no default has; the mantissa gets 36 bits.
void use_distinct_options();

/// The mantissa of internal single-precision numbers, in bits.
void set_mantissa(std::int32_t bits);

/// The normalizers at their lowest performance level.
void use_slowest_normalizer();

}  // namespace xfc::test
