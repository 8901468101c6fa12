// Usage: measure_components keys PROG.c...
//        measure_components run COSTS.csv FAMILY SECONDS <KEYS
//        measure_components clocks COSTS.csv FAMILY <KEYS
// The first prints what the estimates of these programs ask for, a key a line, single precision and integers first and
// of these what is asked for most. The second measures those keys that the table lacks and adds them, a Yosys at a
// time, none for longer than SECONDS; what is measured is kept when it is ended.

#include <algorithm>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "base/fnv_hash.h"
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

constexpr std::size_t specimens_a_run = 2;

/// Constants of products are measured with so many rows; others are interpolated. Doubles have more of them.
constexpr std::int32_t digits_of_singles[] = {1, 7, 12};
constexpr std::int32_t digits_of_doubles[] = {1, 14, 20};

/// Sets of options whose components are measured, the first one with all kinds of operands.
const std::vector<std::vector<std::string>> option_sets = {
    {},
    {"--low-latency"},
    {"--multiplier-blocks", "on"},
    {"--mantissa", "36"},
    {"--output-registers", "off"},
    {"--shifter-registers", "off"},
    {"--normalize-inputs", "off"},
    {"--round-normalization", "off"},
    {"--round-conversions", "off"},
    {"--normalizer-speed", "1"},
    {"--mantissa", "36", "--low-latency"},
    {"--fast-reciprocal"},
};

bool has_doubles(const cost_key& key) {
    const component_row& row = row_of(key.component);
    for (const port_shape shape : {row.aa, row.bb, row.cc}) {
        const bus_form form = form_of(shape, key.generics);
        if (form == bus_form::double_float || form == bus_form::ydouble || form == bus_form::ydouble_multiplier) {
            return true;
        }
    }
    return false;
}

/// The keys that are measured so that this one's cost is known.
std::vector<cost_key> measured_for(const cost_key& key) {
    std::vector<cost_key> keys{without_operands(key)};
    const auto counted = std::find_if(key.operands.begin(), key.operands.end(),
                                      [](const operand_class& operand) { return operand.digits > 0; });
    if (counted == key.operands.end()) {
        keys.push_back(key);
        if (key.beside_opposite) {  // whichever of the two comes first
            keys.push_back(key);
            keys.back().subtract = !key.subtract && row_of(key.component).operation != component_operation::extreme;
        }
        return keys;
    }
    const auto place = static_cast<std::size_t>(counted - key.operands.begin());
    for (const std::int32_t digits : has_doubles(key) ? digits_of_doubles : digits_of_singles) {
        keys.push_back(key);
        keys.back().operands.at(place).digits = digits;
    }
    return keys;
}

/// Counts the keys of one program with one set of options.
bool count_keys(const std::string& program, const std::vector<std::string>& options,
                std::map<std::string, std::size_t>& counts) {
    std::vector<std::string> arguments{"build", program};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const parsed_line parsed = parse_command_line(arguments);
    diagnostics messages;
    source_map places;
    compilation_state state{parsed.line, messages, places};
    if (parsed.ends || !run_stages(state, true)) {
        std::cerr << program << ": " << parsed.text << rendered(messages, places);
        return false;
    }
    const std::vector<cost_key> keys = keys_of(*state.made, state.times.value());
    for (node_id id = 0; id < state.made->size(); ++id) {
        if ((*state.made)[id].kind == node_kind::instance) {
            const cost_key& key = keys[id];
            for (const cost_key& one : options.empty() ? measured_for(key) : std::vector{without_operands(key)}) {
                ++counts[text_of(one)];
            }
        }
    }
    return true;
}

int print_keys(const std::vector<std::string>& words) {
    std::set<std::string> printed;
    for (const std::vector<std::string>& options : option_sets) {
        std::map<std::string, std::size_t> counts;
        for (auto program = words.begin() + 1; program != words.end(); ++program) {
            if (!count_keys(*program, options, counts)) {
                return 1;
            }
        }
        std::vector<std::pair<std::string, std::size_t>> keys(counts.begin(), counts.end());
        std::stable_sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) {
            const bool a_is_double = has_doubles(*key_of_text(a.first));
            const bool b_is_double = has_doubles(*key_of_text(b.first));
            return a_is_double != b_is_double ? b_is_double : a.second > b.second;
        });
        for (const auto& [key, count] : keys) {
            if (printed.insert(key).second) {
                std::cout << key << '\n';
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
            const auto files = files_of(made.back().text, {language::verilog}, {});
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
            text += "(* keep_hierarchy *)\n" + verilog_text(*made.back().text);
            add_to_top(*made.back().text, top_ports, top_body);
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
            const std::string port(bus.name);
            const std::string name = what.name + "_" + port;
            ports += std::string(", ") + direction + " [" + std::to_string(bus.width) + ":1] " + name;
            connected += ", ." + port + "(" + name + ")";
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

/// A mark of the library's texts that make a component; another one when they have changed.
std::string mark_of(component_id component) {
    std::uint64_t mark = fnv_hash("");
    const auto files = files_for({row_of(component).name}, library_folder(), language::verilog);
    for (const library_file& file : files.value_or(std::vector<library_file>())) {
        mark = fnv_hash(file.text, mark);
    }
    std::ostringstream text;
    text << std::hex << std::setw(8) << std::setfill('0') << (mark >> 32U);
    return text.str();
}

/// The file that the costs stand in. Whatever happens while it is written, the old or the new one is there.
class cost_file {
public:
    explicit cost_file(std::string path) : path_(std::move(path)), table_(read_file(path_)) {
        std::istringstream old(read_file(path_));
        for (std::string line; std::getline(old, line);) {
            const std::size_t family = line.find(',');
            if (!line.starts_with("#") && !line.starts_with("key,") && family != std::string::npos) {
                rows_[line.substr(0, line.find(',', family + 1))] = line;
            }
        }
    }

    [[nodiscard]] const cost_table& table() const { return table_; }

    /// Whether the table has the key, of the component as it is now.
    bool is_measured(const cost_key& key, const family_row& family) {
        const auto found = rows_.find(name_of(key, family));
        const auto [mark, added] = marks_.try_emplace(key.component);
        mark->second = added ? mark_of(key.component) : mark->second;
        return found != rows_.end() && found->second.ends_with("," + mark->second);
    }

    /// `megahertz` 0: not known.
    void add(const cost_key& key, const family_row& family, const resource_counts& counts, double megahertz = 0) {
        std::ostringstream row;
        row << name_of(key, family) << ',' << counts.look_up_tables << ',' << counts.flip_flops << ','
            << counts.multipliers << ',';
        if (megahertz > 0) {
            row << std::fixed << std::setprecision(1) << megahertz;
        }
        row << ',' << mark_of(key.component);
        table_.add(row.str());
        rows_[name_of(key, family)] = row.str();
        std::cerr << row.str() << '\n';
    }

    void write(const std::string& tools) const {
        const std::time_t now = std::time(nullptr);
        std::tm day{};
        gmtime_r(&now, &day);
        std::ofstream file(path_ + ".new");
        file << "# Costs are those of single components, measured until " << std::put_time(&day, "%Y-%m-%d") << " with "
             << tools << ".\n"
             << "# Yosys made them as synth does; clocks are what nextpnr reaches with a component alone.\n"
             << "key,family,look-up tables,flip-flops,multiplier blocks,MHz,texts\n";
        for (const auto& [name, row] : rows_) {
            file << row << '\n';
        }
        file.close();
        fs::rename(path_ + ".new", path_);
    }

private:
    static std::string name_of(const cost_key& key, const family_row& family) {
        return text_of(key) + "," + std::string(family.name);
    }

    std::string path_;
    cost_table table_;
    std::map<std::string, std::string> rows_;  ///< by key and family
    std::map<component_id, std::string> marks_;
};

/// What a key's specimen takes without its conversions; nothing when one of these was not measured.
std::optional<resource_counts> without_drivers(const cost_key& key, resource_counts counts, const cost_table& table,
                                               const family_row& family) {
    for (const cost_key& driver : specimen_of(key, "one").drivers) {
        const resource_counts* taken = table.measured(driver, family);
        if (taken == nullptr) {
            return std::nullopt;
        }
        counts.look_up_tables -= taken->look_up_tables;
        counts.flip_flops -= taken->flip_flops;
        counts.multipliers -= taken->multipliers;
    }
    return counts;
}

/// The keys on the standard input that the table lacks or has of other texts, each behind its conversions.
std::optional<std::vector<cost_key>> wanted_keys(cost_file& file, const family_row& family) {
    std::vector<cost_key> wanted;
    std::set<std::string> seen;
    const auto want = [&](const cost_key& key) {
        if (seen.insert(text_of(key)).second && !file.is_measured(key, family)) {
            wanted.push_back(key);
        }
    };
    for (std::string line; std::getline(std::cin, line);) {
        const auto key = key_of_text(line);
        if (!key) {
            std::cerr << "no key: " << line << '\n';
            return std::nullopt;
        }
        for (const cost_key& driver : specimen_of(*key, "one").drivers) {
            want(driver);
        }
        want(*key);
    }
    return wanted;
}

std::string tools_text() {
    const temporary_folder folder;
    const bool ran = run_command({"yosys", "-V"}, folder.path()) == 0;
    const std::string said = ran ? read_file(folder.path() / "run.log") : "";
    return said.substr(0, said.find(" ("));
}

/// The clock of those keys that have none; nextpnr places one at a time.
int run_clocks(const std::vector<std::string>& words) {
    const family_row* family = family_named(words[2]);
    if (family == nullptr || !family->places || !is_on_path("nextpnr-ice40")) {
        std::cerr << "nothing places this family\n";
        return 2;
    }
    cost_file file(words[1]);
    for (std::string line; std::getline(std::cin, line);) {
        const auto key = key_of_text(line);
        const resource_counts* counts = key ? file.table().measured(*key, *family) : nullptr;
        if (counts == nullptr || text_of(*key) != text_of(without_operands(*key)) || !file.is_measured(*key, *family) ||
            file.table().clock_of(*key, *family) > 0) {
            continue;
        }
        const specimen one = specimen_of(*key, "specimen");
        const temporary_folder folder;
        diagnostics messages;
        const auto files = files_of(one.text, {language::verilog}, {});
        if (!files || !write_files(folder.path(), *files, messages)) {
            return 2;
        }
        const synthesis_result result = synthesize(*one.text, *family, 1, folder.path());
        if (result.placed) {
            file.add(*key, *family, *counts, result.placed->megahertz);
            file.write(tools_text());
        } else {
            std::cerr << "not placed: " << line << '\n';
        }
    }
    return 0;
}

int run_measurements(const std::vector<std::string>& words) {
    const family_row* family = family_named(words[2]);
    cost_file file(words[1]);
    const std::string tools = tools_text();
    if (family == nullptr || tools.empty()) {
        std::cerr << (family == nullptr ? "no such family\n" : "yosys is not installed\n");
        return 2;
    }
    const auto wanted = wanted_keys(file, *family);
    if (!wanted) {
        return 2;
    }
    std::cerr << family->name << ": " << wanted->size() << " to measure\n";
    measurement measure(*family, words[3]);
    std::vector<std::vector<cost_key>> parts;
    for (std::size_t last = wanted->size(); last > 0;) {  // the first ones at the end, where they are taken
        const std::size_t first = (last - 1) / specimens_a_run * specimens_a_run;
        parts.emplace_back(wanted->begin() + static_cast<std::ptrdiff_t>(first),
                           wanted->begin() + static_cast<std::ptrdiff_t>(last));
        last = first;
    }
    while (!parts.empty()) {
        const std::vector<cost_key> part = std::move(parts.back());
        parts.pop_back();
        const auto counts = measure.counts(part);
        if (!counts && part.size() > 1) {
            for (auto key = part.rbegin(); key != part.rend(); ++key) {
                parts.push_back({*key});
            }
            continue;
        }
        for (std::size_t number = 0; number < part.size(); ++number) {
            const auto own =
                counts ? without_drivers(part[number], (*counts)[number], file.table(), *family) : std::nullopt;
            if (own) {
                file.add(part[number], *family, *own);
            } else {
                std::cerr << "not measured: " << text_of(part[number]) << '\n';
            }
        }
        file.write(tools);
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
    if (words.size() == 3 && words[0] == "clocks") {
        return xfc::flow::test::run_clocks(words);
    }
    if (words.size() == 4 && words[0] == "run") {
        return xfc::flow::test::run_measurements(words);
    }
    std::cerr << "Usage: measure_components keys PROG.c... | run COSTS.csv FAMILY SECONDS <KEYS | clocks COSTS.csv "
                 "FAMILY <KEYS\n";
    return 2;
}
