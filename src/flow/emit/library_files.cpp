#include "flow/emit/library_files.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "flow/emit/library_place.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

std::string read_file(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// The names in a source text, outside comments and in lower case.
std::set<std::string> names_in(const std::string& text, std::string_view comment) {
    std::set<std::string> names;
    std::string word;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        const char letter = at < text.size() ? text[at] : '\n';
        if (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_') {
            word += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
            continue;
        }
        if (!word.empty()) {
            names.insert(std::move(word));
            word.clear();
        }
        if (text.compare(at, comment.size(), comment) == 0) {
            at = std::min(text.find('\n', at), text.size());
        }
    }
    return names;
}

/// All files of a language by the name that their text defines: the file's own without its extension.
std::map<std::string, fs::path> files_by_name(const fs::path& library, language lang) {
    std::map<std::string, fs::path> files;
    std::error_code ignored;
    for (const auto& folder : fs::directory_iterator(library, ignored)) {
        for (const auto& entry : fs::directory_iterator(folder, ignored)) {
            if (entry.path().extension() == extension_of(lang)) {
                files[entry.path().stem().string()] = entry.path();
            }
        }
    }
    return files;
}

}  // namespace

std::string_view extension_of(language lang) { return lang == language::vhdl ? ".vhd" : ".v"; }

fs::path library_folder() {
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed);
    if (!failed) {
        fs::path installed = program.parent_path().parent_path() / "share/xfc/library";
        if (fs::is_directory(installed, failed)) {
            return installed;
        }
    }
    return fs::is_directory(library_source, failed) ? fs::path(library_source) : fs::path();
}

std::optional<std::vector<fs::path>> files_for(const std::set<std::string_view>& components, const fs::path& library,
                                               language lang) {
    const std::map<std::string, fs::path> files = files_by_name(library, lang);
    std::vector<fs::path> ordered;
    std::set<std::string> visited;
    const std::function<void(const std::string&)> visit = [&](const std::string& name) {
        if (!visited.insert(name).second) {
            return;
        }
        const fs::path& file = files.at(name);
        for (const std::string& needed : names_in(read_file(file), lang == language::vhdl ? "--" : "//")) {
            if (files.contains(needed)) {
                visit(needed);
            }
        }
        ordered.push_back(file);
    };
    for (const std::string_view component : components) {
        const std::string name(component);
        if (!files.contains(name)) {
            return std::nullopt;
        }
        visit(name);
    }
    return ordered;
}

}  // namespace xfc::flow
