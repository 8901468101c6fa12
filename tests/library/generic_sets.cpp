#include "generic_sets.h"

#include <algorithm>
#include <array>
#include <set>

namespace xfc::proof {

namespace {

/// The values that one generic, or one of several that share a field, asks for.
std::vector<std::int32_t> values_of(const generic_row& row) {
    if (row.flag != generic_row::no_flag) {
        return {row.flag};
    }
    if ((row.high - row.low) / row.step > 16) {
        return {row.low, 2, 17, std::min(row.high, 45)};
    }
    std::vector<std::int32_t> values;
    for (std::int32_t value = row.low; value <= row.high; value += row.step) {
        values.push_back(value);
    }
    return values;
}

/// What a set of generics shows: two generics (by their places in the row) with their values, or a latency.
using shown_fact = std::array<std::int32_t, 4>;

std::vector<shown_fact> facts_of(const component_row& row, const component_generics& set) {
    constexpr std::int32_t no_generic = -1;
    std::vector<shown_fact> facts{{no_generic, row.latency(set), 0, 0}};
    std::int32_t place = 0;
    for (const generic_row* one = row.generics.begin(); one != row.generics.end(); ++one, ++place) {
        std::int32_t other_place = place + 1;
        for (const generic_row* other = one + 1; other != row.generics.end(); ++other, ++other_place) {
            if (other->field != one->field) {
                facts.push_back({place, set.*one->field, other_place, set.*other->field});
            }
        }
    }
    return facts;
}

port_connection flag_port(const std::string& name, std::int32_t bit_from_1) {
    return {.name = name, .high = bit_from_1 - 1, .low = bit_from_1 - 1, .single_bit = true};
}

}  // namespace

std::vector<component_generics> generic_sets(const component_row& row) {
    std::vector<component_generics> sets{component_generics{}};
    std::vector<generic_row::field_type> done;
    for (const generic_row& generic : row.generics) {
        if (std::find(done.begin(), done.end(), generic.field) != done.end()) {
            continue;
        }
        done.push_back(generic.field);
        std::vector<std::int32_t> values;
        for (const generic_row& same : row.generics) {
            if (same.field == generic.field) {
                const auto more = values_of(same);
                values.insert(values.end(), more.begin(), more.end());
            }
        }
        std::vector<component_generics> longer;
        for (const component_generics& set : sets) {
            for (const std::int32_t value : values) {
                longer.push_back(set);
                longer.back().*generic.field = value;
            }
        }
        sets = std::move(longer);
    }
    return sets;
}

std::int32_t stages_of(const component_row& row, const std::vector<component_generics>& sets) {
    std::int32_t stages = 0;
    for (const component_generics& set : sets) {
        stages += row.latency(set);
    }
    return stages;
}

std::vector<component_generics> covering_sets(const component_row& row) {
    std::vector<component_generics> all = generic_sets(row);
    if (all.size() <= most_sets && stages_of(row, all) <= most_stages) {
        return all;
    }
    std::vector<std::vector<shown_fact>> facts;
    std::set<shown_fact> missing;
    for (const component_generics& set : all) {
        facts.push_back(facts_of(row, set));
        missing.insert(facts.back().begin(), facts.back().end());
    }
    // Each next set is the first of those that show most of what is missing.
    std::vector<component_generics> chosen;
    while (!missing.empty()) {
        const auto gain = [&](const std::vector<shown_fact>& shown) {
            return std::count_if(shown.begin(), shown.end(),
                                 [&](const shown_fact& fact) { return missing.contains(fact); });
        };
        const auto best = std::max_element(facts.begin(), facts.end(),
                                           [&](const auto& one, const auto& other) { return gain(one) < gain(other); });
        for (const shown_fact& fact : *best) {
            missing.erase(fact);
        }
        chosen.push_back(all[static_cast<std::size_t>(best - facts.begin())]);
    }
    return chosen;
}

std::string text_of(const component_row& row, const component_generics& generics) {
    std::string text;
    for (const generic_row& generic : row.generics) {
        text.append(text.empty() ? "" : " ").append(generic.name).append("=");
        text += std::to_string(generic_value(generic, generics));
    }
    return text.empty() ? "no generics" : text;
}

std::int32_t bus_width(port_shape shape, const component_generics& generics) {
    switch (shape) {
        case port_shape::bits:
            return generics.width;
        case port_shape::boolean:
            return 1;
        default:
            return layout_of(form_of(shape, generics), generics.mantissa).width;
    }
}

std::vector<port_connection> ports_of(port_shape shape, const component_generics& generics, const std::string& prefix) {
    const bus_layout layout = layout_of(form_of(shape, generics), generics.mantissa);
    if (shape == port_shape::unpacked_single || shape == port_shape::unpacked_double) {
        const std::string suffix = prefix == "cc" ? "out" : "in";
        return {flag_port("sign" + suffix, layout.sign),
                {.name = "exponent" + suffix, .high = layout.exponent.high - 1, .low = layout.exponent.low - 1},
                {.name = "mantissa" + suffix, .high = layout.mantissa.high - 1, .low = layout.mantissa.low - 1}};
    }
    if (bus_width(shape, generics) == 0) {
        return {};
    }
    if (shape == port_shape::boolean) {
        return {flag_port(prefix, 1)};
    }
    const std::int32_t value = layout.value != 0 ? layout.value : bus_width(shape, generics);
    std::vector<port_connection> ports{{.name = prefix, .high = value - 1, .low = 0}};
    if (layout.sat != 0) {
        ports.push_back(flag_port(prefix + "sat", layout.sat));
        ports.push_back(flag_port(prefix + "zip", layout.zip));
        ports.push_back(flag_port(prefix + "nan", layout.nan));
    }
    return ports;
}

}  // namespace xfc::proof
