#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace xfc::test {

/// A new folder that is the current one while the object lives and is gone, with what is in it, afterwards.
class temporary_folder {
public:
    temporary_folder() : before_(std::filesystem::current_path()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "xfc-test-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        std::filesystem::current_path(folder_);
    }
    temporary_folder(const temporary_folder&) = delete;
    temporary_folder& operator=(const temporary_folder&) = delete;
    ~temporary_folder() {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
        std::filesystem::remove_all(folder_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }

private:
    std::filesystem::path before_;
    std::filesystem::path folder_;
};

}  // namespace xfc::test
