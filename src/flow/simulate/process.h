#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace xfc::flow {

/// A new folder that goes with its owner, and with the process when SIGINT, SIGTERM, SIGHUP or SIGQUIT ends that. The
/// path is empty when there is no room for one.
class temporary_folder {
public:
    temporary_folder();
    ~temporary_folder();
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Whether a program of this name is on the search path.
[[nodiscard]] bool is_on_path(std::string_view program);

/// Runs a command in a folder, its words without a shell, all that it says into run.log there. `meanwhile` is called
/// up to fifty times a second until it ends. Its exit status, or -1 when a signal ended it. Who interrupts this process
/// ends the command and all that it started.
[[nodiscard]] int run_command(const std::vector<std::string>& words, const std::filesystem::path& folder,
                              const std::function<void()>& meanwhile = {});

/// The last lines of what a command said.
[[nodiscard]] std::string end_of_log(const std::filesystem::path& folder);

/// A whole file; empty when it cannot be read.
[[nodiscard]] std::string read_file(const std::filesystem::path& path);

}  // namespace xfc::flow
