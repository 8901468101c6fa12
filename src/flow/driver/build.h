#pragma once

#include <iosfwd>
#include <optional>

#include "flow/driver/stages.h"
#include "flow/emit/files.h"

namespace xfc::flow {

/// A compilation with everything that is written about it. Some files are written from the compilation's state, which
/// must stay as long.
struct built_design {
    std::shared_ptr<const datapath> text = {};  ///< shared with those files that are written from it
    std::vector<output_file> files = {};
};

/// The files of a compilation that has come to its schedule; without a result the messages say why.
[[nodiscard]] std::optional<built_design> built(const compilation_state& state);

/// Whether none of the files to write is one that the compilation has read, or one of `also_read`; a message names it.
[[nodiscard]] bool keeps_what_is_read(const compilation_state& state, const std::vector<std::string>& written,
                                      std::vector<std::string> also_read = {});

/// The languages that the command line asks for.
[[nodiscard]] std::vector<language> languages_of(const command_line& line);

/// Makes hardware of a program and says what was written.
int build(const command_line& line, std::ostream& out, std::ostream& error, bool colour);

}  // namespace xfc::flow
