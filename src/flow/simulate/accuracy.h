#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "flow/graph/graph.h"
#include "flow/simulate/stimulus.h"

namespace xfc::flow {

/// What is known about one output over all vectors.
struct output_accuracy {
    std::string name = {};
    std::string_view format = {};
    std::size_t vectors = 0;
    double largest_ulp = 0.0;
    double median_ulp = 0.0;
    double largest_ulp_of_c = 0.0;
    std::size_t other_class =
        0;  ///< vectors in which the design is infinite or no number where the exact result is not
    std::size_t other_class_of_c = 0;  ///< the same for C
    std::string worst = {};            ///< inputs of the largest error, as C writes them
};

/// Compares results by vector with the exact ones and with C's. Empty when some operation cannot be followed exactly.
[[nodiscard]] std::vector<output_accuracy> accuracy_of(const graph& source, const stimulus& applied,
                                                       const std::vector<std::vector<std::uint64_t>>& results);

/// A number as C writes it: hexadecimal for floating ones.
[[nodiscard]] std::string c_text(number_format format, std::uint64_t bits);

/// The table that people read.
[[nodiscard]] std::string accuracy_table(const std::vector<output_accuracy>& rows);

}  // namespace xfc::flow
