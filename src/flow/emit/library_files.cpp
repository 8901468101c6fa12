#include "flow/emit/library_files.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>
#include <sstream>
#include <unordered_map>
#include <utility>

#include "base/fnv_hash.h"
#include "flow/emit/library_place.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

struct text_hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return fnv_hash(text); }
};

constexpr bool is_of_name(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           letter == '_';
}

constexpr char lower_case(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Calls `take` with every name in a source text that is outside comments, in lower case.
template <class taker>
void for_names_in(std::string_view text, std::string_view comment, const taker& take) {
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        name.clear();
        for (; at < text.size() && is_of_name(text[at]); ++at) {
            name += lower_case(text[at]);
        }
        if (!name.empty()) {
            take(name);
        }
        if (text.substr(at, comment.size()) == comment) {
            at = std::min(text.find('\n', at), text.size());
        }
    }
}

/// What the library has in a language. A component's folder is listed when its name first occurs: most designs need
/// few.
class library_reader {
public:
    library_reader(const fs::path& library, language lang)
        : extension_(extension_of(lang)), comment_(lang == language::vhdl ? "--" : "//") {
        const std::array<std::string_view, 2> shared = {"common", lang == language::vhdl ? "vhdl" : "verilog"};
        std::error_code ignored;
        for (const auto& folder : fs::directory_iterator(library, ignored)) {
            const std::string name = folder.path().filename().string();
            if (std::find(shared.begin(), shared.end(), name) != shared.end()) {
                list(folder.path());
            } else if (!places_.contains(name)) {
                places_[name] = {folder.path(), true};
            }
        }
    }

    /// Appends the file that defines the name, behind all that it needs; false when there is none.
    bool visit(const std::string& name) {
        if (visited_.contains(name)) {
            return true;
        }
        auto found = places_.find(name);
        if (found != places_.end() && found->second.is_folder) {
            const fs::path folder = found->second.path;
            places_.erase(found);
            list(folder);
            found = places_.find(name);
        }
        if (found == places_.end()) {
            return false;
        }
        visited_.insert(name);
        const fs::path path = found->second.path;
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        library_file file{path, text.str()};
        std::set<std::string> needed;
        for_names_in(file.text, comment_, [&](const std::string& other) {
            if (places_.contains(other)) {
                needed.insert(other);
            }
        });
        for (const std::string& other : needed) {
            visit(other);
        }
        files_.push_back(std::move(file));
        return true;
    }

    /// The visited files in compile order; leaves none.
    std::vector<library_file> take() { return std::exchange(files_, {}); }

private:
    struct place {
        fs::path path;
        bool is_folder = false;
    };

    void list(const fs::path& folder) {
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(folder, ignored)) {
            if (entry.path().extension() == extension_) {
                places_[entry.path().stem().string()] = {entry.path(), false};
            }
        }
    }

    fs::path extension_;
    std::string_view comment_;
    std::unordered_map<std::string, place, text_hash, std::equal_to<>> places_;
    std::set<std::string> visited_;
    std::vector<library_file> files_;
};

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

std::optional<std::vector<library_file>> files_for(const std::set<std::string_view>& components,
                                                   const fs::path& library, language lang) {
    library_reader reader(library, lang);
    for (const std::string_view component : components) {
        if (!reader.visit(std::string(component))) {
            return std::nullopt;
        }
    }
    return reader.take();
}

}  // namespace xfc::flow
