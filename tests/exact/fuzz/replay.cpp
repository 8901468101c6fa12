// Feeds files to a fuzzer's entry point without the fuzzer, for the ordinary test run. Each argument is a file or a
// folder of files. Prints the name of the file that was being tried when a check failed.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

const char* current_file = "";

extern "C" void name_current_file(int) {
    static_cast<void>(std::fputs(current_file, stderr));
    static_cast<void>(std::fputs(" fails\n", stderr));
    std::_Exit(1);
}

std::vector<fs::path> files_of(int count, char** arguments) {
    std::vector<fs::path> files;
    for (int index = 1; index < count; ++index) {
        const fs::path place = arguments[index];
        if (!fs::is_directory(place)) {
            files.push_back(place);
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(place)) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

int main(int count, char** arguments) {
    static_cast<void>(std::signal(SIGABRT, name_current_file));
    const std::vector<fs::path> files = files_of(count, arguments);
    if (files.empty()) {
        static_cast<void>(std::fputs("no files to replay\n", stderr));
        return 1;
    }
    for (const fs::path& file : files) {
        current_file = file.c_str();
        std::ifstream stream(file, std::ios::binary);
        if (!stream.is_open()) {
            name_current_file(0);
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
