#include "flow/driver/stages.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "flow/frontend/frontend.h"
#include "flow/graph/dump.h"
#include "flow/graph/port_names.h"
#include "flow/graph/verifier.h"
#include "flow/passes/expand.h"
#include "flow/passes/options.h"
#include "flow/passes/reciprocals.h"
#include "flow/passes/select_components.h"

namespace xfc::flow {

namespace {

/// A name like this one, legal in both languages and none of the library's.
std::string design_name(const std::string& wanted) {
    const std::vector<std::string> names{wanted};
    std::string name = legal_names(names, "").front();
    const auto is_name = [&](const component_row& row) {
        return std::equal(row.name.begin(), row.name.end(), name.begin(), name.end(),
                          [](char one, char other) { return one == std::tolower(static_cast<unsigned char>(other)); });
    };
    return name += std::any_of(all_components().begin(), all_components().end(), is_name) ? "_top" : "";
}

void name_design(compilation_state& state) {
    const std::string wanted = state.line.name.empty() ? state.current->name : state.line.name;
    state.current->name = design_name(wanted);
    if (state.current->name != wanted) {
        state.messages.report(message_id::design_renamed, {}, {wanted, state.current->name});
    }
}

bool follow_program(compilation_state& state) {
    const command_line& line = state.line;
    const frontend_options options{.top = line.top,
                                   .c_constants = line.c_constants,
                                   .unroll_limit = line.unroll,
                                   .include_folders = line.include_folders,
                                   .definitions = line.definitions};
    state.current = read_program({.path = line.source}, options, state.messages, state.places);
    if (state.current) {
        name_design(state);
    }
    return state.current.has_value();
}

bool expand(compilation_state& state) {
    if (state.line.fast_reciprocal) {
        state.current->values = use_reciprocals(state.current->values);
    }
    state.followed = std::move(state.current->values);
    state.current->values = expand_operations(*state.followed);
    return true;
}

bool choose_components(compilation_state& state) {
    library_options options = default_library_options(state.line.low_latency, state.line.mantissa);
    for (const library_option_row& row : library_option_rows()) {
        const std::string& word = state.line.*row.word;
        options.*row.field = word.empty() ? options.*row.field : library_option_row::value_of(word);
    }
    state.made = select_components(state.current->values, options, state.messages);
    return state.made.has_value();
}

bool balance(compilation_state& state) {
    state.times = balanced_schedule(*state.made);
    return true;
}

// A compilation from first to last.
constexpr stage_row stages[] = {
    {"program", "parse C and follow it symbolically: known things are computed, the rest becomes values",
     follow_program, false},
    {"expand", "write operations without a component as ones that have one", expand, true},
    {"components", "choose components, convert where two ends of an edge differ, normalise where bits would be lost",
     choose_components, true},
    {"schedule", "give everything its cycle, with the fewest registers in delays", balance, true},
};

/// Always in debug and fuzzing builds; elsewhere where the environment asks for it, as all tests do.
bool verifies() {
#ifdef XFC_VERIFY
    return true;
#else
    static const bool asked = std::getenv("XFCFLOW_VERIFY") != nullptr;
    return asked;
#endif
}

/// A graph that breaks its promises is a fault of ours, never of the program.
void verify(const stage_row& stage, const compilation_state& state) {
    if (!verifies()) {
        return;
    }
    std::vector<std::string> faults = faults_of(state.current->values);
    const auto add = [&](const std::vector<std::string>& more) {
        faults.insert(faults.end(), more.begin(), more.end());
    };
    if (state.made) {
        add(faults_of(*state.made, state.current->values));
    }
    if (state.times) {
        add(faults_of(*state.times, *state.made));
    }
    for (const std::string& fault : faults) {
        (void)std::fprintf(stderr, "xfcflow: behind stage %s: %s\n", std::string(stage.name).c_str(), fault.c_str());
    }
    if (!faults.empty()) {
        std::abort();
    }
}

}  // namespace

std::span<const stage_row> stage_rows() { return stages; }

const stage_row* stage_named(std::string_view name) {
    for (const stage_row& stage : stages) {
        if (stage.name == name) {
            return &stage;
        }
    }
    return nullptr;
}

std::string dump_behind(const stage_row& stage, const compilation_state& state) {
    if (stage.run == balance) {
        std::string text;
        for (node_id id = 0; id < state.made->size(); ++id) {
            text += "#" + std::to_string(id) + " cycles " + std::to_string(state.times->start[id]) + " to " +
                    std::to_string(ready_time(*state.made, *state.times, id)) + "\n";
        }
        return text + "latency " + std::to_string(state.times->latency) + "\n";
    }
    return stage.run == choose_components ? dump(*state.made, state.current->values)
                                          : dump(state.current->values, &state.places);
}

std::optional<std::int32_t> latency_of(compilation_state& state) {
    if (!state.made && !(expand(state) && choose_components(state))) {
        return std::nullopt;
    }
    return state.times ? state.times->latency : least_latency(*state.made);
}

bool run_stages(compilation_state& state, bool to_hardware,
                const std::function<void(const stage_row&, const compilation_state&)>& behind) {
    for (const stage_row& stage : stages) {
        if (stage.makes_hardware && !to_hardware) {
            continue;
        }
        if (!stage.run(state)) {
            return false;
        }
        verify(stage, state);
        if (behind) {
            behind(stage, state);
        }
    }
    return true;
}

}  // namespace xfc::flow
