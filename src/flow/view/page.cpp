#include "flow/view/page.h"

#include <map>
#include <nlohmann/json.hpp>

#include "flow/emit/template.h"
#include "flow/view/page_texts.h"
#include "flow/view/texts.h"

namespace xfc::flow {

namespace {

using json = nlohmann::ordered_json;

/// The files that bars come from, the program's own first, each with its lines.
class source_files {
public:
    explicit source_files(const view_input& input) : places_(input.places) { number_of(input.source); }

    int number_of(std::string_view name) {
        const auto [at, is_new] = numbers_.emplace(std::string(name), static_cast<int>(numbers_.size()));
        if (is_new) {
            files_.push_back({{"name", name}, {"text", places_.file_text(name)}});
        }
        return at->second;
    }
    [[nodiscard]] const json& files() const { return files_; }

private:
    const source_map& places_;
    std::map<std::string, int, std::less<>> numbers_;
    json files_ = json::array();
};

json ports_of(std::span<const port> ports, const std::vector<std::string>& names) {
    json list = json::array();
    for (std::size_t place = 0; place < ports.size(); ++place) {
        list.push_back({{"name", names[place]},
                        {"format", format_name(ports[place].format)},
                        {"c", ports[place].c_type + " " + ports[place].c_access}});
    }
    return list;
}

json bar_json(const bar& one, const view_input& input, source_files& files) {
    const design_node& node = input.made[one.node];
    const value& made_of = input.values[node.value];
    const source_position place = input.places.position_of(made_of.where);
    const bool is_input = node.kind == node_kind::input;
    json entry = {{"name", input.names.nodes[one.node]},
                  {"kind", static_cast<int>(one.kind)},
                  {"operation", is_input ? "input" : row_of(made_of.op).name},
                  {"component", is_input ? "" : component_name(node)},
                  {"format", row_of(node.code).text},
                  {"width", one.width},
                  {"start", one.start},
                  {"end", one.end},
                  {"last", one.last},
                  {"lane", one.lane},
                  {"slack", one.slack},
                  {"operands", one.operands}};
    if (one.on_path) {
        entry["path"] = true;
    }
    if (!one.outputs.empty()) {
        entry["outputs"] = one.outputs;
    }
    if (place.line != 0) {
        entry["file"] = files.number_of(place.file);
        entry["line"] = place.line;
        entry["text"] = source_comment(input.values, node.value, input.places);
    }
    return entry;
}

json page_data(const picture& what, const view_input& input) {
    source_files files(input);
    json all = {{"design", input.names.design},
                {"latency", what.latency},
                {"lanes", what.lanes},
                {"arithmetic", what.arithmetic},
                {"conversion", what.conversion},
                {"normalization", what.normalization},
                {"register_bits", input.times.register_bits},
                {"register_bits_soonest", input.times.register_bits_soonest},
                {"inputs", ports_of(input.values.inputs(), input.names.inputs)},
                {"outputs", ports_of(input.values.outputs(), input.names.outputs)},
                {"kinds", json::array()},
                {"bars", json::array()}};
    for (const bar_kind_row& row : bar_kind_rows) {
        all["kinds"].push_back({row.name, row.legend});
    }
    for (const bar& one : what.bars) {
        all["bars"].push_back(bar_json(one, input, files));
    }
    all["files"] = files.files();
    return all;
}

/// JSON inside a script element: nothing in it may end the element or begin a comment.
std::string embedded(const json& data) {
    std::string text;
    for (const char letter : data.dump(-1, ' ', true, json::error_handler_t::replace)) {
        text += letter == '<' ? "\\u003c" : std::string(1, letter);
    }
    return text;
}

}  // namespace

std::string page_text(const picture& what, const view_input& input) {
    return filled_template(page_html, {{"title", escaped(input.names.design)},
                                       {"style", std::string(page_css)},
                                       {"script", std::string(page_js)},
                                       {"data", embedded(page_data(what, input))}});
}

}  // namespace xfc::flow
