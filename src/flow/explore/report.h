#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "flow/explore/results.h"

namespace xfc::flow {

/// What was explored, for its reports.
struct exploration_head {
    std::string design = {};
    std::string source = {};
    const family_row* family = nullptr;
    std::size_t vectors = 0;
    int seed = 1;
    std::string top = {};                     ///< options that every point has, as the command line says them
    std::span<const std::string> costs = {};  ///< what the table of costs says about itself
};

/// The table that people read, a line a point.
[[nodiscard]] std::string exploration_text(const exploration_head& head, std::span<const point_result> points);

/// A head with the columns' names, then a line a point.
[[nodiscard]] std::string exploration_csv(std::span<const point_result> points);

[[nodiscard]] std::string exploration_json(const exploration_head& head, std::span<const point_result> points);

/// A page that stands by itself: a scatter plot of the points with the front, and the table.
[[nodiscard]] std::string exploration_page(const exploration_head& head, std::span<const point_result> points);

}  // namespace xfc::flow
