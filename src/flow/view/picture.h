#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "flow/emit/names.h"
#include "flow/passes/schedule.h"

namespace xfc::flow {

/// What a bar of the picture is coloured after. The order is that of `bar_kind_rows`.
enum class bar_kind : std::uint8_t {
    input,
    sum,
    product,
    quotient,
    function,
    choice,
    integer,
    conversion,
    normalization
};

struct bar_kind_row {
    bar_kind kind;
    std::string_view name;    ///< in the page's style and script
    std::string_view legend;  ///< what people read
};

inline constexpr std::array<bar_kind_row, 9> bar_kind_rows{{
    {bar_kind::input, "input", "input"},
    {bar_kind::sum, "sum", "add, subtract"},
    {bar_kind::product, "product", "multiply"},
    {bar_kind::quotient, "quotient", "divide"},
    {bar_kind::function, "function", "function"},
    {bar_kind::choice, "choice", "compare, choose"},
    {bar_kind::integer, "integer", "integer"},
    {bar_kind::conversion, "conversion", "convert"},
    {bar_kind::normalization, "normalization", "normalise"},
}};

constexpr const bar_kind_row& row_of(bar_kind kind) { return bar_kind_rows[static_cast<std::size_t>(kind)]; }

/// One bus of the design as a bar: from the cycle in which its operands must be there to that in which it is ready, and
/// a thin line behind it up to its last reader. Constants have no bar.
struct bar {
    node_id node = no_node;
    bar_kind kind = bar_kind::input;
    std::int32_t start = 0;  ///< cycles; an input's is -1, so that it stands in front of cycle 0
    std::int32_t end = 0;
    std::int32_t last = 0;                     ///< the cycle in which the last reader takes it
    std::int32_t lane = 0;                     ///< row of the picture, from 0; bars and lines of one lane never overlap
    std::int32_t width = 0;                    ///< bits of the bus
    std::int32_t slack = 0;                    ///< cycles by which it could be later with the same latency; 0: critical
    bool on_path = false;                      ///< on the critical path that the breakdown counts
    std::vector<std::uint32_t> operands = {};  ///< bars
    std::vector<std::string> outputs = {};     ///< ports that it drives

    [[nodiscard]] std::int64_t register_bits() const { return static_cast<std::int64_t>(last - end) * width; }
};

/// A schedule laid out on a grid of cycles and lanes.
struct picture {
    std::vector<bar> bars = {};            ///< by rising start
    std::vector<std::uint32_t> path = {};  ///< one critical path, from an input to an output
    std::int32_t lanes = 0;
    std::int32_t latency = 0;        ///< cycles
    std::int32_t arithmetic = 0;     ///< cycles of the path in operations,
    std::int32_t conversion = 0;     ///< in conversions,
    std::int32_t normalization = 0;  ///< and in normalisers
};

/// Lays out a schedule: an operation stands in the lane of an operand that ends there, else in the nearest free one.
[[nodiscard]] picture picture_of(const graph& values, const design& made, const schedule& times,
                                 const design_names& names);

}  // namespace xfc::flow
