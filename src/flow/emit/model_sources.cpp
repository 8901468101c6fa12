#include "flow/emit/model_sources.h"

#include <fstream>
#include <string>

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// Where the models stand. Installed they are NAME.cpp side by side with the headers' folders; in the source tree each
/// stands in its component's folder and the headers belong to the compiler.
struct model_places {
    explicit model_places(fs::path of_library)
        : library(std::move(of_library)),
          installed(fs::is_directory(library / "model")),
          headers(installed ? library / "model" : library.parent_path() / "src") {}

    [[nodiscard]] fs::path model_of(std::string_view component) const {
        return installed ? headers / (std::string(component) + ".cpp") : library / component / "model.cpp";
    }

    fs::path library;
    bool installed;
    fs::path headers;
};

class source_collector {
public:
    explicit source_collector(const model_places& places) : places_(places) {}

    /// Appends a file, what it includes before it; false when one is missing.
    bool add(const fs::path& path) {
        if (!seen_.insert(path.lexically_normal()).second) {
            return true;
        }
        std::ifstream file(path);
        std::string own;
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("#include <")) {
                found.standard_headers.insert(line.substr(10, line.find('>') - 10));
            } else if (line.starts_with("#include \"")) {
                const std::string name = line.substr(10, line.rfind('"') - 10);
                const fs::path beside = path.parent_path() / name;
                if (!add(fs::exists(beside) ? beside : places_.headers / name)) {
                    return false;
                }
            } else if (line != "#pragma once" && !(line.empty() && own.empty())) {
                own += line + "\n";
            }
        }
        found.text += "\n" + own;
        return !own.empty();
    }

    /// Appends a component's model, its own helpers out of the way of other models' in a namespace of their own.
    bool add_model(std::string_view component) {
        constexpr std::string_view opening = "namespace xfc::model {\n";
        if (!add(places_.model_of(component))) {
            return false;
        }
        const std::string own = std::string(component) + "_steps";
        const std::size_t at = found.text.rfind(opening);
        if (at == std::string::npos) {
            return false;
        }
        found.text.replace(at, opening.size(), "namespace xfc::model::" + own + " {\n");
        found.text += "namespace xfc::model {\nusing " + own + "::" + std::string(component) + ";\n}\n";
        return true;
    }

    model_sources found;

private:
    const model_places& places_;
    std::set<fs::path> seen_;
};

}  // namespace

std::optional<model_sources> model_sources_for(const std::set<std::string_view>& components, const fs::path& library) {
    const model_places places(library);
    source_collector collector(places);
    // Also a design without components needs to know what a bus is.
    bool complete = collector.add(places.headers / "model/component_model.h");
    for (const std::string_view component : components) {
        complete = complete && collector.add_model(component);
    }
    return complete ? std::optional(std::move(collector.found)) : std::nullopt;
}

}  // namespace xfc::flow
