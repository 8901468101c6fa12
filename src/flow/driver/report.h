#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "flow/diagnostics/diagnostics.h"
#include "flow/graph/program.h"

namespace xfc::flow {

/// What a person reads about a program: its name, its ports, its latency in cycles, how many operations of which
/// kind.
[[nodiscard]] std::string report_text(const program& what, std::int32_t latency, std::string_view source);

/// The messages as a list for JSON reports, with their places, hints and notes.
[[nodiscard]] nlohmann::ordered_json messages_json(const diagnostics& messages, const source_map& places);

/// The same and the messages as JSON, with the files that were written, if any; without a program the messages alone.
[[nodiscard]] std::string report_json(const program* what, std::optional<std::int32_t> latency,
                                      const diagnostics& messages, const source_map& places, std::string_view source,
                                      const std::vector<std::string>& files = {});

}  // namespace xfc::flow
