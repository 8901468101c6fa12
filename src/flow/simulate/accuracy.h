#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/graph.h"
#include "flow/simulate/stimulus.h"

namespace xfc::flow {

/// What is known about one output over all vectors.
struct output_accuracy {
    std::string name = {};
    std::string_view format = {};
    std::size_t vectors = 0;
    std::optional<std::size_t> bits_equal = {};  ///< vectors in which every simulator had the model's bits
    std::size_t measured = 0;                    ///< vectors that are not counted apart
    double largest_ulp = 0.0;                    ///< of those measured
    double median_ulp = 0.0;                     ///< of those measured
    std::optional<double> largest_ulp_of_c = {};
    std::size_t apart_range = 0;      ///< vectors in which something on the way left its format's range
    std::size_t apart_undecided = 0;  ///< a decision on the way could fall out either way
    std::size_t apart_cancelled = 0;  ///< cancellation takes half of the digits or more
    std::size_t outside = 0;          ///< vectors farther from the exact result than the bounds allow
    std::size_t c_differs = 0;        ///< vectors in which the host's C is not the program as it was understood
    std::size_t worst_vector = 0;     ///< counted from 1; 0: all are exact
    std::string worst = {};           ///< its inputs as C writes them
    std::string outside_at = {};      ///< the inputs of the first one outside
    std::string c_differs_at = {};    ///< the inputs of the first one in which C differs
};

/// What results are compared with.
struct accuracy_question {
    const graph& source;  ///< as C has it
    const stimulus& applied;
    const std::vector<std::vector<std::uint64_t>>& results;  ///< by vector
    /// The compiled program's outputs by vector; null without a compiler, no outputs where it was stopped.
    const std::vector<std::vector<std::uint64_t>>* of_host = nullptr;
    bool same_constants = true;  ///< no constant has another format than C gives it
    std::int32_t mantissa = 32;
    std::function<void(std::size_t)> progress = {};  ///< told the vectors that are done
};

/// Compares results by vector with the exact ones and with C's.
[[nodiscard]] std::vector<output_accuracy> accuracy_of(const accuracy_question& asked);

/// An error for every output that is outside its bounds somewhere, or that C gives another value.
void report_faults(const std::vector<output_accuracy>& rows, diagnostics& messages);

/// A number as C writes it: hexadecimal for floating ones, nan and inf as C prints them.
[[nodiscard]] std::string c_text(const port& where, std::uint64_t bits);

/// The table that people read.
[[nodiscard]] std::string accuracy_table(const std::vector<output_accuracy>& rows);

}  // namespace xfc::flow
