#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flow/explore/estimate.h"
#include "flow/explore/points.h"
#include "flow/simulate/stimulus.h"

namespace xfc::flow {

/// What is known about one point.
struct point_result {
    std::size_t number = 0;          ///< in the order of the points, from 1
    std::string options = {};        ///< as the command line says them
    std::int32_t latency = 0;        ///< cycles
    std::int64_t register_bits = 0;  ///< of the delay lines
    std::int32_t components = 0;
    design_estimate estimate = {};
    std::size_t measured = 0;  ///< results that were compared with exact ones
    double largest_ulp = 0;    ///< of the output that is worst
    double median_ulp = 0;     ///< of the output that is worst
    std::size_t outside = 0;   ///< results farther from the exact ones than the operations allow
    bool on_front = false;
    std::vector<std::string> same = {};  ///< options of points that came to the same in everything
};

/// What every point of an exploration is measured with.
struct measuring {
    const graph& program;
    const stimulus& applied;
    const family_row& family;
    const cost_table& costs;
};

/// Builds one point and measures it: latency, registers, estimate, errors of the model. The point must be one of
/// points_of.
[[nodiscard]] point_result measured_point(const measuring& with, const design_point& point, std::size_t number);

/// Whether a design is at least as good as another one in latency, tables and flip-flops together, blocks and largest
/// error, and better in one of them.
[[nodiscard]] bool dominates(const point_result& a, const point_result& b);

/// What came to the same once, in the order of latency, cost and error, those marked that nothing dominates.
[[nodiscard]] std::vector<point_result> finished(std::vector<point_result> results);

/// A result as a file has it, and back; nothing from a file that is none. `of` tells what was explored, so that results
/// of something else are not taken.
[[nodiscard]] std::string result_file(const point_result& result, std::string_view of);
[[nodiscard]] std::optional<point_result> result_of_file(std::string_view text, std::string_view of);

}  // namespace xfc::flow
