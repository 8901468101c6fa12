// Usage: measure_components keys PROG.c... [-- OPTION...]
//        measure_components run COSTS.csv FAMILY SECONDS [--clock] <KEYS
// The first prints what the estimates of these programs ask for, a key a line, as often as a program has it. The second
// measures those keys that the table lacks and adds them, a Yosys at a time, none for longer than SECONDS; --clock: the
// highest clock of those that have none.

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "flow/driver/stages.h"
#include "flow/emit/files.h"
#include "flow/explore/cost_table.h"
#include "flow/measure/specimen.h"
#include "flow/simulate/process.h"
#include "flow/synth/synthesis.h"

namespace xfc::flow::test {
namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;

constexpr std::size_t specimens_a_run = 3;

int print_keys(const std::vector<std::string>& words) {
    const auto dashes = std::find(words.begin(), words.end(), "--");
    for (auto program = words.begin() + 1; program != dashes; ++program) {
        std::vector<std::string> arguments{"build", *program};
        arguments.insert(arguments.end(), dashes == words.end() ? dashes : dashes + 1, words.end());
        const parsed_line parsed = parse_command_line(arguments);
        diagnostics messages;
        source_map places;
        compilation_state state{parsed.line, messages, places};
        if (parsed.ends || !run_stages(state, true)) {
            std::cerr << *program << ": " << parsed.text << rendered(messages, places);
            return 1;
        }
        for (node_id id = 0; id < state.made->size(); ++id) {
            if ((*state.made)[id].kind == node_kind::instance) {
                std::cout << text_of(key_of(*state.made, id)) << '\n';
            }
        }
    }
    return 0;
}

/// One run of Yosys over several specimens, each of which keeps its own hierarchy.
class measurement {
public:
    measurement(const family_row& family, std::string seconds) : family_(family), seconds_(std::move(seconds)) {}

    /// The counts of each key, without its conversions' and the start chain's; nothing when Yosys did not come to the
    /// end.
    std::optional<std::vector<resource_counts>> counts(const std::vector<cost_key>& keys) {
        const temporary_folder folder;
        std::set<std::string> library;
        std::string top_ports;
        std::string top_body;
        std::string text;
        std::vector<specimen> made;
        for (std::size_t number = 0; number < keys.size(); ++number) {
            made.push_back(specimen_of(keys[number], "specimen" + std::to_string(number)));
            const auto files = files_of(made.back().text, {language::verilog}, "{}");
            diagnostics messages;
            if (!files || !write_files(folder.path(), *files, messages)) {
                std::cerr << "no files of the library\n";
                return std::nullopt;
            }
            for (const output_file& file : *files) {
                if (file.path.extension() == ".v" && file.path.string().find("library") != std::string::npos) {
                    library.insert(file.path.string());
                }
            }
            text += "(* keep_hierarchy *)\n" + verilog_text(made.back().text);
            add_to_top(made.back().text, top_ports, top_body);
        }
        text += "module top (input sysclk, reset, enable, startin" + top_ports + ");\n" + top_body + "endmodule\n";
        std::ofstream(folder.path() / "all.v") << text;
        std::string names = "all.v";
        for (const std::string& file : library) {
            names += " " + file;
        }
        const std::string commands = "read_verilog " + names + "; " + std::string(family_.synthesis) +
                                     " -top top; tee -q -o stat.json stat -json";
        if (run_command({"timeout", seconds_, "nice", "-n", "15", "yosys", "-q", "-p", commands}, folder.path()) != 0) {
            std::cerr << end_of_log(folder.path()) << '\n';
            return std::nullopt;
        }
        const json all = json::parse(read_file(folder.path() / "stat.json"), nullptr, false);
        std::vector<resource_counts> result;
        for (std::size_t number = 0; number < keys.size(); ++number) {
            const json cells = {{"design", all["modules"]["\\specimen" + std::to_string(number)]}};
            result.push_back(counts_of(cells.dump(), family_).value());
            result.back().flip_flops -= made[number].chain;
        }
        return result;
    }

private:
    static void add_to_top(const datapath& what, std::string& ports, std::string& body) {
        std::string connected = ".sysclk(sysclk), .reset(reset), .enable(enable), .startin(startin)";
        const auto add = [&](const bus_text& bus, const char* direction) {
            const std::string name = what.name + "_" + bus.name;
            ports += std::string(", ") + direction + " [" + std::to_string(bus.width) + ":1] " + name;
            connected += ", ." + bus.name + "(" + name + ")";
        };
        for (const bus_text& bus : what.inputs) {
            add(bus, "input");
        }
        for (const output_text& output : what.outputs) {
            add(output.bus, "output");
        }
        ports += ", output " + what.name + "_startout";
        body += "  " + what.name + " i_" + what.name + " (" + connected + ", .startout(" + what.name + "_startout));\n";
    }

    const family_row& family_;
    std::string seconds_;
};

void write_table(const std::string& path, const std::string& head, const std::set<std::string>& rows) {
    std::ofstream file(path + ".new");
    file << head;
    for (const std::string& row : rows) {
        file << row << '\n';
    }
    file.close();
    fs::rename(path + ".new", path);
}

int run_measurements(const std::vector<std::string>& words) {
    const std::string& path = words[1];
    const family_row* family = family_named(words[2]);
    if (family == nullptr) {
        return 2;
    }
    // The table as it stands, so that rows of other families stay as they are.
    std::set<std::string> rows;
    std::string head;
    std::istringstream old(read_file(path));
    for (std::string line; std::getline(old, line);) {
        if (line.starts_with("#") || line.starts_with("key,")) {
            head += line + "\n";
        } else {
            rows.insert(line);
        }
    }
    cost_table table(read_file(path));
    std::vector<cost_key> wanted;
    std::set<std::string> seen;
    const auto want = [&](const cost_key& key) {
        if (seen.insert(text_of(key)).second && table.measured(key, *family) == nullptr) {
            wanted.push_back(key);
        }
    };
    for (std::string line; std::getline(std::cin, line);) {
        if (const auto key = key_of_text(line)) {
            for (const cost_key& driver : specimen_of(*key, "one").drivers) {
                want(driver);
            }
            want(*key);
        } else {
            std::cerr << "no key: " << line << '\n';
            return 2;
        }
    }
    measurement measure(*family, words[3]);
    std::cerr << family->name << ": " << wanted.size() << " to measure\n";
    for (std::size_t first = 0; first < wanted.size(); first += specimens_a_run) {
        const std::size_t last = std::min(wanted.size(), first + specimens_a_run);
        std::vector<std::vector<cost_key>> parts{
            {wanted.begin() + static_cast<std::ptrdiff_t>(first), wanted.begin() + static_cast<std::ptrdiff_t>(last)}};
        while (!parts.empty()) {
            const std::vector<cost_key> part = parts.back();
            parts.pop_back();
            const auto counts = measure.counts(part);
            if (!counts && part.size() > 1) {
                for (const cost_key& key : part) {
                    parts.push_back({key});
                }
                continue;
            }
            if (!counts) {
                std::cerr << "not measured: " << text_of(part.front()) << '\n';
                continue;
            }
            for (std::size_t number = 0; number < part.size(); ++number) {
                resource_counts own = (*counts)[number];
                for (const cost_key& driver : specimen_of(part[number], "one").drivers) {
                    const resource_counts* taken = table.measured(driver, *family);
                    if (taken == nullptr) {
                        own.look_up_tables = -1;
                        continue;
                    }
                    own.look_up_tables -= taken->look_up_tables;
                    own.flip_flops -= taken->flip_flops;
                    own.multipliers -= taken->multipliers;
                }
                const std::string row = text_of(part[number]) + "," + std::string(family->name) + "," +
                                        std::to_string(own.look_up_tables) + "," + std::to_string(own.flip_flops) +
                                        "," + std::to_string(own.multipliers);
                table.add(row);
                rows.insert(row);
                std::cerr << row << '\n';
            }
            write_table(path, head, rows);
        }
    }
    return 0;
}

}  // namespace
}  // namespace xfc::flow::test

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    if (words.size() >= 2 && words[0] == "keys") {
        return xfc::flow::test::print_keys(words);
    }
    if (words.size() == 4 && words[0] == "run") {
        return xfc::flow::test::run_measurements(words);
    }
    std::cerr << "Usage: measure_components keys PROG.c... [-- OPTION...] | run COSTS.csv FAMILY SECONDS\n";
    return 2;
}
