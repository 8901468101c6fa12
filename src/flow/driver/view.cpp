#include "flow/driver/view.h"

#include <ostream>

#include "flow/driver/build.h"
#include "flow/view/page.h"

namespace xfc::flow {

namespace {

struct picture_format {
    bool command_line::*asked;  ///< null: what is written when nothing else is asked for
    std::string_view extension;
    std::string (*text)(const picture&, const view_input&);
};

constexpr picture_format formats[] = {
    {&command_line::svg, ".svg", svg_text}, {&command_line::dot, ".dot", dot_text}, {nullptr, ".html", page_text}};

const picture_format& format_of(const command_line& line) {
    for (const picture_format& format : formats) {
        if (format.asked == nullptr || line.*format.asked) {
            return format;
        }
    }
    return formats[0];
}

}  // namespace

int view(const command_line& line, std::ostream& out, std::ostream& error, bool colour) {
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    bool done = false;
    if (run_stages(state, true)) {
        const graph& values = state.current->values;
        const design_names names = names_of(values, state.current->name, *state.made, places);
        const picture_format& format = format_of(line);
        const picture what = picture_of(values, *state.made, *state.times, names);
        const std::string file = !line.file.empty() ? line.file : names.design + std::string(format.extension);
        done = keeps_what_is_read(state, {file}) &&
               write_files("",
                           {{file, format.text(what, {values, *state.made, *state.times, names, places, line.source})}},
                           messages);
        if (done) {
            out << file << '\n';
        }
    }
    error << rendered(messages, places, colour);
    return done ? 0 : 1;
}

}  // namespace xfc::flow
