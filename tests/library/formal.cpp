// With every register bypassed a component is a function; for each set of generics its VHDL, synthesized by GHDL, and
// its Verilog become one miter, and the miter's output is proven constant.

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>

#include "generic_sets.h"
#include "prover.h"

namespace xfc::proof {

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t seconds_a_set = 600;

/// The component's texts with the bypassed register in place of the real one.
std::vector<fs::path> bypassed_texts(const component_row& row, const prover_settings& settings,
                                     std::string_view extension) {
    std::vector<fs::path> texts = texts_of(row, settings.library, extension);
    const fs::path file = "xfc_register" + std::string(extension);
    std::replace_if(
        texts.begin(), texts.end(), [&](const fs::path& text) { return text.filename() == file; },
        settings.benches / "formal" / file);
    return texts;
}

std::string settings_of(const component_row& row, const component_generics& generics, std::string_view each_before,
                        std::string_view between) {
    std::string text;
    for (const generic_row& generic : row.generics) {
        text += std::string(each_before) + std::string(generic.name) + std::string(between) +
                std::to_string(generic_value(generic, generics));
    }
    return text;
}

void write_script(const fs::path& path, const component_row& row, const component_generics& generics,
                  const prover_settings& settings) {
    const std::string name(row.name);
    std::ofstream script(path);
    const auto read = [&](const std::string& files, const std::string& parameters, const char* side) {
        script << "read_verilog " << files << '\n';
        if (!parameters.empty()) {
            script << "chparam" << parameters << ' ' << name << '\n';
        }
        script << "hierarchy -check -top " << name << "\nproc\nflatten\nopt -full\nmemory\nopt -full\n"
               << "rename -top " << side << "\ndesign -stash " << side << '\n';
    };
    std::string verilog;
    for (const fs::path& text : bypassed_texts(row, settings, ".v")) {
        verilog += text.string() + ' ';
    }
    read("vhdl.v", "", "gold");
    read(verilog, settings_of(row, generics, " -set ", " "), "gate");
    script << "design -copy-from gold -as gold gold\ndesign -copy-from gate -as gate gate\n"
           << "miter -equiv -flatten gold gate miter\nhierarchy -top miter\nopt -full\ntechmap\nopt\naigmap\n"
           << "opt_clean\nwrite_aiger miter.aig\n";
}

/// "proven", "different", "not decided" or what a tool said.
std::string prove_set(const component_row& row, const component_generics& generics, const prover_settings& settings,
                      const fs::path& place) {
    const std::string name(row.name);
    write_script(place / "miter.ys", row, generics, settings);
    const std::string steps = "cd '" + place.string() + "' && ghdl -i --std=93" +
                              quoted(bypassed_texts(row, settings, ".vhd")) + " && ghdl -m --std=93 " + name +
                              " && ghdl --synth --std=93 --out=verilog" + settings_of(row, generics, " -g", "=") + " " +
                              name + " >vhdl.v && yosys -q -s miter.ys";
    int status = 0;
    const std::string built = output_of(steps, status);
    if (status != 0) {
        return built.substr(0, 1500);
    }
    // Should it not heed the first signal, it is killed.
    const std::string said =
        output_of("cd '" + place.string() + "' && timeout --kill-after=10 " + std::to_string(seconds_a_set) +
                      " yosys-abc -c 'read miter.aig; strash; iprove'",
                  status);
    if (said.find("UNSATISFIABLE") != std::string::npos) {
        return "proven";
    }
    return said.find("SATISFIABLE") != std::string::npos ? "different" : "not decided";
}

}  // namespace

std::vector<std::string> prove_formally(const component_row& row, const prover_settings& settings) {
    std::vector<std::string> failures;
    const fs::path place = settings.work / (std::string(row.name) + "_formal");
    std::size_t proven = 0;
    std::size_t undecided = 0;
    // Sets without multiplier blocks first: the others are rarely decided.
    std::vector<component_generics> sets = sets_to_prove(row, settings);
    std::stable_sort(sets.begin(), sets.end(), [](const component_generics& one, const component_generics& other) {
        return one.synthesize < other.synthesize;
    });
    for (const component_generics& generics : sets) {
        if (undecided == 1 && proven == 0) {
            std::cout << row.name << ": the other " << sets.size() - 1 << " sets of generics were not tried\n";
            break;
        }
        fs::remove_all(place);
        fs::create_directories(place);
        const std::string outcome = prove_set(row, generics, settings, place);
        if (outcome == "proven") {
            ++proven;
        } else if (outcome == "not decided") {
            ++undecided;
            std::cout << row.name << ", " << text_of(row, generics) << ": not decided" << std::endl;
        } else {
            failures.push_back(std::string(row.name) + ", " + text_of(row, generics) +
                               ": VHDL and Verilog: " + outcome);
        }
    }
    std::cout << row.name << ": VHDL and Verilog proven equal for " << proven << " sets of generics, " << undecided
              << " not decided in " << seconds_a_set << " s\n";
    return failures;
}

}  // namespace xfc::proof
