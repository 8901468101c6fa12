#include "flow/driver/commands.h"

#include <ostream>
#include <utility>

#include "flow/driver/build.h"
#include "flow/driver/explore.h"
#include "flow/driver/options.h"
#include "flow/driver/report.h"
#include "flow/driver/simulate.h"
#include "flow/driver/stages.h"
#include "flow/driver/synth.h"
#include "flow/driver/view.h"

namespace xfc::flow {

namespace {

/// Says what the program is in hardware, or why it is none.
int check(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    std::string dumped;
    const stage_row* wanted = stage_named(line.dump);
    const bool to_hardware = wanted != nullptr && wanted->makes_hardware;
    const bool accepted = run_stages(state, to_hardware, [&](const stage_row& stage, const compilation_state& now) {
        if (&stage == wanted) {
            dumped = dump_behind(stage, now);
        }
    });
    const std::optional<std::int32_t> latency = accepted ? latency_of(state) : std::nullopt;
    if (latency) {
        std::swap(state.current->values, *state.followed);  // operations are told as C has them
    }
    if (line.json) {
        out << report_json(latency ? &*state.current : nullptr, latency, messages, places, line.source);
    } else {
        error << rendered(messages, places, colour);
        if (!line.dump.empty()) {
            out << dumped;
        } else if (latency) {
            out << report_text(*state.current, *latency, line.source);
        }
    }
    return latency ? 0 : 1;
}

using command_function = int (*)(const command_line&, std::ostream&, std::ostream&, bool);

struct runnable {
    std::string_view name;
    command_function run;
};

constexpr runnable runnables[] = {{"check", check}, {"build", build}, {"simulate", simulate},
                                  {"view", view},   {"synth", synth}, {"explore", explore}};

}  // namespace

int run(std::span<const std::string> arguments, std::ostream& out, std::ostream& error, bool terminal) {
    parsed_line parsed = parse_command_line(arguments);
    if (parsed.ends) {
        (parsed.status == 0 ? out : error) << parsed.text;
        return parsed.status;
    }
    parsed.line.terminal = terminal;
    const std::string& colour = parsed.line.colour;
    for (const runnable& one : runnables) {
        if (one.name == parsed.line.command) {
            const int status = one.run(parsed.line, out, error, colour == "always" || (colour == "auto" && terminal));
            out.flush();
            if (!out) {
                error << "xfcflow: error: cannot write to the standard output\n";
                return 1;
            }
            return status;
        }
    }
    return 1;
}

}  // namespace xfc::flow
