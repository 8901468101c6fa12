#include "flow/explore/report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "flow/emit/template.h"
#include "flow/explore/explore_texts.h"

namespace xfc::flow {

namespace {

using json = nlohmann::ordered_json;

std::string ulp_text(const point_result& point, double ulp) {
    char text[32];
    (void)std::snprintf(text, sizeof text, ulp < 1e5 ? "%.3f" : "%.2e", ulp);
    return point.measured == 0 ? "-" : text;
}

/// "~" in front of what is partly derived, ">" of what lacks something.
std::string estimate_text(const point_result& point, std::int64_t count) {
    const design_estimate& estimate = point.estimate;
    const std::string_view mark = estimate.not_measured != 0 ? ">" : estimate.derived != 0 ? "~" : "";
    return std::string(mark) + std::to_string(count);
}

/// The components' clock; the design's own is that or lower.
std::string clock_text(const point_result& point) {
    return point.estimate.megahertz == 0 ? "-" : "<" + std::to_string(std::lround(point.estimate.megahertz));
}

std::string options_text(const std::string& options) { return options.empty() ? "defaults" : options; }

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// One column: its name for programs and for people, and what stands in it.
struct column_row {
    std::string_view name;
    std::string_view head;
    std::string (*text)(const point_result&);  ///< for people
    json (*value)(const point_result&);        ///< for programs
};

using point = point_result;

constexpr column_row columns[] = {
    {"front", "", [](const point& p) { return std::string(p.on_front ? "*" : ""); },
     [](const point& p) { return json(p.on_front); }},
    {"latency", "cycles", [](const point& p) { return std::to_string(p.latency); },
     [](const point& p) { return json(p.latency); }},
    {"register_bits", "delay bits", [](const point& p) { return std::to_string(p.register_bits); },
     [](const point& p) { return json(p.register_bits); }},
    {"look_up_tables", "tables", [](const point& p) { return estimate_text(p, p.estimate.look_up_tables); },
     [](const point& p) { return json(p.estimate.look_up_tables); }},
    {"flip_flops", "flip-flops", [](const point& p) { return estimate_text(p, p.estimate.flip_flops); },
     [](const point& p) { return json(p.estimate.flip_flops); }},
    {"multipliers", "blocks", [](const point& p) { return estimate_text(p, p.estimate.multipliers); },
     [](const point& p) { return json(p.estimate.multipliers); }},
    {"megahertz", "MHz", [](const point& p) { return clock_text(p); },
     [](const point& p) { return p.estimate.megahertz == 0 ? json() : json(p.estimate.megahertz); }},
    {"largest_ulp", "largest ulp", [](const point& p) { return ulp_text(p, p.largest_ulp); },
     [](const point& p) { return p.measured == 0 ? json() : json(p.largest_ulp); }},
    {"median_ulp", "median", [](const point& p) { return ulp_text(p, p.median_ulp); },
     [](const point& p) { return p.measured == 0 ? json() : json(p.median_ulp); }},
    {"outside", "outside", [](const point& p) { return std::to_string(p.outside); },
     [](const point& p) { return json(p.outside); }},
    {"components", "", nullptr, [](const point& p) { return json(p.components); }},
    {"derived", "", nullptr, [](const point& p) { return json(p.estimate.derived); }},
    {"not_measured", "", nullptr, [](const point& p) { return json(p.estimate.not_measured); }},
    {"options", "options",
     [](const point& p) {
         return options_text(p.options) + (p.same.empty() ? "" : "  (and " + std::to_string(p.same.size()) + " alike)");
     },
     [](const point& p) { return json(p.options); }},
};

bool is_shown(const column_row& column, std::span<const point_result> points) {
    const bool all_inside = std::all_of(points.begin(), points.end(), [](const point& p) { return p.outside == 0; });
    const bool no_clock =
        std::all_of(points.begin(), points.end(), [](const point& p) { return p.estimate.megahertz == 0; });
    return column.text != nullptr && !(column.name == "outside" && all_inside) &&
           !(column.name == "megahertz" && no_clock);
}

json points_json(std::span<const point_result> points) {
    json list = json::array();
    for (const point_result& one : points) {
        json entry;
        for (const column_row& column : columns) {
            entry[std::string(column.name)] = column.value(one);
        }
        entry["number"] = one.number;
        entry["same"] = one.same;
        list.push_back(entry);
    }
    return list;
}

json head_json(const exploration_head& head) {
    return {{"design", head.design},       {"source", head.source},
            {"family", head.family->name}, {"family_text", head.family->text},
            {"vectors", head.vectors},     {"seed", head.seed},
            {"options", head.top},         {"costs", std::vector<std::string>(head.costs.begin(), head.costs.end())}};
}

/// JSON inside a script element: nothing in it may end the element or begin a comment.
std::string embedded(const json& data) {
    std::string text;
    for (const char letter : data.dump(-1, ' ', true, json::error_handler_t::replace)) {
        text += letter == '<' ? "\\u003c" : std::string(1, letter);
    }
    return text;
}

}  // namespace

std::string exploration_text(const exploration_head& head, std::span<const point_result> points) {
    std::vector<std::vector<std::string>> lines(points.size() + 1);
    for (const column_row& column : columns) {
        if (is_shown(column, points)) {
            lines[0].emplace_back(column.head);
            for (std::size_t number = 0; number < points.size(); ++number) {
                lines[number + 1].push_back(column.text(points[number]));
            }
        }
    }
    std::size_t settings = points.size();
    for (const point_result& one : points) {
        settings += one.same.size();
    }
    std::string text = head.design + " of " + head.source + " for " + std::string(head.family->text) + ", " +
                       counted(head.vectors, "vector") + ": " + counted(points.size(), "design") + " of " +
                       counted(settings, "set") + " of options" + (head.top.empty() ? "" : " with " + head.top) +
                       "\n\n";
    for (const std::vector<std::string>& line : lines) {
        for (std::size_t place = 0; place < line.size(); ++place) {
            std::size_t width = 0;
            for (const auto& other : lines) {
                width = std::max(width, other[place].size());
            }
            const bool last = place + 1 == line.size();
            text += (place == 0 ? "  " : "   ") +
                    (last ? line[place] : std::string(width - line[place].size(), ' ') + line[place]);
        }
        text += '\n';
    }
    text += "\n  * nothing else is as good in latency, cost (tables and flip-flops, blocks) and largest error\n";
    const auto any = [&](std::int32_t design_estimate::*field) {
        return std::any_of(points.begin(), points.end(), [&](const point& p) { return p.estimate.*field != 0; });
    };
    text += any(&design_estimate::derived)
                ? "  ~ partly derived from measurements of the same component set otherwise\n"
                : "";
    text += any(&design_estimate::not_measured) ? "  > components that were not measured come on top\n" : "";
    const bool clocked =
        std::any_of(points.begin(), points.end(), [](const point& p) { return p.estimate.megahertz != 0; });
    text += clocked ? "  < the slowest component whose clock is known, placed alone; the design is not faster\n" : "";
    for (const std::string& comment : head.costs) {
        text += "  " + comment + "\n";
    }
    return text;
}

std::string exploration_csv(std::span<const point_result> points) {
    std::string text;
    for (const column_row& column : columns) {
        text += (text.empty() ? "" : ",") + std::string(column.name);
    }
    text += '\n';
    for (const point_result& one : points) {
        bool first = true;
        for (const column_row& column : columns) {
            const json value = column.value(one);
            text += first ? "" : ",";
            text += value.is_string() ? value.get<std::string>() : value.is_null() ? "" : value.dump();
            first = false;
        }
        text += '\n';
    }
    return text;
}

std::string exploration_json(const exploration_head& head, std::span<const point_result> points) {
    json all = head_json(head);
    all["points"] = points_json(points);
    return all.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

std::string exploration_page(const exploration_head& head, std::span<const point_result> points) {
    json all = head_json(head);
    all["points"] = points_json(points);
    std::string title;
    for (const char letter : head.design) {
        title += letter == '<' ? "&lt;" : letter == '&' ? "&amp;" : std::string(1, letter);
    }
    return filled_template(explore_html, {{"title", title},
                                          {"style", std::string(explore_css)},
                                          {"script", std::string(explore_js)},
                                          {"data", embedded(all)}});
}

}  // namespace xfc::flow
