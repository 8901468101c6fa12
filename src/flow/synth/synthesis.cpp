#include "flow/synth/synthesis.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "flow/emit/template.h"
#include "flow/simulate/process.h"

namespace xfc::flow {

namespace fs = std::filesystem;

namespace {

using json = nlohmann::json;

constexpr std::string_view placer = "nextpnr-ice40";

constexpr std::string_view scan_module =
    R"(// @name@ between two shift registers, so that a device with few pins holds it.
module xfcflow_scan
  (input sysclk, reset, enable, startin, scan_in, capture,
   output scan_out, startout);

  reg [@inputs@:1] operands;
  reg [@outputs@:1] results;
  wire [@outputs@:1] delivered;
  always @at@(posedge sysclk)
    begin
      operands <= {operands, scan_in};
      results <= capture ? delivered : {results, scan_in};
    end
  assign scan_out = results[@outputs@];

  @name@ design
    (.sysclk(sysclk), .reset(reset), .enable(enable), .startin(startin),
@ports@     .startout(startout));
endmodule
)";

constexpr std::string_view script =
    "read_verilog @files@; @synthesis@ -top @top@; tee -q -o @top@_stat.json stat -json; write_json @top@.json";

using instances_by_label = std::map<std::string, path_stretch, std::less<>>;

instances_by_label instances_of(const datapath& what) {
    instances_by_label all;
    what.for_each_instance([&](const instance_text& one) {
        all[std::string(one.label)] = {
            .instance = std::string(one.label), .component = one.component, .comment = std::string(one.comment)};
    });
    return all;
}

/// The instance that a cell's name tells: "sum_x_i.round.up_SB_LUT4_O" is of sum_x_i, in its step round.
path_stretch stretch_of(std::string_view cell, const instances_by_label& instances) {
    constexpr std::string_view wrapper = "design.";
    if (cell.starts_with(wrapper)) {
        cell.remove_prefix(wrapper.size());
    }
    const std::string_view label = cell.substr(0, cell.find('.'));
    const auto found = instances.find(label);
    if (found == instances.end()) {
        return {};
    }
    path_stretch stretch = found->second;
    const std::string_view rest = cell.substr(std::min(cell.size(), label.size() + 1));
    if (rest.find('.') != std::string_view::npos) {
        stretch.step = rest.substr(0, rest.find('.'));
    }
    return stretch;
}

std::string version_of(std::string_view text) {
    const std::size_t end = text.find_first_of("(\n");
    std::string version(text.substr(0, end));
    while (!version.empty() && version.back() == ' ') {
        version.pop_back();
    }
    return version;
}

/// Runs Yosys for one top; what it said when it failed.
std::string run_yosys(const fs::path& folder, const std::string& files, const family_row& family,
                      const std::string& top, const std::function<void()>& meanwhile) {
    const std::string commands =
        filled_template(script, {{"files", files}, {"synthesis", std::string(family.synthesis)}, {"top", top}});
    const int status = run_command({"yosys", "-q", "-p", commands}, folder, meanwhile);
    return status == 0 ? "" : "yosys ended with status " + std::to_string(status) + "\n" + end_of_log(folder);
}

}  // namespace

std::optional<resource_counts> counts_of(std::string_view statistics, const family_row& family) {
    const json all = json::parse(statistics, nullptr, false);
    const json::json_pointer cells("/design/num_cells_by_type");
    if (all.is_discarded() || !all.contains(cells)) {
        return std::nullopt;
    }
    resource_counts counts;
    for (const auto& [type, number] : all[cells].items()) {
        const auto row = std::find_if(
            family.cells.begin(), family.cells.end(),
            [&, name = std::string_view(type)](const cell_row& one) { return name.starts_with(one.prefix); });
        if (row != family.cells.end()) {
            std::int64_t& count = row->kind == resource::look_up_table ? counts.look_up_tables
                                  : row->kind == resource::flip_flop   ? counts.flip_flops
                                                                       : counts.multipliers;
            count += row->each * number.get<std::int64_t>();
        }
    }
    return counts;
}

std::optional<placement> placement_of(std::string_view report, const datapath& what) {
    const json all = json::parse(report, nullptr, false);
    if (all.is_discarded() || !all.contains("fmax") || all["fmax"].empty()) {
        return std::nullopt;
    }
    const instances_by_label instances = instances_of(what);
    placement placed{.megahertz = all["fmax"].begin().value().value("achieved", 0.0)};
    for (const json& path : all.value("critical_paths", json::array())) {
        const bool between_registers = path["from"].get<std::string>().starts_with("posedge") &&
                                       path["to"].get<std::string>().starts_with("posedge");
        if (!between_registers) {
            continue;
        }
        for (const json& part : path["path"]) {
            // A wire belongs to what drives it.
            const json& end = part["type"] == "routing" ? part["from"] : part["to"];
            path_stretch next = stretch_of(end["cell"].get<std::string>(), instances);
            if (placed.path.empty() || placed.path.back().instance != next.instance ||
                placed.path.back().step != next.step) {
                placed.path.push_back(std::move(next));
            }
            placed.path.back().nanoseconds += part["delay"].get<double>();
        }
        break;
    }
    return placed;
}

std::string scan_text(const datapath& what) {
    std::string ports;
    std::int32_t inputs = 0;
    std::int32_t outputs = 0;
    const auto add = [&](const bus_text& bus, const char* all, std::int32_t& bits) {
        const std::string low = std::to_string(bits + 1);
        bits += bus.width;
        ports.append("     .").append(bus.name).append("(").append(all);
        ports.append("[").append(std::to_string(bits)).append(":").append(low).append("]),\n");
    };
    for (const bus_text& bus : what.inputs) {
        add(bus, "operands", inputs);
    }
    for (const output_text& output : what.outputs) {
        add(output.bus, "delivered", outputs);
    }
    return filled_template(scan_module, {{"name", what.name},
                                         {"at", "@"},
                                         {"inputs", std::to_string(std::max(1, inputs))},
                                         {"outputs", std::to_string(outputs)},
                                         {"ports", ports}});
}

synthesis_result synthesize(const datapath& what, const family_row& family, int seed, const fs::path& folder,
                            const std::function<void()>& meanwhile) {
    synthesis_result result;
    std::string files;
    std::istringstream list(read_file(folder / (what.name + "_verilog.f")));
    for (std::string file; std::getline(list, file);) {
        files += " " + file;
    }
    if (run_command({"yosys", "-V"}, folder) == 0) {
        result.tools = version_of(read_file(folder / "run.log"));
    }
    result.failure = run_yosys(folder, files, family, what.name, meanwhile);
    if (!result.failure.empty()) {
        return result;
    }
    const auto counts = counts_of(read_file(folder / (what.name + "_stat.json")), family);
    if (!counts) {
        result.failure = "yosys wrote no statistics";
        return result;
    }
    result.counts = *counts;
    if (!family.places || !is_on_path(placer)) {
        return result;
    }
    std::ofstream(folder / "xfcflow_scan.v") << scan_text(what);
    result.failure = run_yosys(folder, files + " xfcflow_scan.v", family, "xfcflow_scan", meanwhile);
    if (!result.failure.empty()) {
        return result;
    }
    const std::vector<std::string> command = {std::string(placer),
                                              "-q",
                                              "--hx8k",
                                              "--package",
                                              "ct256",
                                              "--json",
                                              "xfcflow_scan.json",
                                              "--seed",
                                              std::to_string(seed),
                                              "--freq",
                                              "150",
                                              "--timing-allow-fail",
                                              "--pcf-allow-unconstrained",
                                              "--report",
                                              "report.json"};
    const int status = run_command(command, folder, meanwhile);
    if (status == 0) {
        result.placed = placement_of(read_file(folder / "report.json"), what);
        return result;
    }
    // A design that does not fit is no failure: its counts say so.
    result.fits = read_file(folder / "run.log").find("Unable to") == std::string::npos;
    if (result.fits) {
        result.failure =
            std::string(placer) + " ended with status " + std::to_string(status) + "\n" + end_of_log(folder);
    }
    return result;
}

}  // namespace xfc::flow
