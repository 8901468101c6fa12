#include "flow/explore/points.h"

#include <algorithm>
#include <array>
#include <set>

#include "flow/passes/expand.h"
#include "flow/passes/reciprocals.h"
#include "flow/passes/select_components.h"

namespace xfc::flow {

namespace {

/// An option that is explored: a generic of the library, and its values in the order in which they are tried.
struct axis_row {
    std::string_view option;
    std::int32_t library_options::*field;
    std::array<std::int32_t, 3> values;
    std::size_t count;
    bool on_or_off;
};

constexpr axis_row axes[] = {
    {"--mantissa", &library_options::mantissa, {32, 36}, 2, false},
    {"--round-conversions", &library_options::roundconvert, {1, 0}, 2, true},
    {"--round-normalization", &library_options::roundnormalize, {1, 0}, 2, true},
    {"--normalize-inputs", &library_options::inputnormalize, {1, 0}, 2, true},
    {"--output-registers", &library_options::outputpipe, {1, 0}, 2, true},
    {"--shifter-registers", &library_options::shiftspeed, {1, 0}, 2, true},
    {"--normalizer-speed", &library_options::normspeed, {3, 2, 1}, 3, false},
};
constexpr std::string_view fast_reciprocal_option = "--fast-reciprocal";

bool is_fixed(const exploration& asked, std::string_view option) {
    return std::find(asked.fixed.begin(), asked.fixed.end(), option) != asked.fixed.end();
}

/// What two designs must have alike to be the same hardware, as a number of 128 bits that hardly two designs share.
class fingerprint {
public:
    void add(std::uint64_t what) {
        low_ = (low_ ^ what) * 0x100000001B3ULL;
        low_ ^= low_ >> 29U;
        high_ = (high_ + what + 0x9E3779B97F4A7C15ULL) * 0xBF58476D1CE4E5B9ULL;
        high_ ^= high_ >> 31U;
    }
    [[nodiscard]] std::pair<std::uint64_t, std::uint64_t> value() const { return {high_, low_}; }

private:
    std::uint64_t low_ = 0xCBF29CE484222325ULL;
    std::uint64_t high_ = 0;
};

std::pair<std::uint64_t, std::uint64_t> fingerprint_of(const design& made) {
    fingerprint print;
    for (const design_node& node : made.nodes) {
        print.add(static_cast<std::uint64_t>(node.kind));
        print.add(static_cast<std::uint64_t>(node.code));
        print.add(node.subtract ? 1 : 0);
        if (node.kind == node_kind::instance) {
            print.add(static_cast<std::uint64_t>(node.component));
            for (const generic_row& generic : row_of(node.component).generics) {
                print.add(static_cast<std::uint64_t>(generic_value(generic, node.generics())));
            }
        }
        for (const node_id operand : node.operand_span()) {
            print.add(operand);
        }
        print.add(static_cast<std::uint64_t>(node.bits));
        print.add(static_cast<std::uint64_t>(node.bits >> 64U));
        print.add(node.port);
    }
    for (const node_id output : made.outputs) {
        print.add(output);
    }
    return print.value();
}

std::string text_of(const design_point& point, const exploration& asked) {
    std::string text;
    const auto add = [&](std::string_view option) { text += (text.empty() ? "" : " ") + std::string(option); };
    for (const axis_row& axis : axes) {
        const std::int32_t value = point.options.*axis.field;
        if (!is_fixed(asked, axis.option) && value != axis.values[0]) {
            add(axis.option);
            add(axis.on_or_off ? (value == 1 ? "on" : "off") : std::to_string(value));
        }
    }
    if (point.fast_reciprocal && !is_fixed(asked, fast_reciprocal_option)) {
        add(fast_reciprocal_option);
    }
    return text;
}

/// Which generics the components of a design have.
bool has_generic(const design& made, std::int32_t library_options::*field) {
    return std::any_of(made.nodes.begin(), made.nodes.end(), [&](const design_node& node) {
        const generic_list& generics = row_of(node.component).generics;
        return node.kind == node_kind::instance &&
               std::any_of(generics.begin(), generics.end(), [&](const generic_row& generic) {
                   return generic.field == static_cast<generic_row::field_type>(field);
               });
    });
}

}  // namespace

std::optional<point_design> design_of(const graph& program, const design_point& point, diagnostics& messages) {
    point_design result;
    result.followed = point.fast_reciprocal ? use_reciprocals(program) : program;
    auto made = select_components(expand_operations(result.followed), point.options, messages);
    if (!made) {
        return std::nullopt;
    }
    result.made = std::move(*made);
    return result;
}

std::vector<design_point> points_of(const graph& program, const exploration& asked, diagnostics& messages) {
    std::vector<design_point> candidates;
    for (const bool fast : {false, true}) {
        if (fast && is_fixed(asked, fast_reciprocal_option)) {
            break;
        }
        std::vector<design_point> of_these{{.options = asked.options, .fast_reciprocal = fast}};
        const auto first = design_of(program, of_these.front(), messages);
        if (!first) {
            return {};
        }
        for (const axis_row& axis : axes) {
            if (is_fixed(asked, axis.option) || !has_generic(first->made, axis.field)) {
                continue;
            }
            std::vector<design_point> more;
            for (const design_point& point : of_these) {
                for (std::size_t place = 0; place < axis.count; ++place) {
                    more.push_back(point);
                    more.back().options.*axis.field = axis.values.at(place);
                }
            }
            of_these = std::move(more);
        }
        candidates.insert(candidates.end(), of_these.begin(), of_these.end());
    }
    for (design_point& point : candidates) {
        point.text = text_of(point, asked);
    }
    std::stable_sort(candidates.begin(), candidates.end(), [](const design_point& a, const design_point& b) {
        const auto options = [](const design_point& point) {
            return point.text.empty() ? 0 : 1 + std::count(point.text.begin(), point.text.end(), ' ');
        };
        return options(a) < options(b);
    });
    std::vector<design_point> points;
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
    for (const design_point& point : candidates) {
        const auto built = design_of(program, point, messages);
        if (built && seen.insert(fingerprint_of(built->made)).second) {
            points.push_back(point);
        }
    }
    return points;
}

}  // namespace xfc::flow
