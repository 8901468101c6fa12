#include "flow/explore/results.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <tuple>

#include "flow/simulate/accuracy.h"
#include "flow/simulate/design_model.h"

namespace xfc::flow {

namespace {

using json = nlohmann::ordered_json;

std::int64_t cells_of(const point_result& result) {
    return result.estimate.look_up_tables + result.estimate.flip_flops;
}

auto everything_of(const point_result& result) {
    return std::tie(result.latency, result.register_bits, result.components, result.estimate.look_up_tables,
                    result.estimate.flip_flops, result.estimate.multipliers, result.estimate.megahertz, result.measured,
                    result.largest_ulp, result.median_ulp, result.outside);
}

/// JSON has no infinity, and writes null for it.
double error_of(const json& number) {
    return number.is_null() ? std::numeric_limits<double>::infinity() : number.get<double>();
}

void measure_errors(const measuring& with, const point_design& built, std::int32_t mantissa, point_result& result) {
    design_model model(built.made);
    std::vector<std::vector<std::uint64_t>> outputs;
    outputs.reserve(with.applied.vectors.size());
    for (const std::vector<std::uint64_t>& inputs : with.applied.vectors) {
        outputs.push_back(model.outputs_for(inputs));
    }
    const accuracy_question question{
        .source = built.followed, .applied = with.applied, .results = outputs, .mantissa = mantissa};
    for (const output_accuracy& row : accuracy_of(question)) {
        result.measured += row.measured;
        result.outside += row.outside;
        result.largest_ulp = std::max(result.largest_ulp, row.largest_ulp);
        result.median_ulp = std::max(result.median_ulp, row.median_ulp);
    }
}

}  // namespace

point_result measured_point(const measuring& with, const design_point& point, std::size_t number) {
    diagnostics messages;
    const auto built = design_of(with.program, point, messages);
    if (!built) {
        throw std::logic_error("a point that was enumerated has no design");
    }
    const schedule times = balanced_schedule(built->made);
    point_result result{
        .number = number, .options = point.text, .latency = times.latency, .register_bits = times.register_bits};
    result.components = static_cast<std::int32_t>(
        std::count_if(built->made.nodes.begin(), built->made.nodes.end(),
                      [](const design_node& node) { return node.kind == node_kind::instance; }));
    result.estimate = estimate_of(built->made, times, with.family, with.costs);
    measure_errors(with, *built, point.options.mantissa, result);
    return result;
}

bool dominates(const point_result& a, const point_result& b) {
    const bool no_worse = a.latency <= b.latency && cells_of(a) <= cells_of(b) &&
                          a.estimate.multipliers <= b.estimate.multipliers && a.largest_ulp <= b.largest_ulp;
    const bool better = a.latency < b.latency || cells_of(a) < cells_of(b) ||
                        a.estimate.multipliers < b.estimate.multipliers || a.largest_ulp < b.largest_ulp;
    return no_worse && better;
}

std::vector<point_result> finished(std::vector<point_result> results) {
    std::sort(results.begin(), results.end(),
              [](const point_result& a, const point_result& b) { return a.number < b.number; });
    std::vector<point_result> distinct;
    for (point_result& result : results) {
        const auto same = std::find_if(distinct.begin(), distinct.end(), [&](const point_result& other) {
            return everything_of(other) == everything_of(result);
        });
        if (same == distinct.end()) {
            distinct.push_back(std::move(result));
        } else {
            same->same.push_back(result.options);
        }
    }
    for (point_result& result : distinct) {
        result.on_front = std::none_of(distinct.begin(), distinct.end(),
                                       [&](const point_result& other) { return dominates(other, result); });
    }
    std::stable_sort(distinct.begin(), distinct.end(), [](const point_result& a, const point_result& b) {
        return std::tuple(a.latency, cells_of(a), a.largest_ulp) < std::tuple(b.latency, cells_of(b), b.largest_ulp);
    });
    return distinct;
}

std::string result_file(const point_result& result, std::string_view of) {
    const design_estimate& estimate = result.estimate;
    const json all = {{"of", of},
                      {"number", result.number},
                      {"options", result.options},
                      {"latency", result.latency},
                      {"register_bits", result.register_bits},
                      {"components", result.components},
                      {"look_up_tables", estimate.look_up_tables},
                      {"flip_flops", estimate.flip_flops},
                      {"multipliers", estimate.multipliers},
                      {"megahertz", estimate.megahertz},
                      {"derived", estimate.derived},
                      {"not_measured", estimate.not_measured},
                      {"measured", result.measured},
                      {"largest_ulp", result.largest_ulp},
                      {"median_ulp", result.median_ulp},
                      {"outside", result.outside}};
    return all.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

std::optional<point_result> result_of_file(std::string_view text, std::string_view of) {
    const json all = json::parse(text, nullptr, false);
    if (!all.is_object()) {
        return std::nullopt;
    }
    // What a dump replaces is replaced in both.
    const json expected = json::parse(json(of).dump(-1, ' ', false, json::error_handler_t::replace));
    if (!all.contains("of") || all["of"] != expected) {
        return std::nullopt;
    }
    try {
        point_result result{.number = all.at("number").get<std::size_t>(),
                            .options = all.at("options").get<std::string>(),
                            .latency = all.at("latency").get<std::int32_t>(),
                            .register_bits = all.at("register_bits").get<std::int64_t>(),
                            .components = all.at("components").get<std::int32_t>()};
        result.estimate = {.look_up_tables = all.at("look_up_tables").get<std::int64_t>(),
                           .flip_flops = all.at("flip_flops").get<std::int64_t>(),
                           .multipliers = all.at("multipliers").get<std::int64_t>(),
                           .megahertz = all.at("megahertz").get<double>(),
                           .derived = all.at("derived").get<std::int32_t>(),
                           .not_measured = all.at("not_measured").get<std::int32_t>()};
        result.measured = all.at("measured").get<std::size_t>();
        result.largest_ulp = error_of(all.at("largest_ulp"));
        result.median_ulp = error_of(all.at("median_ulp"));
        result.outside = all.at("outside").get<std::size_t>();
        return result;
    } catch (const json::exception&) {
        return std::nullopt;
    }
}

}  // namespace xfc::flow
