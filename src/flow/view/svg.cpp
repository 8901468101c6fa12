#include "flow/emit/template.h"
#include "flow/view/page.h"
#include "flow/view/page_texts.h"
#include "flow/view/texts.h"

namespace xfc::flow {

namespace {

// The drawing's scale, in SVG units.
constexpr int cycle_width = 24;
constexpr int lane_height = 18;
constexpr int margin = 24;
constexpr int letter_width = 7;

constexpr std::string_view picture_text =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="@width@" height="@height@" viewBox="0 0 @width@ @height@">
<title>@name@</title>
<style>
@style@</style>
)";
constexpr std::string_view line_text = R"(<line class="@style@" x1="@x@" x2="@x@" y1="@y@" y2="@end@"/>
)";
constexpr std::string_view word_text = R"(<text class="@style@" x="@x@" y="@y@">@word@</text>
)";
constexpr std::string_view rectangle_text =
    R"(<rect class="@style@" x="@x@" y="@y@" width="@width@" height="@height@"><title>@title@</title></rect>
)";

int x_of(std::int32_t cycle) { return margin + (cycle + 1) * cycle_width; }

std::string word(std::string_view style, int x, int y, std::string_view text) {
    return filled_template(
        word_text,
        {{"style", std::string(style)}, {"x", std::to_string(x)}, {"y", std::to_string(y)}, {"word", escaped(text)}});
}

struct box {
    int x;
    int y;
    int width;
    int height;
};

std::string rectangle(std::string_view style, const box& where, std::string_view title) {
    return filled_template(rectangle_text, {{"style", std::string(style)},
                                            {"x", std::to_string(where.x)},
                                            {"y", std::to_string(where.y)},
                                            {"width", std::to_string(where.width)},
                                            {"height", std::to_string(where.height)},
                                            {"title", escaped(title)}});
}

/// The lines between cycles; each fifth and the last have their number.
std::string cycle_lines(std::int32_t latency, int height) {
    std::string text;
    for (std::int32_t cycle = 0; cycle <= latency; ++cycle) {
        const bool told = cycle % 5 == 0 || cycle == latency;
        text += filled_template(line_text, {{"style", told ? "fifth" : "cycle"},
                                            {"x", std::to_string(x_of(cycle))},
                                            {"y", std::to_string(margin)},
                                            {"end", std::to_string(height - margin)}});
        if (told) {
            text += word("cycle_number", x_of(cycle), margin - 6, std::to_string(cycle));
        }
    }
    return text;
}

std::string bar_text(const bar& one, const view_input& input) {
    std::string text;
    const int y = margin + one.lane * lane_height;
    const std::string name(input.names.nodes[one.node]);
    if (one.last > one.end) {
        const std::int32_t cycles = one.last - one.end;
        text += rectangle("delay", {x_of(one.end), y + lane_height / 2 - 1, cycles * cycle_width, 2},
                          name + ": " + std::to_string(one.width) + " bits, " + counted_cycles(cycles));
    }
    const bool narrow = one.kind == bar_kind::conversion || one.kind == bar_kind::normalization;
    const int inset = narrow ? 5 : 2;
    const int length = std::max(3, (one.end - one.start) * cycle_width - 1);
    text += rectangle(
        std::string(row_of(one.kind).name) + (one.on_path ? " path" : ""),
        {x_of(one.start), y + inset, length, lane_height - 2 * inset},
        name + ", " + cycles_text(one) + ", " + source_comment(input.values, input.made[one.node].value, input.places));
    if (!narrow && length >= static_cast<int>(name.size()) * letter_width) {
        text += word("name", x_of(one.start) + 4, y + lane_height - 5, name);
    }
    return text;
}

}  // namespace

std::string svg_text(const picture& what, const view_input& input) {
    const int height = 2 * margin + what.lanes * lane_height;
    std::string text = filled_template(picture_text, {{"width", std::to_string(x_of(what.latency + 1) + margin)},
                                                      {"height", std::to_string(height)},
                                                      {"name", escaped(input.names.design)},
                                                      {"style", std::string(svg_css)}});
    text += cycle_lines(what.latency, height);
    for (const bar& one : what.bars) {
        text += bar_text(one, input);
    }
    return text + "</svg>\n";
}

}  // namespace xfc::flow
