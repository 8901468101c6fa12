#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "flow/diagnostics/diagnostics.h"
#include "flow/driver/options.h"
#include "flow/graph/program.h"
#include "flow/passes/design.h"
#include "flow/passes/schedule.h"

namespace xfc::flow {

/// What a compilation has come to; each stage makes the next state of it.
struct compilation_state {
    const command_line& line;
    diagnostics& messages;
    source_map& places;                             ///< known even when there is no program
    std::optional<program> current = std::nullopt;  ///< by the design's name
    std::optional<graph> followed = std::nullopt;   ///< the values as C has them, kept when they are written otherwise
    std::optional<design> made = std::nullopt;      ///< behind the stage "components"
    std::optional<schedule> times = std::nullopt;   ///< behind the stage "schedule"
};

/// One stage: its name for --dump, what it is for, and its work. False ends the compilation; the messages say why.
struct stage_row {
    std::string_view name;
    std::string_view text;
    bool (*run)(compilation_state&);
    bool makes_hardware;  ///< belongs to the way to hardware, not only to what a program is
};

[[nodiscard]] std::span<const stage_row> stage_rows();

/// The stage of this name; null when there is none.
[[nodiscard]] const stage_row* stage_named(std::string_view name);

/// The state as text: values, components or cycles, whatever the stage has made.
[[nodiscard]] std::string dump_behind(const stage_row& stage, const compilation_state& state);

/// The cycles that the hardware of a program will have, without the schedule, which takes longer; nothing when it
/// cannot be made.
[[nodiscard]] std::optional<std::int32_t> latency_of(compilation_state& state);

/// Runs the stages in order, those that make hardware only when asked to, the verifier behind each in debug and test
/// builds; `behind` is told each stage's end.
[[nodiscard]] bool run_stages(compilation_state& state, bool to_hardware,
                              const std::function<void(const stage_row&, const compilation_state&)>& behind = {});

}  // namespace xfc::flow
