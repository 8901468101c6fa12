#include "flow/driver/stages.h"

#include <cstdio>
#include <cstdlib>

#include "flow/frontend/frontend.h"
#include "flow/graph/verifier.h"

namespace xfc::flow {

namespace {

bool follow_program(compilation_state& state) {
    const command_line& line = state.line;
    const frontend_options options{.top = line.top,
                                   .c_constants = line.c_constants,
                                   .unroll_limit = line.unroll,
                                   .include_folders = line.include_folders,
                                   .definitions = line.definitions};
    state.current = read_program({.path = line.source}, options, state.messages, state.places);
    return state.current.has_value();
}

// A compilation from first to last.
constexpr stage_row stages[] = {
    {"program", "parse C and follow it symbolically: known things are computed, the rest becomes values",
     follow_program},
};

/// A graph that breaks its promises is a fault of ours, never of the program.
void verify([[maybe_unused]] const stage_row& stage, [[maybe_unused]] const compilation_state& state) {
#ifdef XFC_VERIFY
    const std::vector<std::string> faults = faults_of(state.current->values);
    for (const std::string& fault : faults) {
        std::fprintf(stderr, "xfcflow: behind stage %s: %s\n", std::string(stage.name).c_str(), fault.c_str());
    }
    if (!faults.empty()) {
        std::abort();
    }
#endif
}

}  // namespace

std::span<const stage_row> stage_rows() { return stages; }

bool run_stages(compilation_state& state,
                const std::function<void(const stage_row&, const compilation_state&)>& behind) {
    for (const stage_row& stage : stages) {
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
