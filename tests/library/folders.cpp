#include "folders.h"

#include <fstream>

#include "components/component_table.h"

namespace xfc::proof {

namespace fs = std::filesystem;

namespace {

std::set<std::string> names_in(const fs::path& list) {
    std::set<std::string> names;
    std::ifstream file(list);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.front() != '#') {
            names.insert(line);
        }
    }
    return names;
}

}  // namespace

std::set<std::string> component_folders(const fs::path& library) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(library)) {
        if (entry.is_directory() && entry.path().filename() != "common") {
            names.insert(entry.path().filename().string());
        }
    }
    return names;
}

std::vector<std::string> folder_failures(const fs::path& library, const fs::path& awaited) {
    std::set<std::string> folders = component_folders(library);
    std::set<std::string> missing = names_in(awaited);
    std::vector<std::string> failures;
    for (const component_row& row : all_components()) {
        const std::string name(row.name);
        const bool has_folder = folders.erase(name) != 0;
        const bool is_awaited = missing.erase(name) != 0;
        if (has_folder && is_awaited) {
            failures.push_back(name + ": has its folder, and is awaited no longer");
        } else if (!has_folder && !is_awaited) {
            failures.push_back(name + ": has a row in the component table but no folder");
        }
    }
    for (const std::string& name : folders) {
        failures.push_back(name + ": no row of the component table has this name");
    }
    for (const std::string& name : missing) {
        failures.push_back(name + ": is awaited, but has no row in the component table");
    }
    return failures;
}

}  // namespace xfc::proof
