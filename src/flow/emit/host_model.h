#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "flow/emit/files.h"
#include "flow/emit/names.h"
#include "flow/passes/design.h"

namespace xfc::flow {

/// What a design's model on the host is for.
enum class host_language : std::uint8_t { c, python };

/// What there is to say about a design besides itself.
struct host_model_facts {
    std::int32_t latency = 0;              ///< cycles
    std::vector<std::string> header = {};  ///< lines of the comment on top
};

/// Files that compute on the host, bit for bit, what the design's hardware delivers, and need nothing of xfcflow:
/// NAME_model.h with one function over structures of the ports, NAME_model.cpp, which has the models of the components,
/// and for Python NAME_model.py, which compiles and loads them. Without a result the library lacks a model.
[[nodiscard]] std::optional<std::vector<output_file>> host_model_files(const graph& values, const design& made,
                                                                       const design_names& names,
                                                                       const source_map& places,
                                                                       const host_model_facts& facts,
                                                                       host_language lang);

/// A port's name as C and C++ (or Python) take it: behind a word that means something there stands an underscore, as
/// behind no name of a design.
[[nodiscard]] std::string host_name(const std::string& name, host_language lang);

}  // namespace xfc::flow
