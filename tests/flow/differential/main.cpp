// Random programs through `xfcflow simulate`: the model against the exact results and the host's compiler, and, where
// simulators are named, the hardware against the model.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "flow/differential/program_writer.h"
#include "flow/driver/commands.h"

namespace {

namespace fs = std::filesystem;

struct question {
    std::uint64_t programs = 50;
    std::uint64_t first = 1;
    int vectors = 60;
    std::vector<std::string> simulators = {"none"};
    std::string keep = ".";
};

struct tally {
    std::uint64_t agree = 0;
    std::uint64_t failed = 0;
    std::uint64_t outputs = 0;
    std::uint64_t vectors = 0;
    std::uint64_t apart = 0;
    std::uint64_t with_host = 0;
};

void count(tally& all, const nlohmann::json& report) {
    ++all.agree;
    all.with_host += report.at("host").at("ran").get<bool>() ? 1U : 0U;
    for (const auto& row : report.at("accuracy")) {
        ++all.outputs;
        all.vectors += row.at("vectors").get<std::uint64_t>();
        all.apart += row.at("vectors").get<std::uint64_t>() - row.at("measured").get<std::uint64_t>();
    }
}

/// Whether the program does all that it should. Programs that do not are kept beside their report.
void try_program(std::uint64_t number, const question& asked, const fs::path& folder, tally& all) {
    const xfc::flow::test::written_program made = xfc::flow::test::write_program(number);
    const fs::path source = folder / "program.c";
    std::ofstream(source) << made.text;
    for (const std::string& simulator : asked.simulators) {
        std::vector<std::string> arguments = {"simulate",
                                              source.string(),
                                              "--json",
                                              "--vectors",
                                              std::to_string(asked.vectors),
                                              "--simulator",
                                              simulator,
                                              "--seed",
                                              std::to_string(number),
                                              "--lang",
                                              simulator == "ghdl" ? "vhdl" : "verilog"};
        arguments.insert(arguments.end(), made.options.begin(), made.options.end());
        std::ostringstream out;
        std::ostringstream error;
        const int status = xfc::flow::run(arguments, out, error, false);
        const auto report = nlohmann::json::parse(out.str(), nullptr, false);
        if (status == 0 && !report.is_discarded() && report["agrees"] == true && report["host"]["ran"] == true) {
            count(all, report);
            continue;
        }
        ++all.failed;
        const fs::path kept = fs::path(asked.keep) / ("program_" + std::to_string(number) + ".c");
        fs::copy_file(source, kept, fs::copy_options::overwrite_existing);
        std::cout << kept.string() << ":";
        for (const std::string& word : arguments) {
            std::cout << ' ' << word;
        }
        std::cout << '\n' << (report.is_discarded() ? out.str() + error.str() : report["messages"].dump(2)) << '\n';
        if (!report.is_discarded() && report.contains("host") && report["host"].contains("why_not")) {
            std::cout << report["host"]["why_not"].get<std::string>() << '\n';
        }
        break;
    }
}

}  // namespace

int main(int count, char** words) {
    question asked;
    bool show = false;
    CLI::App app{"Tries xfcflow on random programs."};
    app.add_option("--programs", asked.programs, "how many");
    app.add_option("--first", asked.first, "number of the first one");
    app.add_option("--vectors", asked.vectors, "vectors a program");
    app.add_option("--simulators", asked.simulators, "ghdl, iverilog, verilator, none")->delimiter(',');
    app.add_option("--keep", asked.keep, "folder for programs that fail");
    app.add_flag("--show", show, "print the first program and its options and end");
    CLI11_PARSE(app, count, words);
    if (show) {
        const xfc::flow::test::written_program made = xfc::flow::test::write_program(asked.first);
        std::cout << made.text << "//";
        for (const std::string& option : made.options) {
            std::cout << ' ' << option;
        }
        std::cout << '\n';
        return 0;
    }
    std::string wanted = (fs::temp_directory_path() / "differential.XXXXXX").string();
    const fs::path folder = mkdtemp(wanted.data()) == nullptr ? fs::path() : fs::path(wanted);
    if (folder.empty()) {
        return 2;
    }
    tally all;
    for (std::uint64_t number = asked.first; number < asked.first + asked.programs; ++number) {
        try_program(number, asked, folder, all);
    }
    fs::remove_all(folder);
    std::cout << asked.programs << " programs: " << all.agree << " runs agree, " << all.failed << " fail; "
              << all.with_host << " runs beside the host's compiler, " << all.outputs << " outputs, " << all.vectors
              << " results, " << all.apart << " of them counted apart\n";
    return all.failed == 0 && all.agree > 0 ? 0 : 1;
}
