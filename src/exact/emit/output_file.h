#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "base/text_writer.h"

namespace xfc {

/// Name of the output file: `extension` written over the terminator of the base name and what stands behind it, with
/// no new terminator. Kept: a longer source extension leaves its tail, so prog.cxxxx gives prog.vhdxx.
[[nodiscard]] std::string output_file_name(std::string base_name, std::string_view extension);

/// The output file. Every failure ends the run with a message: a file that is the source program or cannot be opened
/// is left untouched, a regular file that cannot be written whole is removed.
class output_file {
public:
    explicit output_file(std::string name);
    output_file(const output_file&) = delete;
    output_file& operator=(const output_file&) = delete;
    ~output_file();

    [[nodiscard]] text_writer& writer() { return writer_; }

    /// Writes everything out.
    void close();

private:
    std::string name_;
    std::FILE* stream_;
    text_writer writer_;
};

}  // namespace xfc
