#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "flow/diagnostics/diagnostics.h"
#include "flow/driver/options.h"
#include "flow/graph/program.h"

namespace xfc::flow {

/// What a compilation has come to; each stage makes the next state of it.
struct compilation_state {
    const command_line& line;
    diagnostics& messages;
    source_map& places;  ///< known even when there is no program
    std::optional<program> current = std::nullopt;
};

/// One stage: its name for --dump, what it is for, and its work. False ends the compilation; the messages say why.
struct stage_row {
    std::string_view name;
    std::string_view text;
    bool (*run)(compilation_state&);
};

[[nodiscard]] std::span<const stage_row> stage_rows();

/// Runs the stages in order, the verifier behind each in debug and test builds; `behind` is told each stage's end.
[[nodiscard]] bool run_stages(compilation_state& state,
                              const std::function<void(const stage_row&, const compilation_state&)>& behind = {});

}  // namespace xfc::flow
