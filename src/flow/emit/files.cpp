#include "flow/emit/files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "flow/emit/template.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

/// A text as JSON has it, in quotes.
void append_quoted(std::string& text, std::string_view quoted) {
    const bool plain = std::all_of(quoted.begin(), quoted.end(), [](char letter) {
        return letter >= ' ' && letter <= '~' && letter != '"' && letter != '\\';
    });
    if (plain) {
        append_all(text, "\"", quoted, "\"");
    } else {
        text += nlohmann::json(quoted).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }
}

/// What stands between the members of a list, which is on one line each.
constexpr std::string_view between_members = ",\n    ";
constexpr std::string_view first_member = "\n    ";

void write_ports(std::string& text, std::string_view what, std::span<const port> ports,
                 const std::vector<std::string>& names, const text_taker& take) {
    append_all(text, ",\n  \"", what, "\": [");
    std::string_view between = first_member;
    for (std::size_t place = 0; place < ports.size(); ++place) {
        const port& one = ports[place];
        append_all(text, between, "{\"name\": \"", names[place], "\", \"format\": \"", format_name(one.format),
                   "\", \"bits\": ", format_bits(one.format), ", \"c_type\": ");
        append_quoted(text, one.c_type);
        text += ", \"c_access\": ";
        append_quoted(text, one.c_access);
        text += "}";
        between = between_members;
        take_full_block(text, take);
    }
    text += ports.empty() ? "]" : "\n  ]";
}

void append_value(std::string& text, const value& one, const design_node& node, const source_position& place,
                  std::string_view name, std::int32_t start) {
    const component_operation works = row_of(node.component).operation;
    const bool converts = works == component_operation::convert || works == component_operation::normalize;
    append_all(text, "{\"name\": \"", name, "\", \"operation\": \"", converts ? "convert" : row_of(one.op).name,
               "\", \"component\": \"", component_name(node), "\", \"format\": \"", row_of(node.code).text,
               "\", \"start\": ", start, ", \"end\": ", start + node.latency());
    if (place.line != 0) {
        text += ", \"file\": ";
        append_quoted(text, place.file);
        append_all(text, ", \"line\": ", place.line);
    }
    text += "}";
}

/// A fileset of the core file.
std::string fileset(std::string_view name, std::string_view type, const std::vector<std::string>& files) {
    std::string text = "  " + std::string(name) + ":\n    files:\n";
    for (const std::string& file : files) {
        text += "      - " + file + "\n";
    }
    return text + "    file_type: " + std::string(type) + "\n";
}

/// A text that YAML does not take for anything else, as it does with `no`. Names and files have no letter that needs
/// more than quotes.
std::string yaml_text(const std::string& text) { return "\"" + text + "\""; }

/// The design in one language as edalize reads it (EDAM), with what the usual tools need to be told.
std::string edam_text(const std::string& name, language lang, std::string_view type,
                      const std::vector<std::string>& files) {
    std::string text = "name: " + yaml_text(name) + "\ntoplevel: " + yaml_text(name) + "\nfiles:\n";
    for (const std::string& file : files) {
        text += "  - {name: " + file + ", file_type: " + std::string(type) + "}\n";
    }
    return text + (lang == language::vhdl ? "tool_options:\n  ghdl:\n    analyze_options: [--std=93]\n"
                                          : "tool_options:\n  icarus:\n    iverilog_options: [-g2001]\n"
                                            "  verilator:\n    mode: lint-only\n");
}

}  // namespace

void write_design_json(const graph& values, const design& made, const schedule& times, const design_names& names,
                       const source_map& places, const text_taker& take) {
    // Written by hand, since there may be hundreds of thousands of values.
    std::string text;
    append_all(text, "{\n  \"name\": \"", names.design, "\",\n  \"latency\": ", times.latency,
               ",\n  \"register_bits\": ", times.register_bits,
               ",\n  \"register_bits_as_soon_as_possible\": ", times.register_bits_soonest);
    write_ports(text, "inputs", values.inputs(), names.inputs, take);
    write_ports(text, "outputs", values.outputs(), names.outputs, take);
    text += ",\n  \"values\": [";
    std::string_view between = first_member;
    for (node_id id = 0; id < made.size(); ++id) {
        if (made[id].kind == node_kind::instance) {
            text += between;
            append_value(text, values[made[id].value], made[id], places.position_of(values[made[id].value].where),
                         names.nodes[id], times.start[id]);
            between = between_members;
            take_full_block(text, take);
        }
    }
    take(text += between == first_member ? "]\n}\n" : "\n  ]\n}\n");
}

std::optional<std::vector<output_file>> files_of(const std::shared_ptr<const datapath>& shared,
                                                 const std::vector<language>& languages,
                                                 std::function<void(const text_taker&)> description) {
    const datapath& what = *shared;
    std::vector<output_file> files;
    std::string filesets;
    std::string names_of_sets;
    const fs::path library = library_folder();
    for (const language lang : languages) {
        auto needed = files_for(what.components, library, lang);
        if (!needed) {
            return std::nullopt;
        }
        std::vector<std::string> order;
        for (library_file& file : *needed) {
            files.push_back({fs::path("library") / file.path.filename(), std::move(file.text)});
            order.push_back(files.back().path.string());
        }
        const bool is_vhdl = lang == language::vhdl;
        files.push_back(
            {.path = what.name + std::string(extension_of(lang)), .pieces = [shared, is_vhdl](const text_taker& take) {
                 is_vhdl ? write_vhdl(*shared, take) : write_verilog(*shared, take);
             }});
        order.push_back(files.back().path.string());
        std::string list;
        for (const std::string& file : order) {
            list += file + "\n";
        }
        const std::string_view name = is_vhdl ? "vhdl" : "verilog";
        files.push_back({what.name + (is_vhdl ? "_vhdl.f" : "_verilog.f"), list});
        const std::string_view type = is_vhdl ? "vhdlSource-93" : "verilogSource-2005";
        files.push_back({what.name + "_" + std::string(name) + ".eda.yml", edam_text(what.name, lang, type, order)});
        filesets += fileset(name, type, order);
        names_of_sets += (names_of_sets.empty() ? "" : ", ") + std::string(name);
    }
    if (description) {
        files.push_back({.path = what.name + ".json", .pieces = std::move(description)});
    }
    // One language is enough for a tool; the first one is the default.
    const std::string first = names_of_sets.substr(0, names_of_sets.find(','));
    std::string core = "CAPI=2:\nname: ::" + what.name + ":0\ndescription: pipelined datapath of " +
                       counted_cycles(what.latency) + "\nfilesets:\n" + filesets + "targets:\n";
    core += "  default:\n    filesets: [" + first + "]\n    toplevel: " + yaml_text(what.name) + "\n";
    for (const language lang : languages) {
        const std::string name = lang == language::vhdl ? "vhdl" : "verilog";
        core.append("  ").append(name).append(":\n    filesets: [").append(name);
        core.append("]\n    toplevel: ").append(yaml_text(what.name)).append("\n");
    }
    files.push_back({what.name + ".core", core});
    return files;
}

std::string whole_text(const output_file& file) {
    std::string text = file.text;
    if (file.pieces) {
        file.pieces([&](std::string_view piece) { text += piece; });
    }
    return text;
}

bool write_files(const fs::path& folder, const std::vector<output_file>& files, diagnostics& messages) {
    std::optional<fs::path> there;  // the folder of the file before
    for (const output_file& file : files) {
        const fs::path path = folder / file.path;
        if (!there || *there != path.parent_path()) {
            there = path.parent_path();
            std::error_code failed;
            fs::create_directories(there->empty() ? fs::path(".") : *there, failed);
            if (failed) {
                messages.report(message_id::cannot_write, {}, {there->string(), failed.message()});
                return false;
            }
        }
        errno = 0;
        std::ofstream stream(path, std::ios::binary);
        const bool is_opened = stream.is_open();
        if (file.pieces) {
            file.pieces([&](std::string_view piece) { stream << piece; });
        } else {
            stream << file.text;
        }
        stream.close();
        if (!stream) {
            const int reason = errno;
            std::error_code ignored;
            if (is_opened && fs::is_regular_file(path, ignored)) {
                fs::remove(path, ignored);  // half a file serves nobody
            }
            messages.report(message_id::cannot_write, {},
                            {path.string(), reason != 0 ? std::strerror(reason) : "the write failed"});
            return false;
        }
    }
    return true;
}

}  // namespace xfc::flow
