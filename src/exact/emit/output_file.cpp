#include "exact/emit/output_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "exact/run/compilation.h"
#include "exact/run/console.h"

namespace xfc {

namespace {

std::FILE* open_unless_source(const std::string& name) {
    std::error_code error;
    if (std::filesystem::equivalent(current.source_path, name, error) && !error) {
        fail(message_id::output_overwrites_source, name);
    }
    std::FILE* stream = std::fopen(name.c_str(), "w");
    if (stream == nullptr) {
        fail(message_id::cannot_open_output, name);
    }
    // The writer in front of the stream has the buffer.
    static_cast<void>(std::setvbuf(stream, nullptr, _IONBF, 0));
    return stream;
}

}  // namespace

std::string output_file_name(std::string base_name, std::string_view extension) {
    base_name.push_back('\0');
    const std::size_t terminator = base_name.find('\0');
    if (base_name.size() < terminator + extension.size()) {
        base_name.resize(terminator + extension.size());
    }
    base_name.replace(terminator, extension.size(), extension);
    return base_name.substr(0, base_name.find('\0'));
}

output_file::output_file(std::string name)
    : name_(std::move(name)), stream_(open_unless_source(name_)), writer_(stream_) {
    current.unfinished_output = {name_.c_str(), fileno(stream_)};
}

output_file::~output_file() {
    current.unfinished_output = {};
    if (stream_ != nullptr) {
        static_cast<void>(std::fclose(stream_));
    }
}

void output_file::close() {
    if (!writer_.flush()) {
        remove_unfinished_output();
        fail(message_id::cannot_write_output, name_);
    }
    // What a closing file system still refuses can only be told by then; the name is checked while it is open.
    const bool removable = is_unfinished_output_removable();
    current.unfinished_output = {};
    if (std::fclose(std::exchange(stream_, nullptr)) != 0) {
        if (removable) {
            static_cast<void>(std::remove(name_.c_str()));
        }
        fail(message_id::cannot_write_output, name_);
    }
}

}  // namespace xfc
