#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "flow/diagnostics/diagnostics.h"
#include "flow/emit/datapath.h"
#include "flow/emit/library_files.h"

namespace xfc::flow {

/// A file to be written: its path relative to the output's folder, and its bytes.
struct output_file {
    std::filesystem::path path = {};
    std::string text = {};
    std::function<void(const text_taker&)> pieces = {};  ///< gives a text that is too large for memory instead
};

/// A file's text, however it is given.
[[nodiscard]] std::string whole_text(const output_file& file);

/// What a design is, for programs: name, ports, latency, every value with its component, cycles and source line.
void write_design_json(const graph& values, const design& made, const schedule& times, const design_names& names,
                       const source_map& places, const text_taker& take);

/// The design in these languages: its texts, the library's files that it needs (library/...), a file list a language
/// in compile order (NAME_vhdl.f, NAME_verilog.f), one for edalize (NAME_vhdl.eda.yml, ...), NAME.json, which
/// `description` gives (without one there is none), and a FuseSoC core file. Without a result the library lacks a file.
[[nodiscard]] std::optional<std::vector<output_file>> files_of(const std::shared_ptr<const datapath>& shared,
                                                               const std::vector<language>& languages,
                                                               std::function<void(const text_taker&)> description);

/// Writes the files below `folder`, which is made when there is none. On a failure says which and gives false.
[[nodiscard]] bool write_files(const std::filesystem::path& folder, const std::vector<output_file>& files,
                               diagnostics& messages);

}  // namespace xfc::flow
