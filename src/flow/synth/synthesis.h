#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flow/emit/datapath.h"
#include "flow/synth/family.h"

namespace xfc::flow {

/// How many of each a design takes.
struct resource_counts {
    std::int64_t look_up_tables = 0;
    std::int64_t flip_flops = 0;
    std::int64_t multipliers = 0;
};

/// A stretch of the path that limits the clock: the component that it runs through and how long.
struct path_stretch {
    std::string instance = {};  ///< label in the design; empty for what belongs to none
    std::string_view component = {};
    std::string step = {};     ///< the component's named step
    std::string comment = {};  ///< the source that asked for it
    double nanoseconds = 0;
};

/// What place and route found.
struct placement {
    double megahertz = 0;
    std::vector<path_stretch> path = {};  ///< from register to register
};

/// What synthesis made of a design. `failure` tells what a tool said when it failed; the rest is empty then.
struct synthesis_result {
    std::string tools = {};  ///< with their versions
    resource_counts counts = {};
    std::optional<placement> placed = std::nullopt;  ///< without one: the family is not placed, or it does not fit
    bool fits = true;
    std::string failure = {};
};

/// Counts from Yosys' statistics in JSON; nothing when they are none.
[[nodiscard]] std::optional<resource_counts> counts_of(std::string_view statistics, const family_row& family);

/// The clock and its limiting path from nextpnr's report in JSON; nothing when it has none.
[[nodiscard]] std::optional<placement> placement_of(std::string_view report, const datapath& what);

/// A design with all ports but the control ports in two shift registers, for devices with fewer pins than bits: the
/// module xfcflow_scan, its instance of the design called `design`.
[[nodiscard]] std::string scan_text(const datapath& what);

/// Runs Yosys on the files in `folder`, the design's own and its list NAME_verilog.f among them, and nextpnr where the
/// family is placed and it is installed. `meanwhile` is called up to fifty times a second.
[[nodiscard]] synthesis_result synthesize(const datapath& what, const family_row& family, int seed,
                                          const std::filesystem::path& folder,
                                          const std::function<void()>& meanwhile = {});

}  // namespace xfc::flow
