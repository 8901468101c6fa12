#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "exact/driver/compiler.h"
#include "exact/support/compile.h"
#include "exact/support/temporary_folder.h"

// A folder in which files are put and looked at between and after runs of the compiler.

namespace xfc::test {

inline constexpr const char* small_program = "float a, y;\nmain() {\n y = a;\n}\n";

using workspace = temporary_folder;

inline void write_file(const std::string& name, const std::string& content) {
    std::ofstream stream(name, std::ios::binary);
    stream << content;
}

inline std::string read_file(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Names of everything in the current folder.
inline std::set<std::string> folder_entries() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

/// One run in the current folder.
inline run_result run_here(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    int status = 0;
    run_result result = catch_output([&] { status = run_compiler(pointers); });
    if (result.status == 0) {
        result.status = status;
    }
    return result;
}

/// The small program under that name, compiled in a folder of its own: the one file that the run adds.
inline std::string output_name(const std::string& source_name, const std::vector<std::string>& switches = {}) {
    const workspace folder;
    write_file(source_name, small_program);
    const std::set<std::string> before = folder_entries();
    std::vector<std::string> arguments{source_name};
    arguments.insert(arguments.end(), switches.begin(), switches.end());
    static_cast<void>(run_here(arguments));
    std::string added;
    for (const std::string& each : folder_entries()) {
        if (!before.contains(each)) {
            added += added.empty() ? each : " and " + each;
        }
    }
    return added;
}

inline bool begins_with(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }

inline bool ends_with(const std::string& text, const std::string& tail) {
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace xfc::test
