#include "prover.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "bench.h"
#include "contract.h"
#include "entity_text.h"
#include "generic_sets.h"
#include "model/model_list.h"
#include "vectors.h"

namespace xfc::proof {

namespace fs = std::filesystem;

std::string output_of(const std::string& command, int& status) {
    std::string text;
    std::FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        status = -1;
        return "cannot start a shell";
    }
    std::array<char, 4096> part{};
    while (const std::size_t read = std::fread(part.data(), 1, part.size(), pipe)) {
        text.append(part.data(), read);
    }
    status = pclose(pipe);
    return text;
}

std::vector<fs::path> texts_of(const component_row& row, const fs::path& library, std::string_view extension) {
    std::vector<fs::path> texts;
    for (const char* folder : {"common", ""}) {
        const fs::path place = library / (*folder != 0 ? fs::path(folder) : fs::path(row.name));
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(place)) {
            if (entry.path().extension() == extension && entry.path().stem() != row.name) {
                found.push_back(entry.path());
            }
        }
        std::sort(found.begin(), found.end());
        texts.insert(texts.end(), found.begin(), found.end());
    }
    texts.push_back(library / row.name / (std::string(row.name) + std::string(extension)));
    return texts;
}

std::vector<component_generics> sets_to_prove(const component_row& row, const prover_settings& settings) {
    return settings.all_sets ? generic_sets(row) : covering_sets(row);
}

std::string quoted(const std::vector<fs::path>& paths) {
    std::string text;
    for (const fs::path& path : paths) {
        text += " '" + path.string() + "'";
    }
    return text;
}

namespace {

/// Sets a bench: few enough that every tool compiles them quickly.
constexpr std::size_t sets_a_bench = 24;

std::string read_file(const fs::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

void write_file(const fs::path& path, const std::string& text) { std::ofstream(path) << text; }

std::string hex(bus_bits value) {
    std::string text;
    do {
        text.insert(text.begin(), "0123456789abcdef"[static_cast<unsigned>(value & 15U)]);
        value >>= 4U;
    } while (value != 0);
    return text;
}

std::string text_of_operands(const component_row& row, const component_operands& operands) {
    std::string text = "aa=" + hex(operands.aa);
    if (row.bb != port_shape::none) {
        text += " bb=" + hex(operands.bb);
    }
    if (const std::string_view control = control_port_of(row); !control.empty()) {
        text.append(" ").append(control).append(operands.addsub || operands.condition ? "=1" : "=0");
    }
    return text;
}

/// A run of one component's proof.
class run {
public:
    run(const component_row& row, const prover_settings& settings) : row_(row), settings_(settings) {}

    std::vector<std::string> all() {
        check_heads();
        model_ = model_named(row_.name);
        for (const contract_row& each : contracts()) {
            if (each.name == row_.name) {
                contract_ = each.promised;
            }
        }
        if (model_ == nullptr || contract_ == nullptr) {
            fail(model_ == nullptr ? "there is no model" : "there is no contract");
            return failures_;
        }
        // Sets that read buses of the same widths read the same operands.
        std::map<std::pair<std::int32_t, std::int32_t>, std::vector<component_generics>> groups;
        for (const component_generics& generics : sets_to_prove(row_, settings_)) {
            groups[{bus_width(row_.aa, generics), bus_width(row_.bb, generics)}].push_back(generics);
        }
        for (const auto& [widths, sets] : groups) {
            for (std::size_t first = 0; first < sets.size(); first += sets_a_bench) {
                prove_group({sets.begin() + static_cast<std::ptrdiff_t>(first),
                             sets.begin() + static_cast<std::ptrdiff_t>(std::min(first + sets_a_bench, sets.size()))});
            }
        }
        std::cout << row_.name << ": largest error " << worst_ << " (" << contract_->promise << ")";
        if (worst_ > 0) {
            std::cout << " at " << worst_operands_;
        }
        std::cout << '\n';
        return failures_;
    }

private:
    void fail(const std::string& what) { failures_.push_back(std::string(row_.name) + ": " + what); }

    void check_heads() {
        const entity_head wanted = head_of(row_);
        const std::string vhdl = read_file(texts_of(row_, settings_.library, ".vhd").back());
        const std::string verilog = read_file(texts_of(row_, settings_.library, ".v").back());
        for (const auto& [language, head] : {std::pair{"VHDL", read_vhdl_head(vhdl, row_.name)},
                                             std::pair{"Verilog", read_verilog_head(verilog, row_.name)}}) {
            const std::string difference = difference_of(head, wanted);
            if (!difference.empty()) {
                fail(std::string(language) + ": " + difference);
            }
        }
    }

    /// Every result against the contract, and which sets share their results.
    void fill_results(bench& layout, std::vector<bench_line>& lines) {
        for (bench_set& set : layout.sets) {
            const std::int32_t width = bus_width(row_.cc, set.generics);
            std::vector<bus_bits> results(lines.size());
            std::size_t broken = 0;
            for (std::size_t i = 0; i < lines.size(); ++i) {
                const component_operands& operands = lines[i].operands;
                results[i] = model_(set.generics, operands);
                const verdict judged = contract_->check(set.generics, operands, results[i]);
                if ((!judged.met || (results[i] & ~low_ones(width)) != 0) && broken++ == 0) {
                    fail(text_of(row_, set.generics) + ": the model breaks the contract: " +
                         text_of_operands(row_, operands) + " gives " + hex(results[i]));
                }
                if (judged.error > worst_) {
                    worst_ = judged.error;
                    worst_operands_ = text_of_operands(row_, operands) + " with " + text_of(row_, set.generics);
                }
            }
            set.result_class = class_of(layout, lines, results, width);
        }
    }

    static std::size_t class_of(bench& layout, std::vector<bench_line>& lines, const std::vector<bus_bits>& results,
                                std::int32_t width) {
        for (std::size_t column = 0; column < layout.class_widths.size(); ++column) {
            std::size_t i = 0;
            while (i < lines.size() && lines[i].results[column] == results[i]) {
                ++i;
            }
            if (i == lines.size() && layout.class_widths[column] == width) {
                return column;
            }
        }
        for (std::size_t i = 0; i < lines.size(); ++i) {
            lines[i].results.push_back(results[i]);
        }
        layout.class_widths.push_back(width);
        return layout.class_widths.size() - 1;
    }

    void prove_group(const std::vector<component_generics>& sets) {
        bench layout{.row = &row_,
                     .sets = {},
                     .class_widths = {},
                     .aa_width = bus_width(row_.aa, sets.front()),
                     .bb_width = bus_width(row_.bb, sets.front())};
        for (const component_generics& generics : sets) {
            layout.sets.push_back({.generics = generics, .latency = row_.latency(generics)});
        }
        // Of four lines three are taken; the others must leave no trace.
        const auto operands = make_vectors(row_, *contract_, sets.front(),
                                           settings_.vectors + settings_.vectors / 3 + measured_lines, settings_.seed);
        std::vector<bench_line> lines(operands.size());
        random_source random(settings_.seed + 1);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            lines[i].operands = operands[i];
            lines[i].enable = random() % 4 != 0;
            lines[i].reset = random() % 8 == 0;
        }
        fill_results(layout, lines);
        if (settings_.simulators.empty()) {
            return;
        }

        const fs::path place = settings_.work / (std::string(row_.name) + "_" + std::to_string(groups_++));
        fs::remove_all(place);
        fs::create_directories(place);
        write_vectors(place / "vectors.txt", layout, lines);
        write_file(place / "bench.v", verilog_bench(layout));
        write_file(place / "bench.vhd", vhdl_bench(layout));
        for (const std::string& simulator : settings_.simulators) {
            lint(layout, simulator);
            simulate(layout, lines, simulator, place);
        }
    }

    /// The tools' own remarks on a component count as failures.
    void lint(const bench& layout, const std::string& simulator) {
        if (simulator == "ghdl") {
            return;
        }
        const bool verilator = simulator == "verilator";
        for (const bench_set& set : layout.sets) {
            std::string parameters;
            for (const generic_row& generic : row_.generics) {
                parameters += (verilator ? " -G" : " -P" + std::string(row_.name) + ".") + std::string(generic.name) +
                              "=" + std::to_string(generic_value(generic, set.generics));
            }
            const auto texts = quoted(texts_of(row_, settings_.library, ".v"));
            const std::string command =
                verilator ? "verilator --lint-only -Wall --top-module " + std::string(row_.name) + parameters +
                                " -y '" + (settings_.library / "common").string() + "' -y '" +
                                (settings_.library / row_.name).string() + "' " +
                                quoted({settings_.library / row_.name / (std::string(row_.name) + ".v")})
                          : "iverilog -g2001 -Wall -t null -s " + std::string(row_.name) + parameters + texts;
            int status = 0;
            const std::string remarks = output_of(command, status);
            if (status != 0 || !remarks.empty()) {
                fail(simulator + ", " + text_of(row_, set.generics) + ": " + remarks.substr(0, 600));
                return;
            }
        }
    }

    void simulate(const bench& layout, const std::vector<bench_line>& lines, const std::string& simulator,
                  const fs::path& place) {
        const std::string verilog = quoted(texts_of(row_, settings_.library, ".v"));
        const std::string vhdl = quoted(texts_of(row_, settings_.library, ".vhd"));
        // What runs for a moment alone is not worth the compiler's optimization.
        const std::string optimization =
            lines.size() < 100'000 ? " -MAKEFLAGS 'OPT_FAST=-O0 OPT_GLOBAL=-O0'" : " -O3 -MAKEFLAGS OPT_FAST=-O1";
        const std::map<std::string, std::string> commands{
            {"icarus", "iverilog -g2001 -o icarus.vvp -s bench bench.v" + verilog + " && vvp -n icarus.vvp"},
            {"verilator", "verilator --binary -Wno-lint -Wno-style --output-split 100000" + optimization +
                              " --top-module bench -Mdir verilated -o bench bench.v" + verilog +
                              " >verilated.log || { cat verilated.log; exit 1; }; verilated/bench"},
            {"ghdl", "ghdl -i --std=93" + vhdl + " '" + (settings_.benches / "bench_text.vhd").string() +
                         "' bench.vhd && ghdl -m --std=93 bench && ghdl -r --std=93 bench --ieee-asserts=disable"},
        };
        const auto command = commands.find(simulator);
        if (command == commands.end()) {
            fail("there is no simulator " + simulator);
            return;
        }
        int status = 0;
        const std::string output = output_of("cd '" + place.string() + "' && { " + command->second + "; }", status);
        judge(layout, lines, simulator, status, output);
    }

    void judge(const bench& layout, const std::vector<bench_line>& lines, const std::string& simulator, int status,
               const std::string& output) {
        std::istringstream text(output);
        std::vector<std::vector<std::int32_t>> latencies(layout.sets.size());
        std::size_t done = 0;
        for (std::string word; text >> word;) {
            std::size_t set = 0;
            if (word == "LATENCY" && text >> set && set < latencies.size()) {
                text >> latencies[set].emplace_back();
            } else if (word == "MISMATCH" && text >> set && set < latencies.size()) {
                std::size_t operand = 0;
                std::string bits;
                text >> operand >> bits;
                fail(simulator + ", " + text_of(row_, layout.sets[set].generics) + ": " +
                     mismatch(layout.sets[set], lines, operand, bits));
            } else if (word == "DONE") {
                text >> done;
            }
        }
        if (status != 0 || done != lines.size()) {
            fail(simulator + " did not come to the end: " + output.substr(0, 2000));
            return;
        }
        for (std::size_t set = 0; set < layout.sets.size(); ++set) {
            const auto& measured = latencies[set];
            const std::int32_t wanted = layout.sets[set].latency;
            if (measured.size() != 1 || measured.front() != wanted) {
                fail(simulator + ", " + text_of(row_, layout.sets[set].generics) + ": measured latency " +
                     (measured.empty() ? "none" : std::to_string(measured.front())) +
                     (measured.size() > 1 ? " and others" : "") + ", the row says " + std::to_string(wanted));
            }
        }
    }

    [[nodiscard]] std::string mismatch(const bench_set& set, const std::vector<bench_line>& lines, std::size_t operand,
                                       const std::string& bits) const {
        for (const bench_line& line : lines) {
            if (line.enable && operand-- == 0) {
                std::string expected;
                for (std::size_t i = bits.size(); i-- > 0;) {
                    expected += bit(line.results[set.result_class], static_cast<std::int32_t>(i)) ? '1' : '0';
                }
                return text_of_operands(row_, line.operands) + " gives " + bits + ", the model says " + expected;
            }
        }
        return "the last operand, still on its way, gives " + bits;
    }

    const component_row& row_;
    const prover_settings& settings_;
    component_model model_ = nullptr;
    const contract* contract_ = nullptr;
    std::vector<std::string> failures_;
    std::size_t groups_ = 0;
    double worst_ = 0;
    std::string worst_operands_;
};

}  // namespace

std::vector<std::string> write_measured(const component_row& row, const prover_settings& settings,
                                        const std::vector<std::string>& settled) {
    component_generics generics;
    for (const std::string& setting : settled) {
        const std::size_t equals = setting.find('=');
        const auto generic = std::find_if(row.generics.begin(), row.generics.end(), [&](const generic_row& each) {
            return each.name == std::string_view(setting).substr(0, equals);
        });
        if (generic == row.generics.end()) {
            return {std::string(row.name) + " has no generic for " + setting};
        }
        const bool chosen = generic->flag != generic_row::no_flag;
        generics.*generic->field = chosen ? generic->flag : std::atoi(setting.c_str() + equals + 1);
    }
    const bench layout{.row = &row,
                       .sets = {{.generics = generics, .latency = row.latency(generics)}},
                       .class_widths = {bus_width(row.cc, generics)},
                       .aa_width = bus_width(row.aa, generics),
                       .bb_width = bus_width(row.bb, generics)};
    fs::create_directories(settings.work);
    write_file(settings.work / "measured.v", scan_wrapper(layout));
    std::cout << row.name << " | " << text_of(row, generics) << " | " << row.latency(generics) << '\n';
    return {};
}

std::vector<std::string> prove_component(const component_row& row, const prover_settings& settings) {
    return run(row, settings).all();
}

}  // namespace xfc::proof
