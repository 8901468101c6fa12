#include "flow/driver/synth.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "flow/driver/build.h"
#include "flow/driver/progress.h"
#include "flow/driver/report.h"
#include "flow/simulate/process.h"
#include "flow/synth/synthesis.h"

namespace xfc::flow {

namespace {

using json = nlohmann::ordered_json;

std::string text_of(const synthesis_result& result, const built_design& what, const family_row& family) {
    std::ostringstream text;
    text << what.text->name << " for " << family.text << " by " << result.tools << ": " << result.counts.look_up_tables
         << " look-up tables, " << result.counts.flip_flops << " flip-flops, " << result.counts.multipliers
         << " multiplier blocks\n";
    if (!result.fits) {
        text << "It does not fit an HX8K, so there is no clock.\n";
    }
    if (!result.placed) {
        return text.str();
    }
    text << std::fixed << std::setprecision(1) << "Highest clock " << result.placed->megahertz
         << " MHz in an HX8K, limited by the path\n";
    for (const path_stretch& stretch : result.placed->path) {
        text << "  " << std::setprecision(2) << std::setw(6) << stretch.nanoseconds << " ns  ";
        if (stretch.instance.empty()) {
            text << "the design's own registers\n";
            continue;
        }
        text << stretch.instance << ", " << stretch.component << (stretch.step.empty() ? "" : ", step " + stretch.step)
             << (stretch.comment.empty() ? "" : "; " + stretch.comment) << '\n';
    }
    return text.str();
}

json json_of(const synthesis_result& result, const built_design& what, const family_row& family) {
    json all = {{"design", what.text->name},
                {"family", family.name},
                {"tools", result.tools},
                {"look_up_tables", result.counts.look_up_tables},
                {"flip_flops", result.counts.flip_flops},
                {"multipliers", result.counts.multipliers},
                {"fits", result.fits}};
    if (result.placed) {
        all["megahertz"] = result.placed->megahertz;
        all["path"] = json::array();
        for (const path_stretch& stretch : result.placed->path) {
            all["path"].push_back({{"instance", stretch.instance},
                                   {"component", stretch.component},
                                   {"step", stretch.step},
                                   {"comment", stretch.comment},
                                   {"nanoseconds", stretch.nanoseconds}});
        }
    }
    return all;
}

/// The result for a design that was built; nothing when the messages say why not.
std::optional<synthesis_result> synthesized(const built_design& what, const command_line& line, diagnostics& messages,
                                            std::ostream& error) {
    const family_row& family = *family_named(line.family);
    if (!is_on_path("yosys")) {
        messages.report(message_id::no_simulator, {}, {"yosys", "yosys"});
        return std::nullopt;
    }
    if (family.places && !is_on_path("nextpnr-ice40")) {
        messages.report(message_id::no_placer, {}, {"nextpnr-ice40"});
    }
    const temporary_folder folder;
    if (folder.path().empty() || !write_files(folder.path(), what.files, messages)) {
        messages.report(message_id::cannot_write, {}, {"a temporary folder", "there is no room for one"});
        return std::nullopt;
    }
    progress_bar bar(error, line.terminal && !line.json);
    synthesis_result result =
        synthesize(*what.text, family, line.seed, folder.path(), [&] { bar.show("synthesis", 0, 0); });
    if (!result.failure.empty()) {
        messages.report(message_id::simulation_failed, {},
                        {result.failure.substr(0, result.failure.find(' ')), result.failure});
        return std::nullopt;
    }
    return result;
}

}  // namespace

int synth(const command_line& given, std::ostream& out, std::ostream& error, bool colour) {
    command_line line = given;
    line.languages = "verilog";  // Yosys reads no VHDL by itself
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    std::optional<built_design> what;
    std::optional<synthesis_result> result;
    if (run_stages(state, true) && (what = built(state))) {
        result = synthesized(*what, line, messages, error);
    }
    if (!result && line.json) {
        out << report_json(nullptr, std::nullopt, messages, places, line.source);
        return 1;
    }
    error << rendered(messages, places, colour);
    if (result) {
        const family_row& family = *family_named(line.family);
        out << (line.json ? json_of(*result, *what, family).dump(2) + "\n" : text_of(*result, *what, family));
    }
    return result ? 0 : 1;
}

}  // namespace xfc::flow
